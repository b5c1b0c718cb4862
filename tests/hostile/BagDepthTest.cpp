// Bags in bags, in every form, around the limit of walks and far beyond it: each outcome comes within 2 seconds, from
// 512 MiB of memory and a stack of 256 KiB.
#include <qvpreslayer/PresLayerLimits.h>

#include <stdexcept>

#include "hostile/NestedForms.h"
#include "support/Confined.h"
#include "support/TraceVisitor.h"

namespace {

constexpr int kLimit = PresLayerLimits::kDefaultBagDepth;
constexpr int kMillion = 1'000'000;
const char* const kTooDeep = "Parameter bags are nested too deeply";

// Writing so many levels in compact form: "done" when the text is the one that it has to be.
std::string OutcomeOfWriting(const NestedForm& form, int levels) {
    const ViewRegistry registry;
    return OutcomeConfined([&] {
        const std::string text = JSONSerializer(L"view").ToString(form.Bags(levels), JSONSerializer::Compact).ToUtf8();
        if (text != form.Text(levels)) {
            throw std::runtime_error("another text");
        }
    });
}

// Writes members as plain records do, but is a class of its own: the library does not know that.
class HostRecordSerializer final : public BagStructureSerializer {
public:
    void Serialize(RefCntPtr<const IParameter> value, SerializeStructure& stream, int id,
                   bool ownComposite) const override {
        BagStructureSerializer::Serialize(value, stream, id, ownComposite);
    }
};

class HostRecordRegistry : public TestRegistry {
public:
    HostRecordRegistry() {
        Add(L"view", 1, 999, [](AbstractParamAdder& adder) {
            adder.AddStructure(view::kMyModel, L"my-model", new HostRecordSerializer);
            adder.AddSimple(view::kN, L"n", new ParameterTypeSerializer<int>);
        });
    }
};

const NestedForm& kStructures = kNestedForms[1];

}  // namespace

TEST(BagDepth, EveryFormIsWrittenAtTheLimitAndRefusedBeyondIt) {
    for (const NestedForm& form : kNestedForms) {
        SCOPED_TRACE(form.name);
        EXPECT_EQ("done", OutcomeOfWriting(form, kLimit));
        EXPECT_EQ(kTooDeep, OutcomeOfWriting(form, kLimit + 1));
        EXPECT_EQ(kTooDeep, OutcomeOfWriting(form, &form == kNestedForms ? kMillion : 100 * kLimit));
    }
}

TEST(BagDepth, ABagThatHoldsItselfIsRefused) {
    const ViewRegistry registry;
    for (const NestedForm& form : kNestedForms) {
        for (const auto type : {JSONSerializer::Compact, JSONSerializer::Pretty}) {
            SCOPED_TRACE(form.name);
            EXPECT_EQ(kTooDeep, OutcomeConfined([&] {
                          const auto bag = MakeBag();
                          form.Put(*bag, bag);
                          const struct Untie {
                              TestBag& bag;
                              int id;
                              ~Untie() { bag.SetParameter(id, nullptr); }
                          } untie{*bag, form.id};
                          JSONSerializer(L"view").ToString(bag, type);
                      }));
        }
    }
}

TEST(BagDepth, FormsMixWithinOneLimit) {
    const ViewRegistry registry;
    const auto outcome = [](int levels) {
        return OutcomeConfined([&] {
            auto bag = MakeBag({{view::kN, Val(1)}});
            std::string text = "{\"n\": 1}";
            for (int level = 1; level < levels; ++level) {
                const NestedForm& form = kNestedForms[level % 4];
                auto outer = MakeBag();
                form.Put(*outer, bag);
                bag = outer;
                text = form.opening + text + form.closing;
            }
            if (JSONSerializer(L"view").ToString(bag, JSONSerializer::Compact).ToUtf8() != text) {
                throw std::runtime_error("another text");
            }
        });
    };
    EXPECT_EQ("done", outcome(kLimit));
    EXPECT_EQ(kTooDeep, outcome(kLimit + 1));
}

TEST(BagDepth, HostsSetTheLimit) {
    const LimitsScope scope;
    for (const int limit : {1, 5, 17, 18, 20'000}) {
        PresLayerLimits::SetBagDepth(limit);
        for (const NestedForm& form : kNestedForms) {
            SCOPED_TRACE(std::to_string(limit) + " " + form.name);
            EXPECT_EQ("done", OutcomeOfWriting(form, limit));
            EXPECT_EQ(kTooDeep, OutcomeOfWriting(form, limit + 1));
        }
    }
    for (const int limit : {0, -1}) {
        PresLayerLimits::SetBagDepth(limit);
        EXPECT_EQ(kTooDeep, OutcomeOfWriting(kNestedForms[0], 1));
    }
}

// The calls inside calls are the host's here: the limit may be out of reach of the stack, the exception is not.
TEST(BagDepth, SerializersOfTheHostRunOutOfLevelsBeforeTheyRunOutOfStack) {
    const LimitsScope scope;
    const HostRecordRegistry registry;
    const auto outcome = [](int levels) {
        return OutcomeConfined([&] {
            const std::string text =
                JSONSerializer(L"view").ToString(kStructures.Bags(levels), JSONSerializer::Compact).ToUtf8();
            if (text != kStructures.Text(levels)) {
                throw std::runtime_error("another text");
            }
        });
    };
    EXPECT_EQ("done", outcome(100));
    EXPECT_EQ(kTooDeep, outcome(kLimit + 1));
    PresLayerLimits::SetBagDepth(kMillion);
    EXPECT_EQ(kTooDeep, outcome(kMillion / 10));
}

TEST(BagDepth, TheStackReserveCanBeChanged) {
    const LimitsScope scope;
    const HostRecordRegistry registry;
    const auto outcome = [](int levels) {
        return OutcomeConfined(
            [&] { JSONSerializer(L"view").ToString(kStructures.Bags(levels), JSONSerializer::Compact); });
    };
    PresLayerLimits::SetStackReserve(2 * kSmallStackBytes);  // never so much: the first guarded level is one too many
    EXPECT_EQ("done", outcome(16));
    EXPECT_EQ(kTooDeep, outcome(17));
    PresLayerLimits::SetStackReserve(0);
    EXPECT_EQ("done", outcome(100));
}

// What is told of deep levels is what is told of all others, also when something fails there.
TEST(BagDepth, AFailureDeepInsideClosesRecordsAndLeavesBagsOpen) {
    const ViewRegistry registry;
    const auto failing = [](const NestedForm& form, int levels) {
        auto bag = MakeBag({{view::kN, Val(1)}, {999, Text(L"not registered")}});
        for (int level = 1; level < levels; ++level) {
            auto outer = MakeBag();
            form.Put(*outer, bag);
            bag = outer;
        }
        TraceVisitor visitor;
        EXPECT_THROW(VisitParametersStructure(L"", bag, visitor), ParameterNotFoundException);
        return visitor.Text();
    };
    const struct {
        const char* opening;
        const char* closing;  // told while the exception passes
    } expected[] = {
        {"StartComposite(sub-bag, false)\n", ""},
        {"StartComposite(my-model, false)\n", "EndComposite(my-model)\n"},
        {"StartList(items, 6)\nStartComposite(items, false)\n", "EndComposite(items)\n"},
        {"StartMap(by-key, 6)\nStartComposite(k, true)\n", ""},
    };
    constexpr int kLevels = 40;
    for (std::size_t i = 0; i < 4; ++i) {
        SCOPED_TRACE(kNestedForms[i].name);
        std::string text = "Parameter(n, 1, 2)\n";
        for (int level = 1; level < kLevels; ++level) {
            text = expected[i].opening + text + expected[i].closing;
        }
        EXPECT_EQ(text, failing(kNestedForms[i], kLevels));
    }
}

TEST(BagDepth, CopiesOfDeepBagsAreShallow) {
    const ViewRegistry registry;
    for (const NestedForm& form : kNestedForms) {
        SCOPED_TRACE(form.name);
        EXPECT_EQ("done", OutcomeConfined([&] {
                      const auto bag = form.Bags(kMillion / 20);
                      const auto clone = bag->Clone();
                      BaseParameters::Copy(bag, clone);
                      if (&clone->GetParameter(form.id) != &bag->GetParameter(form.id)) {
                          throw std::runtime_error("another value");
                      }
                  }));
    }
}
