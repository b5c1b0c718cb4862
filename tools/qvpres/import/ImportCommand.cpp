#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>

#include "tools/qvpres/Commands.h"
#include "tools/qvpres/CommonOptions.h"
#include "tools/qvpres/Failure.h"
#include "tools/qvpres/Input.h"
#include "tools/qvpres/import/TableBag.h"
#include "tools/qvpres/text/Wording.h"

namespace qvpres {

namespace {

struct Options : CommonOptions {
    std::string file;
    std::string output = "-";
    std::string vocabularyFile;
    std::string format = "auto";
    std::string delimiter;
    bool noHeader = false;
    std::vector<std::string> nulls;
    std::string space = "table";
    std::string layout = "compact";
    std::string arrays = "plain";
    TableBagOptions bag;
};

bool IsJSON(const Options& options, std::string_view bytes) {
    if (options.format != "auto") {
        return options.format == "json";
    }
    const std::string extension = std::filesystem::path(options.file).extension().string();
    if (extension == ".json" || extension == ".csv" || extension == ".tsv") {
        return extension == ".json";
    }
    const std::size_t first = bytes.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos && (bytes[first] == '[' || bytes[first] == '{');
}

Table ReadTable(const Options& options) {
    const std::string bytes = ReadInput(options.file);
    const std::string source = InputName(options.file);
    if (IsJSON(options, bytes)) {
        return ReadJSONTable(bytes, source);
    }
    CSVOptions csv;
    csv.header = !options.noHeader;
    csv.nullTexts = options.nulls;
    if (options.delimiter == "tab" || options.delimiter == "\\t") {
        csv.delimiter = '\t';
    } else if (options.delimiter.size() == 1 && options.delimiter != "\"" && options.delimiter != "\n") {
        csv.delimiter = options.delimiter.front();
    } else if (!options.delimiter.empty()) {
        throw Failure("--delimiter is one character or \"tab\"");
    } else if (std::filesystem::path(options.file).extension() == ".tsv") {
        csv.delimiter = '\t';
    }
    return ReadCSVTable(bytes, csv, source);
}

nlohmann::ordered_json ToJSON(const TableBag& bag, std::size_t rows) {
    nlohmann::ordered_json json = {{"rows", rows}, {"columns", nlohmann::ordered_json::array()}};
    for (const ImportedColumn& column : bag.columns) {
        json["columns"].push_back({{"heading", column.heading},
                                   {"name", column.name},
                                   {"type", column.type},
                                   {"listOf", column.listOf},
                                   {"nulls", column.nulls},
                                   {"loss", column.loss}});
    }
    return json;
}

// What was made of the table; beside the bag, which may be standard output.
void Tell(const TableBag& bag, std::size_t rows) {
    std::cerr << Counted(rows, "row") << ", " << Counted(bag.columns.size(), "column") << "\n";
    for (const ImportedColumn& column : bag.columns) {
        std::cerr << "  " << column.name << ": " << column.type << ", list of " << column.listOf;
        if (column.nulls != 0) {
            std::cerr << ", " << Counted(column.nulls, "null");
        }
        std::cerr << (column.loss.empty() ? "\n" : "; " + column.loss + "\n");
    }
}

ExitCode RunImport(Options& options) {
    if (options.vocabularyFile == options.output) {
        throw Failure("the bag and its vocabulary are two files");
    }
    const Table table = ReadTable(options);
    std::vector<TypedColumn> columns;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        columns.push_back(InferColumn(table.columns[i], table.typed));
    }
    options.bag.nameSpace = TString::FromUtf8(options.space);
    options.bag.tableName =
        options.file == "-" ? "standard input" : std::filesystem::path(options.file).filename().string();
    options.bag.packed = options.arrays == "packed";
    options.bag.pretty = options.layout == "pretty";
    const TableBag bag = MakeTableBag(std::move(columns), options.bag);
    WriteOutput(options.vocabularyFile, bag.vocabulary.ToJson());
    WriteOutput(options.output, bag.json + "\n");
    if (options.json) {
        (options.output == "-" ? std::cerr : std::cout) << ToJSON(bag, table.Rows()).dump(2) << "\n";
    } else {
        Tell(bag, table.Rows());
    }
    const bool lost = std::any_of(bag.columns.begin(), bag.columns.end(),
                                  [](const ImportedColumn& column) { return !column.loss.empty(); });
    return lost ? ExitCode::Found : ExitCode::Done;
}

}  // namespace

void AddImportCommand(Program& program) {
    const auto options = std::make_shared<Options>();
    CLI::App& command = program.AddCommand(program.App(), "import", "Make a bag and its vocabulary from a table",
                                           [options] { return RunImport(*options); });
    options->file = "-";
    command.add_option("table", options->file, "Table in CSV or JSON; - or nothing: standard input")->type_name("FILE");
    command.add_option("-o,--output", options->output, "Where to write the bag; - is standard output")
        ->type_name("FILE");
    command.add_option("-w,--write-vocabulary", options->vocabularyFile, "Where to write the declaration file")
        ->type_name("FILE")
        ->required();
    command.add_option("--format", options->format, "Format of the table; auto: by the file's name, else by its start")
        ->type_name("FORM")
        ->check(CLI::IsMember({"auto", "csv", "json"}))
        ->capture_default_str();
    command
        .add_option("--delimiter", options->delimiter,
                    "Between cells of CSV; else , or ; or tab, as the first line has")
        ->type_name("CHAR");
    command.add_flag("--no-header", options->noHeader, "The first row of CSV has values and no names");
    command.add_option("--null", options->nulls, "A cell of CSV that counts as null, beside the empty one")
        ->type_name("TEXT");
    command.add_option("--namespace", options->space, "Name of the namespace to make")
        ->type_name("NAME")
        ->capture_default_str();
    command.add_option("--first-id", options->bag.firstId, "Its first identifier")
        ->type_name("ID")
        ->capture_default_str();
    command.add_flag("--typed", options->bag.typedColumns, "All columns as lists of typed values");
    command.add_option("--layout", options->layout, "Form of the text")
        ->type_name("FORM")
        ->check(CLI::IsMember({"compact", "pretty"}))
        ->capture_default_str();
    command.add_option("--arrays", options->arrays, "Lists of numbers plain, or packed in runs")
        ->type_name("FORM")
        ->check(CLI::IsMember({"plain", "packed"}))
        ->capture_default_str();
    AddJSONOption(command, *options);
}

}  // namespace qvpres
