#include "oxd/commands/SampleCommand.h"

#include "oxd/commandline/CommonOptions.h"
#include "oxd/example/Sample.h"

#include <memory>

namespace oxd {

void AddMakeSample(CLI::App& app)
{
    const auto output = std::make_shared<Destination>();
    CLI::App& command = *app.add_subcommand("make-sample", "Write a sample file with scans and force curves");
    command.footer("The file is the same every time, byte for byte.");
    command.add_option("FILE", output->name, "File to write; an existing one is replaced")
        ->type_name("")
        ->required()
        ->check(IsNotEmpty());
    AddNoClobber(command, *output);
    command.callback([output] { MakeSample(*output); });
}

} // namespace oxd
