// From items to bags. Included by DirectReader.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include <qvsys/RefCntPtr.h>

#include <qvpreslayer/IParameters.h>
#include <qvpreslayer/ParametersRegistry.h>
#include <qvpreslayer/detail/ParameterTable.h>
#include <qvpreslayer/detail/PlainBags.h>

#include "main/json/direct/DirectItems.h"
#include "main/json/direct/DirectNames.h"

// Makes the bags of one text, in its order, and takes the values into them. Where a bag watches what is stored in it,
// values come in the order of their names, as on the long way.
//
// What the host throws while it makes bags passes; the items keep what was not taken.
class DirectFilling {
public:
    DirectFilling(DirectItems& items, ParametersRegistry& registry, NameForm form)
        : m_items(items), m_registry(registry), m_form(form) {}

    // Fills root with all items. False, with nothing done, when root is not plain, which is for the long way.
    bool MakeBag(IParameters& root);

private:
    using Value = RefCntPtr<IParameter>;

    // Each takes items from m_item on.
    RefCntPtr<IParameters> MakeNested();
    void Fill(IParameters& bag, const DirectItem& item);
    void FillTable(qvpreslayer::detail::ParameterTable& table, const DirectItem& item);
    void FillInNameOrder(IParameters& bag, std::uint64_t members);
    std::u16string_view NameOf(int id) const;
    void FillNested(IParameters& bag, int id);
    Value MakeValue();
    Value MakeBags();
    Value MakeBagMap();
    RefCntPtr<IParameters> MakeEntry();

    DirectItems& m_items;
    ParametersRegistry& m_registry;
    NameForm m_form;
    qvpreslayer::detail::BagsOfOneClass m_plainBags;
    std::size_t m_item = 0;
};
