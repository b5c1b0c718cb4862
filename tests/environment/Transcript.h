// All the texts that the libraries make and read, one way or another, as one text: whatever it is that a locale, the
// environment or the time could change shows in it.
#pragma once

#include <string>

std::string Transcript();
