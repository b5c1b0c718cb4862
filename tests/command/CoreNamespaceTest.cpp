#include <qvpreslayer/CoreNamespace.h>

#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"
#include "support/TraceVisitor.h"

namespace {

constexpr int kIntRLE = 285398425;
constexpr int kUIntRLE = 297868712;
constexpr int kFloatRLE = 291551623;
constexpr int kParamType = 299054276;

using IDSerializer = ParameterTypeSerializer<CoreParameterID>;

class CoreNamespace : public testing::Test {
protected:
    CoreNamespace() { RegisterCoreNamespaceParameters(registry, L"qvcore"); }

    // The value that a list of texts becomes.
    RefCntPtr<IParameter> ListOf(int id, const std::vector<TString>& texts) const {
        return registry.GetListSerializer(id)->FromStringList(texts, {});
    }

    TestRegistry registry;
};

std::string RowsOf(const ParametersRegistry& registry) {
    std::string text;
    for (const auto& [name, rows] : registry.GetNamespaceInfos()) {
        for (const auto& row : rows) {
            text += name.ToUtf8() + " " + std::to_string(row.id) + " " + row.verboseName.ToUtf8() + " " +
                    row.shortName.ToUtf8() + "\n";
        }
    }
    return text;
}

}  // namespace

TEST_F(CoreNamespace, HoldsTheTagsAndTheParameterType) {
    EXPECT_EQ(
        "qvcore 285398425 int-rle pSA01\n"
        "qvcore 297868712 uint-rle tqb01\n"
        "qvcore 291551623 float-rle nVJ01\n"
        "qvcore 299054276 param-type KQP01\n",
        RowsOf(registry));
}

TEST_F(CoreNamespace, HasKinds) {
    EXPECT_EQ(PTC_List, registry.GetType(kIntRLE));
    EXPECT_EQ(PTC_List, registry.GetType(kUIntRLE));
    EXPECT_EQ(PTC_List, registry.GetType(kFloatRLE));
    EXPECT_EQ(PTC_Text, registry.GetType(kParamType));
}

TEST_F(CoreNamespace, TheTagsAreListsOfNumbers) {
    EXPECT_EQ((std::vector<int>{-1, 2}), GetParameterValue<std::vector<int>>(ListOf(kIntRLE, {L"-1", L"2"}).Get()));
    EXPECT_EQ((std::vector<unsigned int>{4000000000U}),
              GetParameterValue<std::vector<unsigned int>>(ListOf(kUIntRLE, {L"4000000000"}).Get()));
    EXPECT_EQ((std::vector<float>{0.5F}), GetParameterValue<std::vector<float>>(ListOf(kFloatRLE, {L"0.5"}).Get()));
    for (const int tag : {kIntRLE, kUIntRLE, kFloatRLE}) {
        EXPECT_EQ(PTC_Number, registry.GetListSerializer(tag)->GetType());
    }
}

TEST_F(CoreNamespace, TheIdentifiersAreTheEnumerators) {
    EXPECT_EQ(kIntRLE, static_cast<int>(CoreParameterID::IntRLE));
    EXPECT_EQ(kUIntRLE, static_cast<int>(CoreParameterID::UIntRLE));
    EXPECT_EQ(kFloatRLE, static_cast<int>(CoreParameterID::FloatRLE));
    EXPECT_EQ(kParamType, static_cast<int>(CoreParameterID::ParamType));
    EXPECT_EQ(0x1102d599, kIntRLE);
    EXPECT_EQ(0x11c11da8, kUIntRLE);
    EXPECT_EQ(0x1160b987, kFloatRLE);
    EXPECT_EQ(0x11d334c4, kParamType);
}

TEST_F(CoreNamespace, VerboseNamesAreFoundWhileTheOptionSaysSo) {
    const TestSession session(false);
    EXPECT_EQ(kParamType, registry.GetID(L"qvcore", L"param-type", false));
    EXPECT_EQ("KQP01", NotFoundName([&] { registry.GetID(L"qvcore", L"KQP01", false); }));
    EXPECT_EQ(kParamType, registry.GetID(L"qvcore", L"param-type", true));
}

TEST_F(CoreNamespace, ShortNamesAreFoundWhileTheOptionSaysSo) {
    const TestSession session(true);
    EXPECT_EQ(kParamType, registry.GetID(L"qvcore", L"KQP01", false));
    EXPECT_EQ("param-type", NotFoundName([&] { registry.GetID(L"qvcore", L"param-type", false); }));
    EXPECT_EQ(kParamType, registry.GetID(L"qvcore", L"param-type", true));
}

TEST_F(CoreNamespace, HasItsRangeAndIsLazy) {
    const auto part = [&](int first, int last) {
        registry.RegisterNamespacePart(
            L"qvcore", [](AbstractParamAdder& adder) { adder.AddBag(kCoreNamespaceFirstID, L"part"); }, first, last);
    };
    EXPECT_EQ(285212673, kCoreNamespaceFirstID);
    EXPECT_EQ(301989887, kCoreNamespaceLastID);
    EXPECT_EQ("m_namespace.FirstID() == firstId", LogicErrorOf([&] { part(285212672, 301989887); }));
    EXPECT_EQ("m_namespace.LastID() == lastId", LogicErrorOf([&] { part(285212673, 301989888); }));
    EXPECT_NO_THROW(part(285212673, 301989887));
    EXPECT_EQ(PTC_Bag, registry.GetType(285212673));
    EXPECT_EQ("m_needInit", LogicErrorOf([&] { part(285212673, 301989887); }));
}

TEST_F(CoreNamespace, MayHaveAnyNameButOnlyOnce) {
    registry.Clear();
    RegisterCoreNamespaceParameters(registry, L"mine");
    EXPECT_TRUE(registry.HasNamespace(L"mine"));
    EXPECT_FALSE(registry.HasNamespace(L"qvcore"));
    EXPECT_THROW(RegisterCoreNamespaceParameters(registry, L"mine"), ParameterNamespaceAlreadyExistsException);
}

TEST_F(CoreNamespace, TheShortFormUsesThePublishedRegistry) {
    registry.Clear();
    RegisterCoreNamespaceParameters(L"qvcore");
    EXPECT_EQ(kIntRLE, registry.GetID(L"qvcore", L"int-rle", true));
}

TEST_F(CoreNamespace, ThePresentationModelFormRegistersNothing) {
    RegisterCorePresModelParameters(registry, L"models");
    RegisterCorePresModelParameters(L"models");
    EXPECT_FALSE(registry.HasNamespace(L"models"));
    EXPECT_EQ(1U, registry.GetNamespaceInfos().size());
}

TEST(CoreNamespaceWithoutRegistry, TheShortFormsFail) {
    EXPECT_EQ("gm_RegistryInstance != nullptr", LogicErrorOf([] { RegisterCoreNamespaceParameters(L"qvcore"); }));
    EXPECT_EQ("gm_RegistryInstance != nullptr", LogicErrorOf([] { RegisterCorePresModelParameters(L"models"); }));
    EXPECT_EQ("gm_RegistryInstance != nullptr",
              LogicErrorOf([] { IDSerializer::TypeToString(CoreParameterID::IntRLE); }));
    EXPECT_EQ("gm_RegistryInstance != nullptr", LogicErrorOf([] { IDSerializer::TypeFromString(L"int-rle"); }));
}

TEST_F(CoreNamespace, AnIdentifierHasItsNameAsText) {
    EXPECT_EQ(L"param-type", IDSerializer::TypeToString(CoreParameterID::ParamType));
    const TestSession session(true);
    EXPECT_EQ(L"KQP01", IDSerializer::TypeToString(CoreParameterID::ParamType));
}

TEST_F(CoreNamespace, ATextIsSoughtUnderTheNameOption) {
    EXPECT_EQ(CoreParameterID::ParamType, IDSerializer::TypeFromString(L"param-type"));
    EXPECT_EQ("KQP01", NotFoundName([] { IDSerializer::TypeFromString(L"KQP01"); }));
    const TestSession session(true);
    EXPECT_EQ(CoreParameterID::ParamType, IDSerializer::TypeFromString(L"KQP01"));
    EXPECT_EQ("param-type", NotFoundName([] { IDSerializer::TypeFromString(L"param-type"); }));
}

TEST_F(CoreNamespace, AnyRegisteredIdentifierHasAText) {
    registry.Add(L"view", 1, 9, [](AbstractParamAdder& adder) { adder.AddBag(5, L"style"); });
    EXPECT_EQ(L"style", IDSerializer::TypeToString(CoreParameterID(5)));
    EXPECT_EQ(6, NotFoundId([] { IDSerializer::TypeToString(CoreParameterID(6)); }));
}

TEST_F(CoreNamespace, ATextIsSoughtInItsFallbacksToo) {
    registry.Add(L"view", 1, 9, [](AbstractParamAdder& adder) { adder.AddBag(5, L"style"); });
    EXPECT_EQ("style", NotFoundName([] { IDSerializer::TypeFromString(L"style"); }));
    registry.SetFallback(L"qvcore", L"view");
    EXPECT_EQ(CoreParameterID(5), IDSerializer::TypeFromString(L"style"));
}

TEST_F(CoreNamespace, ATextIsSoughtUnderItsUsualNameOnly) {
    registry.Clear();
    RegisterCoreNamespaceParameters(registry, L"mine");
    EXPECT_EQ("qvcore", UnknownNamespace([] { IDSerializer::TypeFromString(L"int-rle"); }));
    EXPECT_EQ(L"int-rle", IDSerializer::TypeToString(CoreParameterID::IntRLE));
}

TEST_F(CoreNamespace, IdentifiersAreTexts) {
    const auto serializer = CreateParameterSerializer<IDSerializer>();
    EXPECT_EQ(PTC_Text, serializer->GetType());
    const auto value = Val(CoreParameterID::FloatRLE);
    EXPECT_EQ(L"float-rle", serializer->ToString(RefCntPtr<const IParameter>(value)));
    EXPECT_EQ(CoreParameterID::FloatRLE,
              GetParameterValue<CoreParameterID>(serializer->FromString(L"float-rle").Get()));
}

TEST_F(CoreNamespace, IdentifiersHaveListsAndMaps) {
    const auto serializer = CreateParameterSerializer<IDSerializer>();
    using Ids = std::vector<CoreParameterID>;
    using IdMap = std::map<TString, CoreParameterID>;
    const Ids ids{CoreParameterID::ParamType, CoreParameterID::IntRLE};
    const IdMap map{{L"k", CoreParameterID::UIntRLE}};
    const std::vector<TString> texts{L"param-type", L"int-rle"};
    const std::map<TString, TString> mapTexts{{L"k", L"uint-rle"}};
    EXPECT_EQ(texts, serializer->ToStringList(RefCntPtr<const IParameter>(Val(ids))));
    EXPECT_EQ(ids, GetParameterValue<Ids>(serializer->FromStringList(texts, {{0, {L"1", L"5"}}}).Get()))
        << "runs are not looked at";
    EXPECT_EQ(mapTexts, serializer->ToStringMap(RefCntPtr<const IParameter>(Val(map))));
    EXPECT_EQ(map, GetParameterValue<IdMap>(serializer->FromStringMap(mapTexts).Get()));
}

TEST_F(CoreNamespace, ListsOfIdentifiersGoOnTheStreamUnderTheNameOption) {
    registry.Add(L"lists", 1, 9, [](AbstractParamAdder& adder) {
        adder.AddList(1, L"types", L"ty", new ParameterTypeSerializer<CoreParameterID>);
    });
    const auto list = Val<std::vector<CoreParameterID>>({CoreParameterID::ParamType, CoreParameterID::ParamType,
                                                         CoreParameterID::ParamType, CoreParameterID::ParamType,
                                                         CoreParameterID::IntRLE, static_cast<CoreParameterID>(1)});
    const auto trace = [&](bool verbose, bool packed) {
        TraceVisitor visitor;
        SerializeStructure stream(visitor, verbose, packed);
        ParameterTypeSerializer<CoreParameterID>().SerializeList(list, stream, 1);
        return visitor.Text();
    };
    const std::string verbose =
        "StartList(types, 1)\nListItem(param-type)\nListItem(param-type)\nListItem(param-type)\nListItem(param-type)\n"
        "ListItem(int-rle)\nListItem(types)\nEndList(types)\n";
    EXPECT_EQ(verbose, trace(true, false));
    EXPECT_EQ(verbose, trace(true, true)) << "texts are never packed";
    // The items ask the option, the list's own name follows the stream.
    const TestSession session(true);
    EXPECT_EQ(
        "StartList(types, 1)\nListItem(KQP01)\nListItem(KQP01)\nListItem(KQP01)\nListItem(KQP01)\n"
        "ListItem(pSA01)\nListItem(ty)\nEndList(types)\n",
        trace(true, false));
    EXPECT_EQ(77, NotFoundId([&] {
                  TraceVisitor visitor;
                  SerializeStructure stream(visitor, true, false);
                  ParameterTypeSerializer<CoreParameterID>().SerializeList(
                      Val<std::vector<CoreParameterID>>({static_cast<CoreParameterID>(77)}), stream, 1);
              }));
}

TEST_F(CoreNamespace, ANullIdentifierIsMissingAndAnotherTypeAMismatch) {
    const auto serializer = CreateParameterSerializer<IDSerializer>();
    EXPECT_EQ(0, MissingId([&] { serializer->ToString(nullptr); }));
    EXPECT_EQ(0, MissingId([&] { serializer->ToStringList(nullptr); }));
    EXPECT_EQ(0, MissingId([&] { serializer->ToStringMap(nullptr); }));
    EXPECT_EQ(0, MismatchId([&] { serializer->ToString(RefCntPtr<const IParameter>(Val(kIntRLE))); }));
}

TEST_F(CoreNamespace, TheParameterTypeIsAnIdentifier) {
    EXPECT_EQ(L"int-rle", registry.GetValueString(Val(CoreParameterID::IntRLE), kParamType));
    const auto bag = MakeBag();
    registry.FromString(L"qvcore", bag, L"param-type", L"uint-rle", true);
    EXPECT_EQ(CoreParameterID::UIntRLE, GetParameterValue<CoreParameterID>(*bag, kParamType));
    EXPECT_EQ(kParamType, ParseId([&] { registry.FromString(L"qvcore", bag, L"param-type", L"nothing", true); }));
}
