// What a shell is told when the Tab key is pressed.
#include "ToolTest.h"

#include <sstream>

namespace {

class CompletionTest : public ToolTest
{
protected:
    // The words that may stand at the end of `line`, each with a blank behind it.
    std::string CandidatesOf(const std::string& line)
    {
        std::istringstream answer(ResultsOf("complete -- " + line));
        std::string words;
        for (std::string candidate; std::getline(answer, candidate);)
            words.append(candidate.substr(0, candidate.find('\t'))).append(" ");
        return words;
    }
};

TEST_F(CompletionTest, OffersWhatMayStandThere)
{
    const struct
    {
        std::string line, candidates;
    } cases[]{{"ex", "explain export "},
              {"complet", "completion "},
              {"--v", "--version "},
              {"help sa", "salvage "},
              {"frobnicate ''", ""},
              {"info sample.o", ""}, // a file, which the shell finds
              {"diff sample.oxd --st", "--steps "},
              {"export sample.oxd --op p", "parabola polynomial "},
              {"export sample.oxd -g ''", "ForwardScan BackwardScan Spectroscopy "},
              {"export sample.oxd --channel ''", "Topography Deflection Phase Approach Retract "},
              {"export sample.oxd --group Spectroscopy --channel ''", "Approach Retract "},
              {"export missing.oxd --group ''", ""},
              {"export --group ''", ""}};
    for (const auto& [line, candidates] : cases)
        EXPECT_EQ(CandidatesOf(line), candidates) << line;
}

TEST_F(CompletionTest, HasAScriptForEachShellThatAsksForCandidates)
{
    for (const std::string shell : {"bash", "zsh", "fish"})
        EXPECT_NE(ResultsOf("completion " + shell).find("complete -- "), std::string::npos) << shell;
    EXPECT_EQ(RunTool("completion csh"), 2);
}

} // namespace
