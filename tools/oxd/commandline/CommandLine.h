// Takes a command line apart, and says what is wrong with one.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace oxd {

// Global options, a command, and what is for that command alone: a value may read like another command, "get" for
// example. `app` holds the commands and must outlive this.
class CommandLine
{
public:
    CommandLine(CLI::App& app, std::vector<std::string> arguments) : m_app(&app), m_arguments(std::move(arguments)) {}

    // Runs the command. Throws what the parser throws for wrong usage and for calls for help, and what the command
    // throws. May be called once; the functions below are for what is to be said after it has thrown.
    void Run();

    // The help of the command, or of the tool if there is none.
    std::string Help() const;

    // What is wrong, and where to look up what is right.
    std::string Explanation(const CLI::ParseError& error) const;

    // The file that the command is about.
    std::string NamedFile() const;

private:
    CLI::App* m_app;
    std::vector<std::string> m_arguments;
    CLI::App* m_command = nullptr;
};

// Throws a Failure, which suggests a similar name, if there is no such command.
CLI::App& FindCommand(CLI::App& app, const std::string& name);

} // namespace oxd
