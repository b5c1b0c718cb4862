// Bags whose entries can be reached without a virtual call each. Not for callers.
#pragma once

#include <qvpreslayer/BaseParameters.h>
#include <qvpreslayer/Export.h>
#include <qvpreslayer/IParameters.h>
#include <qvpreslayer/detail/ParameterTable.h>

namespace qvpreslayer::detail {

// A bag is plain when its class derives from BaseParameters and leaves Accept, SetParameter and GetParameter as they
// are, so that nobody can tell whether they were called.
class QVPRESLAYER_API PlainBags {
public:
    // The entries of bag, valid as long as it; null when it is not plain, or when that cannot be told.
    static ParameterTable* Find(IParameters& bag) noexcept;
    static const ParameterTable* Find(const IParameters& bag) noexcept { return Find(const_cast<IParameters&>(bag)); }

private:
    friend class BagsOfOneClass;

    // Requires: bag is plain.
    static ParameterTable* TableOf(IParameters& bag) noexcept {
        return &static_cast<BaseParameters&>(bag).m_parameters;
    }
};

// Finds the same for one bag after the other. These are mostly of one class, which is looked at once then: the start of
// an object, where its virtual functions are, tells that it is the same. For one document: later another class may have
// come to stand there.
class BagsOfOneClass {
public:
    ParameterTable* Find(IParameters& bag) noexcept {
        const void* const functions = *reinterpret_cast<const void* const*>(&bag);
        if (functions == m_plain) [[likely]] {
            return PlainBags::TableOf(bag);
        }
        ParameterTable* const table = PlainBags::Find(bag);
        m_plain = table != nullptr ? functions : m_plain;
        return table;
    }
    const ParameterTable* Find(const IParameters& bag) noexcept { return Find(const_cast<IParameters&>(bag)); }

private:
    const void* m_plain = nullptr;  // at the start of the last one that was plain
};

}  // namespace qvpreslayer::detail
