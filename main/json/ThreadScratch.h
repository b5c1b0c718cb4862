// What each thread keeps from one document to the next. Included by JSONSerializer.cpp.
#pragma once

#include <cstddef>

#include <qvcore/TString.h>

#include "main/json/direct/DirectReader.h"

// A reader, which remembers the order of members, and a text to write into. Whoever takes one of them clears the
// other's way by the mark: host code that is called on the way may read and write documents, too.
struct ThreadScratch {
    // The calling thread's; null where it keeps nothing, or there is no memory for it.
    static ThreadScratch* Find() noexcept;

    // Lets go of the calling thread's.
    static void Release() noexcept;

    DirectReader reader;
    TString text;
    std::size_t lastUnits = 0;  // of the last text that was written
    bool readerInUse = false;
    bool textInUse = false;
};
