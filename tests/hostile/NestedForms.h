// The ways in which a bag can stand in a bag, for tests of depth.
#pragma once

#include <string>

#include "json/JSONTestSupport.h"

// One way: how a bag is put around another one, and how that reads in compact JSON.
struct NestedForm {
    const char* name;
    int id;
    RefCntPtr<IParameter> (*wrap)(const RefCntPtr<TestBag>& bag);
    const char* opening;
    const char* closing;
    std::size_t textLevels;  // of objects and arrays, for each bag

    void Put(TestBag& outer, const RefCntPtr<TestBag>& inner) const { outer.SetParameter(id, wrap(inner)); }

    // So many bags, each in the next one, with a number in the innermost.
    RefCntPtr<TestBag> Bags(int levels) const {
        auto bag = MakeBag({{view::kN, Val(1)}});
        for (int level = 1; level < levels; ++level) {
            auto outer = MakeBag();
            Put(*outer, bag);
            bag = outer;
        }
        return bag;
    }

    // Their text.
    std::string Text(int levels) const {
        std::string text;
        for (int level = 1; level < levels; ++level) {
            text += opening;
        }
        text += "{\"n\": 1}";
        for (int level = 1; level < levels; ++level) {
            text += closing;
        }
        return text;
    }
};

inline RefCntPtr<IParameter> AsBag(const RefCntPtr<TestBag>& bag) { return BagVal(bag); }
inline RefCntPtr<IParameter> AsList(const RefCntPtr<TestBag>& bag) { return Val(BagStructureSerializer::Bags{bag}); }
inline RefCntPtr<IParameter> AsMap(const RefCntPtr<TestBag>& bag) {
    return Val(BagStructureSerializer::BagMap{{L"k", bag}});
}

inline constexpr NestedForm kNestedForms[] = {
    {"bag", view::kSubBag, AsBag, "{\"subBag\":", "}", 1},
    {"structure", view::kMyModel, AsBag, "{\"myModel\":", "}", 1},
    {"structure list", view::kItems, AsList, "{\"items\":[", "]}", 2},
    {"structure map", view::kByKey, AsMap, "{\"byKey\":{\"k\":", "}}", 2},
};

// A limit is back at its default when the test ends.
class LimitsScope {
public:
    LimitsScope() = default;
    LimitsScope(const LimitsScope&) = delete;
    LimitsScope& operator=(const LimitsScope&) = delete;
    ~LimitsScope() {
        PresLayerLimits::SetJSONDepth(PresLayerLimits::kDefaultJSONDepth);
        PresLayerLimits::SetBagDepth(PresLayerLimits::kDefaultBagDepth);
        PresLayerLimits::SetTupleDepth(PresLayerLimits::kDefaultTupleDepth);
        PresLayerLimits::SetStackReserve(PresLayerLimits::kDefaultStackReserve);
        PresLayerLimits::SetExpansionBytes(PresLayerLimits::kDefaultExpansionBytes);
    }
};
