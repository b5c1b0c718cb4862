// Real columns: tables of weather, flights and penguins and a grid of precipitation.
#include <algorithm>
#include <utility>

#include "BenchHost.h"
#include "DataFiles.h"
#include "Workload.h"

namespace compare {

namespace {

constexpr int kColumnsFirst = 30000;
constexpr int kDoublesFirst = 31000;

const std::string kExampleData = COMPARE_EXAMPLE_DATA "/";
const std::string kBenchData = COMPARE_BENCH_DATA "/";

DataTable ReadWeather() { return DataTable::ReadCsv(kExampleData + "seattle-weather.csv"); }
DataTable ReadFlights() {
    return DataTable::ReadRecords(kBenchData + "flights-2k.json",
                                  {"date", "delay", "distance", "origin", "destination"});
}
DataTable ReadPenguins() {
    return DataTable::ReadRecords(
        kExampleData + "penguins.json",
        {"Species", "Island", "Beak Length (mm)", "Beak Depth (mm)", "Flipper Length (mm)", "Body Mass (g)", "Sex"});
}

// Adds columns to one bag, with identifiers upwards. Tiny workloads take the first rows only.
class ColumnBag {
public:
    ColumnBag(Workload& workload, int firstId, Scale scale) : m_workload(workload), m_id(firstId), m_scale(scale) {}

    template <class T>
    void Add(const wchar_t* name, const wchar_t* shortName, std::vector<T> values) {
        if (m_scale == Scale::Tiny) {
            values.resize(std::min<std::size_t>(values.size(), kTinyRows));
        }
        m_workload.fields.push_back(MakeList<T>(m_id, name, shortName));
        SetParameterValue(*m_bag, m_id, std::move(values));
        ++m_id;
    }

    RefCntPtr<const IParameters> Get() const { return m_bag; }

private:
    static constexpr std::size_t kTinyRows = 200;

    Workload& m_workload;
    int m_id;
    Scale m_scale;
    RefCntPtr<BenchBag> m_bag = MakeRefCnt<BenchBag>();
};

void AddFlights(ColumnBag& bag) {
    const DataTable flights = ReadFlights();
    bag.Add(L"departure", L"de", flights.GetTexts("date"));
    bag.Add(L"arrival-delay", L"ad", flights.GetInts("delay"));
    bag.Add(L"distance", L"di", flights.GetInts("distance"));
    bag.Add(L"origin", L"or", flights.GetTexts("origin"));
    bag.Add(L"destination", L"ds", flights.GetTexts("destination"));
}

void AddPenguins(ColumnBag& bag) {
    const DataTable penguins = ReadPenguins();
    bag.Add(L"species", L"sp", penguins.GetTexts("Species"));
    bag.Add(L"island", L"is", penguins.GetTexts("Island"));
    bag.Add(L"beak-length", L"bl", penguins.GetDoubles("Beak Length (mm)"));
    bag.Add(L"beak-depth", L"bd", penguins.GetDoubles("Beak Depth (mm)"));
    bag.Add(L"flipper-length", L"fl", penguins.GetInts("Flipper Length (mm)"));
    bag.Add(L"body-mass", L"bm", penguins.GetInts("Body Mass (g)"));
    bag.Add(L"sex", L"sx", penguins.GetTexts("Sex"));
}

void AddWeatherReals(ColumnBag& bag, const DataTable& weather) {
    bag.Add(L"precipitation", L"pr", weather.GetDoubles("precipitation"));
    bag.Add(L"temp-max", L"tx", weather.GetDoubles("temp_max"));
    bag.Add(L"temp-min", L"tn", weather.GetDoubles("temp_min"));
    bag.Add(L"wind", L"wi", weather.GetDoubles("wind"));
}

// The mean of each day and the days before it, as a view's moving average has them: numbers with all their digits.
std::vector<double> MakeMovingAverages(const std::vector<double>& values, std::size_t window) {
    std::vector<double> averages;
    double sum = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        sum += values[i] - (i < window ? 0 : values[i - window]);
        averages.push_back(sum / static_cast<double>(std::min(i + 1, window)));
    }
    return averages;
}

std::vector<double> Scaled(const std::vector<int>& values, double divisor) {
    std::vector<double> scaled;
    for (const int value : values) {
        scaled.push_back(value / divisor);
    }
    return scaled;
}

}  // namespace

Workload MakeRealColumns(ParametersRegistry& registry, Scale scale) {
    Workload workload{"W2", "real columns", {}, {}, {}, 0};
    ColumnBag bag(workload, kColumnsFirst, scale);
    const DataTable weather = ReadWeather();
    bag.Add(L"day", L"da", weather.GetTexts("date"));
    AddWeatherReals(bag, weather);
    bag.Add(L"condition", L"co", weather.GetTexts("weather"));
    AddFlights(bag);
    AddPenguins(bag);
    bag.Add(L"annual-precipitation", L"ap", ReadGrid(kBenchData + "annual-precip.json"));
    workload.bags.push_back(bag.Get());
    Complete(workload, registry, kColumnsFirst);
    return workload;
}

// As measured (one fraction digit), as whole numbers, in inches, and as moving averages.
Workload MakeRealDoubles(ParametersRegistry& registry, Scale scale) {
    Workload workload{"W8", "real double columns", {}, {}, {}, 0};
    ColumnBag bag(workload, kDoublesFirst, scale);
    const DataTable weather = ReadWeather();
    AddWeatherReals(bag, weather);
    const DataTable penguins = ReadPenguins();
    bag.Add(L"beak-length", L"bl", penguins.GetDoubles("Beak Length (mm)"));
    bag.Add(L"body-mass", L"bm", penguins.GetDoubles("Body Mass (g)"));
    const std::vector<int> grid = ReadGrid(kBenchData + "annual-precip.json");
    bag.Add(L"grid-meters", L"gm", Scaled(grid, 1000));
    bag.Add(L"grid-inches", L"gi", Scaled(grid, 25.4));
    bag.Add(L"rain-average", L"ra", MakeMovingAverages(weather.GetDoubles("precipitation"), 7));
    bag.Add(L"temp-average", L"ta", MakeMovingAverages(weather.GetDoubles("temp_max"), 30));
    bag.Add(L"wind-average", L"wa", MakeMovingAverages(weather.GetDoubles("wind"), 7));
    workload.bags.push_back(bag.Get());
    Complete(workload, registry, kDoublesFirst);
    return workload;
}

}  // namespace compare
