// What the tests of the walk share: a namespace with a parameter of every kind, each under the number of its kind, and
// a structure serializer that notes its calls among the events.
#pragma once

#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"
#include "support/TraceVisitor.h"

// Structures are integers here: a structure list is a vector of them, a structure map a map of them in which a negative
// number stands for null. Serialize writes one list item, "Serialize 5 for 6 own verbose plain".
class NotingStructureSerializer : public IStructureSerializer {
public:
    void Serialize(RefCntPtr<const IParameter> value, SerializeStructure& stream, int id,
                   bool ownComposite) const override {
        const std::string text = value->IsNull() ? "null" : std::to_string(GetParameterValue<int>(value.Get()));
        stream.ListItem(TString::FromUtf8("Serialize " + text + " for " + std::to_string(id) +
                                          (ownComposite ? " own" : " inside") +
                                          (stream.GetUseVerboseNames() ? " verbose" : " short") +
                                          (stream.GetCompressArrays() ? " packed" : " plain")));
        streams.push_back(&stream);
    }
    std::vector<RefCntPtr<const IParameter>> SplitList(RefCntPtr<const IParameter> value) const override {
        std::vector<RefCntPtr<const IParameter>> elements;
        for (const int number : GetParameterValue<std::vector<int>>(value.Get())) {
            elements.push_back(Element(number));
        }
        return elements;
    }
    std::map<TString, RefCntPtr<const IParameter>> SplitMap(RefCntPtr<const IParameter> value) const override {
        std::map<TString, RefCntPtr<const IParameter>> elements;
        for (const auto& [key, number] : GetParameterValue<std::map<TString, int>>(value.Get())) {
            elements[key] = Element(number);
        }
        return elements;
    }
    bool IsListForm() const override { return false; }
    void PrepareElement(int, RefCntPtr<IParameters>, RefCntPtr<IParameters>) const override {
        ADD_FAILURE() << "a walk reads nothing";
    }
    RefCntPtr<IParameter> FromParameters(int, RefCntPtr<IParameters>) const override {
        ADD_FAILURE() << "a walk reads nothing";
        return {};
    }
    RefCntPtr<IParameter> MakeList(const std::vector<RefCntPtr<IParameter>>&) const override {
        ADD_FAILURE() << "a walk reads nothing";
        return {};
    }
    RefCntPtr<IParameter> MakeMap(const std::map<TString, RefCntPtr<IParameter>>&) const override {
        ADD_FAILURE() << "a walk reads nothing";
        return {};
    }

    mutable std::vector<const SerializeStructure*> streams;  // of the calls so far; only to be counted

private:
    static RefCntPtr<const IParameter> Element(int number) {
        return RefCntPtr<const IParameter>(number < 0 ? BagVal(nullptr) : Val(number));
    }
};

class VisitTest : public testing::Test {
protected:
    enum : int {
        kText = 1,
        kNumber = 2,
        kBool = 3,
        kList = 4,
        kBag = 5,
        kStructure = 6,
        kStructureList = 7,
        kMap = 8,
        kStructureMap = 9,
        kNumberMap = 10,
        kTextList = 11,
        kNoShort = 12,
        kUnregistered = 20,
    };

    VisitTest() {
        registry.Add(L"view", 1, 20, [this](AbstractParamAdder& adder) {
            adder.AddSimple(kText, L"title", L"ti", TextSerializer());
            adder.AddSimple(kNumber, L"max-count", L"mc", IntSerializer());
            adder.AddSimple(kBool, L"is-on", L"on", BoolSerializer());
            adder.AddList(kList, L"int-list", L"il", IntSerializer());
            adder.AddBag(kBag, L"sub-bag", L"sb");
            adder.AddStructure(kStructure, L"record", L"rc", structures.Get());
            adder.AddStructureList(kStructureList, L"items", L"it", structures.Get());
            adder.AddMap(kMap, L"my-map", L"mm", TextSerializer());
            adder.AddStructureMap(kStructureMap, L"by-key", L"bk", structures.Get());
            adder.AddMap(kNumberMap, L"number-map", L"nm", IntSerializer());
            adder.AddList(kTextList, L"text-list", L"tl", TextSerializer());
            adder.AddSimple(kNoShort, L"no-short", L"", TextSerializer());
        });
    }

    static std::string Trace(const RefCntPtr<TestBag>& bag) { return TraceOf(RefCntPtr<const IParameters>(bag)); }

    // The events that came before the failure; expects one.
    template <class Failure>
    static std::string EventsBefore(const RefCntPtr<TestBag>& bag) {
        TraceVisitor visitor;
        EXPECT_THROW(VisitParametersStructure(L"", RefCntPtr<const IParameters>(bag), visitor), Failure);
        return visitor.Text();
    }

    const RefCntPtr<NotingStructureSerializer> structures{new NotingStructureSerializer};
    TestRegistry registry;
};
