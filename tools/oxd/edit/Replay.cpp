#include "oxd/edit/Replay.h"

#include "oxd/edit/Correct.h"
#include "oxd/edit/FirstDifference.h"
#include "oxd/edit/Process.h"
#include "oxd/edit/SaveCarrying.h"
#include "oxd/process/ProcessStep.h"
#include "oxd/provenance/SampleDigest.h"
#include "oxd/provenance/StepLog.h"
#include "oxd/system/Failure.h"

#include <algorithm>
#include <utility>

namespace oxd {

namespace {

// Makes files that are compared and thrown away.
class Repetition
{
public:
    Repetition(std::string original, CarriedSections carried)
        : m_file(std::move(original)), m_carried(std::move(carried))
    {
    }

    // The original, or what the steps so far have made of it.
    const std::string& File() const { return m_file; }

    // False, and nothing is done, if the samples are not those that the step was taken on.
    bool Repeat(const Step& step, const std::string& subject)
    {
        if (IsProcessing(step)) {
            return RepeatProcessors(step, RequestOf(step, subject));
        }
        const StepWork work = WorkOf(step, subject);
        DataSet dataSet = DataSet::Open(m_file);
        const Channel channel = FindChannel(dataSet, {m_file, work.group, work.channel});
        if (DigestOfSamples(channel) != work.digest) {
            return false;
        }
        AppendStep(dataSet, step);
        CorrectLines(channel, work.lineOperator);
        m_file = SaveCarrying(m_carried, dataSet, m_output);
        return true;
    }

private:
    // What was no wrong usage then is one now if the units or settings of the original are not those of the step's.
    bool RepeatProcessors(const Step& step, const ProcessorRequest& request)
    {
        try {
            m_file = RepeatProcessing(m_file, request, step, m_carried, m_output);
            return true;
        } catch (const Failure& failure) {
            if (failure.Code() != ExitCode::Usage) {
                throw;
            }
            return false;
        }
    }

    OutputFile m_output;
    std::string m_file;
    CarriedSections m_carried;
};

// The steps of `made` that the original does not have yet.
std::vector<Step> StepsToRepeat(const inspect::Inspection& made, const inspect::Inspection& original)
{
    std::vector<Step> steps = ReadSteps(made);
    if (steps.empty()) {
        throw Failure(ExitCode::Damaged, made.file, "no provenance says how it was made");
    }
    const std::vector<Step> known = ReadSteps(original);
    if (known.size() >= steps.size() || !std::equal(known.begin(), known.end(), steps.begin())) {
        throw Failure(ExitCode::No, original.file, "its own provenance does not lead to that of " + made.file);
    }
    steps.erase(steps.begin(), steps.begin() + static_cast<std::ptrdiff_t>(known.size()));
    return steps;
}

// Earlier versions of this tool carried nothing over, and what they recorded is repeated as they did it.
CarriedSections SectionsToCarry(const inspect::Inspection& made, const inspect::Inspection& original)
{
    return CarriedSections(made.header).Text().empty() ? CarriedSections() : CarriedSections(original.header);
}

std::string StepCount(std::size_t count)
{
    return count == 1 ? "1 step" : std::to_string(count) + " steps";
}

} // namespace

ReplayOutcome Replay(const inspect::Inspection& made, const inspect::Inspection& original)
{
    const std::vector<Step> steps = StepsToRepeat(made, original);
    const std::string subject = made.file + ": ";
    Repetition repetition(original.file, SectionsToCarry(made, original));
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (!repetition.Repeat(steps[i], made.file)) {
            return {false, subject + "step " + std::to_string(i + 1) + " of " + std::to_string(steps.size()) +
                               " was taken on other samples than those of " + original.file};
        }
    }
    const std::string work = StepCount(steps.size()) + " on " + original.file;
    const auto difference = FirstDifference(made.file, repetition.File());
    if (difference) {
        return {false, subject + "differs from what comes of " + work + ", first at byte " +
                           std::to_string(*difference) + ", " + PlaceOf(*difference, made)};
    }
    return {true, subject + "the same as what comes of " + work};
}

} // namespace oxd
