// The command line as a whole: a tree of commands, of which one is run.
#pragma once

#include <functional>
#include <map>
#include <string>

#include <CLI/CLI.hpp>

#include "tools/qvpres/ExitCode.h"

namespace qvpres {

class Program {
public:
    Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    CLI::App& App() { return m_app; }

    // A command below parent; the caller adds its options. run is called when the command was chosen, after all options
    // have their values. Variables that options are bound to must live as long as the program: capture them by a shared
    // pointer in run.
    CLI::App& AddCommand(CLI::App& parent, const std::string& name, const std::string& description,
                         std::function<ExitCode()> run);

    // Parses and runs. Whatever fails is told on standard error.
    ExitCode Run(int argc, const char* const* argv);

private:
    ExitCode RunChosen();

    CLI::App m_app;
    std::map<const CLI::App*, std::function<ExitCode()>> m_commands;
};

}  // namespace qvpres
