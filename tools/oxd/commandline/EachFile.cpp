#include "oxd/commandline/EachFile.h"

#include "oxd/commandline/JsonLine.h"
#include "oxd/library/DataSet.h"
#include "oxd/system/Messages.h"
#include "oxd/system/Results.h"

#include <algorithm>

namespace oxd {

namespace {

FileAnswer FailedAnswer(const std::string& file, const std::string& reason, ExitCode code, bool jsonLines)
{
    return {jsonLines ? JsonLine({{"file", file}, {"error", reason}}) : std::string(), {reason}, code};
}

FileAnswer AnswerOrFailure(const std::string& file, const FileList& files, const auto& answer)
{
    try {
        return answer(file);
    } catch (const Failure& failure) {
        const std::string message = failure.what();
        const std::string subject = file + ": ";
        const bool namesFile = message.starts_with(subject);
        return FailedAnswer(file, namesFile ? message.substr(subject.size()) : message, failure.Code(),
                            files.jsonLines);
    } catch (const LibraryError& error) { // the library refused what it does with a sound file
        return FailedAnswer(file, error.what(), ExitCode::Damaged, files.jsonLines);
    }
}

} // namespace

void AnswerForEach(const FileList& files, const std::function<FileAnswer(const std::string& file)>& answer,
                   Results& results, ExitCode& outcome)
{
    for (const std::string& file : files.names) {
        const std::string subject = file + ": ";
        const FileAnswer given = AnswerOrFailure(file, files, answer);
        outcome = std::max(outcome, given.code);
        results.Write(given.text);
        for (const std::string& message : given.messages) {
            Complain(subject + message);
        }
    }
}

} // namespace oxd
