#include "oxd/commands/ChannelCommands.h"

#include "oxd/commandline/CommonOptions.h"
#include "oxd/commandline/NameTable.h"
#include "oxd/edit/Correct.h"
#include "oxd/export/ExportAll.h"
#include "oxd/inspection/CheckInput.h"
#include "oxd/inspection/SaveLosses.h"
#include "oxd/system/Messages.h"
#include "oxd/system/Results.h"
#include "oxd/viewer/View.h"
#include "oxd/viewer/WritePage.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace oxd {

namespace {

CLI::Option& AddOperator(CLI::App& command, LineOperator& lineOperator, const char* description)
{
    const auto choose = [&lineOperator](const std::string& name) { lineOperator = *FindLineOperator(name); };
    return *command.add_option_function<std::string>("--op", choose, description)
                ->type_name("OP")
                ->check(IsNameOf(lineOperators));
}

// Complains of the lines that the command could not treat as it was asked to.
ExitCode Report(const std::string& file, const SkippedLines& lines, const char* consequence)
{
    for (const LineTally& tally : {lines.tooShort, lines.damaged}) {
        if (tally.Count() > 0) {
            Complain(file + ": " + tally.Sentence(consequence));
        }
    }
    return lines.damaged.Count() > 0 ? ExitCode::Damaged : ExitCode::Done;
}

void CorrectAloud(Correction& correction, bool strict, Results& results, ExitCode& outcome)
{
    if (correction.output.name.empty() && !correction.isDryRun) {
        throw CLI::RequiredError("--output");
    }
    // Every channel is saved, so that doubts in any of them count.
    const std::string& file = correction.selection.file;
    const inspect::Inspection inspection = RequireCertain(file, correction.selection.trust);
    const CarriedSections carried(inspection.header);
    AnnounceSave(inspection, carried, strict);
    const Corrected corrected = Correct(correction, carried);
    outcome = Report(file, corrected.untouched, "left as before");
    results.WriteLines(corrected.preview);
}

ExitCode ReportGaps(const std::string& file, const ExportGaps& gaps)
{
    const std::string subject = file + ": ";
    for (const std::string& note : gaps.notes) {
        Complain(subject + note);
    }
    return Report(file, gaps.skipped, "left out");
}

// Ends with the worst code of a channel, which is the one with the largest number.
ExitCode ExportAllAloud(const Export& wanted, decltype(ExportAll)& exportAll)
{
    ExitCode worst = ExitCode::Done;
    const auto add = [&worst](ExitCode code) { worst = std::max(worst, code); };
    exportAll(
        wanted, [&](const ExportGaps& gaps) { add(ReportGaps(wanted.selection.file, gaps)); },
        [&](const Failure& failure) {
            Complain(failure.what());
            add(failure.Code());
        });
    return worst;
}

struct ExportOptions
{
    Export wanted;
    bool all = false;                         // each as a file
    bool sheet = false;                       // on one picture
    std::vector<CLI::Option*> selection = {}; // that a channel takes
};

// A channel has to be named, or all of them taken. A name may be empty.
void RequireSelection(ExportOptions& options)
{
    const bool ofAll = options.all || options.sheet;
    for (CLI::Option* const option : options.selection) {
        if (!ofAll && option->empty()) {
            throw CLI::RequiredError(option->get_name());
        }
    }
    std::string& group = options.wanted.selection.group;
    group = ofAll && group.empty() && !options.selection.front()->empty() ? "name:" : group;
}

void ExportPage(const ExportOptions& options)
{
    const Export& wanted = options.wanted;
    if (options.all || options.sheet) {
        throw Failure(ExitCode::Usage, wanted.output.name,
                      "a page holds all channels anyway, without --all and --sheet");
    }
    RequireNothingOfAChannel(wanted);
    InspectAloud(wanted.selection.file);
    WritePage(wanted.selection.file, wanted.output);
}

ExitCode ExportAloud(ExportOptions& options)
{
    Export& wanted = options.wanted;
    if (IsPage(wanted)) {
        ExportPage(options);
        return ExitCode::Done;
    }
    RequireSelection(options);
    const inspect::Inspection inspection = InspectAloud(wanted.selection.file);
    wanted.selection.doubted = Doubted(inspection);
    wanted.selection.misread = Misread(inspection);
    if (options.all || options.sheet) {
        return ExportAllAloud(wanted, options.sheet ? ExportSheet : ExportAll);
    }
    return ReportGaps(wanted.selection.file, ExportChannel(wanted));
}

void AddPictureOptions(CLI::App& command, Export& wanted)
{
    PictureOptions& picture = wanted.picture;
    const char* const group = "Pictures";
    const auto range = [&picture](const std::string& text) { picture.contrast = ParseContrast(text); };
    const auto map = [&picture](const std::string& name) {
        picture.colour = std::ranges::find(colourMaps, name, &ColourMap::name)->colour;
    };
    const auto as = [&picture](const std::string& kind) { picture.curves = kind == "curves"; };
    const auto lines = [&picture](const std::string& text) { picture.lines = ParseLines(text); };
    const auto offset = [&picture](const std::string& text) { picture.offset = ParseOffset(text); };
    const auto title = [&picture](const std::string& text) { picture.title = text; };
    command
        .add_option_function<std::string>("--as", as,
                                          "curves or image; by default curves where there are one or two lines, or "
                                          "where what tells the lines apart has no unit")
        ->type_name("KIND")
        ->check(CLI::IsMember({"curves", "image"}).description(""))
        ->group(group);
    command.add_option_function<std::string>("--lines", lines, "Lines to show as curves, such as 3,7-9; else all")
        ->type_name("LINES")
        ->group(group);
    command.add_option("--with", wanted.with, "Another channel of the group, whose curves are shown as well")
        ->type_name("CHANNEL")
        ->allow_extra_args(false)
        ->group(group);
    command
        .add_option_function<std::string>("--offset", offset,
                                          "Raises each curve above that of the line before, such as 2nm")
        ->type_name("VALUE")
        ->group(group);
    command
        .add_option_function<std::string>("--range", range,
                                          "Values that the colours span: MIN:MAX, such as -2nm:2nm, full or "
                                          "percentile:LOW,HIGH; percentile:1,99, or full with --grey")
        ->type_name("RANGE")
        ->group(group);
    command.add_option_function<std::string>("--map", map, "Colours, see below")
        ->type_name("MAP")
        ->check(IsNameOf(colourMaps))
        ->group(group);
    command.add_option_function<std::string>("--title", title, "Title instead of the names of group and channel")
        ->type_name("TEXT")
        ->group(group);
    const auto size = [&picture](const std::string& text) { picture.size = ParseSize(text); };
    const auto resolution = [&picture](const double& dpi) { picture.resolution = dpi; };
    command
        .add_option_function<std::string>("--size", size,
                                          "WIDTH or WIDTHxHEIGHT of the whole picture, such as 85mm or 800x600")
        ->type_name("SIZE")
        ->group(group);
    command.add_option_function<double>("--dpi", resolution, "Pixels per inch of a .png, for printing; else 96")
        ->type_name("N")
        ->check(CLI::Range(24, 2400).description(""))
        ->group(group);
    command.add_flag("--scale-bar", picture.scaleBar, "A bar of a round length in an image")->group(group);
    command
        .add_flag_callback(
            "--no-axes", [&picture] { picture.axes = false; }, "The samples alone, without title, axes and colour bar")
        ->group(group);
    const auto linesFirst = [&picture](const std::string& place) { picture.firstLineOnTop = place == "top"; };
    command
        .add_option_function<std::string>(
            "--lines-first", linesFirst,
            "Where the first line is: bottom, where the line axis begins, or top, as some "
            "programs show scans; bottom")
        ->type_name("PLACE")
        ->check(CLI::IsMember({"top", "bottom"}).description(""))
        ->group(group);
}

} // namespace

void AddCorrect(CLI::App& app, Results& results, ExitCode& outcome)
{
    struct Options
    {
        Correction correction;
        bool strict = false;
    };
    const auto options = std::make_shared<Options>();
    Correction* const correction = &options->correction;
    CLI::App& command = *app.add_subcommand("correct", "Correct a channel line by line and save it as another file");
    command.footer(DescribeNames("Operators:", lineOperators, 12) + "\n\n" + selectionShape + "\n\n" + notInSavedFiles);
    AddSelection(command, correction->selection);
    AddOperator(command, correction->lineOperator, "Operator, see below").required();
    AddOutput(command, correction->output);
    AddSaving(command, {correction->isDryRun, options->strict});
    AddNoProvenance(command, correction->records, "Do not note down in OUT how it was made");
    command.callback(
        [options, &results, &outcome] { CorrectAloud(options->correction, options->strict, results, outcome); });
}

void AddExport(CLI::App& app, ExitCode& outcome)
{
    const auto options = std::make_shared<ExportOptions>();
    Export& wanted = options->wanted;
    CLI::App& command = *app.add_subcommand("export", "Write a channel as a picture, a table or bare numbers");
    command.footer("The suffix of OUT, in any case, says what is written unless --format does:\n" +
                   DescribeExportKinds() + "\n" + DescribeNames("Operators:", lineOperators, 12) + "\n\n" +
                   DescribeNames("Maps:", colourMaps, 13) + "\n\n" + selectionShape);
    const SelectionOptions selection = AddSelection(command, wanted.selection);
    options->selection = {&selection.group, &selection.channel};
    for (CLI::Option* const option : options->selection) {
        option->required(false);
    }
    CLI::Option* const all =
        command
            .add_flag("--all", options->all,
                      "All channels of the file, or of the group; OUT is a folder for a file of each, .png or --format")
            ->excludes(&selection.channel);
    command
        .add_flag("--sheet", options->sheet,
                  "All channels of the file, or of the group, side by side in one picture, which OUT is")
        ->excludes(&selection.channel)
        ->excludes(all);
    AddOperator(command, wanted.lineOperator, "Operator, see below; without it the samples are as they are");
    command.add_option("--format", wanted.format, "What to write where the suffix of OUT does not tell, such as csv")
        ->type_name("FORMAT")
        ->check(CLI::IsMember(ExportFormats()).description(""));
    CLI::Option* const grey = command.add_flag_callback(
        "--grey", [&wanted] { wanted.pixels = Pixels::Grey; }, "Plain picture in 16 bits of grey");
    command
        .add_flag_callback(
            "--raw", [&wanted] { wanted.pixels = Pixels::Raw; }, "A .tif of raw samples instead of values")
        ->excludes(grey);
    AddOutput(command, wanted.output).required();
    AddPictureOptions(command, wanted);
    AddNoProvenance(command, wanted.labels, "Do not note down in a picture what it shows");
    command.callback([options, &outcome] { outcome = ExportAloud(*options); });
}

void AddView(CLI::App& app, Results& results)
{
    struct Options
    {
        std::string file;
        Destination page;
        bool opens = true;
    };
    const auto options = std::make_shared<Options>();
    CLI::App& command = *app.add_subcommand("view", "Show a file in the browser");
    command.footer("The page holds the viewer and the file, and its name is printed. Nothing is sent anywhere.\n"
                   "Without -o, it stays in a folder for temporary files that only this user may read.\n\n"
                   "Examples:\n"
                   "  oxd view sample.oxd\n"
                   "  oxd view sample.oxd --no-open -o page.html");
    AddInputFile(command, options->file);
    AddOutput(command, options->page);
    command.add_flag_callback(
        "--no-open", [options] { options->opens = false; }, "Open no browser");
    command.callback([options, &results] {
        InspectAloud(options->file);
        const std::string page = MakePage(options->file, options->page);
        results.WriteLines(page + "\n");
        if (options->opens) {
            OpenPage(page);
        }
    });
}

} // namespace oxd
