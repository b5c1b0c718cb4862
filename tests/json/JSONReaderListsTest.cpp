// How arrays become lists: element texts, and the run records of nested arrays.
#include <qvpreslayer/JSONSerializer.h>
#include <qvpreslayer/PresLayerLimits.h>

#include <fstream>
#include <string>

#include "json/JSONTestSupport.h"

namespace {

using JSONReaderLists = JSONTest;

// Makes a text of what it is handed: "values / position:[texts] ...".
class NotingListSerializer : public TStringSerializer {
public:
    RefCntPtr<IParameter> FromStringList(const std::vector<TString>& values,
                                         const std::vector<std::pair<int, std::vector<TString>>>& runs) const override {
        std::string text = BagDescription::Listed(values) + " /";
        for (const auto& [position, texts] : runs) {
            text += " " + std::to_string(position) + ":" + BagDescription::Listed(texts);
        }
        return Val(std::vector<TString>{TString::FromUtf8(text)});
    }
};

// What a list serializer is handed for this array.
std::string HandedOver(const std::string& array) {
    TestRegistry registry;
    registry.Add(L"lists", 1, 1,
                 [](AbstractParamAdder& adder) { adder.AddList(1, L"list", new NotingListSerializer); });
    const auto bag = JSONSerializer(L"lists").ToParameters(TString::FromUtf8("{\"list\":" + array + "}"));
    return GetParameterValue<std::vector<TString>>(*bag, 1).at(0).ToUtf8();
}

// Sets the limit of expanded bytes as long as it lives.
class ExpansionLimit {
public:
    explicit ExpansionLimit(std::size_t bytes) : m_earlier(PresLayerLimits::GetExpansionBytes()) {
        PresLayerLimits::SetExpansionBytes(bytes);
    }
    ExpansionLimit(const ExpansionLimit&) = delete;
    ExpansionLimit& operator=(const ExpansionLimit&) = delete;
    ~ExpansionLimit() { PresLayerLimits::SetExpansionBytes(m_earlier); }

private:
    std::size_t m_earlier;
};

// Memory that the process holds, in MiB.
long ResidentMiB() {
    std::ifstream file("/proc/self/statm");
    long total = 0;
    long resident = 0;
    file >> total >> resident;
    return resident * 4096 / (1024 * 1024);
}

}  // namespace

TEST(JSONReaderListRecords, WhatTheListSerializerIsHanded) {
    const struct {
        const char* array;
        const char* handed;
    } cases[] = {
        {"[]", "[] /"},
        {R"(["a",1,2.5,true,false])", "[a,1,2.5,true,false] /"},
        {R"([null,{"k":1}])", "[,] /"},  // neither has a text
        {"[[]]", "[] / 0:[]"},
        {"[9,[1,5,1],[8,4],[]]", "[9] / 1:[1,5,1] 2:[8,4] 3:[]"},
        {"[[1],5,[2,4]]", "[5] / 0:[1] 2:[2,4]"},
        {R"([[1],5,[2,4],"x",null,{"a":1},true,2.5,[]])", "[5,x,,,true,2.5] / 0:[1] 2:[2,4] 8:[]"},
        {R"([[[1],2,null,{"k":3},"a",true]])", "[] / 0:[,2,,,a,true]"},  // deeper arrays have no text either
        {"[4294967297,[4294967297]]", "[1] / 1:[1]"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.array);
        EXPECT_EQ(c.handed, HandedOver(c.array));
    }
}

TEST_F(JSONReaderLists, RunsExpandAtTheirPlaces) {
    const struct {
        const char* json;
        const char* bag;
    } cases[] = {
        {R"({"intList":[9,[1,5,1],[8,4],[]]})", "int-list=[9,1,2,3,4,5,8,8,8,8]"},
        {R"({"intList":[[1],5,[2,4]]})", "int-list=[5,2,2,2,2]"},  // one text is no run, and still counts
        {R"({"intList":[[10,4,-2],[]]})", "int-list=[10,8,6,4]"},
        {R"({"intList":[[],[],1,[5,2],2,[]]})", "int-list=[1,5,5,2]"},
        {R"({"intList":[[1,2,3,4],7]})", "int-list=[7]"},
        {R"({"intList":[["1","0"],7,["2",3]]})", "int-list=[7,2,2,2]"},  // a length of 0 adds nothing
        {R"({"intList":[[2147483647,4,1]]})", "int-list=[2147483647,-2147483648,-2147483647,-2147483646]"},
        {R"({"unsignedList":[[10,4,-2],[]]})", "unsigned-list=[10,8,6,4]"},
        {R"({"bigList":[["5000000000",4,"1000000000000"]]})",
         "big-list=[5000000000,1005000000000,2005000000000,3005000000000]"},
        {R"({"bigUnsignedList":[["18446744073709551615",2]]})",
         "big-unsigned-list=[18446744073709551615,18446744073709551615]"},
        {R"({"realList":[0.5,[1.5,4],[]]})", "real-list=[0.5,1.5,1.5,1.5,1.5]"},
        {R"({"realList":[[1,3,0.5]]})", "real-list=[1,1.5,2]"},  // written never, read all the same
        {R"({"smallRealList":[[0.25,4]]})", "small-real-list=[0.25,0.25,0.25,0.25]"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.json);
        EXPECT_EQ(c.bag, Outcome(c.json));
    }
}

TEST_F(JSONReaderLists, ListsThatAreNotPackedIgnoreRuns) {
    EXPECT_EQ("flag-list=[true,false]", Outcome(R"({"flagList":[true,[false,4],false]})"));
    EXPECT_EQ("text-list=[a,b]", Outcome(R"({"textList":["a",["x","4"],[],"b"]})"));
    EXPECT_EQ("hours-list=[1]", Outcome(R"({"hoursList":["1",["x"]]})"));
}

TEST_F(JSONReaderLists, ElementsWithoutATextAreEmpty) {
    EXPECT_EQ("text-list=[,,a]", Outcome(R"({"textList":[null,{},"a"]})"));
    EXPECT_EQ("not parsed: 0", Outcome(R"({"intList":[null]})"));
    EXPECT_EQ("not parsed: 0", Outcome(R"({"intList":[{}]})"));
    EXPECT_EQ("not parsed: 0", Outcome(R"({"realList":[null]})"));
    EXPECT_EQ("not parsed: 0", Outcome(R"({"flagList":[null]})"));
}

TEST_F(JSONReaderLists, ElementsMayBeOfAnyScalarKind) {
    EXPECT_EQ("int-list=[1,2,100]", Outcome(R"({"intList":["1",2,1e2]})"));
    EXPECT_EQ("flag-list=[true,false]", Outcome(R"({"flagList":["true",false]})"));
    EXPECT_EQ("real-list=[null]", Outcome(R"({"realList":["null"]})"));
    EXPECT_EQ("not parsed: 0", Outcome(R"({"intList":[true]})"));
    EXPECT_EQ("not parsed: 0", Outcome(R"({"intList":[1.5]})"));
}

TEST_F(JSONReaderLists, MalformedRunsFailAsNumbersDo) {
    EXPECT_EQ("not parsed: 0", Outcome(R"({"intList":[["a",4]]})"));
    EXPECT_EQ("not parsed: 0", Outcome(R"({"intList":[[1,"b"]]})"));
    EXPECT_EQ("not parsed: 0", Outcome(R"({"intList":[[1,-1]]})"));
    EXPECT_EQ("not parsed: 0", Outcome(R"({"intList":[[1,4,0.5]]})"));
    EXPECT_EQ("not parsed: 0", Outcome(R"({"intList":[[null,4]]})"));
    EXPECT_EQ("int-list=[]", Outcome(R"({"intList":[["a","b","c","d"]]})"));
}

TEST_F(JSONReaderLists, HugeRunsAreRefusedBeforeMemoryIsAskedFor) {
    const long before = ResidentMiB();
    EXPECT_EQ("not parsed: 0", Outcome(R"({"intList":[[0,4294967295],[]]})"));
    EXPECT_EQ("not parsed: 0", Outcome(R"({"realList":[["0","4000000000"]]})"));
    EXPECT_EQ("not parsed: 0", Outcome(R"({"bigList":[[0,4294967295,1]]})"));
    EXPECT_LT(ResidentMiB() - before, 50);
}

TEST_F(JSONReaderLists, RunsOfOneListShareTheLimit) {
    const ExpansionLimit limit(100 * sizeof(int));
    EXPECT_EQ(100U,
              GetParameterValue<std::vector<int>>(*Read(R"({"intList":[[1,60],[2,40],[]]})"), view::kIntList).size());
    EXPECT_EQ("not parsed: 0", Outcome(R"({"intList":[[1,60],[2,41],[]]})"));
}

TEST_F(JSONReaderLists, ListsOfOneCallShareTheLimit) {
    const ExpansionLimit limit(100 * sizeof(int));
    EXPECT_EQ("not parsed: 0", Outcome(R"({"intList":[[1,60]],"unsignedList":[[1,60]]})"));
    EXPECT_EQ("not parsed: 0", Outcome(R"({"subBag":{"intList":[[1,60]]},"intList":[[1,60]]})"));
    EXPECT_EQ(100U, GetParameterValue<std::vector<int>>(*Read(R"({"intList":[[1,100]]})"), view::kIntList).size());
    EXPECT_EQ(100U, GetParameterValue<std::vector<int>>(*Read(R"({"intList":[[1,100]]})"), view::kIntList).size());
}

TEST_F(JSONReaderLists, AFailedCallGivesItsShareBack) {
    const ExpansionLimit limit(100 * sizeof(int));
    EXPECT_EQ("not found: zzz", Outcome(R"({"intList":[[1,100]],"zzz":1})"));
    EXPECT_EQ(100U, GetParameterValue<std::vector<int>>(*Read(R"({"intList":[[1,100]]})"), view::kIntList).size());
}

TEST_F(JSONReaderLists, LimitCountsBytesOfTheElementType) {
    const ExpansionLimit limit(800);
    EXPECT_EQ(100U,
              GetParameterValue<std::vector<double>>(*Read(R"({"realList":[[1.5,100]]})"), view::kRealList).size());
    EXPECT_EQ("not parsed: 0", Outcome(R"({"realList":[[1.5,101]]})"));
    EXPECT_EQ(200U, GetParameterValue<std::vector<int>>(*Read(R"({"intList":[[1,200]]})"), view::kIntList).size());
    EXPECT_EQ("not parsed: 0", Outcome(R"({"intList":[[1,201]]})"));
}

TEST_F(JSONReaderLists, ManyElementsAndManyRuns) {
    constexpr int kRuns = 20000;
    std::string json = "{\"intList\":[";
    std::vector<int> expected;
    for (int i = 0; i < kRuns; ++i) {
        json += std::to_string(i) + ",[" + std::to_string(i) + ",4,1],";
        expected.insert(expected.end(), {i, i, i + 1, i + 2, i + 3});
    }
    json += "[]]}";
    EXPECT_TRUE(expected == GetParameterValue<std::vector<int>>(*Read(json), view::kIntList));
}
