#include <iostream>
#include <memory>

#include "tools/qvpres/Commands.h"
#include "tools/qvpres/CommonOptions.h"
#include "tools/qvpres/Failure.h"
#include "tools/qvpres/diff/DiffRendering.h"
#include "tools/qvpres/text/TextInput.h"
#include "tools/qvpres/text/Wording.h"

namespace qvpres {

namespace {

struct Options : CommonOptions {
    std::string left;
    std::string right;
    double tolerance = 0;
    double relative = 0;
    std::size_t most = 200;
    bool quiet = false;
};

void Write(const ComparisonResult& result, const Options& options) {
    const Style style(options.color, Stream::Out);
    for (const Difference& difference : result.differences) {
        WriteDifference(std::cout, difference, style);
    }
    if (!options.quiet) {
        std::cout << (result.differences.empty() ? "no differences" : Counted(result.differences.size(), "difference"))
                  << (result.cut ? " and more\n" : "\n");
    }
}

void WriteJSON(const ComparisonResult& result) {
    nlohmann::ordered_json json = {{"differences", nlohmann::ordered_json::array()}, {"cut", result.cut}};
    for (const Difference& difference : result.differences) {
        json["differences"].push_back(ToJSON(difference));
    }
    std::cout << json.dump(2) << "\n";
}

ExitCode RunDiff(const Options& options) {
    if (options.left == "-" && options.right == "-") {
        throw Failure("only one of the two texts can be standard input");
    }
    const LoadedVocabulary vocabulary(options);
    const auto left = ReadParameterText(options.left, vocabulary, options);
    const auto right = ReadParameterText(options.right, vocabulary, options);
    const ComparisonResult result = CompareTexts(*left, *right, {options.tolerance, options.relative}, options.most);
    if (options.json) {
        WriteJSON(result);
    } else {
        Write(result, options);
    }
    return result.differences.empty() && !result.cut ? ExitCode::Done : ExitCode::Found;
}

}  // namespace

void AddDiffCommand(Program& program) {
    const auto options = std::make_shared<Options>();
    CLI::App& command = program.AddCommand(program.App(), "diff", "Compare what two texts say",
                                           [options] { return RunDiff(*options); });
    command.add_option("left", options->left, "JSON text; - is standard input")->type_name("FILE")->required();
    command.add_option("right", options->right, "JSON text")->type_name("FILE")->required();
    AddTextOptions(command, *options);
    command.add_option("--tolerance", options->tolerance, "Numbers so far apart are the same")
        ->type_name("X")
        ->check(CLI::NonNegativeNumber);
    command.add_option("--relative", options->relative, "The same as a share of the larger number, such as 1e-9")
        ->type_name("X")
        ->check(CLI::NonNegativeNumber);
    command.add_option("--max-differences", options->most, "Differences that are told")
        ->type_name("N")
        ->capture_default_str();
    command.add_flag("-q,--quiet", options->quiet, "No summary");
    AddJSONOption(command, *options);
    AddColorOption(command, *options);
}

}  // namespace qvpres
