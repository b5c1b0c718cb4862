#include <qvpreslayer/DataSerializerHelpers.h>

#include <type_traits>

#include <qvpreslayer/CoreNamespace.h>
#include <qvpreslayer/ParameterTypeTraits.h>
#include <qvpreslayer/PresLayerLimits.h>
#include <qvpreslayer/detail/RunFilling.h>

#include "main/structure/RunExpansion.h"
#include "main/structure/RunEvents.h"

namespace {

template <class T>
TString ToText(const T& value) {
    return ParameterTypeTraits<T>::ToText(value);
}

template <class T>
constexpr CoreParameterID kTag = std::is_floating_point_v<T> ? CoreParameterID::FloatRLE
                                 : std::is_signed_v<T>       ? CoreParameterID::IntRLE
                                                             : CoreParameterID::UIntRLE;

template <class T>
void WritePlain(SerializeStructure& stream, int id, const std::vector<T>& values) {
    const ListStructure list(id, stream, PTC_None);
    for (const T& value : values) {
        stream.ListItem(ToText(value));
    }
}

template <class T>
void WritePacked(SerializeStructure& stream, int id, const std::vector<T>& values) {
    const ListStructure list(id, stream, PTC_None);
    RunEvents<T, decltype(&ToText<T>)> events(stream, static_cast<int>(kTag<T>), &ToText<T>);
    qvpreslayer::detail::RunPieces<T, decltype(events)> pieces(events);
    qvpreslayer::detail::ForEachRun(values, pieces);
    pieces.WriteMarker();
}

template <class T>
void Write(SerializeStructure& stream, int id, const std::vector<T>& values) {
    if (stream.GetCompressArrays()) {
        WritePacked(stream, id, values);
    } else {
        WritePlain(stream, id, values);
    }
}

// The rules of numeric elements. Steps are read in the signed type of the same width.
template <class T>
struct NumberElements {
    using StepType =
        typename std::conditional_t<std::is_integral_v<T>, std::make_signed<T>, std::type_identity<T>>::type;

    struct Run {
        T first;
        std::size_t length;
        StepType step;
    };

    static Run Parse(const std::vector<TString>& items) {
        const T first = ParameterTypeTraits<T>::FromText(items[0]);
        const std::size_t length = ParameterTypeTraits<unsigned int>::FromText(items[1]);
        const StepType step = items.size() == 3 ? ParameterTypeTraits<StepType>::FromText(items[2]) : StepType{};
        return {first, length, step};
    }

    static std::size_t Length(const Run& run) { return run.length; }

    static void Append(const Run& run, std::vector<T>& to) {
        qvpreslayer::detail::AppendRun(to, run.first, run.length, run.step);
    }
};

template <class T>
void Expand(std::vector<T>& values, const RunRecords& runs) {
    ExpandRuns<NumberElements<T>>(values, runs);
}

}  // namespace

void DataSerializerHelpers::SetExpansionLimit(std::size_t bytes) { PresLayerLimits::SetExpansionBytes(bytes); }

std::size_t DataSerializerHelpers::GetExpansionLimit() { return PresLayerLimits::GetExpansionBytes(); }

void DataSerializerHelpers::SerializeIntVector(SerializeStructure& stream, int id, const std::vector<int>& values) {
    Write(stream, id, values);
}

void DataSerializerHelpers::SerializeUINTVector(SerializeStructure& stream, int id,
                                                const std::vector<unsigned int>& values) {
    Write(stream, id, values);
}

void DataSerializerHelpers::SerializeInt64Vector(SerializeStructure& stream, int id, const std::vector<Int64>& values) {
    Write(stream, id, values);
}

void DataSerializerHelpers::SerializeUINT64Vector(SerializeStructure& stream, int id,
                                                  const std::vector<UInt64>& values) {
    Write(stream, id, values);
}

void DataSerializerHelpers::SerializeFloatVector(SerializeStructure& stream, int id, const std::vector<float>& values) {
    Write(stream, id, values);
}

void DataSerializerHelpers::SerializeDoubleVector(SerializeStructure& stream, int id,
                                                  const std::vector<double>& values) {
    Write(stream, id, values);
}

void DataSerializerHelpers::DeserializeRLEIntVector(std::vector<int>& values, const RunRecords& runs) {
    Expand(values, runs);
}

void DataSerializerHelpers::DeserializeRLEUINTVector(std::vector<unsigned int>& values, const RunRecords& runs) {
    Expand(values, runs);
}

void DataSerializerHelpers::DeserializeRLEInt64Vector(std::vector<Int64>& values, const RunRecords& runs) {
    Expand(values, runs);
}

void DataSerializerHelpers::DeserializeRLEUINT64Vector(std::vector<UInt64>& values, const RunRecords& runs) {
    Expand(values, runs);
}

void DataSerializerHelpers::DeserializeRLEFloatVector(std::vector<float>& values, const RunRecords& runs) {
    Expand(values, runs);
}

void DataSerializerHelpers::DeserializeRLEDoubleVector(std::vector<double>& values, const RunRecords& runs) {
    Expand(values, runs);
}
