#include <qvpreslayer/IReadingDiagnostics.h>

const char* GetLeniencyText(Leniency leniency) noexcept {
    switch (leniency) {
        case Leniency::UnknownName:
            return "unknown name";
        case Leniency::DuplicateMember:
            return "duplicate member";
        case Leniency::WrappedInteger:
            return "wrapped integer";
        case Leniency::SkippedRun:
            return "skipped run";
        case Leniency::NullMember:
            return "null member";
        case Leniency::LostDigits:
            return "lost digits";
        case Leniency::IgnoredValue:
            return "ignored value";
        case Leniency::TextAfterValue:
            return "text after the value";
    }
    return "unknown leniency";
}
