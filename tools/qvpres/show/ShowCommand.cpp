#include <filesystem>
#include <iostream>
#include <memory>

#include "tools/qvpres/Commands.h"
#include "tools/qvpres/CommonOptions.h"
#include "tools/qvpres/Failure.h"
#include "tools/qvpres/Terminal.h"
#include "tools/qvpres/text/TextInput.h"
#include "tools/qvpres/show/ShowRendering.h"

namespace qvpres {

namespace {

struct Options : CommonOptions {
    std::string file;
    std::string path;
    ShowOptions show;
};

// One argument that starts with a slash and is no file is a path in standard input, where that is not a terminal.
void SortArguments(Options& options) {
    const bool isPath = options.path.empty() && options.file.starts_with('/') && !std::filesystem::exists(options.file);
    if (isPath && !IsTerminal(Stream::In)) {
        options.path = options.file;
        options.file = "-";
    }
}

ExitCode RunShow(Options& options) {
    SortArguments(options);
    const LoadedVocabulary vocabulary(options);
    const auto text = ReadParameterText(options.file, vocabulary, options);
    const ParameterText::Node root = text->Find(options.path);
    if (root == ParameterText::kNone) {
        throw Failure("nothing stands at " + options.path);
    }
    if (options.json) {
        std::cout << ToJSON(*text, root, options.show).dump(2) << "\n";
    } else {
        WriteTree(std::cout, *text, root, options.show, Style(options.color, Stream::Out));
    }
    return ExitCode::Done;
}

}  // namespace

void AddShowCommand(Program& program) {
    const auto options = std::make_shared<Options>();
    CLI::App& command = program.AddCommand(program.App(), "show", "Show a bag as a tree, long lists folded",
                                           [options] { return RunShow(*options); });
    AddFileArgument(command, options->file);
    command.add_option("path", options->path, "What to show of it, such as /style/font-size; names in any spelling")
        ->type_name("PATH");
    AddTextOptions(command, *options);
    command.add_option("--depth", options->show.depth, "Levels to show")->type_name("N");
    command.add_option("--items", options->show.items, "Elements and entries up to which nothing is folded")
        ->type_name("N")
        ->capture_default_str();
    command.add_option("--width", options->show.width, "Characters of a value")->type_name("N")->capture_default_str();
    command.add_flag("--full", options->show.full, "Fold and shorten nothing");
    AddJSONOption(command, *options);
    AddColorOption(command, *options);
}

}  // namespace qvpres
