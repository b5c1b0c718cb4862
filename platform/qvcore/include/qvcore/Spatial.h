// Geometries that pass through without being looked into.
//
// Exceptions: making one is strong; all else never throws.
#pragma once

#include <compare>
#include <memory>

#include <qvcore/Export.h>
#include <qvcore/TString.h>

// An opaque text that stands for a geometry. Copies share the text and allocate nothing.
//
// Threads: the shared text never changes, so that copies may be used from several threads at once.
class QVCORE_API Spatial {
public:
    // The empty text.
    Spatial() noexcept = default;
    explicit Spatial(const TString& text);

    // Valid as long as any copy of this object.
    const TString& GetText() const noexcept;

    // By text, code unit by code unit.
    friend bool operator==(const Spatial& left, const Spatial& right) noexcept {
        return left.GetText() == right.GetText();
    }
    friend std::strong_ordering operator<=>(const Spatial& left, const Spatial& right) noexcept {
        return left.GetText() <=> right.GetText();
    }

private:
    std::shared_ptr<const TString> m_text;  // null for the empty text
};
