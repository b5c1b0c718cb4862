// A host program: shows a table of daily weather, from start-up to JSON text and back.
//
//     weather_view [table.csv [output folder]]
//
// penguins.json, a table with nulls in it, stands beside the table.
//
// In reading order: ViewHost.h (what a host brings along), weather.vocabulary.json (its parameters) and
// WeatherVocabulary.h (what "qvpres generate --cpp" makes of them), WeatherModel (typed columns as a presentation
// model), ViewParameters (filling a bag), RoundTrip (writing and reading), PenguinFile (reading a text of somebody
// else, with parameters that are declared by hand), PenguinValues and ColumnTexts (typed values), BadTexts (what wrong
// texts answer). WeatherTable, WeatherSummary, Comparison and Report are the program's own business.
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>

#include "ColumnTexts.h"
#include "PenguinFile.h"
#include "PenguinValues.h"
#include "Report.h"
#include "ViewHost.h"
#include "ViewParameters.h"
#include "WeatherVocabulary.h"

namespace {

using namespace weather;

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot open " + path.string());
    }
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// JSON files are UTF-8, whatever a text is made of in memory.
void WriteFile(const std::filesystem::path& path, const TString& text) {
    std::ofstream file(path, std::ios::binary);
    file << text.ToUtf8() << '\n';
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

int Run(const std::filesystem::path& tablePath, const std::filesystem::path& outputFolder) {
    // Start-up: a published registry, then the namespaces.
    ViewRegistry registry;
    RegisterVocabulary(registry);
    RegisterPenguinVocabulary(registry);

    // The data: typed columns in a model, and a bag around it.
    const std::string csv = ReadFile(tablePath);
    std::istringstream csvStream(csv);
    const auto model = MakeRefCnt<WeatherModel>(ReadWeatherTable(csvStream));
    const WeatherSummary summary = Summarize(model->GetTable());
    const RefCntPtr<IParameters> bag = MakeViewParameters(model, summary, csv.size());
    AddPenguinValues(*bag, ReadPenguins(TString::FromUtf8(ReadFile(tablePath.parent_path() / "penguins.json"))));

    // The work: every form of the text, there and back.
    std::vector<RoundTrip> trips;
    for (const TextForm& form : AllTextForms()) {
        trips.push_back(WriteAndReadBag(bag, form));
    }
    const TString& prettyText = trips.front().text;

    const TableTexts penguins = WritePenguinTable(*bag);
    const std::filesystem::path viewFile = outputFolder / "weather_view.json";
    const std::filesystem::path penguinFile = outputFolder / "penguin_table.json";
    WriteFile(viewFile, prettyText);
    WriteFile(penguinFile, penguins.document);

    const Findings findings{
        model->GetTable(),      summary, trips, WriteAndReadModel(model, {}), penguins, ReadBadTexts(prettyText),
        {viewFile, penguinFile}};
    PrintReport(std::cout, findings);
    return AllAsExpected(findings) ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return Run(argc > 1 ? argv[1] : "examples/data/seattle-weather.csv", argc > 2 ? argv[2] : ".");
    } catch (const std::exception& failure) {
        std::cerr << "weather_view: " << failure.what() << "\n";
        return 2;
    }
}
