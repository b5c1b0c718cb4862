// All errors of a text, and all leniencies, by the library's own reader.
#pragma once

#include <cstddef>
#include <vector>

#include <qvpreslayer/IReadingDiagnostics.h>

#include "tools/qvpres/check/Check.h"
#include "tools/qvpres/text/ParameterText.h"

namespace qvpres {

// A leniency that the reader told, at the unit of the text where it stands.
struct ReadingNote {
    Leniency leniency;
    std::size_t offset;
};

struct ReadingOutcome {
    std::vector<CheckFinding> errors;  // their places are offsets only
    std::vector<ReadingNote> notes;    // of what reads; none of what fails
};

// The reader ends at the first error. So a text that it refuses is read piece by piece: each member alone, and inside
// those that fail what is inside them, down to the smallest piece that fails. Whether something is an error or a
// leniency is decided by the reader alone. At most mostErrors errors; notes where they are asked for.
ReadingOutcome ReadInPieces(const ParameterText& text, std::size_t mostErrors, bool withNotes);

}  // namespace qvpres
