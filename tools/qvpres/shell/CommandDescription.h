// The command line as a value, from which completions and the manual are made, so that they cannot fall behind it.
#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace qvpres {

struct OptionDescription {
    std::vector<std::string> names;  // with their dashes, short ones first; empty for arguments
    std::string description;
    std::string value;                 // what it takes: "FILE", "N"; empty for flags
    std::vector<std::string> choices;  // the only values there are; else empty
    std::string preset;                // the value without the option; may be empty
    bool required = false;
    bool repeated = false;

    bool IsArgument() const { return names.empty(); }
    bool TakesFile() const { return value == "FILE"; }
};

struct CommandDescription {
    std::string path;  // "check", "vocabulary list"; empty for the program
    std::string name;  // the last word of the path
    std::string description;
    std::vector<OptionDescription> options;  // arguments too, in order
    std::vector<CommandDescription> commands;

    bool TakesFiles() const;
};

CommandDescription DescribeCommand(const CLI::App& app, const std::string& parentPath = "");

// The program's commands and theirs, each before those below it; the program itself first.
std::vector<const CommandDescription*> AllCommands(const CommandDescription& program);

}  // namespace qvpres
