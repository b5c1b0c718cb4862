#include "Instructions.h"

extern "C" void RunCounted(compare::Contestant& contestant, int write, std::size_t texts) {
    for (std::size_t i = 0; i < texts; ++i) {
        if (write != 0) {
            contestant.Write(i);
        } else {
            contestant.Read(i);
        }
    }
}
