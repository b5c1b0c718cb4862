#include <qvcore/Spatial.h>

#include "NeverDestroyed.h"

Spatial::Spatial(const TString& text) : m_text(std::make_shared<const TString>(text)) {}

const TString& Spatial::GetText() const noexcept {
    static const qvcore::detail::NeverDestroyed<TString> s_empty;
    return m_text ? *m_text : s_empty.Get();
}
