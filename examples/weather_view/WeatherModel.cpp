#include "WeatherModel.h"

#include "WeatherVocabulary.h"

namespace weather {

namespace {

// Numbers go through the serializer of their type: it packs runs where the session's options ask for it.
template <class T>
void WriteColumn(SerializeStructure& stream, int id, const std::vector<T>& values) {
    MakeRefCnt<ParameterTypeSerializer<T>>()->SerializeVector(stream, id, values);
}

// Texts are written item by item; the scope closes the list.
void WriteColumn(SerializeStructure& stream, int id, const std::vector<TString>& values) {
    const ListStructure list(id, stream, PTC_None);
    for (const TString& value : values) {
        stream.ListItem(value);
    }
}

void WriteMembers(SerializeStructure& stream, const WeatherTable& table) {
    const auto dayCount = static_cast<unsigned int>(table.GetDayCount());
    stream.Parameter(ViewID::kDayCount, ParameterTypeSerializer<unsigned int>::TypeToString(dayCount));
    WriteColumn(stream, ViewID::kDayNumbers, table.dayNumbers);
    WriteColumn(stream, ViewID::kPrecipitation, table.precipitation);
    WriteColumn(stream, ViewID::kTempMax, table.tempMax);
    WriteColumn(stream, ViewID::kTempMin, table.tempMin);
    WriteColumn(stream, ViewID::kWind, table.wind);
    WriteColumn(stream, ViewID::kConditions, table.conditions);
}

// A column of the bag that was read, which must have a value for each day.
template <class T>
std::vector<T> ReadColumn(const IParameters& bag, int id) {
    const auto& column = GetParameterValue<std::vector<T>>(bag, id);
    if (column.size() != GetParameterValue<unsigned int>(bag, ViewID::kDayCount)) {
        throw QuorvelException(u"A column of the weather table has not one value for each day");
    }
    return column;
}

}  // namespace

int WeatherModel::GetDefaultParamID() const { return ViewID::kDailyWeather; }

void WeatherModelSerializer::Serialize(RefCntPtr<const IParameter> value, SerializeStructure& stream, int id,
                                       bool ownComposite) const {
    const auto model = DynamicPtrCast<const WeatherModel>(value->GetPresentationModel());
    if (!model) {
        ThrowTypeMismatchCommandException(id);
    }
    if (ownComposite) {
        const CompositeStructure braces(id, stream);
        WriteMembers(stream, model->GetTable());
    } else {
        WriteMembers(stream, model->GetTable());
    }
}

RefCntPtr<IParameter> WeatherModelSerializer::FromParameters(int /*id*/, RefCntPtr<IParameters> bag) const {
    WeatherTable table;
    table.dayNumbers = ReadColumn<int>(*bag, ViewID::kDayNumbers);
    table.precipitation = ReadColumn<double>(*bag, ViewID::kPrecipitation);
    table.tempMax = ReadColumn<double>(*bag, ViewID::kTempMax);
    table.tempMin = ReadColumn<double>(*bag, ViewID::kTempMin);
    table.wind = ReadColumn<double>(*bag, ViewID::kWind);
    table.conditions = ReadColumn<TString>(*bag, ViewID::kConditions);
    return MakeRefCnt<PresentationModelParameter>(MakeRefCnt<WeatherModel>(std::move(table)));
}

}  // namespace weather
