// Bags whose entries can be reached without a virtual call each. Not for callers.
#pragma once

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
};

}  // namespace qvpreslayer::detail
