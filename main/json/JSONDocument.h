// A JSON text, checked and cut into nodes. Included by JSONReader, its tests, and the tools, which need places.
//
// What is accepted: RFC 8259, and beyond it
//   comments "//" to the end of the line and "/* */" wherever blanks may stand;
//   anything after the first complete value, which is not looked at;
//   U+0000 inside strings, and surrogates without a partner, raw or escaped, which stay as they are.
// A number beyond the range of double is refused, since no value could stand for it; so is a text of 2^32 - 1 units.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include <qvcore/TString.h>

#include <qvpreslayer/JSONParseException.h>
#include <qvpreslayer/TextLocation.h>

// One value, or one member name, of the text.
struct JSONNode {
    std::uint32_t begin;  // strings: the first unit inside the quotes; others: the first unit
    std::uint32_t end;    // scalars: one past the last unit (before the closing quote); containers: the node behind the
                          // last one inside
    JSONKind kind;
    bool escaped;  // strings: holds escapes
};

// Nodes stand in the order of the text. An array's node is followed by its elements; an object's by its members, each a
// name (a string node) and a value. Refers to the text, which must outlive it.
//
// Threads: reading is not thread-safe; a document belongs to one call.
class JSONDocument {
public:
    using Index = std::uint32_t;

    // JSONParseException (Messages::kJSONNotValid) with line, column, offset and path when the text is not valid.
    explicit JSONDocument(std::u16string_view text);

    const JSONNode& operator[](Index node) const noexcept { return m_nodes[node]; }

    // The node behind a value, all that is inside it included.
    Index Next(Index node) const noexcept { return IsContainer(m_nodes[node].kind) ? m_nodes[node].end : node + 1; }

    // Where the text goes on behind the first value; nothing there has been looked at.
    std::size_t End() const noexcept { return m_end; }

    // What a string or number node spells, escapes resolved. Valid as long as the document.
    std::u16string_view Text(Index node) const;

    // The first unit behind the value that is no blank and no comment; the text's size where there is none.
    std::size_t FindTextAfterValue() const;

    std::size_t Size() const noexcept { return m_text.size(); }

    // The place of any unit. Takes the time of a search, but for the first one, which looks for the lines of the text.
    TextLocation LocateOffset(std::size_t offset) const;

    // Where a node stands; the path is for the caller to add.
    TextLocation Locate(Index node) const;

    static bool IsContainer(JSONKind kind) noexcept { return kind == JSONKind::Object || kind == JSONKind::Array; }

private:
    friend class JSONParser;

    std::u16string_view m_text;
    std::vector<JSONNode> m_nodes;
    std::size_t m_end;
    mutable std::deque<std::u16string> m_unescaped;  // what Text made; never moves
    mutable std::vector<std::size_t> m_lineStarts;   // empty until a place is asked for
};

// The inside of a string token with its escapes resolved.
std::u16string Unescaped(std::u16string_view raw);

// Line, column and offset of a unit of the text. Lines end at a line feed.
TextLocation LocateUnit(std::u16string_view text, std::size_t offset);

// Appends one step of a path: a slash, and a member name or a position.
void AppendPath(TString& path, std::u16string_view name);
void AppendPath(TString& path, std::size_t position);
