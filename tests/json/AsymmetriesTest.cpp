// The table "What does not come back as it went" of docs/json.md: each row is worked out here by writing and reading,
// and must stand in the document word for word.
#include <cmath>
#include <fstream>
#include <sstream>

#include "json/JSONTestSupport.h"

namespace {

namespace table {
inline constexpr int kA = 2001;
inline constexpr int kTitle = 2002;
inline constexpr int kRange = 2003;
inline constexpr int kWhisker = 2004;
inline constexpr int kTyped = 2005;
inline constexpr int kTypedList = 2006;
inline constexpr int kRealMap = 2007;
inline constexpr int kInt64Map = 2008;
inline constexpr int kFooBar = 2009;
}  // namespace table

void RegisterTable(AbstractParamAdder& adder) {
    adder.AddSimple(table::kA, L"a", L"a", new ParameterTypeSerializer<int>);
    adder.AddSimple(table::kTitle, L"title", L"ti", new TStringSerializer);
    adder.AddStructure(table::kRange, L"range", L"ra", new BagStructureSerializer);
    adder.AddSimple(table::kWhisker, L"whisker", L"wh", new ParameterTypeSerializer<WhiskerEnd>);
    adder.AddSimple(table::kTyped, L"typed", L"ty", new ParameterTypeSerializer<DataValue>);
    adder.AddList(table::kTypedList, L"typed-list", L"tyl", new ParameterTypeSerializer<DataValue>);
    adder.AddMap(table::kRealMap, L"real-map", L"rm", new ParameterTypeSerializer<double>);
    adder.AddMap(table::kInt64Map, L"big-map", L"bm", new ParameterTypeSerializer<Int64>);
    adder.AddSimple(table::kFooBar, L"foo-bar", L"fb", new ParameterTypeSerializer<int>);
}

struct Row {
    std::string what;
    std::string goes;
    std::string comesBack;

    bool operator==(const Row&) const = default;
};

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << "| " << row.what << " | " << row.goes << " | " << row.comesBack << " |";
}

std::string Code(const std::string& text) { return "`" + text + "`"; }
std::string Bold(const std::string& text) { return "**" + text + "**"; }

// Behind the first separator.
std::string Behind(const std::string& text, const std::string& separator) {
    const std::size_t at = text.find(separator);
    return at == std::string::npos ? "no " + separator + " in " + text : text.substr(at + separator.size());
}

// The first three cells of each row of the table behind a heading.
std::vector<Row> ReadTable(const std::string& document, const std::string& heading) {
    std::istringstream lines(Behind(document, "\n" + heading + "\n"));
    std::vector<Row> rows;
    for (std::string line; std::getline(lines, line) && line.rfind("## ", 0) != 0;) {
        if (line.rfind("| ", 0) != 0) {
            continue;
        }
        std::vector<std::string> cells;
        for (std::size_t at = 2, end; (end = line.find(" |", at)) != std::string::npos; at = end + 3) {
            cells.push_back(line.substr(at, end - at));
        }
        if (cells.size() != 4) {
            ADD_FAILURE() << "not a row of four cells: " << line;
            continue;
        }
        rows.push_back({cells[0], cells[1], cells[2]});
    }
    if (!rows.empty()) {
        rows.erase(rows.begin());  // the heads of the columns
    }
    return rows;
}

class Asymmetries : public JSONTest {
protected:
    Asymmetries() {
        m_registry.Add(L"table", 2000, 2099, RegisterTable);
        m_registry.SetFallback(L"table", L"view");
        m_json = JSONSerializer(L"table");
    }

    struct Trip {
        std::string spelled;    // the value in the text
        std::string comesBack;  // the value as its serializer spells it, or the failure
    };

    // One parameter, written and read; in Pretty the same comes back.
    Trip Send(int id, RefCntPtr<IParameter> value) {
        const auto bag = MakeBag({{id, value}});
        const std::string text = Write(bag);
        const std::string outcome = Outcome(text);
        EXPECT_EQ(outcome, Outcome(Write(bag, JSONSerializer::Pretty)));
        std::string spelled = Behind(text, ":");
        spelled.pop_back();
        if (spelled[0] == ' ') {
            spelled.erase(0, 1);
        }
        const std::size_t equal = outcome.find('=');
        return {spelled, equal == std::string::npos ? outcome : outcome.substr(equal + 1)};
    }

    std::string SendBack(int id, RefCntPtr<IParameter> value) { return Send(id, value).comesBack; }

    Trip SendKeys(int id, const std::vector<TString>& keys) {
        std::map<TString, TString> map;
        for (const TString& key : keys) {
            map[key] = L"x";
        }
        return Send(id, Val(map));
    }

    // "failure" for the outcome that is given, which must be one; else the outcome itself.
    static std::string Failure(const std::string& expected, const std::string& outcome) {
        return outcome == expected ? "failure" : outcome;
    }

    Row WholeNumbers() {
        const Trip trip = Send(view::kInt64, Val(Int64{5000000000}));
        EXPECT_EQ("[1,705032704]", SendBack(view::kInt64List, Val(std::vector<Int64>{1, 5000000000})));
        EXPECT_EQ("{k:705032704}", SendBack(table::kInt64Map, Val(std::map<TString, Int64>{{L"k", 5000000000}})));
        EXPECT_EQ("-2147483648", SendBack(view::kInt64, Val(Int64{-2147483648})));
        EXPECT_EQ("4294967295", SendBack(view::kInt64, Val(Int64{4294967295})));
        EXPECT_EQ("2147483647", SendBack(view::kInt64, Val(Int64{-2147483649})));
        EXPECT_EQ("0", SendBack(view::kInt64, Val(Int64{4294967296})));
        const TestSession packing(false, true);
        EXPECT_EQ("[0,705032704,1410065408,2115098112]",
                  SendBack(view::kInt64List, Val(std::vector<Int64>{0, 5000000000, 10000000000, 15000000000})));
        return {"**whole numbers below -2^31 or above 2^32-1**, in values, lists, maps and steps of packed lists",
                Code("Int64") + " 5000000000 as " + Code(trip.spelled), Bold(trip.comesBack)};
    }

    Row WholeUnsigned() {
        const Trip trip = Send(view::kUInt64, Val(UInt64{18446744073709551615U}));
        const std::string handedOn = Behind(Outcome("{\"title\": " + trip.spelled + "}"), "=");
        return {"the same in `UInt64`", "18446744073709551615 as " + Code(trip.spelled),
                Failure("not parsed: 13", trip.comesBack) + ": the text is " + Code(handedOn)};
    }

    Row WholeReals() {
        const Trip trip = Send(view::kReal, Val(5000000000.0));
        EXPECT_EQ(trip.comesBack, SendBack(view::kFloat, Val(5000000000.0F)));
        EXPECT_EQ("100000000000000000000", SendBack(view::kReal, Val(1e20)));
        EXPECT_EQ("5000000000.5", SendBack(view::kReal, Val(5000000000.5)));
        return {"the same in `double` and `float`, up to 2^64", "5000000000.0 as " + Code(trip.spelled),
                Bold(trip.comesBack)};
    }

    Row Infinities() {
        const auto bag = MakeBag({{view::kReal, Val(std::numeric_limits<double>::infinity())}});
        const double back = GetParameterValue<double>(*Read(Write(bag)), view::kReal);
        return {"infinities", Code(Send(view::kReal, Val(std::numeric_limits<double>::infinity())).spelled),
                back == 1e37 ? "1e37" : std::to_string(back)};
    }

    Row NoNumber() {
        const auto bag = MakeBag({{view::kReal, Val(std::nan(""))}});
        return {"not a number, one value", Code(Send(view::kReal, Val(std::nan(""))).spelled),
                Outcome(Write(bag)).empty() ? "nothing: the parameter is missing" : Outcome(Write(bag))};
    }

    Row NoNumberInside() {
        const Trip trip = Send(view::kRealList, Val(std::vector<double>{1, std::nan("")}));
        EXPECT_EQ("not parsed: 0", SendBack(table::kRealMap, Val(std::map<TString, double>{{L"k", std::nan("")}})));
        return {"not a number in a list or map", Code(trip.spelled),
                Failure("not parsed: 0", trip.comesBack) + ", `ParameterParseException(0)`"};
    }

    Row NegativeZero() {
        const auto bag = MakeBag({{view::kReal, Val(-0.0)}});
        EXPECT_FALSE(std::signbit(GetParameterValue<double>(*Read(Write(bag)), view::kReal)));
        const Trip trip = Send(view::kReal, Val(-0.0));
        const TestSession packing(false, true);
        EXPECT_EQ("[[0,4],[]]", Send(view::kRealList, Val(std::vector<double>(4, -0.0))).spelled);
        return {"-0.0", Code(trip.spelled), trip.comesBack};
    }

    Row Digits() {
        const Trip trip = Send(view::kReal, Val(1.0 / 3));
        EXPECT_EQ("0.3333333", Send(view::kFloat, Val(1.0F / 3)).spelled);
        return {"more digits after the point than 14 (`float`: 7)", "1.0/3 as " + Code(trip.spelled), trip.comesBack};
    }

    Row SmallReals() {
        const Trip trip = Send(view::kReal, Val(4e-15));
        return {"very small reals", "4e-15 as " + Code(trip.spelled), trip.comesBack};
    }

    // The key of {"KEY":"x"}, with its quotation marks.
    static std::string KeyIn(const std::string& map) { return map.substr(1, map.find(":\"x\"") - 1); }

    Row Keys() {
        const Trip trip = SendKeys(view::kMyMap, {L"a-b"});
        EXPECT_EQ("{a-1:x,b-:x}", SendKeys(view::kMyMap, {L"a-1", L"b-"}).comesBack);
        return {"keys of maps, under verbose names", "key \"a-b\" as " + Code(KeyIn(trip.spelled)),
                "key \"" + trip.comesBack.substr(1, trip.comesBack.find(':') - 1) + "\""};
    }

    Row KeysThatMeet() {
        const auto bag = MakeBag({{view::kMyMap, Val(std::map<TString, TString>{{L"a-b", L"x"}, {L"aB", L"y"}})}});
        EXPECT_EQ(R"({"myMap":{"aB":"x","aB":"y"}})", Write(bag));
        const std::string back = Outcome(Write(bag));
        return {"two such keys that meet", "\"a-b\" and \"aB\", both as `\"aB\"`",
                back == "my-map={aB:y}" ? "one entry, that of \"aB\"" : back};
    }

    Row KeysWithQuotationMarks() {
        const Trip two = SendKeys(view::kMyMap, {L"x\":1,\"admin"});
        EXPECT_EQ("{admin:x,x:1}", two.comesBack);
        EXPECT_EQ("not valid", SendKeys(view::kMyMap, {L"\""}).comesBack);
        EXPECT_EQ("not valid", SendKeys(view::kMyMap, {L"\n"}).comesBack);
        std::string spelled = two.spelled.substr(1, two.spelled.size() - 2);
        spelled.replace(spelled.rfind("\"x\""), 3, "\"…\"");
        return {"keys of maps with quotation marks, backslashes or control characters, under verbose names",
                "key " + Code("x\":1,\"admin") + " as " + Code(spelled), "other entries, or a text that is not JSON"};
    }

    Row KeysOfNullEntries() {
        const auto send = [&](RefCntPtr<const IParameters> entry) {
            return Send(view::kByKey, Val(BagStructureSerializer::BagMap{{L"b-k", entry}}));
        };
        EXPECT_EQ("<b-k:()>", send(RefCntPtr<const IParameters>(MakeBag())).comesBack);
        const Trip trip = send({});
        return {"keys of null entries in structure maps",
                "\"b-k\" as " + Code(trip.spelled.substr(1, trip.spelled.size() - 2)),
                "\"" + trip.comesBack.substr(1, trip.comesBack.find(':') - 1) + "\""};
    }

    Row Passwords() {
        const auto bag = MakeBag({{view::kSecret, Val(PasswordString(L"x"))}});
        const auto back = Read(Write(bag));
        const bool isMask = GetParameterValue<PasswordString>(*back, view::kSecret) == PasswordString(L"********");
        return {"passwords", Code(Send(view::kSecret, Val(PasswordString(L"x"))).spelled),
                isMask ? "a password of eight asterisks" : "another password"};
    }

    Row Controls() {
        for (char16_t unit = 1; unit < 0x20; ++unit) {
            const bool escaped = std::u16string_view(u"\b\t\n\f\r").find(unit) != std::u16string_view::npos;
            const auto back = Read(Write(MakeBag({{table::kTitle, Text(TString(1, unit))}})));
            EXPECT_EQ(escaped, GetParameterValue<TString>(*back, table::kTitle) == TString(1, unit)) << int{unit};
        }
        EXPECT_EQ("\\x7f", SendBack(table::kTitle, Text(L"\u007F")));
        const Trip trip = Send(table::kTitle, Text(TString(1, u'\x1F')));
        return {"U+0001 to U+001F but tab, line feed, carriage return, backspace and form feed; U+007F",
                "U+001F as " + Code(trip.spelled), "the four characters " + Code(trip.comesBack)};
    }

    Row Zeros() {
        const TString text(1, u'\0');
        const auto bag = MakeBag({{table::kTitle, Text(text)}});
        const TString written = m_json.ToString(bag, JSONSerializer::Compact);
        const bool isRaw = written == TString(u"{\"title\": \"") + text + TString(u"\"}");
        const bool isSame = GetParameterValue<TString>(*m_json.ToParameters(written), table::kTitle) == text;
        return {"U+0000 in texts", isRaw ? "raw in the string" : "in another way", isSame ? "the same" : "another"};
    }

    Row UnknownNames() {
        const auto back = Read(R"({"whisker": "huge"})");
        const bool isLarge = GetParameterValue<WhiskerEnd>(*back, table::kWhisker) == WhiskerEnd::Large;
        EXPECT_EQ("failure: The enumeration value is not recognised.", OutcomeOf([&]() -> RefCntPtr<IParameters> {
                      Write(MakeBag({{table::kWhisker, Val(static_cast<WhiskerEnd>(99))}}));
                      return {};
                  }));
        return {"enumerations that the reader does not know", "`\"huge\"` for a `WhiskerEnd`",
                isLarge && GetEnumDefault<WhiskerEnd>() == WhiskerEnd::Large ? "`WhiskerEnd::Large`, its default"
                                                                             : "another"};
    }

    Row TypedLists() {
        const DataValue one(1);
        const DataValue two(2);
        const Trip trip = Send(table::kTypedList, Val(std::vector<DataValue>{one, two}));
        EXPECT_EQ("i:1", SendBack(table::kTyped, Val(one)));
        EXPECT_EQ("[i:1,i:5,i:7,i:9,i:11]", Behind(Outcome(R"({"typedList": ["i:1",["i:5","4","2"],[]]})"), "="));
        const bool fails = trip.comesBack.rfind("logic: ", 0) == 0 || trip.comesBack.rfind("failure: ", 0) == 0;
        return {"lists of typed values", "integers 1, 2 as " + Code(trip.spelled), fails ? "failure" : trip.comesBack};
    }

    Row Hours() {
        const std::string text = "\"4294967297\"";
        return {"durations in hours and minutes", "the text " + Code(text),
                Behind(Outcome("{\"hours\": " + text + "}"), "=") + " hour"};
    }

    Row MembersTwice() {
        const std::string text = R"({"a": 1, "a": 2})";
        EXPECT_EQ("foo-bar=2", Outcome(R"({"fooBar": 2, "foo-bar": 1})"));
        return {"members twice", Code(text), Behind(Outcome(text), "a=")};
    }

    std::string NothingOr(const std::string& outcome) { return outcome.empty() ? "nothing" : outcome; }

    Row NullMembers() {
        const std::string text = R"({"title": null})";
        return {"`null` members", Code(text), NothingOr(Outcome(text))};
    }

    Row NullEntries() {
        const std::string text = R"({"byKey": {"k": null}})";
        const std::string back = Outcome(text);
        return {"null entries of structure maps", Code(text),
                back == "by-key=<k:null>" ? "what the serializer makes of no bag" : back};
    }

    Row TextBehind() {
        const std::string text = R"({"a": 1})";
        return {"text after the value", Code(text + " x"),
                Outcome(text + " x") == Outcome(text) ? "the bag of " + Code(text) : Outcome(text + " x")};
    }

    Row NumbersForTexts() {
        const auto title = [&](const std::string& number) {
            return "\"" + Behind(Outcome("{\"title\": " + number + "}"), "=") + "\"";
        };
        return {"a number for a text", "`1e3`, `5000000000` for a title", title("1e3") + ", " + title("5000000000")};
    }

    Row ArraysForStructures() {
        const std::string text = R"({"range": [1, 2]})";
        return {"an array for a structure that is not in list form", Code(text), NothingOr(Outcome(text))};
    }

    Row OtherForms() {
        const auto bag = MakeBag({{table::kA, Val(3)}, {table::kTitle, Text(L"t")}});
        EXPECT_EQ("not valid", Outcome(Write(bag, JSONSerializer::UnquotedNames)));
        EXPECT_EQ("runtime: the JSON root is integer, not object", Outcome(Write(bag, JSONSerializer::BareRawNames)));
        const std::string text = Write(bag, JSONSerializer::Bare);
        return {"the forms `Bare`, `BareRawNames`, `UnquotedNames`", Code(text),
                Failure("runtime: the JSON root is integer, not object", Outcome(text))};
    }

    static RefCntPtr<TestBag> Nested(int levels) {
        auto bag = MakeBag();
        while (--levels > 0) {
            bag = MakeBag({{view::kSubBag, BagVal(bag)}});
        }
        return bag;
    }

    Row DeepBags() {
        EXPECT_NE("not valid", Outcome(Write(Nested(512))));
        const std::string text = Write(Nested(1000));
        EXPECT_THROW(Write(Nested(1001)), QuorvelException);
        EXPECT_EQ("not valid", Outcome(Write(Nested(513))));
        return {"bags nested deeper than 512", text.empty() ? "not written" : "written up to 1,000 levels",
                Failure("not valid", Outcome(text))};
    }
};

}  // namespace

TEST_F(Asymmetries, AreThoseOfTheDocument) {
    const std::vector<Row> executed = {
        WholeNumbers(),
        WholeUnsigned(),
        WholeReals(),
        Infinities(),
        NoNumber(),
        NoNumberInside(),
        NegativeZero(),
        Digits(),
        SmallReals(),
        Keys(),
        KeysThatMeet(),
        KeysWithQuotationMarks(),
        KeysOfNullEntries(),
        Passwords(),
        Controls(),
        Zeros(),
        UnknownNames(),
        TypedLists(),
        Hours(),
        MembersTwice(),
        NullMembers(),
        NullEntries(),
        TextBehind(),
        NumbersForTexts(),
        ArraysForStructures(),
        OtherForms(),
        DeepBags(),
    };
    std::ifstream file(QV_TEST_DOCUMENTS "/json.md");
    std::ostringstream document;
    document << file.rdbuf();
    const std::vector<Row> rows = ReadTable(document.str(), "## What does not come back as it went");
    ASSERT_EQ(executed.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(executed[i], rows[i]);
    }
}
