// Whether locked operations can be spared. Not for callers.
//
// Exceptions: never throws.
#pragma once

#if defined(__has_include)
#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#define QVSYS_KNOWS_ONE_THREAD
#endif
#endif

namespace qvsys::detail {

// Whether the calling thread is the only one of the process: what it did before it starts another one is known to that
// one without any order being asked for. False also where the C library does not tell.
//
// A locked addition costs as much as twenty others, and many processes never have a second thread.
inline bool HasOneThread() noexcept {
#if defined(QVSYS_KNOWS_ONE_THREAD)
    return __libc_single_threaded != 0;
#else
    return false;
#endif
}

}  // namespace qvsys::detail
