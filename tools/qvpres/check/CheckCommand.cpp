#include <algorithm>
#include <iostream>
#include <memory>
#include <string_view>
#include <vector>

#include "tools/qvpres/Commands.h"
#include "tools/qvpres/CommonOptions.h"
#include "tools/qvpres/Input.h"
#include "tools/qvpres/Terminal.h"
#include "tools/qvpres/check/CheckRendering.h"

namespace qvpres {

namespace {

struct Options : CommonOptions {
    std::vector<std::string> files;
    CheckOptions check;
    bool lines = false;  // each line is a text
    bool quiet = false;
};

// Checks texts and tells of them as it goes; --json gathers them first.
class CheckRun {
public:
    explicit CheckRun(const Options& options)
        : m_options(options),
          m_loaded(options),
          m_namespace(m_loaded.GetNamespace()),
          m_style(options.color, Stream::Out) {}

    ExitCode Run() {
        for (const std::string& file : m_options.files) {
            const std::string bytes = ReadInput(file);
            if (m_options.lines) {
                CheckLines(InputName(file), bytes);
            } else {
                CheckText(InputName(file), bytes, 0);
            }
        }
        if (m_options.json) {
            std::cout << m_json.dump(2) << "\n";
        }
        return m_found ? ExitCode::Found : ExitCode::Done;
    }

private:
    void CheckLines(const std::string& file, std::string_view bytes) {
        Progress progress("lines checked");
        std::size_t line = 0;
        while (!bytes.empty()) {
            const std::string_view text = bytes.substr(0, bytes.find('\n'));
            bytes.remove_prefix(std::min(text.size() + 1, bytes.size()));
            if (text.find_first_not_of(" \t\r") != std::string_view::npos) {
                CheckText(file, text, line);
            }
            ++line;
            progress.Advance(1);
        }
        if (!m_found && !m_options.json && !m_options.quiet) {
            WriteSummary(std::cout, file, {});
        }
    }

    void CheckText(const std::string& file, std::string_view text, std::size_t firstLine) {
        const CheckResult result = Check(text, m_loaded, m_namespace, m_options.check);
        m_found = m_found || !result.findings.empty();
        if (m_options.json) {
            if (!m_options.lines || !result.findings.empty()) {
                m_json.push_back(ToJSON(file, firstLine, result));
            }
            return;
        }
        WriteFindings(std::cout, file, firstLine, result, m_style);
        if (!m_options.quiet && !m_options.lines) {
            WriteSummary(std::cout, file, result);
        }
    }

    const Options& m_options;
    LoadedVocabulary m_loaded;
    TString m_namespace;
    Style m_style;
    nlohmann::ordered_json m_json = nlohmann::ordered_json::array();
    bool m_found = false;
};

ExitCode RunCheck(Options& options) {
    options.check.names = options.names;
    if (options.files.empty()) {
        options.files.emplace_back("-");
    }
    return CheckRun(options).Run();
}

}  // namespace

void AddCheckCommand(Program& program) {
    const auto options = std::make_shared<Options>();
    CLI::App& command = program.AddCommand(program.App(), "check", "Find what is wrong with texts, each with its place",
                                           [options] { return RunCheck(*options); });
    command.add_option("file", options->files, "JSON texts; - or nothing: standard input")->type_name("FILE");
    AddTextOptions(command, *options);
    command.add_flag("--strict", options->check.strict, "Tell also what reading passes over or changes");
    command.add_option("--max-findings", options->check.maxFindings, "Findings of one text that are told")
        ->type_name("N")
        ->capture_default_str();
    command.add_flag("--ndjson", options->lines, "Each line is a text of its own");
    command.add_flag("-q,--quiet", options->quiet, "No summary");
    AddJSONOption(command, *options);
    AddColorOption(command, *options);
}

}  // namespace qvpres
