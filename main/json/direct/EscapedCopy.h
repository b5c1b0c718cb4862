// Strings into a text, escaped while they are copied. Included by DirectWriter.cpp.
#pragma once

#include <string_view>

#include "main/json/direct/TextSink.h"

// Appends text, escaped as AppendEscaped does it, to sink.
void CopyEscaped(TextSink& sink, std::u16string_view text);

// The same between quotation marks, at to in room for text.size() + 2 * kCopySlack units; answers null, with nothing
// accepted, when the text needs an escape, which is for CopyEscaped to give.
char16_t* CopyQuoted(char16_t* to, std::u16string_view text);

// Text between quotation marks, whatever it holds, at to in that room of the sink.
inline void PutQuoted(TextSink& sink, char16_t* to, std::u16string_view text) {
    if (char16_t* const end = CopyQuoted(to, text); end != nullptr) [[likely]] {
        sink.Accept(end);
        return;
    }
    *to++ = u'"';
    sink.Accept(to);
    CopyEscaped(sink, text);
    sink.Put(u'"');
}
