// Presentation models as JSON text.
#include <qvpreslayer/JSONSerializer.h>

#include <string>
#include <vector>

#include "json/JSONTestSupport.h"

namespace {

constexpr int kModel = 70;      // "my-model", a structure
constexpr int kBareModel = 75;  // a structure without a serializer
constexpr int kAB = 80;         // "a-b", "s-ab"
constexpr int kC = 81;          // "c", "sc"
constexpr int kNumbers = 90;    // "numbers", "nu"

// A model with two members and a list of numbers.
class Model : public PresentationModel {
public:
    explicit Model(int id = kModel) : m_id(id) {}

    int GetDefaultParamID() const override { return m_id; }
    RefCntPtr<IParameters> AsIParameters() override {
        ++m_asked;
        return m_empty ? RefCntPtr<IParameters>(MakeBag()) : PresentationModel::AsIParameters();
    }

    std::vector<int> numbers;

    // The model's bag holds nothing.
    void BeEmpty() { m_empty = true; }
    int TimesAsked() const { return m_asked; }

protected:
    ~Model() override = default;

private:
    int m_id;
    bool m_empty = false;
    int m_asked = 0;
};

// What the serializer of models was called with.
struct Call {
    const IParameter* value = nullptr;
    int id = 0;
    bool ownComposite = false;
    bool verboseNames = false;
    bool compressArrays = false;
};

// Writes a Model; the operations for lists, maps and reading are those of bags, and not used here.
class ModelSerializer : public BagStructureSerializer {
public:
    explicit ModelSerializer(std::vector<Call>& calls) : m_calls(calls) {}

    void Serialize(RefCntPtr<const IParameter> value, SerializeStructure& stream, int id,
                   bool ownComposite) const override {
        m_calls.push_back({value.Get(), id, ownComposite, stream.GetUseVerboseNames(), stream.GetCompressArrays()});
        const auto model = DynamicPtrCast<const Model>(value->GetPresentationModel());
        if (ownComposite) {
            const CompositeStructure scope(id, stream);
            WriteMembers(*model, stream);
        } else {
            WriteMembers(*model, stream);
        }
    }

private:
    static void WriteMembers(const Model& model, SerializeStructure& stream) {
        stream.Parameter(kAB, L"1");
        stream.Parameter(kC, L"t");
        if (!model.numbers.empty()) {
            ParameterTypeSerializer<int>().SerializeVector(stream, kNumbers, model.numbers);
        }
    }

    std::vector<Call>& m_calls;
};

class PresModelToString : public testing::Test {
protected:
    PresModelToString() {
        RegisterCoreNamespaceParameters(m_registry, L"qvcore");
        m_registry.Add(L"models", 1, 999, [this](AbstractParamAdder& adder) {
            adder.AddStructure(kModel, L"my-model", L"m-m", new ModelSerializer(m_calls));
            adder.AddStructure(kBareModel, L"bare-model", nullptr);
            adder.AddSimple(kAB, L"a-b", L"s-ab", new ParameterTypeSerializer<int>);
            adder.AddSimple(kC, L"c", L"sc", new TStringSerializer);
            adder.AddList(kNumbers, L"numbers", L"nu", new ParameterTypeSerializer<int>);
        });
    }

    std::string Written(bool verboseNames, JSONSerializer::OutputType type) const {
        TString out;
        m_json.PresModelToString(m_model, verboseNames, type, out);
        return out.ToUtf8();
    }

    std::vector<Call> m_calls;
    TestRegistry m_registry;
    JSONSerializer m_json{L"models"};
    RefCntPtr<Model> m_model{new Model};
};

constexpr JSONSerializer::OutputType kAllTypes[] = {JSONSerializer::Pretty, JSONSerializer::Compact,
                                                    JSONSerializer::Bare, JSONSerializer::BareRawNames,
                                                    JSONSerializer::UnquotedNames};

}  // namespace

TEST_F(PresModelToString, EveryFormUnderVerboseNames) {
    const char* const texts[] = {
        "{\n  \"myModel\": {\n    \"aB\": 1, \n    \"c\": \"t\"\n  }\n}",
        R"({"myModel":{"aB": 1,"c": "t"}})",
        R"({"aB": 1,"c": "t"})",
        R"({"a-b": 1,"c": "t"})",
        R"({myModel:{aB: 1,c: "t"}})",
    };
    for (const auto type : kAllTypes) {
        SCOPED_TRACE(type);
        EXPECT_EQ(texts[type], Written(true, type));
    }
}

TEST_F(PresModelToString, EveryFormUnderShortNames) {
    const char* const texts[] = {
        "{\n  \"m-m\": {\n    \"s-ab\": 1, \n    \"sc\": \"t\"\n  }\n}",
        R"({"m-m":{"s-ab": 1,"sc": "t"}})",
        R"({"s-ab": 1,"sc": "t"})",
        R"({"s-ab": 1,"sc": "t"})",
        R"({m-m:{s-ab: 1,sc: "t"}})",
    };
    for (const auto type : kAllTypes) {
        SCOPED_TRACE(type);
        EXPECT_EQ(texts[type], Written(false, type));
    }
}

TEST_F(PresModelToString, TwoArgumentsTakeTheNameFormFromTheOptions) {
    EXPECT_EQ(TString(LR"({"myModel":{"aB": 1,"c": "t"}})"),
              m_json.PresModelToString(m_model, JSONSerializer::Compact));
    const TestSession session(true);
    EXPECT_EQ(TString(LR"({"m-m":{"s-ab": 1,"sc": "t"}})"), m_json.PresModelToString(m_model, JSONSerializer::Compact));
}

TEST_F(PresModelToString, FourArgumentsDoNotAskForTheNameForm) {
    const TestSession session(true);
    EXPECT_EQ(R"({"myModel":{"aB": 1,"c": "t"}})", Written(true, JSONSerializer::Compact));
}

TEST_F(PresModelToString, AppendsToTheText) {
    TString out(L"before ");
    m_json.PresModelToString(m_model, true, JSONSerializer::Bare, out);
    m_json.PresModelToString(m_model, true, JSONSerializer::Compact, out);
    EXPECT_EQ(TString(LR"(before {"aB": 1,"c": "t"}{"myModel":{"aB": 1,"c": "t"}})"), out);
}

TEST_F(PresModelToString, CallsTheSerializerOnceWithTheParameterOfTheModelsBag) {
    Written(true, JSONSerializer::Compact);
    ASSERT_EQ(1U, m_calls.size());
    EXPECT_EQ(kModel, m_calls[0].id);
    EXPECT_TRUE(m_calls[0].ownComposite);
    EXPECT_TRUE(m_calls[0].verboseNames);
    EXPECT_NE(nullptr, m_calls[0].value);
    EXPECT_EQ(1, m_model->TimesAsked());

    Written(false, JSONSerializer::Compact);
    ASSERT_EQ(2U, m_calls.size());
    EXPECT_FALSE(m_calls[1].verboseNames);
}

TEST_F(PresModelToString, ListsArePackedWhenTheOptionsAskForIt) {
    m_model->numbers = {1, 2, 3, 4, 5};
    EXPECT_EQ(R"({"aB": 1,"c": "t","numbers":[1,2,3,4,5]})", Written(true, JSONSerializer::Bare));
    EXPECT_FALSE(m_calls.back().compressArrays);
    const TestSession session(false, true);
    EXPECT_EQ(R"({"aB": 1,"c": "t","numbers":[[1,5,1],[]]})", Written(true, JSONSerializer::Bare));
    EXPECT_TRUE(m_calls.back().compressArrays);
}

TEST_F(PresModelToString, TheModelsOwnIdentifierFindsTheSerializer) {
    const RefCntPtr<Model> other(new Model(kC));  // not a structure
    const auto e =
        Caught<ParameterNotFoundException>([&] { m_json.PresModelToString(other, JSONSerializer::Compact); });
    ASSERT_TRUE(e);
    EXPECT_EQ(kC, e->GetID());
    EXPECT_EQ(0, other->TimesAsked());  // the serializer is sought before the model is asked for its bag
}

TEST_F(PresModelToString, UnregisteredIdentifierThrows) {
    const RefCntPtr<Model> other(new Model(5000));
    const auto e =
        Caught<ParameterNotFoundException>([&] { m_json.PresModelToString(other, JSONSerializer::Compact); });
    ASSERT_TRUE(e);
    EXPECT_EQ(5000, e->GetID());
}

TEST_F(PresModelToString, NullSerializerIsALogicError) {
    const RefCntPtr<Model> other(new Model(kBareModel));
    const auto e = Caught<LogicException>([&] { m_json.PresModelToString(other, JSONSerializer::Compact); });
    ASSERT_TRUE(e);
    EXPECT_STREQ("m_ptr", e->GetExpression());
}

TEST_F(PresModelToString, ABagWithoutTheParameterThrows) {
    m_model->BeEmpty();
    const auto e =
        Caught<MissingParameterCommandException>([&] { m_json.PresModelToString(m_model, JSONSerializer::Compact); });
    ASSERT_TRUE(e);
    EXPECT_EQ(kModel, e->GetParameterID());
    EXPECT_TRUE(m_calls.empty());
}

TEST_F(PresModelToString, NullModelIsALogicErrorAndTheBraceStays) {
    const struct {
        JSONSerializer::OutputType type;
        const wchar_t* left;
    } cases[] = {
        {JSONSerializer::Pretty, L"{\n"},    {JSONSerializer::Compact, L"{"},       {JSONSerializer::Bare, L""},
        {JSONSerializer::BareRawNames, L""}, {JSONSerializer::UnquotedNames, L"{"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.type);
        TString out;
        const auto e = Caught<LogicException>([&] { m_json.PresModelToString(nullptr, true, c.type, out); });
        ASSERT_TRUE(e);
        EXPECT_STREQ("m_ptr", e->GetExpression());
        EXPECT_EQ(364, e->GetLine());
        EXPECT_EQ(TString(c.left), out);
    }
    EXPECT_THROW(m_json.PresModelToString(nullptr, JSONSerializer::Compact), LogicException);
}

TEST_F(PresModelToString, AFailureLeavesWhatWasWritten) {
    // A number list that cannot be packed: its tags are not registered.
    m_registry.Clear(L"qvcore");
    m_model->numbers = {1, 2, 3, 4, 5};
    const TestSession session(false, true);
    TString out;
    const auto e = Caught<ParameterNotFoundException>(
        [&] { m_json.PresModelToString(m_model, true, JSONSerializer::Compact, out); });
    ASSERT_TRUE(e);
    EXPECT_EQ(285398425, e->GetID());
    // The scopes of the list and the model are closed on the way out, the outer brace is not.
    EXPECT_EQ(TString(LR"({"myModel":{"aB": 1,"c": "t","numbers":[]})"), out);
}

TEST(PresModelToStringWithoutARegistry, IsALogicError) {
    const RefCntPtr<Model> model(new Model);
    const JSONSerializer json(L"models");
    const auto e = Caught<LogicException>([&] { json.PresModelToString(model, JSONSerializer::Compact); });
    ASSERT_TRUE(e);
    EXPECT_STREQ("gm_RegistryInstance != nullptr", e->GetExpression());
}
