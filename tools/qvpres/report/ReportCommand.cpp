#include <filesystem>
#include <iostream>
#include <memory>

#include "tools/qvpres/Commands.h"
#include "tools/qvpres/CommonOptions.h"
#include "tools/qvpres/Input.h"
#include "tools/qvpres/Terminal.h"
#include "tools/qvpres/report/ReportData.h"
#include "tools/qvpres/report/ReportPage.h"
#include "tools/qvpres/text/TextInput.h"

namespace qvpres {

namespace {

struct Options : CommonOptions {
    std::string file;
    std::string output = "-";
    std::string title;
};

std::string Title(const Options& options) {
    if (!options.title.empty()) {
        return options.title;
    }
    return options.file == "-" ? "standard input" : std::filesystem::path(options.file).filename().string();
}

ExitCode RunReport(const Options& options) {
    const LoadedVocabulary vocabulary(options);
    const std::string bytes = ReadInput(options.file);
    Progress progress("parts of the report");
    const auto text = MakeParameterText(TString::FromUtf8(bytes), InputName(options.file), vocabulary,
                                        vocabulary.GetNamespace(), options.names);
    progress.Advance(1);
    CheckOptions check;
    check.strict = true;
    check.names = options.names;
    const CheckResult findings = Check(bytes, vocabulary, vocabulary.GetNamespace(), check);
    progress.Advance(1);
    WriteOutput(options.output, MakeReportPage(MakeReportData(*text, findings, Title(options))));
    return ExitCode::Done;
}

}  // namespace

void AddReportCommand(Program& program) {
    const auto options = std::make_shared<Options>();
    CLI::App& command = program.AddCommand(program.App(), "report", "Make a page to look into a bag with a browser",
                                           [options] { return RunReport(*options); });
    AddFileArgument(command, options->file);
    command.add_option("-o,--output", options->output, "Where to write the page; - is standard output")
        ->type_name("FILE");
    AddTextOptions(command, *options);
    command.add_option("--title", options->title, "Title of the page; else the name of the file")->type_name("TEXT");
}

}  // namespace qvpres
