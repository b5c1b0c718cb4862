#include <iostream>
#include <memory>
#include <string>

#include "tools/qvpres/Commands.h"
#include "tools/qvpres/shell/Completion.h"
#include "tools/qvpres/shell/ManPage.h"

namespace qvpres {

namespace {

ExitCode WriteCompletion(const CLI::App& app, const std::string& shell) {
    const CommandDescription program = DescribeCommand(app);
    std::cout << (shell == "bash"  ? BashCompletion(program)
                  : shell == "zsh" ? ZshCompletion(program)
                                   : FishCompletion(program));
    return ExitCode::Done;
}

}  // namespace

void AddShellCommands(Program& program) {
    const auto shell = std::make_shared<std::string>();
    const CLI::App& app = program.App();
    CLI::App& completion =
        program.AddCommand(program.App(), "completion", "Write what a shell needs to complete qvpres",
                           [&app, shell] { return WriteCompletion(app, *shell); });
    completion.add_option("shell", *shell, "The shell")
        ->type_name("SHELL")
        ->required()
        ->check(CLI::IsMember({"bash", "zsh", "fish"}));
    program.AddCommand(program.App(), "manual", "Write the manual as a man page", [&app] {
        std::cout << ManPage(DescribeCommand(app));
        return ExitCode::Done;
    });
}

}  // namespace qvpres
