#include <qvcore/Spatial.h>

Spatial::Spatial(const TString& text) : m_text(std::make_shared<const TString>(text)) {}

const TString& Spatial::GetText() const noexcept {
    static const TString* const s_empty = new TString;  // never destroyed: values may live to the end of the program
    return m_text ? *m_text : *s_empty;
}
