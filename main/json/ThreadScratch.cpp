#include "main/json/ThreadScratch.h"

#include <new>
#include <utility>

#include <qvsys/ThreadEnd.h>

#include <qvpreslayer/PresLayerLimits.h>

namespace {

bool WatchThread() noexcept {
    static qvsys::detail::ThreadEnd s_end(ThreadScratch::Release);
    return s_end.Watch();
}

}  // namespace

thread_local constinit ThreadScratch* ThreadScratch::t_scratch = nullptr;

ThreadScratch* ThreadScratch::Make() noexcept {
    if (WatchThread()) {
        t_scratch = new (std::nothrow) ThreadScratch;
    }
    return t_scratch;
}

void ThreadScratch::Release() noexcept {
    if (t_scratch != nullptr && !t_scratch->input.inUse && !t_scratch->output.inUse) {
        delete std::exchange(t_scratch, nullptr);
    }
}

void PresLayerLimits::ReleaseKeptMemory() noexcept {
    ThreadScratch::Release();
    qvsys::detail::ReleaseKeptBlocks();
}
