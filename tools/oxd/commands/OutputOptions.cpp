#include "oxd/commands/OutputOptions.h"

namespace oxd {

CLI::Option& AddNoClobber(CLI::App& command, Destination& destination)
{
    const auto protect = [&destination] { destination.mayReplace = false; };
    return *command.add_flag_callback("--no-clobber", protect, "Do not replace a file that exists");
}

CLI::Option& AddOutput(CLI::App& command, Destination& destination)
{
    return *command.add_option("-o,--output", destination.name, "File to write; an existing one is replaced")
                ->type_name("OUT");
}

} // namespace oxd
