// What the reader lets pass is told to those who want to know, once each, where it stands.
#include <string>

#include "json/JSONTestSupport.h"

namespace {

// What was told, a line each: the leniency, the identifier, the offset and the path.
class Notes final : public IReadingDiagnostics {
public:
    void Report(Leniency leniency, int id, const TextLocation& location) override {
        text += std::string(GetLeniencyText(leniency)) + " " + std::to_string(id) + " @" +
                std::to_string(location.offset) + " " + location.path.ToUtf8() + "\n";
    }

    std::string text;
};

class ReadingDiagnostics : public JSONTest {
protected:
    // What is told while a text is read.
    std::string NotesOf(std::string_view json) {
        Notes notes;
        m_json.SetDiagnostics(&notes);
        const std::string watched = Outcome(json);
        m_json.SetDiagnostics(nullptr);
        EXPECT_EQ(Outcome(json), watched) << "watching changes nothing";
        return notes.text;
    }
};

TEST_F(ReadingDiagnostics, NothingIsToldOfAPlainText) {
    EXPECT_EQ("", NotesOf(R"({"maxCount": 134217727, "real": 0.25, "text": "a", "flag": true, "intList": [1, 2],)"
                          R"( "paramTypeList": ["int-rle"], "subBag": {"n": 1}} /* behind */ )"));
}

TEST_F(ReadingDiagnostics, UnknownNamesOfEnumerations) {
    m_registry.Add(L"style", 2000, 2099, [](AbstractParamAdder& adder) {
        adder.AddSimple(2001, L"align", L"al", new ParameterTypeSerializer<TextAlign>);
        adder.AddList(2002, L"aligns", L"as", new ParameterTypeSerializer<TextAlign>);
        adder.AddMap(2003, L"by-key", L"bk", new ParameterTypeSerializer<TextAlign>);
    });
    m_json = JSONSerializer(L"style");
    EXPECT_EQ("", NotesOf(R"({"align": "text-align-end"})"));
    EXPECT_EQ("unknown name 2001 @10 /align\n", NotesOf(R"({"align": "Text-align-end"})"));
    EXPECT_EQ("unknown name 2002 @31 /aligns/1\n", NotesOf(R"({"aligns":["text-align-center","up"]})"));
    EXPECT_EQ("unknown name 2003 @15 /byKey/k\n", NotesOf(R"({"byKey":{"k": "up"}})"));
}

TEST_F(ReadingDiagnostics, DuplicateMembers) {
    EXPECT_EQ("duplicate member 0 @1 /n\n", NotesOf(R"({"n": 1, "n": 2})"));
    EXPECT_EQ("duplicate member 0 @12 /subBag/n\n", NotesOf(R"({"subBag": {"n": 1, "n": 2}})"));
    EXPECT_EQ("duplicate member 50 @11 /myMap/k\n", NotesOf(R"({"myMap": {"k": "a", "k": "b"}})"));
}

TEST_F(ReadingDiagnostics, IntegersThatWrap) {
    EXPECT_EQ("wrapped integer 12 @8 /big\n", NotesOf(R"({"big": 4294967296})"));
    EXPECT_EQ("wrapped integer 12 @8 /big\n", NotesOf(R"({"big": -2147483649})"));
    EXPECT_EQ("", NotesOf(R"({"big": 4294967295})"));
    EXPECT_EQ("wrapped integer 32 @15 /bigList/1\n", NotesOf(R"({"bigList": [1,9999999999]})"));
}

TEST_F(ReadingDiagnostics, RealsThatLoseDigits) {
    EXPECT_EQ("lost digits 15 @9 /real\n", NotesOf(R"({"real": 0.123456789012345678})"));
    EXPECT_EQ("", NotesOf(R"({"real": 0.12345678901234})"));
}

TEST_F(ReadingDiagnostics, NullMembers) { EXPECT_EQ("null member 17 @9 /text\n", NotesOf(R"({"text": null})")); }

TEST_F(ReadingDiagnostics, NestedListsThatAreNoRuns) {
    EXPECT_EQ("skipped run 30 @15 /intList/1\n", NotesOf(R"({"intList": [1,[2]]})"));
    EXPECT_EQ("skipped run 30 @13 /intList/0\n", NotesOf(R"({"intList": [[1,2,3,4]]})"));
    EXPECT_EQ("", NotesOf(R"({"intList": [[1,5,2],[]]})"));
    EXPECT_EQ("skipped run 37 @14 /textList/0\n", NotesOf(R"({"textList": [["a","5"],"b"]})"));
}

TEST_F(ReadingDiagnostics, ArraysForStructuresOfMembers) {
    EXPECT_EQ("ignored value 70 @12 /myModel\n", NotesOf(R"({"myModel": ["a"]})"));
}

TEST_F(ReadingDiagnostics, TextBehindTheValue) {
    EXPECT_EQ("text after the value 0 @9 \n", NotesOf(R"({"n": 1} x)"));
    EXPECT_EQ("text after the value 0 @16 \n", NotesOf(R"({"n": 1}/* a */ {})"));
    EXPECT_EQ("text after the value 0 @8 \n", NotesOf(R"({"n": 1}/*)"));
    EXPECT_EQ("", NotesOf("{\"n\": 1} // to the end"));
}

TEST_F(ReadingDiagnostics, InsideStructures) {
    EXPECT_EQ("null member 82 @17 /items/0/n\n", NotesOf(R"({"items": [{"n": null}]})"));
    EXPECT_EQ("null member 82 @22 /byKey/a/n\n", NotesOf(R"({"byKey": {"a": {"n": null}}})"));
    EXPECT_EQ("duplicate member 72 @11 /byKey/a\n", NotesOf(R"({"byKey": {"a": {}, "a": null}})"));
}

TEST_F(ReadingDiagnostics, AFailureIsToldAsBeforeAndWhatTheSinkThrowsPasses) {
    EXPECT_EQ("null member 80 @7 /aB\n", NotesOf(R"({"aB": null, "c": [1]})"));
    class Refusal final : public IReadingDiagnostics {
        void Report(Leniency, int, const TextLocation&) override { throw std::length_error("refused"); }
    } refusal;
    m_json.SetDiagnostics(&refusal);
    EXPECT_THROW(Read(R"({"n": null})"), std::length_error);
    EXPECT_EQ("n=1", Outcome(R"({"n": 1})"));
}

TEST_F(ReadingDiagnostics, EveryLeniencyHasAText) {
    for (int leniency = 0; leniency <= static_cast<int>(Leniency::TextAfterValue); ++leniency) {
        EXPECT_STRNE("unknown leniency", GetLeniencyText(static_cast<Leniency>(leniency)));
    }
}

}  // namespace
