// What scenarios of faults work on: bags, texts and registries, and how they are described.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include <qvpreslayer/qvpreslayer.h>

#include "faults/Scenario.h"
#include "support/TestHost.h"

// Longer than what a text holds in place.
inline const TString kLong = L"a text that is longer than what fits in place, and longer still";

// The parameters of a bag as one line; cache entries of the identifiers 0 to 9 behind "|".
class BagContent final : public IParameterVisitor {
public:
    static std::string Of(const IParameters& bag) {
        BagContent content;
        bag.Accept(content);
        content.m_text += "|";
        for (int id = 0; id < 10; ++id) {
            if (bag.HasCacheParameter(id)) {
                content.Add(id, bag.GetCacheParameter(id));
            }
        }
        return content.m_text;
    }

    void VisitParameter(int id, const RefCntPtr<IParameter>& value) override { Add(id, *value); }

private:
    void Add(int id, const IParameter& value) {
        m_text += std::to_string(id) + "=";
        if (const auto* text = dynamic_cast<const ValParameter<TString>*>(&value)) {
            m_text += text->GetValue().ToUtf8();
        } else if (const auto* number = dynamic_cast<const ValParameter<int>*>(&value)) {
            m_text += std::to_string(number->GetValue());
        } else if (const auto* bag = dynamic_cast<const BagParameter*>(&value)) {
            m_text += bag->GetValue() ? "(" + Of(*bag->GetValue()) + ")" : "null";
        } else {
            m_text += typeid(value).name();
        }
        m_text += " ";
    }

    std::string m_text;
};

// A bag with texts under 10, 20, and so on, count of them.
inline RefCntPtr<TestBag> BagOf(int count) {
    auto bag = MakeBag();
    for (int i = 1; i <= count; ++i) {
        bag->SetParameter(10 * i, Text(L"t" + TString::number(i)));
    }
    return bag;
}

// An operation that changes a bag.
template <class Operation>
Subject OnBag(RefCntPtr<TestBag> bag, Operation operation) {
    return {[bag, operation] { operation(*bag); }, [bag] { return BagContent::Of(*bag); }};
}

// An operation that changes a text.
template <class Operation>
Subject OnText(const TString& text, Operation operation) {
    auto subject = std::make_shared<TString>(text);
    return {[subject, operation] { operation(*subject); }, [subject] { return subject->ToUtf8(); }};
}

// An operation that changes an object, and what tells of it.
template <class T, class Operation, class Describe>
Subject On(std::shared_ptr<T> object, Operation operation, Describe describe) {
    return {[object, operation] { operation(*object); }, [object, describe] { return describe(*object); }};
}
