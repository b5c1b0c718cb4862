// The grammar of JSON texts over UTF-16. Included by JSONDocument.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "main/json/JSONDocument.h"

// Checks a text and appends its nodes. Keeps its own stack, so that no text makes the call stack grow.
//
// Between functions m_at stands at the first unit that has not been taken. Functions that take something leave it
// behind what they took; Fail reports the unit at m_at.
class JSONParser {
public:
    JSONParser(std::u16string_view text, std::vector<JSONNode>& nodes);

    // Takes the first value of the text and answers where it ends; JSONParseException when there is none.
    std::size_t Parse();

    // From at on: the first unit that is no blank and no comment, or the text's end. A comment that is not closed
    // counts as such a unit.
    std::size_t FindTextAfter(std::size_t at);

private:
    enum class State { Value, FirstElement, FirstName, Name, Separator, Done };

    struct Container {
        std::uint32_t node;
        std::uint32_t element;  // arrays: the position being read; objects: the node of the name being read
    };

    State TakeValue();
    State TakeFirstElement();
    State TakeName(bool first);
    State TakeSeparator();
    State Open(JSONKind kind);
    State Close();
    State AfterValue() const;
    void TakeString();
    void TakeNumber();
    void TakeDigits();
    void TakeWord(std::u16string_view word, JSONKind kind);
    void TakeBlanks();
    void TakeComment();
    bool TryTakeComment();
    void AddScalar(JSONKind kind, std::size_t begin, std::size_t end, bool escaped);

    bool AtEnd() const noexcept { return m_at == m_text.size(); }
    bool IsAt(char16_t unit) const noexcept { return m_at < m_text.size() && m_text[m_at] == unit; }
    bool IsAtDigit() const noexcept { return m_at < m_text.size() && m_text[m_at] >= u'0' && m_text[m_at] <= u'9'; }
    [[noreturn]] void Fail() const;
    TString Path() const;

    std::u16string_view m_text;
    std::vector<JSONNode>& m_nodes;
    std::vector<Container> m_open;  // outermost first
    std::size_t m_at = 0;
    std::size_t m_maxDepth;
    bool m_inValue = true;  // a value of the innermost container is being read, not what stands between values
};
