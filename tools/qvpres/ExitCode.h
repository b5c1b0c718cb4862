// How qvpres ends, the same for every command.
#pragma once

namespace qvpres {

enum class ExitCode {
    Done = 0,    // and nothing was found
    Found = 1,   // an error in a text, a difference, something that would be lost
    Failed = 2,  // wrong usage, or input that cannot be taken
};

}  // namespace qvpres
