#include <qvpreslayer/detail/StackGuard.h>

#include <cstddef>
#include <cstdint>

#include <pthread.h>

#include <qvpreslayer/PresLayerLimits.h>

namespace qvpreslayer::detail {

namespace {

// The addresses of a thread's stack, which grows downwards; both 0 where the system does not tell.
struct StackBounds {
    std::uintptr_t lowest;
    std::uintptr_t end;
};

StackBounds AskForBounds() noexcept {
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0) {
        return {0, 0};
    }
    void* lowest = nullptr;
    std::size_t size = 0;
    std::size_t guard = 0;
    const bool known =
        pthread_attr_getstack(&attributes, &lowest, &size) == 0 && pthread_attr_getguardsize(&attributes, &guard) == 0;
    pthread_attr_destroy(&attributes);
    if (!known) {
        return {0, 0};
    }
    // Whether the guard lies inside what is told has changed from one C library to the next.
    const auto first = reinterpret_cast<std::uintptr_t>(lowest);
    return {first + guard, first + size};
}

// Asking reads files of the system on the main thread: once for each thread is enough.
thread_local constinit bool t_asked = false;
thread_local constinit StackBounds t_bounds{0, 0};

}  // namespace

bool IsStackLow() noexcept {
    if (!t_asked) {
        t_asked = true;
        t_bounds = AskForBounds();
    }
    const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
    return here >= t_bounds.lowest && here < t_bounds.end &&
           here - t_bounds.lowest < PresLayerLimits::GetStackReserve();
}

}  // namespace qvpreslayer::detail
