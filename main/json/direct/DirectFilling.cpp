#include "main/json/direct/DirectFilling.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include <qvpreslayer/BagStructureSerializer.h>
#include <qvpreslayer/ValParameter.h>

using qvpreslayer::detail::ParameterTable;

namespace {

using Bag = BagStructureSerializer::Bag;
using Bags = BagStructureSerializer::Bags;
using BagMap = BagStructureSerializer::BagMap;

RefCntPtr<IParameter> TakeValue(DirectItem& item) noexcept {
    RefCntPtr<IParameter> value = RefCntPtr<IParameter>::Attach(item.value);
    item.value = nullptr;
    return value;
}

}  // namespace

bool DirectFilling::MakeBag(IParameters& root) {
    ParameterTable* const table = m_plainBags.Find(root);
    if (table == nullptr) {
        return false;
    }
    m_item = 1;
    FillTable(*table, m_items[0]);
    m_items.SetTaken();
    return true;
}

RefCntPtr<IParameters> DirectFilling::MakeNested() {
    const DirectItem& item = m_items[m_item++];
    RefCntPtr<IParameters> bag = m_registry.CreateParameters();
    Fill(*bag, item);
    return bag;
}

void DirectFilling::Fill(IParameters& bag, const DirectItem& item) {
    if (ParameterTable* const table = m_plainBags.Find(bag)) [[likely]] {
        FillTable(*table, item);
    } else {
        FillInNameOrder(bag, item.children);
    }
}

void DirectFilling::FillTable(ParameterTable& table, const DirectItem& item) {
    std::uint64_t members = item.children;
    table.Reserve(members);
    if (item.kind == DirectItem::Kind::Leaf && table.IsEmpty()) [[likely]] {
        table.Fill(members, [this] {
            DirectItem& member = m_items[m_item++];
            return ParameterTable::Entry{member.id, TakeValue(member)};
        });
        return;
    }
    for (; members != 0; --members) {
        DirectItem& member = m_items[m_item];
        if (member.kind == DirectItem::Kind::Value) [[likely]] {
            ++m_item;
            table.Set(member.id, TakeValue(member));
        } else if (member.kind == DirectItem::Kind::Null) {
            ++m_item;
        } else {
            table.Set(member.id, MakeValue());
        }
    }
}

void DirectFilling::FillInNameOrder(IParameters& bag, std::uint64_t members) {
    std::vector<std::pair<std::u16string_view, std::size_t>> order;
    for (; members != 0; --members) {
        order.emplace_back(NameOf(m_items[m_item].id), m_item);
        m_item = m_items.Behind(m_item);
    }
    std::sort(order.begin(), order.end());
    const std::size_t behind = m_item;
    for (const auto& [name, position] : order) {
        m_item = position;
        const int id = m_items[position].id;
        if (m_items[position].IsBag()) {
            FillNested(bag, id);
        } else if (m_items[position].kind != DirectItem::Kind::Null) {
            bag.SetParameter(id, MakeValue());
        }
    }
    m_item = behind;
}

// Empty where the host has cleared the namespace since.
std::u16string_view DirectFilling::NameOf(int id) const {
    const ParameterInfo* const info = m_registry.FindInfo(id);
    if (info == nullptr) {
        return {};
    }
    return m_form == NameForm::Camel ? info->camelName : info->shortName;
}

// A nested bag stands in its place while it is being filled.
void DirectFilling::FillNested(IParameters& bag, int id) {
    const ParameterInfo* const info = m_registry.FindInfo(id);
    const ParameterTypeCategory kind = info == nullptr ? PTC_Bag : info->kind;
    const DirectItem& item = m_items[m_item++];
    const RefCntPtr<IParameters> nested = m_registry.CreateParameters();
    bag.SetParameter(id, MakeRefCnt<BagParameter>(Bag(nested)));
    Fill(*nested, item);
    bag.SetParameter(id, kind == PTC_Bag ? MakeRefCnt<BagParameter>(Bag(nested)) : nullptr);
    if (kind == PTC_Structure) {
        bag.SetParameter(id, MakeRefCnt<BagParameter>(Bag(nested)));
    }
}

DirectFilling::Value DirectFilling::MakeValue() {
    switch (m_items[m_item].kind) {
        case DirectItem::Kind::Leaf:
        case DirectItem::Kind::Bag:
            return MakeRefCnt<BagParameter>(Bag(MakeNested()));
        case DirectItem::Kind::Bags:
            return MakeBags();
        case DirectItem::Kind::BagMap:
            return MakeBagMap();
        default:
            return TakeValue(m_items[m_item++]);
    }
}

DirectFilling::Value DirectFilling::MakeBags() {
    std::uint64_t left = m_items[m_item++].children;
    Bags bags;
    bags.reserve(left);
    for (; left != 0; --left) {
        bags.push_back(MakeNested());
    }
    return MakeRefCnt<ValParameter<Bags>>(std::move(bags));
}

DirectFilling::Value DirectFilling::MakeBagMap() {
    std::uint64_t left = m_items[m_item++].children;
    BagMap bags;
    for (; left != 0; --left) {
        TString& key = m_items.Key(m_items[m_item].id);
        bags.emplace_hint(bags.end(), std::move(key), MakeEntry());
    }
    return MakeRefCnt<ValParameter<BagMap>>(std::move(bags));
}

// A null entry takes a bag too, and drops it.
RefCntPtr<IParameters> DirectFilling::MakeEntry() {
    if (m_items[m_item].kind != DirectItem::Kind::Null) {
        return MakeNested();
    }
    ++m_item;
    m_registry.CreateParameters();
    return {};
}
