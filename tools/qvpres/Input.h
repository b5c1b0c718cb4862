// Texts from files and from standard input, and results to files.
#pragma once

#include <string>
#include <string_view>

namespace qvpres {

// The name by which messages call an input: that of the file, or "standard input".
std::string InputName(const std::string& file);

// All bytes of a file; "-" is standard input. Failure when it cannot be read, or when standard input is a terminal,
// where nobody would know that something is waited for.
std::string ReadInput(const std::string& file);

// Writes bytes to a file in place of what it held; "-" is standard output. Failure when they cannot all be written.
void WriteOutput(const std::string& file, std::string_view bytes);

}  // namespace qvpres
