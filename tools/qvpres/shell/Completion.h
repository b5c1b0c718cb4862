// Completion of the command line in shells.
#pragma once

#include <string>

#include "tools/qvpres/shell/CommandDescription.h"

namespace qvpres {

// What each shell reads to complete qvpres.
std::string BashCompletion(const CommandDescription& program);
std::string ZshCompletion(const CommandDescription& program);
std::string FishCompletion(const CommandDescription& program);

}  // namespace qvpres
