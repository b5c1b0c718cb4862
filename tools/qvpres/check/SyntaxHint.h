// Why a text is not JSON, in words.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qvpres {

// offset is the first unit that cannot stand. A guess at what was meant, else what stands there.
std::string SyntaxHint(std::u16string_view text, std::size_t offset);

}  // namespace qvpres
