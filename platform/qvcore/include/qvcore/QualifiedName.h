// Names made of scoped segments, such as [orders].[price].
//
// Exceptions: strong.
#pragma once

#include <compare>
#include <string_view>
#include <vector>

#include <qvcore/Export.h>
#include <qvcore/TString.h>

// A name of one to eight segments, none of them empty. Its text form is each segment in square brackets, "]" doubled
// inside, joined by ".": "[a]]b].[c]" are the segments "a]b" and "c". A text that holds no bracket is one segment.
class QVCORE_API QualifiedName {
public:
    // The name without segments, whose text is empty; it cannot be parsed back.
    QualifiedName() = default;

    // Reads the text form. ParseGlobal(x.GetFullValue()) == x for every parsed x. QuorvelException naming the text
    // when it is malformed.
    static QualifiedName ParseGlobal(const TString& text);

    // The same without an exception: false for a malformed text, which leaves name as it was.
    static bool TryParseGlobal(std::u16string_view text, QualifiedName& name);

    // The text form, brackets included. Valid as long as the name is unchanged.
    const TString& GetFullValue() const noexcept { return m_fullValue; }

    // The segments without brackets, outermost scope first.
    std::vector<TString> GetSegments() const;

    friend bool operator==(const QualifiedName&, const QualifiedName&) = default;
    friend std::strong_ordering operator<=>(const QualifiedName& left, const QualifiedName& right) noexcept {
        return left.m_fullValue <=> right.m_fullValue;
    }

private:
    TString m_fullValue;  // in normal form: every segment bracketed
};
