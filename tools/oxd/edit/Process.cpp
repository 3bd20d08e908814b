#include "oxd/edit/Process.h"

#include "oxd/edit/OutputDraft.h"
#include "oxd/edit/SaveCarrying.h"
#include "oxd/files/Interruption.h"
#include "oxd/inspection/ModelFile.h"
#include "oxd/process/ProcessStep.h"
#include "oxd/process/ResultTable.h"
#include "oxd/process/ResultText.h"
#include "oxd/provenance/StepLog.h"
#include "oxd/system/Failure.h"
#include "oxd/system/Messages.h"
#include "oxd/system/Progress.h"
#include "processing/ProcessingError.h"

#include <atomic>
#include <memory>

namespace oxd {

namespace {

namespace model = veltaris::velflexlib::dataset;

// Derives at once. Refers to the processors, which are those of the data set or its own.
class Run
{
public:
    Run(const std::string& file, const ProcessorRequest& request) : m_file(file)
    {
        m_own = request.IsOfFile() ? nullptr : MakeProcessors(request);
        Derive({});
        if (!request.IsOfFile() && !m_report.unsuited.empty()) {
            const auto& [key, reason] = m_report.unsuited.front();
            throw Failure(ExitCode::Usage, OptionOf(key), file + ": " + reason);
        }
        if (m_report.done.empty()) {
            ThrowProblems();
        }
        for (processing::CPlacement::Addresses unreserved; !m_report.gaps.empty();) {
            unreserved.insert(m_report.gaps.begin(), m_report.gaps.end());
            Derive(unreserved);
        }
    }

    model::CDataSet& DataSet() { return *m_dataSet; }
    ResultSource Results() const { return {m_file, *m_dataSet, m_report}; }

private:
    // The last sentence is that of the failure.
    [[noreturn]] void ThrowProblems() const
    {
        const std::vector<std::string> sentences = ToSentences(Results());
        for (std::size_t i = 0; i + 1 < sentences.size(); ++i) {
            Complain(m_file + ": " + sentences[i]);
        }
        throw Failure(ExitCode::No, m_file, sentences.back());
    }

    // On the file as it is. No slots are kept free for outputs with these addresses.
    void Derive(const processing::CPlacement::Addresses& unreserved)
    {
        m_report = {};
        m_dataSet = LoadModel(m_file);
        const auto processors = processing::EnabledProcessors(m_own ? *m_own : m_dataSet->GetProcessorSet());
        if (processors.empty()) {
            throw Failure(ExitCode::No, m_file, "has no processor that is enabled; --kind and --input name one");
        }
        const std::atomic<bool> abort = false;
        std::uint64_t left = processing::CountLines(processors, *m_dataSet); // of what is there before
        Progress progress(left);
        const auto advance = [&] {
            interruption::Check();
            if (left > 0) {
                --left;
                progress.Advance();
            }
        };
        try {
            m_report = processing::Run(processors, *m_dataSet, {abort, advance}, unreserved);
        } catch (const processing::CProcessingError& error) {
            throw Failure(ExitCode::Damaged, m_file, error.what());
        }
    }

    std::string m_file;
    std::unique_ptr<model::CDataSet> m_dataSet;
    std::unique_ptr<model::CProcessorSet> m_own;
    processing::CProcessingReport m_report;
};

std::string Save(Run& run, const Step* step, const CarriedSections& carried, OutputFile& output)
{
    if (step != nullptr) {
        AppendStep(run.DataSet().GetInfoSet(), *step);
    }
    std::string saved = SaveModel(run.DataSet(), output);
    InsertSections(carried, saved, output);
    if (step != nullptr) {
        RequireRecorded(*step, saved, output.Name());
    }
    return saved;
}

std::string Rendered(const Run& run, ResultForm form)
{
    return form == ResultForm::Csv ? ToCsv(run.Results()) : form == ResultForm::Json ? ToJson(run.Results()) : "";
}

} // namespace

ProcessingOutcome Process(const Processing& processing, const CarriedSections& carried)
{
    std::optional<OutputDraft> draft;
    if (processing.saves) {
        RequireOtherFile(processing.file, processing.output.name);
        draft.emplace(processing.output, processing.isDryRun);
    }
    Run run(processing.file, processing.request);
    ProcessingOutcome outcome{
        Rendered(run, processing.form), ToSentences(run.Results()), run.Results().report.problems.empty(), {}};
    if (draft) {
        const Step step = DescribeProcessing(processing.file, processing.request);
        const std::string saved = Save(run, processing.records ? &step : nullptr, carried, draft->File());
        outcome.preview = draft->Finish(processing.file, saved);
    }
    return outcome;
}

std::string RepeatProcessing(const std::string& file, const ProcessorRequest& request, const Step& step,
                             const CarriedSections& carried, OutputFile& output)
{
    Run run(file, request);
    return Save(run, &step, carried, output);
}

} // namespace oxd
