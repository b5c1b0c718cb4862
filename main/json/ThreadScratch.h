// What each thread keeps from one document to the next. Included by JSONSerializer.cpp.
#pragma once

#include <cstddef>

#include <qvsys/BlockPool.h>

#include <qvcore/TString.h>

#include "main/json/direct/DirectReader.h"
#include "main/json/direct/DirectWriter.h"

// A reader and a writer, which remember the order of members, and a text to write into. Whoever takes one of them
// clears the other's way by the mark: host code that is called on the way may read and write documents, too.
struct ThreadScratch {
    struct Input {
        DirectReader reader;
        bool inUse = false;
    };

    struct Output {
        DirectWriter writer;
        TString text;
        std::size_t lastUnits = 0;  // of the last text that was written
        bool inUse = false;
    };

    // The calling thread's; null where it keeps nothing, or there is no memory for it.
    static ThreadScratch* Find() noexcept {
        if (!qvsys::detail::KeepsBlocks()) [[unlikely]] {
            return nullptr;
        }
        return t_scratch != nullptr ? t_scratch : Make();
    }

    // Lets go of the calling thread's.
    static void Release() noexcept;

    Input input;
    Output output;

private:
    static ThreadScratch* Make() noexcept;

    static thread_local constinit ThreadScratch* t_scratch;
};
