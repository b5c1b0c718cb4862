// Text from typed values.
//
// Threads: all operations are static and may run at once on several threads.
//
// Exceptions: Format is strong. Append is basic: what was written before a failure stays at the end of the text.
#pragma once

#include <qvcore/DataValue.h>
#include <qvcore/Export.h>
#include <qvcore/TString.h>

// Writes the bare text of a value, without its type. DataValueParser reads it back, given the type and the delimiters.
class QVCORE_API DataValueFormatter {
public:
    struct FormatOptions {
        // 0: text for people, 1: invariant text for programs. They differ in what groupDigits needs.
        int style = 0;

        // Puts delimiterString on both sides of a text. Nothing inside is escaped.
        bool delimitStrings = true;

        // Puts delimiterDatetime on both sides of a date and of a date with time.
        bool delimitDatetimes = true;

        // Reals by the fewest digits that read back to the same number; else by 17 significant digits without trailing
        // zeros, which do so as well and show the number's nearest neighbours apart.
        bool shortestReals = true;

        // Puts "," between groups of three digits of an integer: always in style 1, in style 0 only along with
        // localize. Reals are never grouped.
        bool groupDigits = true;

        // Lets style 0 group digits. No locale of the process is ever read: the same options give the same text
        // everywhere.
        bool localize = true;
    };

    // The text of value; QuorvelException for a style other than 0 and 1. A null is valueNull whatever the options.
    static TString Format(const DataValue& value, const FormatOptions& options);

    // The same, put at the end of text, for callers that build a longer one.
    static void Append(TString& text, const DataValue& value, const FormatOptions& options);

    // Made when the library is loaded, hence usable by the start-up code of every library that links to it.
    static const TString delimiterString;    // "
    static const TString delimiterDatetime;  // #
    static const TString delimiterSpecial;   // %, around the names of special values
    static const TString valueNull;          // %null%
};
