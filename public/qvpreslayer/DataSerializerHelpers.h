// Packing of numeric lists in runs, and back.
//
// A run of four or more elements becomes a nested list that holds its first value, its length and, when it rises or
// falls, its step: 1, 2, 3, 4, 5 is written [1,5,1]. The nested list is named after its element type ("int-rle",
// "uint-rle", "float-rle"); a last, empty one marks the whole list as packed. Reals are packed only where they are
// equal.
//
// Exceptions: writing is basic: what was told stays told, and lists that were opened are closed. Expanding is basic:
// what the values hold after a failure is not told; serializers drop them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include <qvcore/DataType.h>
#include <qvcore/IntegerTypes.h>
#include <qvcore/TString.h>

#include <qvpreslayer/Export.h>

class DataValue;
class SerializeStructure;
template <class T>
class ParameterTypeSerializer;

class QVPRESLAYER_API DataSerializerHelpers {
public:
    // The shortest run that is packed.
    static constexpr std::int32_t kRLERunThreshold = 4;

    // How many bytes of elements runs may expand to, in one list and in one reading call; see PresLayerLimits. What
    // would go beyond raises ParameterParseException(0) before memory is asked for.
    static void SetExpansionLimit(std::size_t bytes);
    static std::size_t GetExpansionLimit();

private:
    template <class T>
    friend class ParameterTypeSerializer;

    using RunRecords = std::vector<std::pair<int, std::vector<TString>>>;

    // Write values as list id: packed when the stream's options ask for it, else one item each.
    static void SerializeIntVector(SerializeStructure& stream, int id, const std::vector<int>& values);
    static void SerializeUINTVector(SerializeStructure& stream, int id, const std::vector<unsigned int>& values);
    static void SerializeInt64Vector(SerializeStructure& stream, int id, const std::vector<Int64>& values);
    static void SerializeUINT64Vector(SerializeStructure& stream, int id, const std::vector<UInt64>& values);
    static void SerializeFloatVector(SerializeStructure& stream, int id, const std::vector<float>& values);
    static void SerializeDoubleVector(SerializeStructure& stream, int id, const std::vector<double>& values);

    // Typed values: integer columns are packed by step, real columns where they are equal, all others stay plain. The
    // first form takes the type that all values have, or unknown when they differ. Elements are written bare.
    static void SerializeDataValueVector(SerializeStructure& stream, int id, const std::vector<DataValue>& values);
    static void SerializeDataValueVector(SerializeStructure& stream, int id, const std::vector<DataValue>& values,
                                         DataType type);

    // Expand the recorded runs into values, which hold the plain elements in order. A record's position counts all
    // elements of the list, nested lists included. Records of other than two or three items are skipped. Arithmetic
    // wraps in the element type. ParameterParseException(0) for a text that is no number; LogicException
    // "index <= values.size()" for a position outside the list.
    static void DeserializeRLEIntVector(std::vector<int>& values, const RunRecords& runs);
    static void DeserializeRLEUINTVector(std::vector<unsigned int>& values, const RunRecords& runs);
    static void DeserializeRLEInt64Vector(std::vector<Int64>& values, const RunRecords& runs);
    static void DeserializeRLEUINT64Vector(std::vector<UInt64>& values, const RunRecords& runs);
    static void DeserializeRLEFloatVector(std::vector<float>& values, const RunRecords& runs);
    static void DeserializeRLEDoubleVector(std::vector<double>& values, const RunRecords& runs);

    // First values are typed texts; a step with a point is a real, any other a 32-bit integer.
    static void DeserializeRLEDataValueVector(std::vector<DataValue>& values, const RunRecords& runs);

    // The same by element type, for the serializer family.
    static void SerializeVector(SerializeStructure& stream, int id, const std::vector<int>& values) {
        SerializeIntVector(stream, id, values);
    }
    static void SerializeVector(SerializeStructure& stream, int id, const std::vector<unsigned int>& values) {
        SerializeUINTVector(stream, id, values);
    }
    static void SerializeVector(SerializeStructure& stream, int id, const std::vector<Int64>& values) {
        SerializeInt64Vector(stream, id, values);
    }
    static void SerializeVector(SerializeStructure& stream, int id, const std::vector<UInt64>& values) {
        SerializeUINT64Vector(stream, id, values);
    }
    static void SerializeVector(SerializeStructure& stream, int id, const std::vector<float>& values) {
        SerializeFloatVector(stream, id, values);
    }
    static void SerializeVector(SerializeStructure& stream, int id, const std::vector<double>& values) {
        SerializeDoubleVector(stream, id, values);
    }
    static void SerializeVector(SerializeStructure& stream, int id, const std::vector<DataValue>& values) {
        SerializeDataValueVector(stream, id, values);
    }
    static void DeserializeRLE(std::vector<int>& values, const RunRecords& runs) {
        DeserializeRLEIntVector(values, runs);
    }
    static void DeserializeRLE(std::vector<unsigned int>& values, const RunRecords& runs) {
        DeserializeRLEUINTVector(values, runs);
    }
    static void DeserializeRLE(std::vector<Int64>& values, const RunRecords& runs) {
        DeserializeRLEInt64Vector(values, runs);
    }
    static void DeserializeRLE(std::vector<UInt64>& values, const RunRecords& runs) {
        DeserializeRLEUINT64Vector(values, runs);
    }
    static void DeserializeRLE(std::vector<float>& values, const RunRecords& runs) {
        DeserializeRLEFloatVector(values, runs);
    }
    static void DeserializeRLE(std::vector<double>& values, const RunRecords& runs) {
        DeserializeRLEDoubleVector(values, runs);
    }
    static void DeserializeRLE(std::vector<DataValue>& values, const RunRecords& runs) {
        DeserializeRLEDataValueVector(values, runs);
    }
};
