// qvpres as it is run: exit codes, streams, files and what they say.
#include <nlohmann/json.hpp>

#include "tools/ToolsTestSupport.h"

using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

const std::string kSales = kProjectFolder + "/examples/qvpres/sales.json";
const std::string kBroken = kProjectFolder + "/examples/qvpres/broken.json";

}  // namespace

// ---- Usage

TEST(Program, HelpAndVersionAreNoFailures) {
    const Outcome version = RunQvpres({"--version"});
    EXPECT_EQ(version.code, 0);
    EXPECT_THAT(version.out, testing::MatchesRegex("qvpres [0-9]+\\.[0-9]+\\.[0-9]+\n"));
    const Outcome help = RunQvpres({"--help"});
    EXPECT_EQ(help.code, 0);
    for (const char* command :
         {"check", "show", "convert", "diff", "stats", "import", "report", "vocabulary", "completion"}) {
        EXPECT_THAT(help.out, HasSubstr(std::string("\n  ") + command + " "));
    }
    EXPECT_EQ(RunQvpres({"check", "--help"}).code, 0);
}

TEST(Program, WrongUsageIsTwo) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{},
                                               {"nothing"},
                                               {"check", "--nothing"},
                                               {"show", "--names", "long"},
                                               {"diff", "a"},
                                               {"import", "x.csv"},
                                               {"convert", "--jobs", "0"},
                                               {"diff", "--tolerance", "-1", "a", "b"}}) {
        const Outcome outcome = RunQvpres(arguments);
        EXPECT_EQ(outcome.code, 2);
        EXPECT_EQ(outcome.out, "");
        EXPECT_NE(outcome.err, "");
    }
}

TEST(Program, AVocabularyIsNeeded) {
    const Outcome none = RunQvpres({"check", kSales});
    EXPECT_EQ(none.code, 2);
    EXPECT_EQ(
        none.err,
        "qvpres: no vocabulary: name a declaration file (--vocabulary FILE) or a host's module (--module LIB.so)\n");
    EXPECT_EQ(RunQvpres({"check", "--vocabulary", "/nowhere.json", kSales}).code, 2);
    EXPECT_EQ(RunQvpres({"check", "--vocabulary", kChartFile, "--module", TEST_MODULE, kSales}).code, 2);
    EXPECT_EQ(RunOnChart("check", {"--namespace", "nobody", kSales}).err,
              "qvpres: the vocabulary has no namespace nobody\n");
}

TEST(Program, SeveralNamespacesAreTold) {
    const TempFolder folder;
    const std::string vocabulary = folder.Write("v.json", R"({"namespaces": [
        {"name": "a", "firstId": 1, "lastId": 9, "fallback": "c", "parameters": [{"id": 1, "name": "x", "type": "int"}]},
        {"name": "b", "firstId": 11, "lastId": 19, "parameters": [{"id": 11, "name": "y", "type": "int"}]},
        {"name": "c", "firstId": 21, "lastId": 29, "parameters": [{"id": 21, "name": "z", "type": "int"}]}]})");
    EXPECT_EQ(RunQvpres({"check", "--vocabulary", vocabulary}, "{}").err,
              "qvpres: the vocabulary has several namespaces, name one with --namespace: a, b\n");
    EXPECT_EQ(RunQvpres({"check", "--vocabulary", vocabulary, "--namespace", "a"}, R"({"x": 1, "z": 2})").code, 0);
    EXPECT_EQ(RunQvpres({"check", "--vocabulary", vocabulary, "--namespace", "b"}, R"({"x": 1})").code, 1);
}

TEST(Program, InputThatCannotBeTakenIsTwo) {
    for (const char* command : {"show", "convert", "stats", "report"}) {
        EXPECT_EQ(RunOnChart(command, {"no/where.json"}).code, 2) << command;
        EXPECT_EQ(RunOnChart(command, {"no/where.json"}).err, "qvpres: no/where.json: No such file or directory\n");
        EXPECT_EQ(RunOnChart(command, {"/tmp"}).err, "qvpres: /tmp: is a folder\n");
        EXPECT_EQ(RunOnChart(command, {}, "").code, 2) << command;
        EXPECT_EQ(RunOnChart(command, {}, "[1]").code, 2) << command;
    }
    EXPECT_EQ(RunOnChart("show", {}, "{\n  \"title\": }").err,
              "qvpres: standard input:2:12: not valid JSON: \"}\" cannot stand here\n");
    EXPECT_EQ(RunOnChart("diff", {kSales, "/nowhere.json"}).code, 2);
    EXPECT_EQ(RunOnChart("diff", {"-", "-"}).code, 2);
}

TEST(Program, OutputThatCannotBeWrittenIsTwo) {
    if (access("/dev/full", W_OK) != 0) {
        GTEST_SKIP() << "no /dev/full";
    }
    EXPECT_EQ(RunOnChart("convert", {kSales, "-o", "/dev/full"}).code, 2);
    EXPECT_EQ(RunOnChart("convert", {kSales, "-o", "/nowhere/x"}).code, 2);
    const std::string line =
        std::string(QVPRES_PROGRAM) + " show --vocabulary " + kChartFile + " " + kSales + " > /dev/full";
    EXPECT_EQ(RunProgram("sh", {"-c", line}).code, 2);
}

// ---- check

TEST(Program, CheckTellsEverythingOnce) {
    const Outcome good = RunOnChart("check", {kSales});
    EXPECT_EQ(good.code, 0);
    EXPECT_EQ(good.out, kSales + ": reads without errors\n");
    const Outcome bad = RunOnChart("check", {kBroken});
    EXPECT_EQ(bad.code, 1);
    EXPECT_THAT(bad.out, StartsWith(kBroken + ":2:3: error: /titel: unknown name \"titel\"\n"
                                              "    2 |   \"titel\": \"Sales\",\n"
                                              "      |   ^\n"
                                              "        did you mean \"title\"?\n"));
    EXPECT_THAT(bad.out, HasSubstr(":4:25: error: /style/fontSize: expected number (int), found array\n"));
    EXPECT_THAT(bad.out, testing::EndsWith(kBroken + ": 4 errors\n"));
    EXPECT_EQ(RunOnChart("check", {"--quiet", kSales}).out, "");
    EXPECT_EQ(RunOnChart("check", {kSales, kBroken}).code, 1);
    EXPECT_EQ(RunOnChart("check", {kSales, "/nowhere.json"}).code, 2);
}

TEST(Program, CheckForMachines) {
    const Outcome outcome = RunOnChart("check", {"--json", "--strict", kBroken, kSales});
    EXPECT_EQ(outcome.code, 1);
    const json texts = json::parse(outcome.out);
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_EQ(texts[0].at("file"), kBroken);
    EXPECT_EQ(texts[0].at("errors"), 4);
    EXPECT_EQ(texts[0].at("leniencies"), 2);
    EXPECT_EQ(texts[1].at("findings"), json::array());
    const json& first = texts[0].at("findings")[0];
    EXPECT_EQ(first, json::parse(R"({"severity": "error", "code": "unknown-name", "line": 2, "column": 3, "offset": 4,
        "path": "/titel", "message": "unknown name \"titel\"", "nearest": ["title"]})"));
    EXPECT_EQ(texts[0].at("findings")[2].at("expected"), "number (int)");
    EXPECT_EQ(texts[0].at("findings")[2].at("found"), "array");
}

TEST(Program, CheckLineByLine) {
    const std::string lines = "{\"title\": \"a\"}\n\n{\"titel\": 1}\n{\"ti\": \"b\"}\n{";
    const Outcome outcome = RunOnChart("check", {"--ndjson"}, lines);
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.out, HasSubstr("standard input:3:2: error: /titel: unknown name \"titel\"\n    3 | "));
    EXPECT_THAT(outcome.out, HasSubstr("standard input:5:2: error: the text is not valid JSON: it ends too early\n"));
    EXPECT_EQ(json::parse(RunOnChart("check", {"--ndjson", "--json"}, lines).out).size(), 2U);
    EXPECT_EQ(RunOnChart("check", {"--ndjson"}, "{}\n{}\n").out, "standard input: reads without errors\n");
}

TEST(Program, LenienciesAreFoundWhenAskedFor) {
    EXPECT_EQ(RunOnChart("check", {}, R"({"title": null})").code, 0);
    EXPECT_EQ(RunOnChart("check", {"--strict"}, R"({"title": null})").code, 1);
}

// ---- show, stats, diff, report

TEST(Program, ShowTakesAFileAndAPath) {
    const std::string style = "/style  bag  3 parameters\n";
    EXPECT_THAT(RunOnChart("show", {kSales, "/style"}).out, StartsWith(style));
    const std::string text = R"({"style": {"fontSize": 1}})";
    EXPECT_EQ(RunOnChart("show", {"-", "/style/fs"}, text).out, "/style/fontSize  int  1\n");
    EXPECT_EQ(RunOnChart("show", {"/style/fs"}, text).out, "/style/fontSize  int  1\n") << "no file of that name";
    EXPECT_EQ(RunOnChart("show", {"-", "/nobody"}, text).err, "qvpres: nothing stands at /nobody\n");
    EXPECT_EQ(json::parse(RunOnChart("show", {"--json", kSales}).out).at("children").size(), 8U);
}

TEST(Program, ColoursAreForTerminalsUnlessAskedFor) {
    EXPECT_EQ(RunOnChart("show", {kSales}).out.find('\x1b'), std::string::npos);
    EXPECT_NE(RunOnChart("show", {"--color", "always", kSales}).out.find("\x1b["), std::string::npos);
}

TEST(Program, DiffIsOneWhenThereAreDifferences) {
    const TempFolder folder;
    const std::string left =
        folder.Write("left.json", R"({"title": "a", "days": [[0, 1000, 1], []], "style": {"fontSize": 10}})");
    const std::string right =
        folder.Write("right.json", R"({"da": [[0, 500, 1], [501, 500, 1], []], "ti": "a", "sy": {"fs": 10.0}})");
    const Outcome outcome = RunOnChart("diff", {left, right});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.out, "~ /days/500..999: 500 → 501 and so on, 500 elements, up to 1 apart\n1 difference\n");
    EXPECT_EQ(RunOnChart("diff", {left, right, "--tolerance", "1"}).code, 0);
    EXPECT_EQ(RunOnChart("diff", {left, right, "--tolerance", "1"}).out, "no differences\n");
    EXPECT_EQ(RunOnChart("diff", {left, left, "-q"}).out, "");
    EXPECT_EQ(json::parse(RunOnChart("diff", {left, right, "--json"}).out),
              json::parse(R"({"differences": [{"sort": "elements",
        "path": "/days", "left": "500", "right": "501", "first": 500, "count": 500, "largest": 1.0}], "cut": false})"));
    EXPECT_EQ(RunOnChart("diff", {"-", left}, "{}").code, 1);
}

TEST(Program, StatsForPeopleAndMachines) {
    EXPECT_THAT(RunOnChart("stats", {kSales}).out, StartsWith("462 characters, "));
    EXPECT_EQ(json::parse(RunOnChart("stats", {"--json", kSales}).out).at("characters"), 462);
    EXPECT_THAT(RunOnChart("stats", {"--top", "1", kSales}).out, HasSubstr("more; --top shows them"));
}

TEST(Program, ReportIsOnePage) {
    const TempFolder folder;
    EXPECT_EQ(RunOnChart("report", {kBroken, "-o", folder.Path("r.html")}).code, 0);
    EXPECT_THAT(folder.Read("r.html"), StartsWith("<!DOCTYPE html>"));
    EXPECT_EQ(RunOnChart("report", {kBroken}).out, folder.Read("r.html"));
}

// ---- convert

TEST(Program, ConvertRefusesToLoseAnything) {
    const std::string text = R"({"totalCents": 5000000000})";
    const Outcome refused = RunOnChart("convert", {}, text);
    EXPECT_EQ(refused.code, 1);
    EXPECT_EQ(refused.out, "");
    EXPECT_EQ(refused.err,
              "qvpres: standard input: the new text would say something else (--lossy writes it all the same):\n"
              "  ~ /totalCents: 5000000000 → 705032704\n");
    EXPECT_EQ(RunOnChart("convert", {"--lossy", "--layout", "compact"}, text).out, "{\"totalCents\": 705032704}\n");
}

TEST(Program, ConvertWritesFilesAndForms) {
    const TempFolder folder;
    EXPECT_EQ(
        RunOnChart("convert", {kSales, "-o", folder.Path("out.json"), "--layout", "compact", "--arrays", "packed"})
            .code,
        0);
    EXPECT_THAT(folder.Read("out.json"), HasSubstr(R"("days":[[0,14,1],20,[27,4],28,[]])"));
    EXPECT_EQ(RunOnChart("diff", {kSales, folder.Path("out.json")}).code, 0);
    EXPECT_EQ(RunOnChart("convert", {"--write-names", "short", "--layout", "unquoted"}, R"({"title": "a"})").out,
              "{ti: \"a\"}\n");
    EXPECT_EQ(RunOnChart("convert", {}, R"({"nobody": 1})").code, 2);
    EXPECT_EQ(RunOnChart("convert", {"--jobs", "2"}, "{}").code, 2) << "one text has no lines to share";
    EXPECT_EQ(RunOnChart("convert", {"--ndjson", "--layout", "pretty"}, "{}").code, 2);
}

namespace {

// Lines with texts of growing length, and what they become in short names.
std::pair<std::string, std::string> ManyLines(int count) {
    std::string lines;
    std::string expected;
    for (int i = 0; i < count; ++i) {
        std::string list;
        for (int j = 0; j < i % 30; ++j) {
            list += (j == 0 ? "" : ",") + std::to_string(j * i % 97);
        }
        lines += R"({"days": [)" + list + R"(], "title": "line )" + std::to_string(i) + "\"}\n";
        expected += R"({"ti": "line )" + std::to_string(i) + R"(","da":[)" + list + "]}\n";
    }
    return {lines, expected};
}

}  // namespace

TEST(Program, LinesAreConvertedInOrderByAnyNumberOfThreads) {
    const auto [lines, expected] = ManyLines(3000);
    for (const char* jobs : {"1", "3"}) {
        const Outcome outcome = RunOnChart("convert", {"--ndjson", "--write-names", "short", "--jobs", jobs}, lines);
        EXPECT_EQ(outcome.code, 0) << outcome.err;
        EXPECT_TRUE(outcome.out == expected) << jobs;
    }
}

TEST(Program, GNUParallelKeepsLinesInOrder) {
    if (RunProgram("sh", {"-c", "command -v parallel"}).code != 0) {
        GTEST_SKIP() << "parallel is not installed";
    }
    const auto [lines, expected] = ManyLines(3000);
    const TempFolder folder;
    const std::string command = "parallel --will-cite --pipe --keep-order --block 20k --jobs 2 " QVPRES_PROGRAM
                                " convert --vocabulary " +
                                kChartFile + " --ndjson --write-names short < " + folder.Write("in.ndjson", lines);
    const Outcome outcome = RunProgram("bash", {"-c", command});
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_TRUE(outcome.out == expected);
}

TEST(Program, ALineThatFailsEndsTheRunOrIsLeftOut) {
    const std::string lines = "{\"title\": \"a\"}\n{\"nobody\": 1}\n{\"title\": \"b\"}\n{\"totalCents\": 5000000000}\n";
    const Outcome stopped = RunOnChart("convert", {"--ndjson"}, lines);
    EXPECT_EQ(stopped.code, 2);
    EXPECT_EQ(stopped.out, "{\"title\": \"a\"}\n");
    EXPECT_EQ(stopped.err, "qvpres: standard input:2:2: /nobody: unknown name \"nobody\"\n");
    const Outcome on = RunOnChart("convert", {"--ndjson", "--keep-going"}, lines);
    EXPECT_EQ(on.code, 2);
    EXPECT_EQ(on.out, "{\"title\": \"a\"}\n{\"title\": \"b\"}\n");
    EXPECT_THAT(on.err, HasSubstr("standard input:4: the new text would say something else"));
    EXPECT_EQ(RunOnChart("convert", {"--ndjson"}, "{\"totalCents\": 5000000000}\n").code, 1);
}

// ---- import, on real tables

namespace {

// The bag and the vocabulary of a table, and how many findings check --strict has.
struct Imported {
    Outcome outcome;
    json bag;
    json vocabulary;
    int check = -1;
};

Imported Import(const std::string& table, std::vector<std::string> rest = {}) {
    const TempFolder folder;
    rest.insert(rest.begin(), {"import", table, "-o", folder.Path("bag.json"), "-w", folder.Path("vocabulary.json")});
    Imported result;
    result.outcome = RunQvpres(rest);
    if (result.outcome.code == 0) {
        result.bag = json::parse(folder.Read("bag.json"));
        result.vocabulary = json::parse(folder.Read("vocabulary.json"));
        result.check =
            RunQvpres({"check", "--strict", "--vocabulary", folder.Path("vocabulary.json"), folder.Path("bag.json")})
                .code;
    }
    return result;
}

std::string TypeOf(const Imported& imported, const std::string& name) {
    for (const json& parameter : imported.vocabulary.at("namespaces")[0].at("parameters")) {
        if (parameter.at("name") == name) {
            return parameter.at("type");
        }
    }
    return "none";
}

}  // namespace

TEST(Program, ImportOfTheWeatherOfSeattle) {
    const Imported weather = Import(kProjectFolder + "/examples/data/seattle-weather.csv");
    ASSERT_EQ(weather.outcome.code, 0) << weather.outcome.err;
    EXPECT_EQ(weather.check, 0);
    EXPECT_EQ(weather.bag.at("rowCount"), 1461);
    EXPECT_EQ(TypeOf(weather, "date"), "data-value");
    EXPECT_EQ(TypeOf(weather, "temp-max"), "double");
    EXPECT_EQ(TypeOf(weather, "weather"), "text");
    // The first and the last line of the file.
    EXPECT_EQ(weather.bag.at("date").front(), "d:2012-01-01");
    EXPECT_EQ(weather.bag.at("tempMax").front(), 12.8);
    EXPECT_EQ(weather.bag.at("weather").front(), "drizzle");
    EXPECT_EQ(weather.bag.at("date").back(), "d:2015-12-31");
    EXPECT_EQ(weather.bag.at("wind").back(), 3.5);
    EXPECT_EQ(weather.bag.at("weather").back(), "sun");
    EXPECT_THAT(weather.outcome.err, HasSubstr("1,461 rows, 6 columns\n  date: date, list of data-value\n"));
}

TEST(Program, ImportOfPenguinsWithNulls) {
    const Imported penguins =
        Import(kProjectFolder + "/examples/data/penguins.json", {"--namespace", "penguin", "--json"});
    ASSERT_EQ(penguins.outcome.code, 0) << penguins.outcome.err;
    EXPECT_EQ(penguins.check, 0);
    EXPECT_EQ(penguins.bag.at("rowCount"), 344);
    const json told = json::parse(penguins.outcome.out);
    EXPECT_EQ(told.at("rows"), 344);
    EXPECT_EQ(told.at("columns")[0],
              json::parse(R"({"heading": "Species", "name": "species", "type": "text", "listOf": "text",
        "nulls": 0, "loss": ""})"));
    EXPECT_EQ(told.at("columns")[5].at("heading"), "Body Mass (g)");
    EXPECT_EQ(told.at("columns")[5].at("type"), "integer");
    EXPECT_EQ(told.at("columns")[5].at("nulls"), 2);
    EXPECT_EQ(penguins.bag.at("bodyMassG").at(0), "i:3750");
    EXPECT_EQ(penguins.bag.at("bodyMassG").at(3), "i:null");
}

TEST(Program, ImportOfFlightsWithPointsInTime) {
    const Imported flights = Import(kProjectFolder + "/bench/data/flights-2k.json", {"--arrays", "packed"});
    ASSERT_EQ(flights.outcome.code, 0) << flights.outcome.err;
    EXPECT_EQ(flights.check, 0);
    EXPECT_EQ(flights.bag.at("rowCount"), 2000);
    EXPECT_EQ(flights.bag.at("date").front(), "c:2001-01-01 06:55:00");
    EXPECT_EQ(flights.bag.at("delay").front(), -19);
    EXPECT_EQ(TypeOf(flights, "distance"), "int");
}

TEST(Program, ImportTakesPipesAndFormats) {
    const TempFolder folder;
    const std::string vocabulary = folder.Path("v.json");
    EXPECT_EQ(
        RunQvpres({"import", "-w", vocabulary, "--format", "csv", "--delimiter", ";", "--null", "-"}, "a;b\n1;-\n").out,
        "{\"tableName\": \"standard input\",\"rowCount\": "
        "1,\"columnNames\":[\"a\",\"b\"],\"a\":[1],\"b\":[\"s:unknown:%null%\"]}\n");
    EXPECT_EQ(RunQvpres({"import", "-w", vocabulary}, R"([{"a": 1}])").code, 0) << "JSON by its start";
    EXPECT_EQ(RunQvpres({"import", "-w", vocabulary, "--delimiter", "xy"}, "a\n").code, 2);
    EXPECT_EQ(RunQvpres({"import", "-w", vocabulary}, "a,b\n1\n").code, 2);
    EXPECT_EQ(RunQvpres({"import", "-w", vocabulary, "--first-id", "2147483640"}, "a\n1\n").code, 2);
}

// ---- Modules

TEST(Program, AModuleRegistersItsParameters) {
    const std::string text = R"({"price": "1250c", "stock": [1, 2, 3, 4], "title": "x"})";
    const auto run = [&](std::vector<std::string> arguments, const std::string& input) {
        arguments.insert(arguments.begin() + 1, {"--module", TEST_MODULE});
        return RunQvpres(arguments, input);
    };
    EXPECT_EQ(run({"check"}, text).code, 0);
    EXPECT_EQ(run({"convert", "--layout", "compact", "--write-names", "short", "--arrays", "packed"}, text).out,
              "{\"pr\": \"1250c\",\"st\":[[1,4,1],[]],\"ti\": \"x\"}\n");
    EXPECT_THAT(run({"check"}, R"({"price": "1250"})").out, HasSubstr("error: /price: \"1250\" is no text"));
    EXPECT_THAT(run({"check"}, R"({"prices": "1c"})").out, HasSubstr("did you mean \"price\"?"));
}

TEST(Program, ModulesThatAreNone) {
    const TempFolder folder;
    EXPECT_THAT(RunQvpres({"check", "--module", EMPTY_MODULE}, "{}").err,
                testing::EndsWith(" exports no function QvpresRegisterParameters\n"));
    EXPECT_EQ(RunQvpres({"check", "--module", "/nowhere.so"}, "{}").code, 2);
    EXPECT_EQ(RunQvpres({"check", "--module", folder.Write("x.so", "no library")}, "{}").code, 2);
}
