// How structures are read: every call of a structure serializer, every bag that is made and every value that is stored,
// in order.
#include <qvpreslayer/IStructureSerializer.h>
#include <qvpreslayer/JSONSerializer.h>

#include <string>
#include <vector>

#include "json/JSONTestSupport.h"

namespace {

constexpr int kBag = 1;
constexpr int kInner = 2;
constexpr int kItems = 3;
constexpr int kMap = 4;
constexpr int kModel = 5;
constexpr int kN = 6;
constexpr int kOuter = 7;
constexpr int kRow = 8;
constexpr int kRows = 9;
constexpr int kNone = 10;
constexpr int kZ = 11;  // a structure whose serializer answers nothing

// The names that the notes use, by identifier.
const char* const kNames[] = {"", "bag", "inner", "items", "map", "model", "n", "outer", "row", "rows", "none", "z"};

class Notes;

// A bag with a number, in the order in which bags were made, that notes what is stored in it.
class NotingBag : public BaseParameters {
public:
    explicit NotingBag(Notes& notes);

    void SetParameter(int id, RefCntPtr<IParameter> value) override;
    int Number() const { return m_number; }

protected:
    ~NotingBag() override;
    RefCntPtr<BaseParameters> DoEmptyClone() override { return RefCntPtr<BaseParameters>(new NotingBag(m_notes)); }

private:
    Notes& m_notes;
    int m_number;
};

// Everything that happened, one entry each.
class Notes {
public:
    void Add(const std::string& note) { m_text += note + "\n"; }

    int AddBag() {
        Add("new #" + std::to_string(m_bags));
        ++m_alive;
        return m_bags++;
    }
    void RemoveBag() { --m_alive; }

    const std::string& Text() const { return m_text; }
    int BagsAlive() const { return m_alive; }

    static std::string Bag(const IParameters* bag) {
        const auto* noting = dynamic_cast<const NotingBag*>(bag);
        return noting ? "#" + std::to_string(noting->Number()) : "null";
    }

    static std::string Value(const IParameter* value) {
        if (value == nullptr) {
            return "null";
        }
        if (const auto* bag = dynamic_cast<const BagParameter*>(value)) {
            return Bag(bag->GetValue().Get());
        }
        if (const auto* text = dynamic_cast<const ValParameter<TString>*>(value)) {
            return text->GetValue().ToUtf8();
        }
        if (const auto* number = dynamic_cast<const ValParameter<int>*>(value)) {
            return std::to_string(number->GetValue());
        }
        if (const auto* texts = dynamic_cast<const ValParameter<std::vector<TString>>*>(value)) {
            return BagDescription::Listed(texts->GetValue());
        }
        return "?";
    }

private:
    std::string m_text;
    int m_bags = 0;
    int m_alive = 0;
};

NotingBag::NotingBag(Notes& notes) : m_notes(notes), m_number(notes.AddBag()) {}
NotingBag::~NotingBag() { m_notes.RemoveBag(); }

void NotingBag::SetParameter(int id, RefCntPtr<IParameter> value) {
    m_notes.Add("#" + std::to_string(m_number) + " " + kNames[id] + " = " + Notes::Value(value.Get()));
    BaseParameters::SetParameter(id, value);
}

// Notes its calls. Its structures are texts such as "model<#1>", of the bag that they were made from.
class NotingSerializer : public IStructureSerializer {
public:
    NotingSerializer(Notes& notes, std::string name, bool listForm, bool answersNothing = false)
        : m_notes(notes), m_name(std::move(name)), m_listForm(listForm), m_answersNothing(answersNothing) {}

    void Serialize(RefCntPtr<const IParameter>, SerializeStructure&, int, bool) const override {
        m_notes.Add(m_name + ".Serialize");
    }
    std::vector<RefCntPtr<const IParameter>> SplitList(RefCntPtr<const IParameter>) const override {
        m_notes.Add(m_name + ".SplitList");
        return {};
    }
    std::map<TString, RefCntPtr<const IParameter>> SplitMap(RefCntPtr<const IParameter>) const override {
        m_notes.Add(m_name + ".SplitMap");
        return {};
    }

    bool IsListForm() const override {
        m_notes.Add(m_name + ".IsListForm()");
        return m_listForm;
    }

    void PrepareElement(int id, RefCntPtr<IParameters> elementBag, RefCntPtr<IParameters> recordedBag) const override {
        m_notes.Add(m_name + ".PrepareElement(" + kNames[id] + ", " + Notes::Bag(elementBag.Get()) + ", " +
                    Notes::Bag(recordedBag.Get()) + ") model in it: " + Entry(*recordedBag, kModel));
    }

    RefCntPtr<IParameter> FromParameters(int id, RefCntPtr<IParameters> bag) const override {
        m_notes.Add(m_name + ".FromParameters(" + kNames[id] + ", " + Notes::Bag(bag.Get()) + ")");
        if (m_answersNothing) {
            return nullptr;
        }
        return Text(TString::FromUtf8(m_name + "<" + Notes::Bag(bag.Get()) + ">"));
    }

    RefCntPtr<IParameter> MakeList(const std::vector<RefCntPtr<IParameter>>& elements) const override {
        std::string list;
        for (const auto& element : elements) {
            list += (list.empty() ? "" : ",") + Notes::Value(element.Get());
        }
        m_notes.Add(m_name + ".MakeList(" + list + ")");
        return Text(TString::FromUtf8("list of " + m_name));
    }

    RefCntPtr<IParameter> MakeMap(const std::map<TString, RefCntPtr<IParameter>>& entries) const override {
        std::string map;
        for (const auto& [key, element] : entries) {
            map += (map.empty() ? "" : ",") + key.ToUtf8() + ":" + Notes::Value(element.Get());
        }
        m_notes.Add(m_name + ".MakeMap(" + map + ")");
        return Text(TString::FromUtf8("map of " + m_name));
    }

private:
    static std::string Entry(const IParameters& bag, int id) {
        return bag.HasParameter(id) ? Notes::Value(&bag.GetParameter(id)) : "-";
    }

    Notes& m_notes;
    std::string m_name;
    bool m_listForm;
    bool m_answersNothing;
};

class JSONReaderStructures : public testing::Test {
protected:
    class Registry : public TestRegistry {
    public:
        explicit Registry(Notes& notes) : m_notes(notes) {
            Add(L"doc", 1, 99, [&notes](AbstractParamAdder& adder) {
                const auto form = [&notes](const char* name, bool listForm, bool answersNothing = false) {
                    return new NotingSerializer(notes, name, listForm, answersNothing);
                };
                adder.AddBag(kBag, L"bag");
                adder.AddStructure(kInner, L"inner", form("inner", false));
                adder.AddStructureList(kItems, L"items", form("items", false));
                adder.AddStructureMap(kMap, L"map", form("map", false));
                adder.AddStructure(kModel, L"model", form("model", false));
                adder.AddSimple(kN, L"n", new ParameterTypeSerializer<int>);
                adder.AddStructure(kOuter, L"outer", form("outer", false));
                adder.AddStructure(kRow, L"row", form("row", true));
                adder.AddStructureList(kRows, L"rows", form("rows", true));
                adder.AddStructure(kNone, L"none", nullptr);
                adder.AddStructure(kZ, L"z", form("z", false, true));
            });
        }

        RefCntPtr<IParameters> CreateParameters() override { return RefCntPtr<IParameters>(new NotingBag(m_notes)); }

    private:
        Notes& m_notes;
    };

    // What happens while the text is read.
    std::string NotesOf(std::string_view json) {
        m_bag.Reset();
        m_notes = Notes();
        m_bag = m_json.ToParameters(TString::FromUtf8(json));
        return m_notes.Text();
    }

    Notes m_notes;
    Registry m_registry{m_notes};
    JSONSerializer m_json{L"doc"};
    RefCntPtr<IParameters> m_bag;  // the last one read
};

}  // namespace

TEST_F(JSONReaderStructures, BagIsStoredBeforeItIsFilledAndAgainAfterwards) {
    EXPECT_EQ(
        "new #0\n"
        "new #1\n"
        "#0 bag = #1\n"
        "#1 n = 5\n"
        "#0 bag = #1\n",
        NotesOf(R"({"bag":{"n":5}})"));
}

TEST_F(JSONReaderStructures, StructureReplacesTheBagThatStoodInItsPlace) {
    EXPECT_EQ(
        "new #0\n"
        "new #1\n"
        "#0 model = #1\n"
        "#1 n = 5\n"
        "model.FromParameters(model, #1)\n"
        "#0 model = null\n"
        "#0 model = model<#1>\n",
        NotesOf(R"({"model":{"n":5}})"));
    EXPECT_EQ("model<#1>", Notes::Value(&m_bag->GetParameter(kModel)));
}

TEST_F(JSONReaderStructures, StructureWithoutASerializerStaysABag) {
    EXPECT_EQ(
        "new #0\n"
        "new #1\n"
        "#0 none = #1\n"
        "#1 n = 5\n",
        NotesOf(R"({"none":{"n":5}})"));
    EXPECT_EQ("#1", Notes::Value(&m_bag->GetParameter(kNone)));
}

TEST_F(JSONReaderStructures, StructureThatComesToNothingIsAbsent) {
    EXPECT_EQ(
        "new #0\n"
        "new #1\n"
        "#0 z = #1\n"
        "z.FromParameters(z, #1)\n"
        "#0 z = null\n"
        "#0 z = null\n",
        NotesOf(R"({"z":{}})"));
    EXPECT_FALSE(m_bag->HasParameter(kZ));
}

TEST_F(JSONReaderStructures, NestedStructuresAreMadeFromTheInsideOut) {
    EXPECT_EQ(
        "new #0\n"
        "new #1\n"
        "#0 outer = #1\n"
        "new #2\n"
        "#1 inner = #2\n"
        "#2 n = 1\n"
        "inner.FromParameters(inner, #2)\n"
        "#1 inner = null\n"
        "#1 inner = inner<#2>\n"
        "outer.FromParameters(outer, #1)\n"
        "#0 outer = null\n"
        "#0 outer = outer<#1>\n",
        NotesOf(R"({"outer":{"inner":{"n":1}}})"));
}

TEST_F(JSONReaderStructures, ArrayIsKeptOnlyByAStructureInListForm) {
    EXPECT_EQ(
        "new #0\n"
        "row.IsListForm()\n"
        "new #1\n"
        "#1 row = [a,1,true,,,]\n"
        "row.FromParameters(row, #1)\n"
        "#0 row = row<#1>\n",
        NotesOf(R"({"row":["a",1,true,null,{"k":1},[2]]})"));
    EXPECT_EQ(
        "new #0\n"
        "model.IsListForm()\n",
        NotesOf(R"({"model":["a"]})"));
    EXPECT_FALSE(m_bag->HasParameter(kModel));
}

TEST_F(JSONReaderStructures, ObjectIsReadAlsoByAStructureInListForm) {
    EXPECT_EQ(
        "new #0\n"
        "new #1\n"
        "#0 row = #1\n"
        "#1 n = 1\n"
        "row.FromParameters(row, #1)\n"
        "#0 row = null\n"
        "#0 row = row<#1>\n",
        NotesOf(R"({"row":{"n":1}})"));
}

TEST_F(JSONReaderStructures, StructureListMakesEachElementAndThenTheList) {
    EXPECT_EQ(
        "new #0\n"
        "new #1\n"
        "items.IsListForm()\n"
        "#1 n = 1\n"
        "items.FromParameters(items, #1)\n"
        "new #2\n"
        "items.IsListForm()\n"
        "#2 n = 2\n"
        "items.FromParameters(items, #2)\n"
        "items.MakeList(items<#1>,items<#2>)\n"
        "#0 items = list of items\n",
        NotesOf(R"({"items":[{"n":1},{"n":2}]})"));
}

TEST_F(JSONReaderStructures, EmptyStructureListIsMadeToo) {
    EXPECT_EQ(
        "new #0\n"
        "items.MakeList()\n"
        "#0 items = list of items\n",
        NotesOf(R"({"items":[]})"));
}

TEST_F(JSONReaderStructures, StructureListInListFormHandsOverTexts) {
    EXPECT_EQ(
        "new #0\n"
        "new #1\n"
        "rows.IsListForm()\n"
        "#1 rows = [a,2]\n"
        "rows.FromParameters(rows, #1)\n"
        "new #2\n"
        "rows.IsListForm()\n"
        "#2 rows = []\n"
        "rows.FromParameters(rows, #2)\n"
        "rows.MakeList(rows<#1>,rows<#2>)\n"
        "#0 rows = list of rows\n",
        NotesOf(R"({"rows":[["a",2],[]]})"));
}

TEST_F(JSONReaderStructures, StructureMapGoesUpByKeyAndHandsOverNoBagForNull) {
    EXPECT_EQ(
        "new #0\n"
        "new #1\n"
        "#1 n = 1\n"
        "map.FromParameters(map, #1)\n"
        "new #2\n"
        "map.FromParameters(map, null)\n"
        "new #3\n"
        "map.FromParameters(map, #3)\n"
        "map.MakeMap(aB:map<#1>,b-c:map<null>,d:map<#3>)\n"
        "#0 map = map of map\n",
        NotesOf(R"({"map":{"d":{},"b-c":null,"aB":{"n":1}}})"));
}

TEST_F(JSONReaderStructures, EmptyStructureMapIsMadeToo) {
    EXPECT_EQ(
        "new #0\n"
        "map.MakeMap()\n"
        "#0 map = map of map\n",
        NotesOf(R"({"map":{}})"));
}

TEST_F(JSONReaderStructures, FirstStructurePreparesTheElementsInsideIt) {
    // It is told of the bag that owns it, which holds the structure's own bag, still being filled.
    EXPECT_EQ(
        "new #0\n"
        "new #1\n"
        "#0 model = #1\n"
        "new #2\n"
        "items.IsListForm()\n"
        "#2 n = 1\n"
        "model.PrepareElement(items, #2, #0) model in it: #1\n"
        "items.FromParameters(items, #2)\n"
        "new #3\n"
        "items.IsListForm()\n"
        "#3 n = 2\n"
        "model.PrepareElement(items, #3, #0) model in it: #1\n"
        "items.FromParameters(items, #3)\n"
        "items.MakeList(items<#2>,items<#3>)\n"
        "#1 items = list of items\n"
        "model.FromParameters(model, #1)\n"
        "#0 model = null\n"
        "#0 model = model<#1>\n",
        NotesOf(R"({"model":{"items":[{"n":1},{"n":2}]}})"));
    EXPECT_EQ("#0", Notes::Bag(m_bag.Get()));
}

TEST_F(JSONReaderStructures, ElementsReadBeforeTheFirstStructureAreNotPrepared) {
    EXPECT_EQ(std::string::npos, NotesOf(R"({"model":{},"items":[{"n":1}]})").find("PrepareElement"));
}

TEST_F(JSONReaderStructures, FirstStructureStaysTheOneForTheRestOfTheCall) {
    const std::string notes = NotesOf(R"({"model":{"n":1},"outer":{"items":[{}]},"rows":[[]]})");
    EXPECT_NE(std::string::npos, notes.find("model.PrepareElement(items, #3, #0) model in it: model<#1>\n"));
    EXPECT_NE(std::string::npos, notes.find("model.PrepareElement(rows, #4, #0) model in it: model<#1>\n"));
    EXPECT_EQ(std::string::npos, notes.find("outer.PrepareElement"));
}

TEST_F(JSONReaderStructures, FirstStructureIsTheOutermost) {
    const std::string notes = NotesOf(R"({"outer":{"inner":{"items":[{}]}}})");
    EXPECT_NE(std::string::npos, notes.find("outer.PrepareElement(items, #3, #0) model in it: -\n"));
    EXPECT_EQ(std::string::npos, notes.find("inner.PrepareElement"));
}

TEST_F(JSONReaderStructures, FirstStructureIsRecordedWithTheBagThatOwnsIt) {
    const std::string notes = NotesOf(R"({"bag":{"model":{"items":[{}]}}})");
    EXPECT_NE(std::string::npos, notes.find("model.PrepareElement(items, #3, #1) model in it: #2\n"));
}

TEST_F(JSONReaderStructures, OnlyObjectsOfStructuresAreRecorded) {
    // Neither arrays, nor the serializers of lists and maps, nor a structure without a serializer.
    for (const char* const json :
         {R"({"row":["a"],"rows":[["b"]]})", R"({"items":[{"items":[{}]}]})", R"({"map":{"k":{"items":[{}]}}})",
          R"({"none":{"items":[{}]},"rows":[[]]})", R"({"model":["a"],"rows":[[]]})"}) {
        SCOPED_TRACE(json);
        EXPECT_EQ(std::string::npos, NotesOf(json).find("PrepareElement"));
    }
}

TEST_F(JSONReaderStructures, AStructureInListFormInsideAnotherIsPrepared) {
    EXPECT_EQ(
        "new #0\n"
        "new #1\n"
        "#0 model = #1\n"
        "row.IsListForm()\n"
        "new #2\n"
        "#2 row = [a]\n"
        "model.PrepareElement(row, #2, #0) model in it: #1\n"
        "row.FromParameters(row, #2)\n"
        "#1 row = row<#2>\n"
        "model.FromParameters(model, #1)\n"
        "#0 model = null\n"
        "#0 model = model<#1>\n",
        NotesOf(R"({"model":{"row":["a"]}})"));
}

TEST_F(JSONReaderStructures, EntriesOfMapsAreNotPrepared) {
    EXPECT_EQ(std::string::npos, NotesOf(R"({"model":{"map":{"k":{},"l":null}}})").find("PrepareElement"));
}

TEST_F(JSONReaderStructures, EachCallRecordsAnew) {
    NotesOf(R"({"model":{}})");
    EXPECT_EQ(std::string::npos, NotesOf(R"({"items":[{}]})").find("PrepareElement"));
}

TEST_F(JSONReaderStructures, AStructureInsideAListIsRecordedForTheElementsAfterIt) {
    // The first element owns the structure; both elements are prepared with it, since it is known by then.
    const std::string notes = NotesOf(R"({"items":[{"inner":{}},{"n":1}]})");
    EXPECT_NE(std::string::npos, notes.find("inner.PrepareElement(items, #1, #1) model in it: -\n"));
    EXPECT_NE(std::string::npos, notes.find("inner.PrepareElement(items, #3, #1) model in it: -\n"));
}

TEST_F(JSONReaderStructures, PartlyFilledBagsAreDroppedOnFailure) {
    for (const char* const json :
         {R"({"bag":{"n":1},"zzz":1})", R"({"model":{"items":[{"n":1},{"n":"x"}]}})", R"({"map":{"a":{},"b":1}})",
          R"({"rows":[["a"],{}]})", R"({"bag":{"bag":{"bag":{"n":[]}}}})"}) {
        SCOPED_TRACE(json);
        m_bag.Reset();
        ASSERT_EQ(0, m_notes.BagsAlive());
        EXPECT_ANY_THROW(NotesOf(json));
        EXPECT_EQ(0, m_notes.BagsAlive());
    }
}
