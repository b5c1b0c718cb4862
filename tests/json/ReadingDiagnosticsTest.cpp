// What the reader lets pass is told to those who want to know, once each, where it stands.
#include <string>
#include <utility>

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

enum class Shape { Round, Square };

constexpr EnumName<Shape> kShapeNames[] = {
    {Shape::Round, u"round"},
    {Shape::Square, u"square"},
};

}  // namespace

template <>
struct ParameterTypeTraits<Shape> : EnumTraits<kShapeNames, Shape::Square> {};

namespace {

class ReadingDiagnostics : public JSONTest {
protected:
    // What is told while a text is read. Watched or not, by the short way, by the long one (which comments take), and
    // by the operation that takes the choices one by one: the same comes of it.
    std::string NotesOf(std::string_view json) {
        const std::string plain = Outcome(json);
        EXPECT_EQ(plain, Outcome("/**/" + std::string(json))) << "both ways";
        Notes notes;
        m_json.SetDiagnostics(&notes);
        EXPECT_EQ(plain, Outcome(json)) << "watching changes nothing";
        const std::string told = std::exchange(notes.text, {});
        const bool shortNames = !PresModelBuilderSupport::UseVerboseNames();
        EXPECT_EQ(plain, OutcomeOf([&] { return m_json.ToParameters(TString::FromUtf8(json), shortNames, false); }));
        EXPECT_EQ(told, notes.text) << "by either operation";
        m_json.SetDiagnostics(nullptr);
        return told;
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

TEST_F(ReadingDiagnostics, UnknownNamesOfAHostsEnumeration) {
    m_registry.Add(L"style", 2000, 2099, [](AbstractParamAdder& adder) {
        adder.AddSimple(2001, L"shape", L"sh", new ParameterTypeSerializer<Shape>);
        adder.AddList(2002, L"shapes", L"ss", new ParameterTypeSerializer<Shape>);
    });
    m_json = JSONSerializer(L"style");
    EXPECT_EQ("", NotesOf(R"({"shape": "round"})"));
    EXPECT_EQ("unknown name 2001 @10 /shape\n", NotesOf(R"({"shape": "Round"})"));
    EXPECT_EQ("unknown name 2002 @20 /shapes/1\n", NotesOf(R"({"shapes":["square",3]})"));
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

TEST_F(ReadingDiagnostics, MinusZeroIsZero) {
    EXPECT_EQ("", NotesOf(R"({"maxCount": -0, "intList": [-0, 0], "real": -0})"));
}

TEST_F(ReadingDiagnostics, TwoSpellingsOfAName) {
    EXPECT_EQ("duplicate member 10 @16 /max-count\n", NotesOf(R"({"maxCount": 1, "max-count": 2})"));
    EXPECT_EQ("max-count=1", Outcome(R"({"maxCount": 1, "max-count": 2})"));
    EXPECT_EQ("null member 10 @14 /max-count\n", NotesOf(R"({"max-count": null, "maxCount": 1})"));
    EXPECT_EQ("duplicate member 24 @19 /subBag/dashed-name\n",
              NotesOf(R"({"subBag":{"n": 1, "dashed-name": 1, "dashedName": 2}})"));
}

TEST_F(ReadingDiagnostics, IntegersThatWrapInRuns) {
    EXPECT_EQ("wrapped integer 32 @14 /bigList/0/0\n", NotesOf(R"({"bigList": [[5000000000,4],[]]})"));
    EXPECT_EQ("wrapped integer 32 @20 /bigList/1/2\n", NotesOf(R"({"bigList": [0,[0,4,5000000000]]})"));
    EXPECT_EQ("", NotesOf(R"({"bigList": [["5000000000","4"],[]]})"));
}

TEST_F(ReadingDiagnostics, CountsOfHoursThatWrap) {
    EXPECT_EQ("wrapped integer 19 @10 /hours\n", NotesOf(R"({"hours": "4294967297"})"));
    EXPECT_EQ("wrapped integer 19 @10 /hours\n", NotesOf(R"({"hours": 4294967295})"));
    EXPECT_EQ("wrapped integer 19 @10 /hours\n", NotesOf(R"({"hours": 8589934591})")) << "once, not twice";
    EXPECT_EQ("wrapped integer 38 @19 /hoursList/1\n", NotesOf(R"({"hoursList": ["1","4294967297"]})"));
    EXPECT_EQ("", NotesOf(R"({"hours": "2147483647", "seconds": "4294967297"})"));
}

TEST_F(ReadingDiagnostics, RealsThatLoseDigits) {
    EXPECT_EQ("lost digits 15 @9 /real\n", NotesOf(R"({"real": 4e-15})"));
    EXPECT_EQ("lost digits 15 @9 /real\n", NotesOf(R"({"real": 1e-400})"));
    EXPECT_EQ("", NotesOf(R"({"real": 0e-400})"));
    EXPECT_EQ("lost digits 15 @9 /real\n", NotesOf(R"({"real": -0.000000000000001e-1})"));
    EXPECT_EQ("lost digits 35 @15 /realList/1\n", NotesOf(R"({"realList":[1,0.123456789012345678]})"));
    EXPECT_EQ("lost digits 35 @15 /realList/0/0\n", NotesOf(R"({"realList": [[0.123456789012345678,4],[]]})"));
    EXPECT_EQ("lost digits 15 @9 /real\n", NotesOf(R"({"real": 0.123456789012345678})"));
    EXPECT_EQ("", NotesOf(R"({"real": 0.12345678901234})"));
}

TEST_F(ReadingDiagnostics, NullMembers) { EXPECT_EQ("null member 17 @9 /text\n", NotesOf(R"({"text": null})")); }

TEST_F(ReadingDiagnostics, NestedListsThatAreNoRuns) {
    EXPECT_EQ("skipped run 30 @15 /intList/1\n", NotesOf(R"({"intList": [1,[2]]})"));
    EXPECT_EQ("skipped run 30 @13 /intList/0\n", NotesOf(R"({"intList": [[1,2,3,4]]})"));
    EXPECT_EQ("", NotesOf(R"({"intList": [[1,5,2],[]]})"));
    EXPECT_EQ("skipped run 37 @14 /textList/0\n", NotesOf(R"({"textList": [["a","5"],"b"]})"));
    EXPECT_EQ("skipped run 40 @16 /secretList/0\n", NotesOf(R"({"secretList": [["a","5"]]})"));
    EXPECT_EQ("skipped run 41 @19 /paramTypeList/0\n", NotesOf(R"({"paramTypeList": [["int-rle","5"]]})"));
    EXPECT_EQ("skipped run 36 @19 /flagList/1\n", NotesOf(R"({"flagList": [true,["true","5"]]})"));
    EXPECT_EQ("skipped run 34 @27 /smallRealList/2\n", NotesOf(R"({"smallRealList": [1,[2,5],[3]]})"));
}

TEST_F(ReadingDiagnostics, ArraysForStructuresOfMembers) {
    EXPECT_EQ("ignored value 70 @12 /myModel\n", NotesOf(R"({"myModel": ["a"]})"));
}

// An element or an entry without a text is read as the empty one.
TEST_F(ReadingDiagnostics, ValuesInPlaceOfTexts) {
    EXPECT_EQ("ignored value 37 @19 /textList/1\nignored value 37 @25 /textList/2\n",
              NotesOf(R"({"textList": ["a", null, {}]})"));
    EXPECT_EQ("ignored value 50 @16 /myMap/k\nignored value 50 @27 /myMap/l\nignored value 50 @37 /myMap/m\n",
              NotesOf(R"({"myMap": {"k": null, "l": [1], "m": {}}})"));
    EXPECT_EQ("ignored value 30 @13 /intList/0\n", NotesOf(R"({"intList": [null]})")) << "also where reading fails";
}

TEST_F(ReadingDiagnostics, TextsOfStructuresInListForm) {
    EXPECT_EQ("wrapped integer 73 @14 /row/1\nignored value 73 @26 /row/2\nignored value 73 @32 /row/3\n",
              NotesOf(R"({"row": ["a", 4294967296, null, [1]]})"));
    EXPECT_EQ("wrapped integer 74 @18 /rows/1/0\n", NotesOf(R"({"rows": [["a"], [9999999999]]})"));
}

TEST_F(ReadingDiagnostics, UnderShortNames) {
    const TestSession session(true);
    EXPECT_EQ("null member 17 @7 /tx\n", NotesOf(R"({"tx": null})"));
    EXPECT_EQ("wrapped integer 12 @7 /bi\nduplicate member 0 @1 /mc\n",
              NotesOf(R"({"bi": 4294967296})") + NotesOf(R"({"mc": 1, "mc": 2})"));
}

TEST_F(ReadingDiagnostics, LinesAndColumns) {
    class Places final : public IReadingDiagnostics {
    public:
        void Report(Leniency, int, const TextLocation& location) override {
            text += std::to_string(location.line) + ":" + std::to_string(location.column) + " ";
        }
        std::string text;
    } places;
    m_json.SetDiagnostics(&places);
    Read("{\n  \"text\": null,\n  \"n\": 1, \"n\": 2\n}\n;");
    EXPECT_EQ("3:3 2:11 5:1 ", places.text);
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
    EXPECT_STREQ("unknown leniency", GetLeniencyText(static_cast<Leniency>(99)));
}

}  // namespace
