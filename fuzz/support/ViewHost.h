// What the targets about JSON share: a published registry with a parameter of every kind and type, twice over.
//
// The namespace "view" holds the library's own serializers, "long" the same parameters with classes derived from them,
// which the library cannot know: their values take the long way through texts and events. Identifiers of "long" are
// those of "view" and kLong.
#pragma once

#include <string>
#include <type_traits>

#include <qvpreslayer/qvpreslayer.h>

#include "support/TestHost.h"

namespace fuzz {

constexpr int kLong = 1000;

template <class Serializer>
class LongWay : public Serializer {};

template <class T>
using SerializerOf = std::conditional_t<std::is_same_v<T, TString>, TStringSerializer, ParameterTypeSerializer<T>>;

// The types that travel, each as a value, a list and a map: identifiers 10 * n, and one and two above.
template <class Visit>
void ForEachType(Visit&& visit) {
    visit.template operator()<int>(10, L"int", L"i");
    visit.template operator()<unsigned int>(20, L"unsigned", L"u");
    visit.template operator()<Int64>(30, L"big-int", L"bi");
    visit.template operator()<UInt64>(40, L"big-unsigned", L"bu");
    visit.template operator()<float>(50, L"small-real", L"sr");
    visit.template operator()<double>(60, L"real", L"r");
    visit.template operator()<bool>(70, L"flag", L"f");
    visit.template operator()<TString>(80, L"text", L"t");
    visit.template operator()<TUUID>(90, L"uuid", L"id");
    visit.template operator()<FieldName>(100, L"field", L"fn");
    visit.template operator()<HoursDuration>(110, L"hours", L"h");
    visit.template operator()<NanosecondsDuration>(120, L"nanoseconds", L"ns");
    visit.template operator()<PasswordString>(130, L"password", L"p");
    visit.template operator()<WhiskerEnd>(140, L"whisker-end", L"we");
    visit.template operator()<DataValue>(150, L"typed", L"ty");
}

constexpr int kBag = 200;
constexpr int kRecord = 201;
constexpr int kRecords = 202;
constexpr int kRecordsByKey = 203;
constexpr int kRow = 204;
constexpr int kRows = 205;
constexpr int kNoSerializer = 206;    // a structure without one
constexpr int kNoShortName = 207;     // an int
constexpr int kUnserializable = 208;  // an int

template <template <class> class Way>
void AddViewParameters(AbstractParamAdder& adder, int offset) {
    ForEachType([&]<class T>(int id, std::wstring name, std::wstring shortName) {
        using Serializer = Way<SerializerOf<T>>;
        adder.AddSimple(offset + id, name.c_str(), shortName.c_str(), new Serializer);
        adder.AddList(offset + id + 1, (name + L"-list").c_str(), (shortName + L"L").c_str(), new Serializer);
        adder.AddMap(offset + id + 2, (name + L"-map").c_str(), (shortName + L"M").c_str(), new Serializer);
    });
    adder.AddBag(offset + kBag, L"sub-bag", L"b");
    adder.AddStructure(offset + kRecord, L"record", L"re", new BagStructureSerializer);
    adder.AddStructureList(offset + kRecords, L"records", L"rs", new BagStructureSerializer);
    adder.AddStructureMap(offset + kRecordsByKey, L"records-by-key", L"rk", new BagStructureSerializer);
    adder.AddStructure(offset + kRow, L"row", L"ro", new BagStructureSerializer(BagStructureSerializer::List));
    adder.AddStructureList(offset + kRows, L"rows", L"rw", new BagStructureSerializer(BagStructureSerializer::List));
    adder.AddStructure(offset + kNoSerializer, L"no-serializer", L"nse", nullptr);
    adder.AddSimple(offset + kNoShortName, L"no-short-name", L"", new Way<ParameterTypeSerializer<int>>);
    adder.AddSimple(offset + kUnserializable, L"unserializable", L"un", new Way<ParameterTypeSerializer<int>>);
}

class ViewHost {
public:
    ViewHost() {
        RegisterCoreNamespaceParameters(m_registry, L"qvcore");
        m_registry.Add(L"view", 1, kLong - 1,
                       [](AbstractParamAdder& adder) { AddViewParameters<std::type_identity_t>(adder, 0); });
        m_registry.Add(L"long", kLong, 2 * kLong,
                       [](AbstractParamAdder& adder) { AddViewParameters<LongWay>(adder, kLong); });
        for (const int offset : {0, kLong}) {
            m_registry.SetFallback(offset == 0 ? L"view" : L"long", L"qvcore");
            m_registry.AddUnserializable(offset + kUnserializable);
        }
    }

    TestBuilderVars& Options() { return m_session.Vars(); }

private:
    TestRegistry m_registry;
    TestSession m_session;
};

// Made once: the registry's tables are filled at the first input.
inline ViewHost& View() {
    static ViewHost s_host;
    return s_host;
}

}  // namespace fuzz
