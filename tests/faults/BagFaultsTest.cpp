// Values and bags without memory.
#include <qvpreslayer/BaseParameters.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <vector>

#include "faults/Subjects.h"
#include "support/TypedValues.h"

namespace {

using enum Promise;

// A new value for a bag; the same one for all runs, so that the operation is alone.
const RefCntPtr<IParameter>& Value() {
    static const RefCntPtr<IParameter> value = Text(L"new");
    return value;
}

// So many entries that one in the middle moves the bag into its other form.
constexpr int kLarge = 1100;

Subject OnCopy(int fromSize, int toSize) {
    auto from = BagOf(fromSize);
    from->SetCacheParameter(1, Value());
    auto to = BagOf(toSize);
    to->SetParameter(15, Value());
    return {[from, to] { BaseParameters::Copy(from, to); },
            [from, to] { return BagContent::Of(*from) + BagContent::Of(*to); }};
}

// A chain that the operation frees, without a way to fail.
template <class Wrap>
Subject OnChain(int length, Wrap wrap) {
    auto chain = std::make_shared<RefCntPtr<TestBag>>(MakeBag());
    for (int i = 1; i < length; ++i) {
        auto next = MakeBag({{1, Value()}, {3, Value()}});
        next->SetParameter(2, wrap(*chain));
        *chain = next;
    }
    return {[chain] { chain->Reset(); }, [chain] { return std::string(*chain ? "a bag" : "none"); }};
}

RefCntPtr<IParameter> InList(const RefCntPtr<TestBag>& bag) { return Val(BagStructureSerializer::Bags{bag}); }

// A chain whose last bag holds many, more than are kept in mind without memory.
Subject OnWideEnd(int length, int width) {
    auto chain = std::make_shared<RefCntPtr<TestBag>>(MakeBag());
    for (int i = 0; i < width; ++i) {
        (*chain)->SetParameter(10 + i, BagVal(MakeBag({{1, BagVal(MakeBag({{1, Value()}}))}})));
    }
    for (int i = 1; i < length; ++i) {
        *chain = MakeBag({{1, Value()}, {2, BagVal(*chain)}});
    }
    return {[chain] { chain->Reset(); }, [chain] { return std::string(*chain ? "a bag" : "none"); }};
}

// A value that gives way to another one, without a way to fail.
Subject OnTuple(DataValue tuple) {
    auto value = std::make_shared<DataValue>(std::move(tuple));
    return {[value] { *value = DataValue(1); },
            [value] { return std::string(*value == DataValue(1) ? "one" : "a tuple"); }};
}

// Twenty tuples, more than are kept in mind without memory, inside so many others.
DataValue ManyInside(int levels) {
    std::vector<DataValue> many;
    std::generate_n(std::back_inserter(many), 20, [] { return typed::Nested(3); });
    DataValue value = typed::TupleOf(std::move(many));
    for (; levels > 0; --levels) {
        value = typed::TupleOf({value});
    }
    return value;
}

class NotingVisitor final : public IParameterVisitor {
public:
    void VisitParameter(int, const RefCntPtr<IParameter>&) override { ++count; }
    int count = 0;
};

class PlainModel final : public PresentationModel {};

class AnyRegistry final : public TestRegistry {};

}  // namespace

TEST(Faults, StoringInBags) {
    CheckUnderFaults({
        {"the first parameter", Strong,
         [] { return OnBag(MakeBag(), [](TestBag& b) { b.SetParameter(1, Value()); }); }},
        {"the first of a new value", Strong,
         [] { return OnBag(MakeBag(), [](TestBag& b) { SetParameterValue<TString>(b, 1, kLong); }); }},
        {"one more parameter", Strong, [] { return OnBag(BagOf(4), [](TestBag& b) { b.SetParameter(99, Value()); }); }},
        {"one in the middle", Strong, [] { return OnBag(BagOf(4), [](TestBag& b) { b.SetParameter(15, Value()); }); }},
        {"one in place of another", NoFail,
         [] { return OnBag(BagOf(4), [](TestBag& b) { b.SetParameter(20, Value()); }); }},
        {"one more in a large bag", Strong,
         [] { return OnBag(BagOf(1024), [](TestBag& b) { b.SetParameter(1 << 20, Value()); }); }},
        {"one in the middle of a large bag", Strong,
         [] { return OnBag(BagOf(kLarge), [](TestBag& b) { b.SetParameter(15, Value()); }); }},
        {"two in the middle of a large bag", Basic,
         [] {
             return OnBag(BagOf(kLarge), [](TestBag& b) {
                 b.SetParameter(15, Value());
                 b.SetParameter(25, Value());
             });
         }},
        {"a cache entry", Strong,
         [] { return OnBag(BagOf(2), [](const TestBag& b) { b.SetCacheParameter(1, Value()); }); }},
        {"null for a parameter", NoFail,
         [] { return OnBag(BagOf(4), [](TestBag& b) { b.SetParameter(20, nullptr); }); }},
        {"null for none", NoFail, [] { return OnBag(BagOf(4), [](TestBag& b) { b.SetParameter(21, nullptr); }); }},
        {"removing", NoFail, [] { return OnBag(BagOf(4), [](TestBag& b) { b.RemoveParameter(20); }); }},
        {"removing from a large bag", NoFail,
         [] { return OnBag(BagOf(kLarge), [](TestBag& b) { b.RemoveParameter(20); }); }},
        {"removing what is not there", Strong,
         [] { return OnBag(BagOf(4), [](TestBag& b) { b.RemoveParameter(21); }); }},
        {"removing what may not be there", NoFail,
         [] { return OnBag(BagOf(4), [](TestBag& b) { b.RemoveOptionalParameter(21); }); }},
        {"asking for what is not there", Strong,
         [] { return OnBag(BagOf(4), [](TestBag& b) { b.GetParameter(21); }); }},
        {"asking for a cache entry that is not there", Strong,
         [] { return OnBag(BagOf(4), [](TestBag& b) { b.GetCacheParameter(21); }); }},
        {"asking for another type", Strong,
         [] { return OnBag(BagOf(4), [](TestBag& b) { GetParameterValue<int>(b, 20); }); }},
        {"visiting", NoFail,
         [] {
             return OnBag(BagOf(4), [](TestBag& b) {
                 NotingVisitor visitor;
                 b.Accept(visitor);
             });
         }},
    });
}

TEST(Faults, CopyingBags) {
    CheckUnderFaults({
        {"a small bag into an empty one", Strong, [] { return OnCopy(3, 0); }},
        {"a small bag into a small one", Strong, [] { return OnCopy(3, 5); }},
        {"a large bag into a small one", Strong, [] { return OnCopy(kLarge, 5); }},
        {"a small bag into a large one", Strong, [] { return OnCopy(3, kLarge); }},
        {"a bag into itself", NoFail, [] { return OnBag(BagOf(3), [](TestBag& b) { BaseParameters::Copy(&b, &b); }); }},
        {"nothing into a bag", Strong,
         [] { return OnBag(BagOf(3), [](TestBag& b) { BaseParameters::Copy(nullptr, &b); }); }},
        {"cloning a small bag", Strong, [] { return OnBag(BagOf(3), [](TestBag& b) { b.Clone(); }); }},
        {"cloning a large bag", Strong, [] { return OnBag(BagOf(kLarge), [](TestBag& b) { b.Clone(); }); }},
        {"an empty clone", Strong, [] { return OnBag(BagOf(3), [](TestBag& b) { b.EmptyClone(); }); }},
    });
}

TEST(Faults, FreeingBags) {
    CheckUnderFaults({
        {"a short chain", NoFail, [] { return OnChain(3, BagVal); }},
        {"a long chain", NoFail, [] { return OnChain(20'000, BagVal); }},
        {"a long chain through lists", NoFail, [] { return OnChain(20'000, InList); }},
        {"a chain that ends in many bags", NoFail, [] { return OnWideEnd(64, 50); }},
        {"a long chain that ends in many bags", NoFail, [] { return OnWideEnd(200, 50); }},
        {"a chain of tuples that ends in many", NoFail, [] { return OnTuple(ManyInside(31)); }},
        {"a long chain of tuples that ends in many", NoFail, [] { return OnTuple(ManyInside(200)); }},
        {"a chain of tuples", NoFail, [] { return OnTuple(typed::Nested(20'000)); }},
    });
}

TEST(Faults, Values) {
    CheckUnderFaults({
        {"a text", Strong, [] { return Nothing([] { Text(kLong); }); }},
        {"a list", Strong, [] { return Nothing([] { Val(std::vector<TString>(20, kLong)); }); }},
        {"a map", Strong,
         [] { return Nothing([] {
                  Val(std::map<TString, TString>{{kLong, kLong}, {L"k", L"v"}});
              }); }},
        {"a bag", Strong, [] { return Nothing([] { BagVal(MakeBag()); }); }},
        {"null as a value", Strong, [] { return Nothing([] { GetParameterValue<int>(nullptr); }); }},
        {"another type", Strong, [] { return Nothing([] { GetParameterValue<int>(Value().Get()); }); }},
    });
}

TEST(Faults, Models) {
    const auto describe = [](const RefCntPtr<PlainModel>& model) {
        return model->GetSerializedVal().ToUtf8() + std::to_string(model->GetHash());
    };
    const auto onModel = [describe](auto operation) {
        return [=] {
            const auto model = MakeRefCnt<PlainModel>();
            model->SetSerializedVal(L"before");
            model->SetHash(7);
            return Subject{[=] { operation(*model); }, [=] { return describe(model); }};
        };
    };
    const AnyRegistry registry;
    const auto other = MakeRefCnt<PlainModel>();
    other->SetSerializedVal(kLong);
    CheckUnderFaults({
        {"remembering a text", Strong, onModel([](PlainModel& model) { model.SetSerializedVal(kLong); })},
        {"copying", Strong, onModel([other](PlainModel&) { MakeRefCnt<PlainModel>(*other); })},
        {"assigning", Strong, onModel([other](PlainModel& model) { model = *other; })},
        {"as a bag", Strong, onModel([](PlainModel& model) { model.AsIParameters(); })},
    });
}
