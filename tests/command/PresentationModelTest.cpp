#include <qvpreslayer/PresentationModel.h>

#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"

namespace {

class MovedModel final : public PresentationModel {
public:
    ~MovedModel() override = default;
    int GetDefaultParamID() const override { return 77; }
};

class CountedModel final : public PresentationModel {
public:
    explicit CountedModel(int& alive) : m_alive(alive) { ++m_alive; }
    ~CountedModel() override { --m_alive; }

private:
    int& m_alive;
};

// Makes bags that say that they are a test's.
class MarkedBag final : public BaseParameters {
public:
    bool IsTestParameters() const override { return true; }

protected:
    ~MarkedBag() override = default;
    RefCntPtr<BaseParameters> DoEmptyClone() override { return RefCntPtr<BaseParameters>(new MarkedBag); }
};

class MarkedRegistry final : public TestRegistry {
public:
    RefCntPtr<IParameters> CreateParameters() override { return RefCntPtr<IParameters>(new MarkedBag); }
};

// The identifiers of a bag, each with a blank.
class IdWriter final : public IParameterVisitor {
public:
    void VisitParameter(int id, const RefCntPtr<IParameter>&) override { text += std::to_string(id) + " "; }
    std::string text;
};

std::string IdsOf(const IParameters& bag) {
    IdWriter writer;
    bag.Accept(writer);
    return writer.text;
}

}  // namespace

TEST(PresentationModel, RemembersNothingAtFirst) {
    const RefCntPtr<const TestModel> model(new TestModel);
    EXPECT_EQ(0U, model->GetHash());
    EXPECT_EQ(L"", model->GetSerializedVal());
}

TEST(PresentationModel, AConstModelRemembersHashAndText) {
    const RefCntPtr<const TestModel> model(new TestModel);
    model->SetHash(0xFFFFFFFFFFFFFFFFU);
    model->SetSerializedVal(L"{\"a\": 1}");
    EXPECT_EQ(0xFFFFFFFFFFFFFFFFU, model->GetHash());
    EXPECT_EQ(L"{\"a\": 1}", model->GetSerializedVal());
}

TEST(PresentationModel, AnswersItsTextByReference) {
    const RefCntPtr<const TestModel> model(new TestModel);
    EXPECT_TRUE((std::is_same_v<const TString&, decltype(model->GetSerializedVal())>));
    EXPECT_EQ(&model->GetSerializedVal(), &model->GetSerializedVal());
}

TEST(PresentationModel, CopiesTakeBothFieldsAlong) {
    const RefCntPtr<TestModel> model(new TestModel);
    model->SetHash(7);
    model->SetSerializedVal(L"text");
    const RefCntPtr<TestModel> copy(new TestModel(*model));
    EXPECT_EQ(7U, copy->GetHash());
    EXPECT_EQ(L"text", copy->GetSerializedVal());
    copy->SetHash(8);
    EXPECT_EQ(7U, model->GetHash());
}

TEST(PresentationModel, AssigningTakesBothFieldsAlong) {
    const RefCntPtr<TestModel> model(new TestModel);
    model->SetHash(7);
    model->SetSerializedVal(L"text");
    const RefCntPtr<TestModel> other(new TestModel);
    other->SetSerializedVal(L"other");
    *other = *model;
    EXPECT_EQ(7U, other->GetHash());
    EXPECT_EQ(L"text", other->GetSerializedVal());
}

TEST(PresentationModel, ACopyHasReferencesOfItsOwn) {
    TestRegistry registry;
    const RefCntPtr<TestModel> model(new TestModel);
    const auto bag = model->AsIParameters();
    RefCntPtr<TestModel> copy(new TestModel(*model));
    copy.Reset();
    EXPECT_EQ(model.Get(), bag->GetParameter(model->GetDefaultParamID()).GetPresentationModel().Get());
}

TEST(PresentationModel, TravelsUnderOneIdentifier) {
    EXPECT_EQ(16777216, RefCntPtr<TestModel>(new TestModel)->GetDefaultParamID());
    EXPECT_EQ(0x1000000, RefCntPtr<TestModel>(new TestModel)->GetDefaultParamID());
}

TEST(PresentationModel, ItsBagHoldsTheModelAndNothingElse) {
    TestRegistry registry;
    const RefCntPtr<TestModel> model(new TestModel);
    const auto bag = model->AsIParameters();
    EXPECT_EQ("16777216 ", IdsOf(*bag));
    const IParameter& value = bag->GetParameter(16777216);
    EXPECT_EQ(model.Get(), value.GetPresentationModel().Get());
    EXPECT_EQ(model.Get(), GetParameterValue<RefCntPtr<const PresentationModel>>(&value).Get());
    EXPECT_FALSE(value.IsNull());
}

TEST(PresentationModel, ASubclassMayTravelUnderAnother) {
    TestRegistry registry;
    const RefCntPtr<MovedModel> model(new MovedModel);
    const auto bag = model->AsIParameters();
    EXPECT_EQ("77 ", IdsOf(*bag));
    EXPECT_EQ(model.Get(), bag->GetParameter(77).GetPresentationModel().Get());
}

TEST(PresentationModel, ItsBagComesFromTheRegistry) {
    MarkedRegistry registry;
    const RefCntPtr<TestModel> model(new TestModel);
    const auto first = model->AsIParameters();
    const auto second = model->AsIParameters();
    EXPECT_TRUE(first->IsTestParameters());
    EXPECT_NE(first.Get(), second.Get());
}

TEST(PresentationModel, ItsBagKeepsItAlive) {
    TestRegistry registry;
    int alive = 0;
    RefCntPtr<PresentationModel> model(new CountedModel(alive));
    auto bag = model->AsIParameters();
    model.Reset();
    EXPECT_EQ(1, alive);
    bag.Reset();
    EXPECT_EQ(0, alive);
}

TEST(PresentationModel, ItsBagNeedsARegistry) {
    const RefCntPtr<TestModel> model(new TestModel);
    EXPECT_EQ("gm_RegistryInstance != nullptr", LogicErrorOf([&] { model->AsIParameters(); }));
}
