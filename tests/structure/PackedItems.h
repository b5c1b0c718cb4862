// A packed list as data: what a visitor was told of it, in the shape in which a reader hands it to a serializer.
#pragma once

#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include <qvpreslayer/qvpreslayer.h>

// One element of the outer list.
struct PackedItem {
    bool nested = false;
    std::string text;                // of a plain element, or the name of a nested list
    std::vector<std::string> items;  // of a nested list

    friend bool operator==(const PackedItem&, const PackedItem&) = default;
};

inline void PrintTo(const PackedItem& item, std::ostream* out) {
    *out << item.text;
    if (item.nested) {
        *out << "[";
        for (const std::string& text : item.items) {
            *out << " " << text;
        }
        *out << " ]";
    }
}

// Collects one list with lists of texts inside; every other event is a failure of the test.
class PackedItemsVisitor final : public IStructuredParameterVisitor {
public:
    // The elements; to be asked when the list has ended.
    const std::vector<PackedItem>& Items() const {
        Require(m_depth == 0, "list not ended");
        return m_items;
    }

    void StartList(const TString& name, ParameterTypeCategory) override {
        Require(m_depth < 2, "list nested too deeply");
        if (m_depth == 1) {
            m_items.push_back({true, name.ToUtf8(), {}});
        }
        ++m_depth;
    }
    void ListItem(const TString& valueText) override {
        Require(m_depth > 0, "item outside a list");
        if (m_depth == 1) {
            m_items.push_back({false, valueText.ToUtf8(), {}});
        } else {
            m_items.back().items.push_back(valueText.ToUtf8());
        }
    }
    void EndList(const TString&) override {
        Require(m_depth > 0, "end without a start");
        --m_depth;
    }
    void Parameter(const TString&, const TString&, ParameterTypeCategory) override { Require(false, "Parameter"); }
    void StartMap(const TString&, ParameterTypeCategory) override { Require(false, "StartMap"); }
    void MapItem(const TString&, const TString&, bool) override { Require(false, "MapItem"); }
    void EndMap(const TString&) override { Require(false, "EndMap"); }
    void StartComposite(const TString&, bool) override { Require(false, "StartComposite"); }
    void EndComposite(const TString&) override { Require(false, "EndComposite"); }
    void NullMapItem(const TString&, bool) override { Require(false, "NullMapItem"); }
    void StartCapture() override { Require(false, "StartCapture"); }
    TString EndCapture() override {
        Require(false, "EndCapture");
        return {};
    }
    void WriteCaptured(const TString&) override { Require(false, "WriteCaptured"); }

private:
    static void Require(bool condition, const char* what) {
        if (!condition) {
            throw std::logic_error(what);
        }
    }

    std::vector<PackedItem> m_items;
    int m_depth = 0;
};

// The texts of the plain elements, in order.
inline std::vector<TString> PlainTexts(const std::vector<PackedItem>& items) {
    std::vector<TString> texts;
    for (const PackedItem& item : items) {
        if (!item.nested) {
            texts.push_back(TString::FromUtf8(item.text));
        }
    }
    return texts;
}

// The nested lists with their positions among all elements.
inline std::vector<RunRecord> NestedLists(const std::vector<PackedItem>& items) {
    std::vector<RunRecord> records;
    for (std::size_t position = 0; position < items.size(); ++position) {
        if (items[position].nested) {
            std::vector<TString> texts;
            for (const std::string& text : items[position].items) {
                texts.push_back(TString::FromUtf8(text));
            }
            records.emplace_back(static_cast<int>(position), std::move(texts));
        }
    }
    return records;
}
