// A command that cannot do its work: wrong usage, or input that cannot be taken. main prints the message and ends with
// ExitCode::Failed.
#pragma once

#include <stdexcept>

namespace qvpres {

class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace qvpres
