#include "main/json/direct/EscapedCopy.h"

#include "main/json/JSONEscaping.h"

void CopyEscaped(TextSink& sink, std::u16string_view text) {
    sink.Flush();
    AppendEscaped(sink.Text(), text);
    sink.Reload();
}

void PutEscaped(TextSink& sink, char16_t* to, std::u16string_view text) {
    *to++ = u'"';
    sink.Accept(to);
    CopyEscaped(sink, text);
    sink.Put(u'"');
}
