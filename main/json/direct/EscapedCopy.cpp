#include "main/json/direct/EscapedCopy.h"

#include "main/json/JSONEscaping.h"

void CopyEscaped(TextSink& sink, std::u16string_view text) {
    sink.Flush();
    AppendEscaped(sink.Text(), text);
    sink.Reload();
}
