#include "ColumnTexts.h"

#include <algorithm>

#include "Comparison.h"
#include "PenguinValues.h"
#include "ViewHost.h"
#include "WeatherVocabulary.h"

namespace weather {

namespace {

using Values = std::vector<DataValue>;

RefCntPtr<IParameters> BagOf(int id, const RefCntPtr<IParameter>& value) {
    const RefCntPtr<IParameters> bag = ParametersRegistry::Get().CreateParameters();
    bag->SetParameter(id, value);
    return bag;
}

// In a list, JSON has the bare values: 181 and not i:181.
TString JSONOf(const RefCntPtr<const IParameters>& bag, bool packed, JSONSerializer::OutputType layout) {
    const ViewSession session(false, packed);
    return JSONSerializer(kViewNamespace).ToString(bag, layout);
}

// The lettered texts of a list are the way to store one: they say the type of each value.
RefCntPtr<IParameter> ThroughLetteredTexts(const RefCntPtr<IParameter>& values) {
    ParameterTypeSerializer<DataValue> serializer;
    return serializer.FromStringList(serializer.ToStringList(values), {});
}

ColumnTexts WriteColumn(int id, const Values& values) {
    const auto parameter = MakeRefCnt<ValParameter<Values>>(values);
    const RefCntPtr<IParameters> bag = BagOf(id, parameter);
    const RefCntPtr<IParameters> read = BagOf(id, ThroughLetteredTexts(parameter));

    ColumnTexts texts;
    texts.name = ParametersRegistry::Get().GetName(id, true);
    texts.type = ParameterTypeSerializer<DataType>::TypeToString(values.front().GetDataType());
    texts.nullCount = static_cast<std::size_t>(
        std::count_if(values.begin(), values.end(), [](const DataValue& value) { return value.IsSpecial(); }));
    texts.plainLength = JSONOf(bag, false, JSONSerializer::Compact).size();
    texts.packedLength = JSONOf(bag, true, JSONSerializer::Compact).size();
    texts.differences = Comparison(*bag, *read).GetDifferences();
    return texts;
}

// Bare values do not tell their type, so that reading refuses them.
ListAnswer ReadList(const TString& json) {
    const ViewSession session(false, false);
    try {
        JSONSerializer(kViewNamespace).ToParameters(json);
    } catch (const LogicException& failure) {
        const std::string message = failure.what();
        return {"LogicException \"" + message + "\"", message == "Serialized DataValue is not properly delimited"};
    } catch (const std::exception& failure) {
        return {failure.what(), false};
    }
    return {"was read without complaint", false};
}

}  // namespace

TableTexts WritePenguinTable(const IParameters& bag) {
    const auto& table = GetParameterValue<BagStructureSerializer::Bag>(bag, ViewID::kPenguinTable);
    TableTexts texts;
    for (const int id : PenguinColumnIDs()) {
        const auto& values = GetParameterValue<Values>(*table, id);
        texts.rowCount = values.size();
        texts.columns.push_back(WriteColumn(id, values));
    }
    const auto& flippers = GetParameterValue<Values>(*table, ViewID::kFlipperLength);
    const auto list = BagOf(ViewID::kFlipperLength, MakeRefCnt<ValParameter<Values>>(flippers));
    texts.answer = ReadList(JSONOf(list, false, JSONSerializer::Compact));
    texts.document = JSONOf(table, false, JSONSerializer::Pretty);
    return texts;
}

}  // namespace weather
