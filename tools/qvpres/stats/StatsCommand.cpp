#include <iostream>
#include <memory>

#include "tools/qvpres/Commands.h"
#include "tools/qvpres/CommonOptions.h"
#include "tools/qvpres/stats/StatsRendering.h"
#include "tools/qvpres/text/TextInput.h"

namespace qvpres {

namespace {

struct Options : CommonOptions {
    std::string file;
    std::size_t top = 15;
};

ExitCode RunStats(const Options& options) {
    const LoadedVocabulary vocabulary(options);
    const Stats stats = MakeStats(*ReadParameterText(options.file, vocabulary, options));
    if (options.json) {
        std::cout << ToJSON(stats).dump(2) << "\n";
    } else {
        WriteStats(std::cout, stats, options.top, Style(options.color, Stream::Out));
    }
    return ExitCode::Done;
}

}  // namespace

void AddStatsCommand(Program& program) {
    const auto options = std::make_shared<Options>();
    CLI::App& command =
        program.AddCommand(program.App(), "stats", "Tell where the characters of a text go, and what would save some",
                           [options] { return RunStats(*options); });
    AddFileArgument(command, options->file);
    AddTextOptions(command, *options);
    command.add_option("--top", options->top, "Rows of each table")->type_name("N")->capture_default_str();
    AddJSONOption(command, *options);
    AddColorOption(command, *options);
}

}  // namespace qvpres
