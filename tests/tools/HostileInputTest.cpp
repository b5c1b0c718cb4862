// Texts, tables and vocabularies that nobody wrote in good faith: every command ends with a code of its own.
#include <random>

#include "tools/ToolsTestSupport.h"

namespace {

std::string Nested(int levels, const std::string& open, const std::string& close) {
    std::string text;
    for (int i = 0; i < levels; ++i) {
        text += open;
    }
    for (int i = 0; i < levels; ++i) {
        text += close;
    }
    return text;
}

std::vector<std::string> HostileTexts() {
    std::mt19937 random(1);
    std::string noise;
    for (int i = 0; i < 20000; ++i) {
        noise.push_back(static_cast<char>(random()));
    }
    std::string manyUnknown = "{";
    for (int i = 0; i < 2000; ++i) {
        manyUnknown += "\"nobody" + std::to_string(i) + "\": 1, ";
    }
    manyUnknown += "\"title\": \"\"}";
    return {
        "",
        std::string(1, '\0'),
        noise,
        std::string("\xFF\xFE{\0}\0", 6),
        std::string(200000, '['),
        std::string(200000, '{'),
        Nested(100000, "{\"style\":", "}"),
        "{" + Nested(510, "\"style\":{", "}") + "}",
        "{\"nobody\":" + Nested(500, "[", "]") + "}",
        R"({"days": [[1, 4294967295, 1], [1, 4294967295, 1], []]})",
        R"({"days": [[1, 99999999999999999999999999], [1, -5], [1, 1e400]]})",
        R"({"days": [9223372036854775807, [9223372036854775807, 4, 9223372036854775807]]})",
        R"({"markSizes": [1e308, [-1e308, 4, 1e308], [1e308, 4, 1e308]]})",
        R"({"totalCents": )" + std::string(100000, '9') + "}",
        R"({"title": ")" + std::string(500000, 'x') + "\"}",
        R"({"title": "\ud800", "colors": {"\udc00": "\u0000"}})",
        R"({"": {"": {"": 1}}, "/": 1, "//": {}})",
        manyUnknown,
        R"({"marks": [[], [[]], null, 1, "x", {"marks": [{"marks": 7}]}]})",
        R"({"readings": ["i:", "t:[[[[", "r:::", ":", "s", ["i:1", "99999999999", "x"]]})",
    };
}

}  // namespace

TEST(HostileInput, EveryCommandEndsWithACodeOfItsOwn) {
    for (const std::string& text : HostileTexts()) {
        const std::string start = text.substr(0, 60);
        for (const char* command : {"check", "show", "stats", "convert", "report"}) {
            const Outcome outcome = RunOnChart(command, {}, text);
            EXPECT_GE(outcome.code, 0) << command << " was ended by a signal: " << start;
            EXPECT_LE(outcome.code, 2) << command << ": " << start;
            EXPECT_TRUE(outcome.code == 0 || !(outcome.err + outcome.out).empty()) << command << ": " << start;
        }
        const Outcome strict = RunOnChart("check", {"--strict", "--json"}, text);
        EXPECT_GE(strict.code, 0) << start;
        EXPECT_LE(strict.code, 1) << start;
    }
}

TEST(HostileInput, DifferencesOfHostileTexts) {
    const TempFolder folder;
    const std::string none = folder.Write("none.json", "{}");
    for (const std::string& text : HostileTexts()) {
        const Outcome outcome = RunOnChart("diff", {none, "-"}, text);
        EXPECT_GE(outcome.code, 0) << text.substr(0, 60);
        EXPECT_LE(outcome.code, 2) << text.substr(0, 60);
    }
}

TEST(HostileInput, TablesAndVocabularies) {
    const TempFolder folder;
    for (const std::string& text : HostileTexts()) {
        const Outcome table = RunQvpres({"import", "-w", folder.Path("v.json"), "-o", folder.Path("b.json")}, text);
        EXPECT_GE(table.code, 0) << text.substr(0, 60);
        EXPECT_LE(table.code, 2) << text.substr(0, 60);
        const std::string file = folder.Write("vocabulary.json", text);
        EXPECT_EQ(RunQvpres({"check", "--vocabulary", file}, "{}").code, 2) << text.substr(0, 60);
    }
}

TEST(HostileInput, ListsOfBillionsTakeNoMemory) {
    const TempFolder folder;
    const std::string left = folder.Write("left.json", R"({"days": [[0, 4000000000, 1], []]})");
    const std::string right = folder.Write("right.json", R"({"days": [[0, 4000000000, 2], []]})");
    EXPECT_EQ(RunOnChart("diff", {left, right}).out,
              "~ /days/1..3999999999: 1 → 2 and so on, 3,999,999,999 elements, up to 3999999999 apart\n1 difference\n");
    EXPECT_EQ(RunOnChart("show", {left}).out,
              "chart  1 parameter\n"
              "└─ 1011 days (da)  list of int  [[0, 4000000000, 1], []]\n");
    EXPECT_EQ(RunOnChart("check", {left}).code, 1) << "reading it would take more than it may";
}
