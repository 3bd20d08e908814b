#include "oxd/process/ResultText.h"

#include "curves/Reason.h"
#include "oxd/system/Text.h"

#include <map>

namespace oxd {

namespace {

namespace curves = veltaris::curves;
using Reasons = std::vector<curves::Reason>;

// Empty if all lines have a value.
std::string Sentence(const std::string& name, const std::string& input, const Reasons& reasons)
{
    std::map<curves::Reason, std::size_t> counts;
    std::size_t missing = 0;
    for (const curves::Reason reason : reasons) {
        missing += reason == curves::Reason::None ? 0 : 1;
        ++counts[reason];
    }
    if (missing == 0) {
        return {};
    }
    std::string text = "\"" + name + "\" of " + input + ": " + std::to_string(missing) + " of " +
                       std::to_string(reasons.size()) + " curves have no value: ";
    std::string separator;
    for (const auto& [reason, count] : counts) {
        if (reason != curves::Reason::None) {
            text.append(separator).append(std::to_string(count)).append(" because ").append(curves::TextOf(reason));
            separator = ", ";
        }
    }
    return text;
}

} // namespace

std::vector<std::string> ToSentences(const ResultSource& source)
{
    std::vector<std::string> sentences = source.report.problems;
    sentences.insert(sentences.end(), source.report.notes.begin(), source.report.notes.end());
    for (const processing::CProcessed& done : source.report.done) {
        Reasons before;
        for (const processing::CDerived& channel : done.channels) {
            std::visit(
                [&](const auto& derived) {
                    const std::string sentence = Sentence(derived.name, InputName(source, done), derived.reasons);
                    if (!sentence.empty() && derived.reasons != before) {
                        sentences.push_back(sentence);
                    }
                    before = derived.reasons;
                },
                channel);
        }
    }
    return sentences;
}

} // namespace oxd
