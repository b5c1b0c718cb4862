// UTF-8 of UTF-16 texts that may be broken.
//
// Exceptions: strong.
#pragma once

#include <string>
#include <string_view>

#include <qvsys/Export.h>

// The text in UTF-8 (RFC 3629). A surrogate without its partner becomes U+FFFD; a NUL stays a NUL.
QVSYS_API std::string ToUtf8(std::u16string_view text);
