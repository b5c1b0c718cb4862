// The order of virtual operations: hosts that were built against these interfaces call by position.
//
// A pointer to a virtual member holds its position in the virtual table, by the C++ ABI of all compilers on this
// system. Positions count from the start of the table; a virtual destructor takes two of them.
#include <cstddef>
#include <cstring>
#include <map>
#include <vector>

#include <gtest/gtest.h>

#include "support/TestHost.h"

namespace {

template <class Member>
std::size_t SlotOf(Member member) {
    std::ptrdiff_t parts[2] = {};
    static_assert(sizeof(member) == sizeof(parts));
    std::memcpy(parts, &member, sizeof(parts));
#if defined(__aarch64__) || defined(__arm__)
    EXPECT_EQ(1, parts[1] & 1) << "not virtual";
    return static_cast<std::size_t>(parts[0]) / sizeof(void*);
#else
    EXPECT_EQ(1, parts[0] & 1) << "not virtual";
    return static_cast<std::size_t>(parts[0] - 1) / sizeof(void*);
#endif
}

// Behind a virtual destructor.
constexpr std::size_t kFirst = 2;

using Texts = std::vector<TString>;
using TextMap = std::map<TString, TString>;
using Runs = std::vector<std::pair<int, std::vector<TString>>>;
using Value = RefCntPtr<const IParameter>;

}  // namespace

TEST(VirtualSlots, IParameter) {
    EXPECT_EQ(kFirst, SlotOf(&IParameter::GetPresentationModel));
    EXPECT_EQ(kFirst + 1, SlotOf(&IParameter::IsNull));
    EXPECT_EQ(kFirst + 2, SlotOf(&IParameter::IsMarked));
}

TEST(VirtualSlots, IParameters) {
    EXPECT_EQ(kFirst, SlotOf(&IParameters::SetParameter));
    EXPECT_EQ(kFirst + 1, SlotOf<IParameter& (IParameters::*)(int)>(&IParameters::GetParameter));
    EXPECT_EQ(kFirst + 2, SlotOf<const IParameter& (IParameters::*)(int) const>(&IParameters::GetParameter));
    EXPECT_EQ(kFirst + 3, SlotOf(&IParameters::HasParameter));
    EXPECT_EQ(kFirst + 4, SlotOf(&IParameters::SetCacheParameter));
    EXPECT_EQ(kFirst + 5, SlotOf(&IParameters::GetCacheParameter));
    EXPECT_EQ(kFirst + 6, SlotOf(&IParameters::HasCacheParameter));
    EXPECT_EQ(kFirst + 7, SlotOf(&IParameters::RemoveParameter));
    EXPECT_EQ(kFirst + 8, SlotOf(&IParameters::RemoveOptionalParameter));
    EXPECT_EQ(kFirst + 9, SlotOf(&IParameters::Accept));
    EXPECT_EQ(kFirst + 10, SlotOf(&IParameters::IsTestParameters));
}

TEST(VirtualSlots, BaseParametersAddsOneBehindThem) {
    struct Access : BaseParameters {
        static std::size_t Slot() { return SlotOf(&Access::DoEmptyClone); }
    };
    EXPECT_EQ(kFirst + 11, Access::Slot());
    EXPECT_EQ(kFirst, SlotOf(&BaseParameters::SetParameter));
    EXPECT_EQ(kFirst + 9, SlotOf(&BaseParameters::Accept));
}

TEST(VirtualSlots, IParameterVisitor) { EXPECT_EQ(0U, SlotOf(&IParameterVisitor::VisitParameter)); }

TEST(VirtualSlots, ParametersRegistry) { EXPECT_EQ(0U, SlotOf(&ParametersRegistry::CreateParameters)); }

TEST(VirtualSlots, AbstractParamAdder) {
    EXPECT_EQ(0U, SlotOf(&AbstractParamAdder::AddStructureEntry));
    EXPECT_EQ(1U, SlotOf(&AbstractParamAdder::AddValueEntry));
}

TEST(VirtualSlots, IStructuredParameterVisitor) {
    EXPECT_EQ(0U, SlotOf(&IStructuredParameterVisitor::Parameter));
    EXPECT_EQ(1U, SlotOf(&IStructuredParameterVisitor::StartList));
    EXPECT_EQ(2U, SlotOf(&IStructuredParameterVisitor::ListItem));
    EXPECT_EQ(3U, SlotOf(&IStructuredParameterVisitor::EndList));
    EXPECT_EQ(4U, SlotOf(&IStructuredParameterVisitor::StartMap));
    EXPECT_EQ(5U, SlotOf(&IStructuredParameterVisitor::MapItem));
    EXPECT_EQ(6U, SlotOf(&IStructuredParameterVisitor::EndMap));
    EXPECT_EQ(7U, SlotOf(&IStructuredParameterVisitor::StartComposite));
    EXPECT_EQ(8U, SlotOf(&IStructuredParameterVisitor::EndComposite));
    EXPECT_EQ(9U, SlotOf(&IStructuredParameterVisitor::NullMapItem));
    EXPECT_EQ(10U, SlotOf(&IStructuredParameterVisitor::StartCapture));
    EXPECT_EQ(11U, SlotOf(&IStructuredParameterVisitor::EndCapture));
    EXPECT_EQ(12U, SlotOf(&IStructuredParameterVisitor::WriteCaptured));
}

TEST(VirtualSlots, PresentationModel) {
    EXPECT_EQ(kFirst, SlotOf(&PresentationModel::AsIParameters));
    EXPECT_EQ(kFirst + 1, SlotOf(&PresentationModel::GetDefaultParamID));
}

TEST(VirtualSlots, IBuilderVars) {
    EXPECT_EQ(kFirst, SlotOf(&IBuilderVars::UseShortNames));
    EXPECT_EQ(kFirst + 1, SlotOf(&IBuilderVars::CompressArrays));
    EXPECT_EQ(kFirst + 2, SlotOf(&IBuilderVars::LossyEncodeImages));
}

TEST(VirtualSlots, IParameterSerializer) {
    EXPECT_EQ(kFirst, SlotOf(&IParameterSerializer::GetType));
    EXPECT_EQ(kFirst + 1, SlotOf<TString (IParameterSerializer::*)(Value)>(&IParameterSerializer::ToString));
    EXPECT_EQ(kFirst + 2, SlotOf(&IParameterSerializer::FromString));
    EXPECT_EQ(kFirst + 3, SlotOf<Texts (IParameterSerializer::*)(Value)>(&IParameterSerializer::ToStringList));
    EXPECT_EQ(kFirst + 4, SlotOf<RefCntPtr<IParameter> (IParameterSerializer::*)(const Texts&, const Runs&) const>(
                              &IParameterSerializer::FromStringList));
    EXPECT_EQ(kFirst + 5, SlotOf(&IParameterSerializer::SerializeList));
    EXPECT_EQ(kFirst + 6, SlotOf<TextMap (IParameterSerializer::*)(Value)>(&IParameterSerializer::ToStringMap));
    EXPECT_EQ(kFirst + 7, SlotOf(&IParameterSerializer::FromStringMap));
}

TEST(VirtualSlots, ParameterTypeSerializersAddOneBehindThem) {
    EXPECT_EQ(kFirst + 8, SlotOf(&ParameterTypeSerializer<int>::SerializeVector));
    EXPECT_EQ(kFirst + 8, SlotOf(&ParameterTypeSerializer<DataValue>::SerializeVector));
    EXPECT_EQ(kFirst + 8, SlotOf(&ParameterTypeSerializer<WhiskerEnd>::SerializeVector));
    EXPECT_EQ(kFirst, SlotOf(&ParameterTypeSerializer<int>::GetType));
    EXPECT_EQ(kFirst + 7, SlotOf(&TStringSerializer::FromStringMap));
}

// A destructor first, then the operation that writes one value.
TEST(VirtualSlots, IStructureSerializer) {
    EXPECT_EQ(kFirst, SlotOf(&IStructureSerializer::Serialize));
    EXPECT_EQ(kFirst + 1, SlotOf(&IStructureSerializer::SplitList));
    EXPECT_EQ(kFirst + 2, SlotOf(&IStructureSerializer::SplitMap));
    EXPECT_EQ(kFirst + 3, SlotOf(&IStructureSerializer::IsListForm));
    EXPECT_EQ(kFirst + 4, SlotOf(&IStructureSerializer::PrepareElement));
    EXPECT_EQ(kFirst + 5, SlotOf(&IStructureSerializer::FromParameters));
    EXPECT_EQ(kFirst + 6, SlotOf(&IStructureSerializer::MakeList));
    EXPECT_EQ(kFirst + 7, SlotOf(&IStructureSerializer::MakeMap));
}

// What the positions mean: a call through the table of an object, without its name.
TEST(VirtualSlots, TablesAreWhatThePointersSay) {
    const RefCntPtr<IParameter> value = MakeRefCnt<BagParameter>(RefCntPtr<const IParameters>());
    using Question = bool (*)(const IParameter*);
    Question* table = nullptr;
    std::memcpy(&table, static_cast<const void*>(value.Get()), sizeof(table));
    EXPECT_TRUE(table[kFirst + 1](value.Get()));   // IsNull
    EXPECT_FALSE(table[kFirst + 2](value.Get()));  // IsMarked
}
