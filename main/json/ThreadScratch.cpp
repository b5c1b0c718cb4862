#include "main/json/ThreadScratch.h"

#include <new>
#include <utility>

#include <qvsys/BlockPool.h>
#include <qvsys/ThreadEnd.h>

#include <qvpreslayer/PresLayerLimits.h>

namespace {

thread_local constinit ThreadScratch* t_scratch = nullptr;

bool WatchThread() noexcept {
    static qvsys::detail::ThreadEnd s_end(ThreadScratch::Release);
    return s_end.Watch();
}

}  // namespace

ThreadScratch* ThreadScratch::Find() noexcept {
    if (!qvsys::detail::KeepsBlocks()) [[unlikely]] {
        return nullptr;
    }
    if (t_scratch == nullptr && WatchThread()) [[unlikely]] {
        t_scratch = new (std::nothrow) ThreadScratch;
    }
    return t_scratch;
}

void ThreadScratch::Release() noexcept {
    if (t_scratch != nullptr && !t_scratch->readerInUse && !t_scratch->textInUse) {
        delete std::exchange(t_scratch, nullptr);
    }
}

void PresLayerLimits::ReleaseKeptMemory() noexcept {
    ThreadScratch::Release();
    qvsys::detail::ReleaseKeptBlocks();
}
