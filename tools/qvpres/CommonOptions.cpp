#include "tools/qvpres/CommonOptions.h"

#include <CLI/CLI.hpp>

namespace qvpres {

void AddVocabularyOptions(CLI::App& command, CommonOptions& options) {
    CLI::Option* vocabulary =
        command.add_option("--vocabulary", options.vocabulary, "Declaration file of the parameters")->type_name("FILE");
    CLI::Option* module =
        command.add_option("--module", options.module, "Shared library of a host that registers its parameters")
            ->type_name("FILE");
    vocabulary->excludes(module);
}

void AddTextOptions(CLI::App& command, CommonOptions& options) {
    AddVocabularyOptions(command, options);
    command
        .add_option("--namespace", options.nameSpace,
                    "Namespace of the texts; needed where the vocabulary has several that none falls back to")
        ->type_name("NAME");
    command.add_option("--names", options.names, "Names in the texts; auto looks at the first names that tell")
        ->type_name("FORM")
        ->check(CLI::IsMember({"auto", "verbose", "short"}))
        ->capture_default_str();
}

void AddJSONOption(CLI::App& command, CommonOptions& options) {
    command.add_flag("--json", options.json, "Write JSON, for machines");
}

void AddColorOption(CLI::App& command, CommonOptions& options) {
    command.add_option("--color", options.color, "Colours; auto: on terminals, unless NO_COLOR is set")
        ->type_name("WHEN")
        ->check(CLI::IsMember({"auto", "always", "never"}))
        ->capture_default_str();
}

CLI::Option* AddFileArgument(CLI::App& command, std::string& file) {
    file = "-";
    return command.add_option("file", file, "JSON text; - or nothing: standard input")->type_name("FILE");
}

}  // namespace qvpres
