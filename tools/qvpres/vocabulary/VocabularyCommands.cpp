#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>

#include "tools/qvpres/Commands.h"
#include "tools/qvpres/CommonOptions.h"
#include "tools/qvpres/Failure.h"
#include "tools/qvpres/Input.h"
#include "tools/qvpres/LoadedVocabulary.h"
#include "tools/qvpres/text/Wording.h"
#include "tools/qvpres/vocabulary/VocabularyRendering.h"
#include "tools/vocabulary/CppHeader.h"
#include "tools/vocabulary/JsonSchema.h"

namespace qvpres {

namespace {

struct Options : CommonOptions {
    std::string file;  // a declaration file, or a module by the ending ".so"; instead of the two options
    std::string newer;
    std::string output = "-";
    std::string check;  // a header that must be the one that would be generated
    bool shortNames = false;
    bool packedLists = false;
    bool onlyBreaking = false;
    bool cpp = false;
};

constexpr const char* kModuleEnding = ".so";

Vocabulary LoadFile(const std::string& file) {
    if (file.ends_with(kModuleEnding)) {
        CommonOptions options;
        options.module = file;
        return LoadedVocabulary(options).GetVocabulary();
    }
    return Vocabulary::FromText(ReadInput(file), InputName(file));
}

// Only looked at, so that a declaration need not be registered.
Vocabulary Load(const Options& options) {
    if (!options.file.empty()) {
        if (!options.vocabulary.empty() || !options.module.empty()) {
            throw Failure("the vocabulary is named twice");
        }
        return LoadFile(options.file);
    }
    if (!options.vocabulary.empty()) {
        return LoadFile(options.vocabulary);
    }
    return LoadedVocabulary(options).GetVocabulary();
}

const NamespaceDeclaration& FindNamespace(const Vocabulary& vocabulary, const std::string& name) {
    const NamespaceDeclaration* nameSpace = vocabulary.FindNamespace(TString::FromUtf8(name));
    if (nameSpace == nullptr) {
        throw Failure("the vocabulary has no namespace " + name);
    }
    return *nameSpace;
}

std::vector<const NamespaceDeclaration*> ChosenNamespaces(const Vocabulary& vocabulary, const Options& options) {
    if (!options.nameSpace.empty()) {
        return {&FindNamespace(vocabulary, options.nameSpace)};
    }
    std::vector<const NamespaceDeclaration*> all;
    for (const NamespaceDeclaration& nameSpace : vocabulary.GetNamespaces()) {
        all.push_back(&nameSpace);
    }
    return all;
}

ExitCode RunList(const Options& options) {
    const Vocabulary vocabulary = Load(options);
    const auto namespaces = ChosenNamespaces(vocabulary, options);
    if (options.json) {
        std::cout << ToJSON(vocabulary, namespaces).dump(2) << "\n";
    } else {
        WriteNamespaces(std::cout, vocabulary, namespaces, Style(options.color, Stream::Out));
    }
    return ExitCode::Done;
}

// What a host's own types become is a guess, hence something found.
ExitCode RunExport(const Options& options) {
    const Vocabulary vocabulary = Load(options);
    WriteOutput(options.output, vocabulary.ToJson());
    ExitCode code = ExitCode::Done;
    for (const NamespaceDeclaration& nameSpace : vocabulary.GetNamespaces()) {
        for (const ParameterDeclaration& parameter : nameSpace.parameters) {
            if (vocabulary.IsApproximate(parameter.id)) {
                code = ExitCode::Found;
                std::cerr << "qvpres: " << nameSpace.name.ToUtf8() << "/" << parameter.name.ToUtf8()
                          << " has a type of the host's own and is exported as " << TypeName(parameter) << "\n";
            }
        }
    }
    return code;
}

ExitCode RunLint(const Options& options) {
    const Vocabulary vocabulary = Load(options);
    const std::vector<Finding> findings = Lint(vocabulary);
    if (options.json) {
        std::cout << ToJSON(findings).dump(2) << "\n";
    } else {
        WriteFindings(std::cout, vocabulary, findings, Style(options.color, Stream::Out));
    }
    const bool found = std::any_of(findings.begin(), findings.end(),
                                   [](const Finding& finding) { return finding.severity != Severity::Note; });
    return found ? ExitCode::Found : ExitCode::Done;
}

ExitCode RunDiff(const Options& options) {
    if (options.file == "-" && options.newer == "-") {
        throw Failure("only one of the two vocabularies can be standard input");
    }
    const std::vector<Change> changes = Compare(LoadFile(options.file), LoadFile(options.newer));
    if (options.json) {
        std::cout << ToJSON(changes).dump(2) << "\n";
    } else {
        WriteChanges(std::cout, changes, Style(options.color, Stream::Out));
    }
    const bool breaks = Verdict(changes, false) != OldTexts::Read || Verdict(changes, true) != OldTexts::Read;
    return (options.onlyBreaking ? breaks : !changes.empty()) ? ExitCode::Found : ExitCode::Done;
}

// The namespace of texts, as commands that read texts choose it.
TString TextNamespace(const Vocabulary& vocabulary, const Options& options) {
    if (!options.nameSpace.empty()) {
        return FindNamespace(vocabulary, options.nameSpace).name;
    }
    return LoadedVocabulary(vocabulary).GetNamespace();
}

ExitCode RunSchema(const Options& options) {
    const Vocabulary vocabulary = Load(options);
    WriteOutput(options.output, ToJsonSchema(vocabulary, TextNamespace(vocabulary, options),
                                             {options.shortNames, options.packedLists}));
    return ExitCode::Done;
}

ExitCode RunGenerate(const Options& options) {
    if (!options.cpp) {
        throw Failure("name what to generate: --cpp");
    }
    const Vocabulary vocabulary = Load(options);
    const std::string origin = std::filesystem::path(vocabulary.GetSource()).filename().string();
    const std::string header = ToCppHeader(vocabulary, origin);
    if (options.check.empty()) {
        WriteOutput(options.output, header);
        return ExitCode::Done;
    }
    if (ReadInput(options.check) == header) {
        return ExitCode::Done;
    }
    std::cerr << "qvpres: " << options.check << " is not what " << origin << " generates\n";
    return ExitCode::Found;
}

using Run = ExitCode (*)(const Options&);

// A command over one vocabulary.
CLI::App& AddCommandOver(Program& program, CLI::App& parent, const char* name, const char* description, Run run,
                         const std::shared_ptr<Options>& options) {
    CLI::App& command = program.AddCommand(parent, name, description, [run, options] { return run(*options); });
    command.add_option("file", options->file, "Declaration file, or a module by its ending .so; - is standard input")
        ->type_name("FILE");
    AddVocabularyOptions(command, *options);
    return command;
}

void AddNamespaceOption(CLI::App& command, Options& options, const char* description) {
    command.add_option("--namespace", options.nameSpace, description)->type_name("NAME");
}

void AddOutputOption(CLI::App& command, Options& options) {
    command.add_option("-o,--output", options.output, "Where to write; - is standard output")->type_name("FILE");
}

void AddReportOptions(CLI::App& command, Options& options) {
    AddJSONOption(command, options);
    AddColorOption(command, options);
}

void AddListing(Program& program, CLI::App& group) {
    const auto list = std::make_shared<Options>();
    CLI::App& listCommand =
        AddCommandOver(program, group, "list", "List the parameters of a vocabulary", RunList, list);
    AddNamespaceOption(listCommand, *list, "Namespace to list; all without it");
    AddReportOptions(listCommand, *list);

    const auto exported = std::make_shared<Options>();
    AddOutputOption(
        AddCommandOver(program, group, "export", "Write a vocabulary as a declaration file", RunExport, exported),
        *exported);
}

void AddChecking(Program& program, CLI::App& group) {
    const auto lint = std::make_shared<Options>();
    AddReportOptions(
        AddCommandOver(program, group, "lint", "Tell what is wrong or risky in a vocabulary", RunLint, lint), *lint);

    const auto diff = std::make_shared<Options>();
    CLI::App& command =
        program.AddCommand(group, "diff", "Tell what changed between vocabularies, and whether old texts still read",
                           [diff] { return RunDiff(*diff); });
    command.add_option("older", diff->file, "Declaration file, or a module by its ending .so")
        ->type_name("FILE")
        ->required();
    command.add_option("newer", diff->newer, "The same of the newer vocabulary")->type_name("FILE")->required();
    command.add_flag("--breaking", diff->onlyBreaking, "Exit code 1 only where old texts fail or differ");
    AddReportOptions(command, *diff);
}

void AddMaking(Program& program, CLI::App& group) {
    const auto schema = std::make_shared<Options>();
    CLI::App& schemaCommand = AddCommandOver(
        program, group, "schema", "Write the JSON Schema of the texts that a vocabulary describes", RunSchema, schema);
    AddNamespaceOption(schemaCommand, *schema, "Namespace of the texts");
    schemaCommand.add_flag("--short", schema->shortNames, "Texts under short names");
    schemaCommand.add_flag("--packed", schema->packedLists, "Texts with packed lists");
    AddOutputOption(schemaCommand, *schema);

    const auto generate = std::make_shared<Options>();
    CLI::App& generateCommand =
        AddCommandOver(program, program.App(), "generate", "Make program text of a vocabulary", RunGenerate, generate);
    generateCommand.add_flag("--cpp", generate->cpp, "A C++ header with identifiers and a function that registers all");
    generateCommand
        .add_option("--check", generate->check, "Write nothing; exit code 1 when this file is not what would be made")
        ->type_name("FILE");
    AddOutputOption(generateCommand, *generate);
}

}  // namespace

void AddVocabularyCommands(Program& program) {
    CLI::App* group = program.App().add_subcommand("vocabulary", "Work on vocabularies themselves");
    group->require_subcommand(1);
    group->footer("");
    AddListing(program, *group);
    AddChecking(program, *group);
    AddMaking(program, *group);
}

}  // namespace qvpres
