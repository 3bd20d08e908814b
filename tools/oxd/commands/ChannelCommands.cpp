#include "oxd/commands/ChannelCommands.h"

#include "oxd/commandline/CommonOptions.h"
#include "oxd/commandline/NameTable.h"
#include "oxd/edit/Correct.h"
#include "oxd/export/Export.h"
#include "oxd/inspection/CheckInput.h"
#include "oxd/inspection/SaveLosses.h"
#include "oxd/system/Messages.h"
#include "oxd/system/Results.h"

#include <algorithm>
#include <memory>

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
    const CarriedSections carried(inspection);
    AnnounceSave(inspection, carried, strict);
    const Corrected corrected = Correct(correction, carried);
    outcome = Report(file, corrected.untouched, "left as before");
    results.WriteLines(corrected.preview);
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
    command
        .add_flag_callback(
            "--no-axes", [&picture] { picture.axes = false; }, "The samples alone, without title, axes and colour bar")
        ->group(group);
    command
        .add_flag("--first-line-on-top", picture.firstLineOnTop,
                  "As some programs show scans; else it is at the bottom")
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
    const auto wanted = std::make_shared<Export>();
    CLI::App& command = *app.add_subcommand("export", "Write a channel as a picture, a table or bare numbers");
    command.footer("The suffix of OUT, in any case, says what is written unless --format does:\n" +
                   DescribeExportKinds() + "\n" + DescribeNames("Operators:", lineOperators, 12) + "\n\n" +
                   DescribeNames("Maps:", colourMaps, 13) + "\n\n" + selectionShape);
    AddSelection(command, wanted->selection);
    AddOperator(command, wanted->lineOperator, "Operator, see below; without it the samples are as they are");
    command.add_option("--format", wanted->format, "What to write where the suffix of OUT does not tell, such as csv")
        ->type_name("FORMAT")
        ->check(CLI::IsMember(ExportFormats()).description(""));
    command.add_flag("--grey", wanted->grey, "Plain picture in 16 bits of grey");
    AddOutput(command, wanted->output).required();
    AddPictureOptions(command, *wanted);
    AddNoProvenance(command, wanted->labels, "Do not note down in a picture what it shows");
    command.callback([wanted, &outcome] {
        const inspect::Inspection inspection = InspectAloud(wanted->selection.file);
        wanted->selection.doubted = Doubted(inspection);
        wanted->selection.misread = Misread(inspection);
        const ExportGaps gaps = ExportChannel(*wanted);
        outcome = Report(wanted->selection.file, gaps.skipped, "left out");
        for (const std::string& note : gaps.notes) {
            Complain(wanted->selection.file + ": " + note);
        }
    });
}

} // namespace oxd
