// Packing lists of typed values: integer columns as runs of a fixed step, real columns as runs of equal values, all
// others plain. Elements are written bare, since the list tells their type; records are read with lettered first
// values.
#include <qvpreslayer/DataSerializerHelpers.h>

#include <qvpreslayer/CoreNamespace.h>
#include <qvpreslayer/DataValueSerializer.h>

#include "main/structure/RunExpansion.h"
#include "main/structure/RunEvents.h"

namespace {

// The type that all values have, nulls included; unknown when they differ or there are none.
DataType ColumnType(const std::vector<DataValue>& values) {
    if (values.empty()) {
        return DataType::Unknown;
    }
    const DataType type = values.front().GetDataType();
    for (const DataValue& value : values) {
        if (value.GetDataType() != type) {
            return DataType::Unknown;
        }
    }
    return type;
}

ParameterTypeCategory PlainCategory(DataType type) {
    switch (type) {
        case DataType::Integer:
        case DataType::Real:
            return PTC_Number;
        case DataType::CString:
            return PTC_Text;
        case DataType::Boolean:
            return PTC_Bool;
        default:
            return PTC_None;
    }
}

void WritePlain(SerializeStructure& stream, int id, const std::vector<DataValue>& values, DataType type) {
    const ListStructure list(id, stream, PlainCategory(type));
    for (const DataValue& value : values) {
        stream.ListItem(ContextualDataValueSerializerCore::ToString(value));
    }
}

template <class T>
TString BareText(const T& value) {
    return ContextualDataValueSerializerCore::ToString(DataValue(value));
}

Int64 ContentOf(const DataValue& value, const Int64*) { return value.GetInteger(); }
double ContentOf(const DataValue& value, const double*) { return value.GetReal(); }

// A null is never part of a run: it ends the open one and stands by itself.
template <class T>
void WritePacked(SerializeStructure& stream, int id, const std::vector<DataValue>& values, CoreParameterID tag) {
    const ListStructure list(id, stream, PTC_None);
    RunEvents<T, decltype(&BareText<T>)> events(stream, static_cast<int>(tag), &BareText<T>);
    qvpreslayer::detail::RunPieces<T, decltype(events)> pieces(events);
    qvpreslayer::detail::RunsOf<T> runs;
    for (const DataValue& value : values) {
        if (value.IsSpecial()) {
            runs.End(pieces);
            stream.ListItem(ContextualDataValueSerializerCore::ToString(value));
        } else {
            runs.Add(ContentOf(value, static_cast<const T*>(nullptr)), pieces);
        }
    }
    runs.End(pieces);
    pieces.WriteMarker();
}

// The rules of typed elements: a step with a point is a real, any other a 32-bit integer.
struct DataValueElements {
    struct Run {
        DataValue first;
        std::size_t length;
        DataValue step;
        bool hasStep;
    };

    static Run Parse(const std::vector<TString>& items) {
        DataValue first = ParameterTypeTraits<DataValue>::FromText(items[0]);
        const std::size_t length = ParameterTypeTraits<unsigned int>::FromText(items[1]);
        const bool hasStep = items.size() == 3;
        return {std::move(first), length, hasStep ? ParseStep(items[2]) : DataValue(), hasStep};
    }

    static DataValue ParseStep(const TString& text) {
        if (text.view().find(u'.') != std::u16string_view::npos) {
            return ParameterTypeTraits<double>::FromText(text);
        }
        return ParameterTypeTraits<int>::FromText(text);
    }

    static std::size_t Length(const Run& run) { return run.length; }

    static void Append(const Run& run, std::vector<DataValue>& to) {
        if (!run.hasStep) {
            to.insert(to.end(), run.length, run.first);
            return;
        }
        DataValue value = run.first;
        for (std::size_t i = 0; i < run.length; ++i) {
            if (i != 0) {
                value = value + run.step;
            }
            to.push_back(value);
        }
    }
};

}  // namespace

void DataSerializerHelpers::SerializeDataValueVector(SerializeStructure& stream, int id,
                                                     const std::vector<DataValue>& values) {
    SerializeDataValueVector(stream, id, values, ColumnType(values));
}

void DataSerializerHelpers::SerializeDataValueVector(SerializeStructure& stream, int id,
                                                     const std::vector<DataValue>& values, DataType type) {
    if (stream.GetCompressArrays() && type == DataType::Integer) {
        WritePacked<Int64>(stream, id, values, CoreParameterID::IntRLE);
    } else if (stream.GetCompressArrays() && type == DataType::Real) {
        WritePacked<double>(stream, id, values, CoreParameterID::FloatRLE);
    } else {
        WritePlain(stream, id, values, type);
    }
}

void DataSerializerHelpers::DeserializeRLEDataValueVector(std::vector<DataValue>& values, const RunRecords& runs) {
    ExpandRuns<DataValueElements>(values, runs);
}
