// What each Add operation hands to an adder.
#include <qvpreslayer/AbstractParamAdder.h>

#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"

namespace {

// Notes each entry as a line: "value 7 verbose short 4 +", with "-" where the serializer is null.
class RecordingAdder final : public AbstractParamAdder {
public:
    void AddStructureEntry(int id, const TString& verboseName, const TString& shortName,
                           RefCntPtr<IStructureSerializer> serializer, ParameterTypeCategory kind) override {
        Note("structure", id, verboseName, shortName, serializer.Get() != nullptr, kind);
        structure = serializer;
    }
    void AddValueEntry(int id, const TString& verboseName, const TString& shortName,
                       RefCntPtr<IParameterSerializer> serializer, ParameterTypeCategory kind) override {
        Note("value", id, verboseName, shortName, serializer.Get() != nullptr, kind);
        value = serializer;
    }

    std::string log;
    RefCntPtr<IStructureSerializer> structure;  // the last ones
    RefCntPtr<IParameterSerializer> value;

private:
    void Note(const char* slot, int id, const TString& verboseName, const TString& shortName, bool serializer,
              ParameterTypeCategory kind) {
        log += std::string(slot) + " " + std::to_string(id) + " '" + verboseName.ToUtf8() + "' '" + shortName.ToUtf8() +
               "' " + std::to_string(kind) + (serializer ? " +\n" : " -\n");
    }
};

BagStructureSerializer* Structure() { return new BagStructureSerializer; }

}  // namespace

TEST(AbstractParamAdder, TwoNamesAreHandedOnAsGiven) {
    RecordingAdder adder;
    adder.AddSimple(1, L"title", L"ti", TextSerializer());
    adder.AddList(2, L"int-list", L"il", IntSerializer());
    adder.AddMap(3, L"my-map", L"mm", IntSerializer());
    adder.AddBag(4, L"sub-bag", L"sb");
    adder.AddStructure(5, L"record", L"rc", Structure());
    adder.AddStructureList(6, L"items", L"it", Structure());
    adder.AddStructureMap(7, L"by-key", L"bk", Structure());
    EXPECT_EQ(
        "value 1 'title' 'ti' 0 +\n"
        "value 2 'int-list' 'il' 4 +\n"
        "value 3 'my-map' 'mm' 8 +\n"
        "value 4 'sub-bag' 'sb' 0 -\n"
        "structure 5 'record' 'rc' 6 +\n"
        "structure 6 'items' 'it' 7 +\n"
        "structure 7 'by-key' 'bk' 9 +\n",
        adder.log);
}

TEST(AbstractParamAdder, OneNameServesAsBoth) {
    RecordingAdder adder;
    adder.AddSimple(1, L"title", TextSerializer());
    adder.AddList(2, L"int-list", IntSerializer());
    adder.AddMap(3, L"my-map", IntSerializer());
    adder.AddBag(4, L"sub-bag");
    adder.AddStructure(5, L"record", Structure());
    adder.AddStructureList(6, L"items", Structure());
    adder.AddStructureMap(7, L"by-key", Structure());
    EXPECT_EQ(
        "value 1 'title' 'title' 0 +\n"
        "value 2 'int-list' 'int-list' 4 +\n"
        "value 3 'my-map' 'my-map' 8 +\n"
        "value 4 'sub-bag' 'sub-bag' 0 -\n"
        "structure 5 'record' 'record' 6 +\n"
        "structure 6 'items' 'items' 7 +\n"
        "structure 7 'by-key' 'by-key' 9 +\n",
        adder.log);
}

TEST(AbstractParamAdder, NullSerializersAreHandedOn) {
    RecordingAdder adder;
    adder.AddSimple(1, L"a", L"b", nullptr);
    adder.AddList(-2, L"a", L"b", nullptr);
    adder.AddMap(3, L"a", L"b", nullptr);
    adder.AddStructure(5, L"a", L"b", nullptr);
    adder.AddStructureList(6, L"a", L"b", nullptr);
    adder.AddStructureMap(7, L"a", L"b", nullptr);
    EXPECT_EQ(
        "value 1 'a' 'b' 0 -\n"
        "value -2 'a' 'b' 4 -\n"
        "value 3 'a' 'b' 8 -\n"
        "structure 5 'a' 'b' 6 -\n"
        "structure 6 'a' 'b' 7 -\n"
        "structure 7 'a' 'b' 9 -\n",
        adder.log);
}

TEST(AbstractParamAdder, NullNamesAreEmpty) {
    RecordingAdder adder;
    const wchar_t* none = nullptr;
    adder.AddSimple(1, none, L"s", TextSerializer());
    adder.AddBag(2, L"v", none);
    adder.AddBag(3, none);
    EXPECT_EQ(
        "value 1 '' 's' 0 +\n"
        "value 2 'v' '' 0 -\n"
        "value 3 '' '' 0 -\n",
        adder.log);
}

TEST(AbstractParamAdder, TheSerializerItselfIsShared) {
    RecordingAdder adder;
    const RefCntPtr<TStringSerializer> value(TextSerializer());
    const RefCntPtr<BagStructureSerializer> structure(Structure());
    adder.AddList(1, L"list", value.Get());
    adder.AddStructureMap(2, L"map", structure.Get());
    EXPECT_EQ(value.Get(), adder.value.Get());
    EXPECT_EQ(structure.Get(), adder.structure.Get());
}

TEST(AbstractParamAdder, ANewSerializerMayBePassedDirectly) {
    int alive = 0;
    RecordingAdder adder;
    adder.AddSimple(1, L"title", new CountedSerializer(alive));
    EXPECT_EQ(1, alive);
    adder.value.Reset();
    EXPECT_EQ(0, alive);
}

TEST(AbstractParamAdder, IsNeverDeletedThroughItsInterface) {
    EXPECT_FALSE(std::has_virtual_destructor_v<AbstractParamAdder>);
    EXPECT_FALSE(std::is_destructible_v<AbstractParamAdder>);
}
