#include "oxd/commands/MetaCommands.h"

#include "oxd/commands/CommandHelp.h"
#include "oxd/commands/OutputOptions.h"
#include "oxd/edit/MetaValue.h"
#include "oxd/system/Results.h"
#include "oxd/system/Text.h"

#include <memory>

namespace oxd {

namespace {

constexpr const char* pathShape = "PATH joins the names of the groups and of the item, for example Scan/Rotation.\n"
                                  "The first match counts, and case matters.";

struct PathOptions
{
    std::string file;
    std::string path;
    std::string separator = "/";

    void AddTo(CLI::App& command)
    {
        command.footer(pathShape);
        command.add_option("FILE", file, "File to read; stays as it is")->type_name("")->required();
        command.add_option("PATH", path, "Where the value is, see below")->type_name("")->required();
        command.add_option("--separator", separator, "What separates the names in PATH, instead of /")
            ->type_name("TEXT");
    }

    // Options are complete only once the whole command line is read, so the separator is checked here.
    MetaPath Path() const
    {
        if (separator.empty()) {
            throw CLI::ValidationError("--separator", "must not be empty");
        }
        return {path, separator};
    }
};

} // namespace

void AddGet(CLI::App& app, Results& results)
{
    const auto options = std::make_shared<PathOptions>();
    CLI::App& command = *app.add_subcommand("get", "Print one value of the measurement information");
    options->AddTo(command);
    command.callback([options, &results] {
        const std::string value = GetMetaValue(options->file, options->Path());
        results.Write((results.IsTerminal() ? Printable(value) : value) + "\n");
    });
}

void AddSet(CLI::App& app)
{
    struct Options : PathOptions
    {
        std::string value;
        bool create = false;
        bool inPlace = false;
        Destination output;

        MetaChange Change() const
        {
            if (!inPlace && output.name.empty()) {
                throw CLI::RequiredError("--output or --in-place");
            }
            return {file, Path(), value, create, inPlace ? Destination{file} : output, inPlace};
        }
    };
    const auto options = std::make_shared<Options>();
    CLI::App& command = *app.add_subcommand("set", "Change one value of the measurement information");
    options->AddTo(command);
    command.footer(std::string(pathShape) + "\n\n" + notInSavedFiles);
    command.add_option("VALUE", options->value, "New value")->type_name("")->required();
    command.add_flag("--create", options->create, "Make the item, and groups on the way, if they are missing");
    CLI::Option& output = AddOutput(command, options->output);
    CLI::Option& noClobber = AddNoClobber(command, options->output);
    command.add_flag("--in-place", options->inPlace, "Replace FILE itself")->excludes(&output)->excludes(&noClobber);
    command.callback([options] { SetMetaValue(options->Change()); });
}

} // namespace oxd
