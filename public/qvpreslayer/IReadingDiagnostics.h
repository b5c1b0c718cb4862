// What reading a JSON text let pass, for those who want to know.
//
// Exceptions: GetLeniencyText never throws; what Report throws ends the reading, and no bag is answered.
#pragma once

#include <qvpreslayer/Export.h>
#include <qvpreslayer/TextLocation.h>

// A leniency of the reader that made something other than the text says, or dropped something.
enum class Leniency {
    UnknownName,      // a text that is no name of the enumeration became its default
    DuplicateMember,  // a member stands again under the same name, or another spelling of it; the later one counts
    WrappedInteger,   // an integer, or a count of hours or minutes, keeps its low bits only (see docs/json.md)
    SkippedRun,       // a nested list is no run, or stands in a list that is not packed
    NullMember,       // a member that is null is passed over
    LostDigits,       // a real, as a double, is another one when it arrives
    IgnoredValue,     // an array for a structure that is not in list form; null, an object or an array in place of an
                      // element's text, which is then empty
    TextAfterValue,   // something other than blanks and comments follows the value
};

// The name of a leniency in plain words, such as "unknown name"; a constant.
QVPRESLAYER_API const char* GetLeniencyText(Leniency leniency) noexcept;

// Told of each leniency while a text is read; JSONSerializer::SetDiagnostics says when. What it throws ends the reading
// and passes unchanged.
class IReadingDiagnostics {
public:
    // location says where: line, column, offset and path are known. id is the parameter's identifier, 0 where none is
    // known.
    virtual void Report(Leniency leniency, int id, const TextLocation& location) = 0;

protected:
    ~IReadingDiagnostics() = default;
};
