// The manual as a man page.
#pragma once

#include <string>

#include "tools/qvpres/shell/CommandDescription.h"

namespace qvpres {

// In the man macros; commands and options are those of the program.
std::string ManPage(const CommandDescription& program);

}  // namespace qvpres
