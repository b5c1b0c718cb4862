#include "tools/qvpres/Program.h"

#include <exception>
#include <iostream>

#include "tools/qvpres/Failure.h"
#include "tools/qvpres/text/Wording.h"

namespace qvpres {

namespace {

constexpr const char* kDescription =
    "Looks into JSON texts of parameter bags: checks, shows, converts and compares them.";
constexpr const char* kFooter =
    "Exit codes: 0 nothing found, 1 something found, 2 wrong usage or input.\n"
    "Manual: man qvpres";

ExitCode Complain(const std::string& message) {
    std::cout.flush();
    std::cerr << "qvpres: " << Visible(message) << "\n";
    return ExitCode::Failed;
}

}  // namespace

Program::Program() : m_app(kDescription, "qvpres") {
    m_app.set_version_flag("--version", std::string("qvpres ") + QVPRES_VERSION, "Print the version and exit");
    m_app.set_help_flag("-h,--help", "Print help and exit");
    m_app.require_subcommand(1);
    m_app.footer(kFooter);
    m_app.get_formatter()->column_width(34);
}

CLI::App& Program::AddCommand(CLI::App& parent, const std::string& name, const std::string& description,
                              std::function<ExitCode()> run) {
    CLI::App* command = parent.add_subcommand(name, description);
    command->footer("");
    m_commands[command] = std::move(run);
    return *command;
}

ExitCode Program::Run(int argc, const char* const* argv) {
    try {
        m_app.parse(argc, argv);
        return RunChosen();
    } catch (const CLI::Success& success) {  // help and version
        m_app.exit(success);
        return ExitCode::Done;
    } catch (const CLI::ParseError& error) {
        m_app.exit(error, std::cout, std::cerr);
        return ExitCode::Failed;
    } catch (const std::bad_alloc&) {
        return Complain("out of memory");
    } catch (const std::exception& failure) {
        return Complain(failure.what());
    }
}

ExitCode Program::RunChosen() {
    const CLI::App* chosen = &m_app;
    while (!chosen->get_subcommands().empty()) {
        chosen = chosen->get_subcommands().front();
    }
    const ExitCode code = m_commands.at(chosen)();
    // A full disk or a closed pipe shows only now.
    if (!std::cout.flush()) {
        throw Failure("standard output cannot be written");
    }
    return code;
}

}  // namespace qvpres
