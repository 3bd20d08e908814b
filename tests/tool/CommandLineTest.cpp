#include "tool/ToolTest.h"

#include <sstream>
#include <tuple>

using CommandLineTest = ToolTest;

TEST_F(CommandLineTest, AnswersQuestionsAboutItself)
{
    EXPECT_EQ(ResultsOf("--version"), "oxd " OXD_VERSION "\n");
    EXPECT_EQ(ResultsOf("-V"), ResultsOf("--version"));
    EXPECT_EQ(ResultsOf("help"), ResultsOf("--help"));
}

// After a change that is meant to show, look at what the tool says now, and if it is right, make it the approved text:
// { oxd help; for verb in $(oxd help | sed -n '/^Commands/,/^$/s/^  \([a-z-]*\) .*/\1/p'); do printf '\n$ oxd help
// %s\n' $verb; oxd help $verb; done; } > help.txt
TEST_F(CommandLineTest, HelpsAsApproved)
{
    const std::string overview = ResultsOf("--help");
    std::string all = overview;
    std::istringstream lines(overview.substr(overview.find("\nCommands:\n") + 11));
    for (std::string line; std::getline(lines, line) && !line.empty();) {
        const std::string command = line.substr(2, line.find(' ', 2) - 2);
        const std::string help = ResultsOf("help " + command);
        EXPECT_EQ(ResultsOf(command + " -h"), help);
        all.append("\n$ oxd help ").append(command).append("\n").append(help);
    }
    EXPECT_EQ(all, ReadBytes(OXD_APPROVED "/help.txt"));
}

TEST_F(CommandLineTest, GuessesWhatWasMeant)
{
    const std::string rest = " sample.oxd --channel 0 --op mean -o out.oxd";
    const std::pair<std::string, const char*> cases[] = {
        {"inof sample.oxd", "oxd: \"inof\": no such command, did you mean info? (see oxd --help)\n"},
        {"help exprot", "did you mean export?"},
        {"mak-sampel out.oxd", "did you mean make-sample?"},
        {"--debgu info sample.oxd", "unknown option --debgu, did you mean --debug? (see oxd --help)\n"},
        {"info sample.oxd --jsno", "unknown option --jsno, did you mean --json? (see oxd info --help)\n"},
        {"correct --gruop=ForwardScan" + rest, "unknown option --gruop, did you mean --group? (see"},
        {"overinfo sample.oxd", "oxd: \"overinfo\": no such command (see"},
        {"zebra sample.oxd", "oxd: \"zebra\": no such command (see"},
        {"info sample.oxd --zebra", "unknown option --zebra (see"},
        {"info sample.oxd -z", "unknown option -z (see"},
        {"''", "no such command"},
    };
    for (const auto& [arguments, part] : cases)
        ExpectFailure(arguments, 2, part);
}

TEST_F(CommandLineTest, ListsWhatAFileHasInsteadOfAGroupOrChannel)
{
    const auto handle = Create("many.oxd");
    CreateGroup(handle, 32);
    SetGroupName(handle, 0, "id:1");
    SetChannelCount(handle, 0, 9);
    for (std::uint64_t slot = 1; slot < 9; ++slot) {
        SetChannelXYDimension(handle, 0, slot, 1, 1);
        SetChannelData_PixelRaw(handle, 0, slot, 0, 0, static_cast<std::int32_t>(slot));
    }
    SetChannelData_SignalAxisName(handle, 0, 1, std::string(39, 'x').append("\xC2\xB5\xC2\xB5").c_str());
    SetChannelData_SignalAxisName(handle, 0, 2, "5");
    SetChannelData_SignalAxisName(handle, 0, 3, "name:5");
    SetGroupName(handle, CreateGroup(handle, 32), "0");
    Save(handle);
    const std::string ofMany = "export many.oxd -o out.raw";
    for (const auto& [selection, slot] : {std::pair("-g id:0 -c 5", '\5'),
                                          {"--group name:id:1 --channel name:5", '\2'},
                                          {"-g id:0 -c name:name:5", '\3'}}) {
        ResultsOf(ofMany + " " + selection);
        EXPECT_EQ(ReadBytes("out.raw"), std::string({slot, '\0', '\0', '\0'})) << selection;
    }
    const std::string groups = "; it has \"id:1\" (id:0) and \"0\" (id:1)\n";
    for (const std::string group : {"id:2", "id:", "id:x", "ID:0", "name:1", ""})
        ExpectFailure(ofMany + " -c 0 -g '" + group + "'", 1, "no group \"" + group + "\"" + groups);
    ExpectFailure(
        ofMany + " -g id:0 -c 0", 1,
        R"(no channel "0" in group "id:1"; it has ")" + std::string(39, 'x') +
            "\xC2\xB5\xE2\x80\xA6\" (1), \"5\" (2), \"name:5\" (3), \"Noname\" (4), \"Noname\" (5) and 3 more\n");
    ExpectFailure(ofMany + " -g 0 -c 0", 1, "; it has no channels\n");
}

TEST_F(CommandLineTest, TakesAWordThatIsACommandForAValue)
{
    ResultsOf("make-sample info");
    EXPECT_NE(ResultsOf("info info").find("Topography"), std::string::npos);
    ResultsOf("set sample.oxd Scan/Comment get --create -o set");
    EXPECT_EQ(ResultsOf("get set Scan/Comment"), "get\n");
}

TEST_F(CommandLineTest, ShowsTheLogAndWholeDiagnosticsOnRequest)
{
    WriteOxd("[DataSet]\nVersion=2\n[SetView]\nViewWidth=wide\n", {}, "odd.oxd");
    ResultsOf("info odd.oxd"); // no message
    for (const char* const command : {"--debug info odd.oxd", "info odd.oxd --debug"}) {
        const Outcome outcome = ExpectMessage(command, 0, "oxd: debug: odd.oxd: line 4: warning: ");
        EXPECT_EQ(outcome.diagnostics.find("lexical cast"), std::string::npos) << outcome.diagnostics;
        EXPECT_EQ(outcome.results, ResultsOf("info odd.oxd"));
    }
    const std::string once = Run("set odd.oxd Scan/Note here --create -o edited.oxd --debug").diagnostics;
    EXPECT_NE(once.find(": warning: "), std::string::npos) << once;
    EXPECT_EQ(once.find(": warning: "), once.rfind(": warning: ")) << once;
    EXPECT_EQ(Run("info missing.oxd").diagnostics.find("oxd: debug: "), std::string::npos);
    ExpectMessage("info missing.oxd --debug", 3, "\noxd: missing.oxd: No such file");
    ExpectMessage("info missing.oxd --debug", 3, "oxd: debug: ");
}

TEST_F(CommandLineTest, RefusesWhatItCannotDo)
{
    const auto empty = Create("empty.oxd");
    CreateChannel(empty, 8, 0, 3);
    Save(empty);
    std::filesystem::copy_file("sample.oxd", "sample.csv");
    WriteBytes("old.png", "old");
    std::filesystem::create_directory("folder.csv");
    const std::string bytes = ReadBytes("sample.oxd");
    const std::string scan = " --group ForwardScan --channel 0 ";
    const std::tuple<int, std::string, const char*> cases[] = {
        {2, "", "A command is required"},
        {2, "info", "FILE is required"},
        {2, "info --json sample.oxd sample.oxd", "--jsonl"},
        {2, "info ''", "FILE: must not be empty"},
        {2, "get -p Scan/Lines sample.oxd ''", "FILE: must not be empty"},
        {2, "make-sample ''", "FILE: must not be empty"},
        {2, "make-sample x.oxd y.oxd", "y.oxd"},
        {2, "correct x.oxd --group G --channel 0 --op mean", "--output is required"},
        {2, "export x.oxd --group G --channel 0 --op raw -o y.csv", "raw"},
        {2, "get x.oxd", "PATH is required"},
        {2, "get sample.oxd sample.oxd Scan/Lines", "--path is required"},
        {2, "set x.oxd A/B -o y.oxd", "VALUE is required"},
        {2, "set x.oxd A/B 1", "--output or --in-place is required"},
        {2, "set x.oxd A/B 1 --in-place -o y.oxd", "--output excludes --in-place"},
        {2, "set x.oxd A/B 1 --in-place --no-clobber", "--no-clobber excludes --in-place"},
        {2, "export sample.oxd -o out.txt" + scan,
         "out.txt: its suffix is none of .png .svg .pdf .tif .tiff .csv .raw .f64 .real .html, and"},
        {2, "export sample.oxd -o out.csv --format bmp" + scan, "bmp"},
        {2, "export sample.oxd -o out.png --format csv --grey" + scan, "--grey"},
        {2, "export sample.oxd -o png" + scan, "png: its suffix"},
        {2, "export sample.oxd --grey -o out.csv" + scan, "--grey"},
        {2, "export sample.csv -o ./sample.csv" + scan, "./sample.csv: "},
        {2, "correct sample.oxd --op mean -o ./sample.oxd" + scan, "./sample.oxd: "},
        {2, "set sample.oxd Scan/X-Pos 0 -o ./sample.oxd", "./sample.oxd: "},
        {2, "get sample.oxd Scan/Rotation --separator ''", "--separator"},
        {2, "set sample.oxd -o out.oxd Scan/Rotation ''", "value"},
        {2, "set sample.oxd -o '' Scan/Rotation 5", "must not be empty"},
        {2, "set sample.oxd -o out.oxd Scan/Rotation '5 '", "value"},
        {2, "set sample.oxd -o out.oxd Scan/Rotation '5\n6'", "value"},
        {2, "set sample.oxd -o out.oxd Scan/Rotation 'see #!1'", "value"},
        {2, "set sample.oxd -o out.oxd Scan//Gain 5 --create", "name"},
        {2, "set sample.oxd -o out.oxd Scan/a=b 5 --create", "name"},
        {2, "set sample.oxd -o out.oxd Gain 5 --create", "in a group"},
        {1, "set sample.oxd -o out.oxd Scan/Rotation/X 5 --create", "no group"},
        {1, "set sample.oxd -o out.oxd Instrument/Scanner 5 --create", "is a group"},
        {1, "set sample.oxd -o out.oxd Scan/X-Position 0", "no information named"},
        {1, "get sample.oxd Scan/rotation", "no information named"},
        {1, "get sample.oxd Instrument/Scanner", "\"Instrument/Scanner\" is a group"},
        {1, "correct sample.oxd --op mean -o out.oxd --group Scan --channel 0", "no group"},
        {1, "correct sample.oxd --op mean -o out.oxd --group ForwardScan --channel Height", "no channel"},
        {1, "correct sample.oxd --op mean -o out.oxd --group ForwardScan --channel 1x", "no channel"},
        {1, "export empty.oxd --group Group0 --channel 0 -o old.png", "no samples"},
        {1, "export empty.oxd --group Group0 --channel 0 -o old.png --grey", "oxd: empty.oxd: "},
        {3, "info missing.oxd", "oxd: missing.oxd: No such file"},
        {3, "info folder.csv", "oxd: folder.csv: "},
        {5, "make-sample nowhere/sample.oxd", "oxd: nowhere/sample.oxd: folder nowhere: No such file"},
        {5, "correct sample.oxd --op mean -o ." + scan, "oxd: .: "},
        {5, "export sample.oxd -o folder.csv" + scan, "oxd: folder.csv: Is a directory\n"},
    };
    for (const auto& [exitCode, arguments, part] : cases)
        ExpectFailure(arguments, exitCode, part);
    EXPECT_EQ(ReadBytes("sample.oxd"), bytes);
    EXPECT_EQ(ReadBytes("sample.csv"), bytes);
    EXPECT_EQ(ReadBytes("old.png"), "old");
    EXPECT_FALSE(std::filesystem::exists("out.oxd"));
}

TEST_F(CommandLineTest, TellsForeignAndDamagedFilesFromItsOwn)
{
    for (const char* const content : {"", "#!/bin/sh\n", "[DataSet]\r\nVersion=2\r\n", "\xFF\xD8\xFF\xE0"}) {
        WriteBytes("foreign.oxd", content);
        ExpectFailure("info foreign.oxd", 4, "oxd: foreign.oxd: not an .oxd file");
    }
    WriteOxd("[DataSet]\nVersion=3\n", {}, "future.oxd");
    ExpectFailure("info future.oxd", 4, "oxd: future.oxd: line 2: error: ");
    WriteOxd("[DataSet]\nVersion=2\nGroupCount=999999999\n", {}, "damaged.oxd");
    ExpectFailure("info damaged.oxd", 4, "oxd: damaged.oxd: line 3: error: \"GroupCount\"");
}

TEST_F(CommandLineTest, SaysOfACutOnceWhereItIs)
{
    WriteBytes("cut.oxd", ReadBytes("sample.oxd").substr(0, 200000));
    for (const std::string command :
         {"info cut.oxd", "get cut.oxd Scan/Lines", "set cut.oxd Scan/Lines 1 -o out.oxd", "diff cut.oxd sample.oxd",
          "diff sample.oxd cut.oxd", "export cut.oxd --group ForwardScan --channel Phase -o out.csv",
          "correct cut.oxd --group ForwardScan --channel 0 --op mean -o out.oxd"})
        ExpectFailure(command, 4, "oxd: cut.oxd: byte 200000: error: Channel \"Deflection\"");
}

TEST_F(CommandLineTest, TakesWordsInBracketsAsTheyStand)
{
    DropSettings();
    std::filesystem::copy_file("sample.oxd", "[a,b]");
    EXPECT_EQ(ResultsOf("validate '[a,b]' sample.oxd '[a,b]'"),
              "[a,b]: 0 errors, 0 warnings, 0 notes\n" + ResultsOf("validate sample.oxd '[a,b]'"));
    EXPECT_NE(ResultsOf("info '[a,b]'").find("[a,b]\n"), std::string::npos);
    EXPECT_EQ(ResultsOf("get -p Scan/Lines '[a,b]' '[a,b]' '[a,b]'"), "[a,b]: 256\n[a,b]: 256\n[a,b]: 256\n");
    ExpectFailure("get '[a,b]' '[x]/[y]'", 1, "oxd: [a,b]: no information named \"[x]/[y]\"\n");
    ResultsOf("set '[a,b]' Scan/Lines '[1,2]' -o '[c]'");
    EXPECT_EQ(ResultsOf("get '[c]' Scan/Lines"), "[1,2]\n");
}

TEST_F(CommandLineTest, LetsNoNameCommandTheTerminal)
{
    for (const char* const name : {"\xC2\x9B", "\x1B", "\x7F"})
        ExpectFailure("info '" + std::string(name) + "31m'", 3, "oxd: ?31m: ");
}

TEST_F(CommandLineTest, TakesNamesInEveryScript)
{
    const std::string german = "gr\xC3\xB6\xC3\x9F"
                               "e.oxd";
    const std::string chinese = "\xE6\xB8\xAC.oxd";
    ResultsOf("make-sample " + german);
    EXPECT_TRUE(std::filesystem::exists(std::u8string(german.begin(), german.end())));
    EXPECT_NE(ResultsOf("info " + german).find("Topography"), std::string::npos);
    ResultsOf("export " + german + " --group ForwardScan --channel 0 -o " + chinese + ".csv");
    ResultsOf("make-sample " + chinese);
    EXPECT_NE(ResultsOf("info " + chinese).find("Topography"), std::string::npos);
}
