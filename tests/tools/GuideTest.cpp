// Runs the commands of docs/qvpres.md, and compares what they write with what the guide says.
#include <sstream>

#include "tools/ToolsTestSupport.h"

namespace {

constexpr const char* kFence = "```";
constexpr const char* kMark = "@@ end of a command @@";

// A command of the guide, and what follows it up to the next.
struct Step {
    std::string command;
    std::string output;
    int line = 0;
};

std::string ReadGuide() {
    std::ifstream stream(kProjectFolder + "/docs/qvpres.md");
    return {std::istreambuf_iterator<char>(stream), {}};
}

// The steps of all blocks marked console. A command that ends with a backslash or a pipe goes on in the next line.
std::vector<Step> StepsOf(const std::string& guide) {
    std::vector<Step> steps;
    std::istringstream lines(guide);
    std::string line;
    bool inside = false;
    for (int number = 1; std::getline(lines, line); ++number) {
        if (line.starts_with(kFence)) {
            inside = line == "```console";
        } else if (inside && line.starts_with("$ ")) {
            steps.push_back({line.substr(2), "", number});
        } else if (inside && !steps.empty() && steps.back().output.empty() &&
                   (steps.back().command.ends_with("\\") || steps.back().command.ends_with("|"))) {
            steps.back().command += "\n" + line;
        } else if (inside && !steps.empty()) {
            steps.back().output += line + "\n";
        }
    }
    return steps;
}

// All steps in one shell, so that files and exit codes go from one to the next.
std::string ScriptOf(const std::vector<Step>& steps, const std::string& folder) {
    const std::string programs = std::filesystem::path(QVPRES_PROGRAM).parent_path().string();
    std::string script = "cd " + folder + "\nPATH=" + programs + ":$PATH\nexec 2>&1\n";
    for (const Step& step : steps) {
        script += step.command + "\ncode=$?; echo '" + kMark + "'; (exit $code)\n";
    }
    return script;
}

}  // namespace

TEST(Guide, CommandsWriteWhatTheGuideSays) {
    const std::vector<Step> steps = StepsOf(ReadGuide());
    ASSERT_GT(steps.size(), 10U);
    const TempFolder folder;
    for (const char* file :
         {"examples/qvpres/chart.vocabulary.json", "examples/qvpres/sales.json", "examples/qvpres/broken.json",
          "examples/data/seattle-weather.csv", "examples/data/penguins.json"}) {
        const std::filesystem::path path = std::filesystem::path(kProjectFolder) / file;
        std::filesystem::copy_file(path, folder.Path(path.filename().string()));
    }
    const Outcome outcome = RunProgram("bash", {"-c", ScriptOf(steps, folder.Path(""))});
    std::string rest = outcome.out;
    for (const Step& step : steps) {
        const std::size_t mark = rest.find(kMark);
        ASSERT_NE(mark, std::string::npos) << step.command;
        EXPECT_EQ(rest.substr(0, mark), step.output) << "docs/qvpres.md:" << step.line << ": " << step.command;
        rest.erase(0, mark + std::string(kMark).size() + 1);
    }
}

TEST(Guide, EveryCommandAndEveryCodeOfCheckIsThere) {
    const std::string guide = ReadGuide();
    for (const char* command : {"check", "show", "convert", "diff", "stats", "import", "report"}) {
        EXPECT_NE(guide.find(std::string("\n## ") + command + "\n"), std::string::npos) << command;
    }
    for (const char* code : {"not-json",          "root",          "unknown-name", "kind",          "value",
                             "duplicate",         "null",          "wraps",        "rounded",       "other-kind",
                             "empty-text",        "unknown-value", "mask",         "passed-over",   "run-skipped",
                             "undeclared-member", "never-written", "comment",      "odd-character", "text-after-value",
                             "not-utf8"}) {
        EXPECT_NE(guide.find("| `" + std::string(code) + "` |"), std::string::npos) << code;
    }
}
