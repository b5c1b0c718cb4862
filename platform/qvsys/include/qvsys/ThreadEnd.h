// What a library keeps for each thread, freed when the thread ends. Not for callers.
//
// Exceptions: never throws.
#pragma once

#include <atomic>

#include <qvsys/Export.h>

namespace qvsys::detail {

// Calls a function at the end of each thread that asked for it; and, on the thread that unloads the library or ends the
// program, when the object is destroyed. A thread_local object would do the same, but registering its destructor takes
// memory, and the C library ends the program where there is none.
//
// One static object serves all threads. Threads: Watch may be called from any thread.
class QVSYS_API ThreadEnd {
public:
    using Function = void (*)() noexcept;

    explicit constexpr ThreadEnd(Function function) noexcept : m_function(function) {}
    ThreadEnd(const ThreadEnd&) = delete;
    ThreadEnd& operator=(const ThreadEnd&) = delete;
    ~ThreadEnd();

    // Asks for the call at the end of the calling thread; asking again changes nothing. False when there will be none.
    bool Watch() noexcept;

private:
    enum class State : int { New, Making, Made, Failed };

    bool IsMade() noexcept;
    static void Call(void* self) noexcept;

    Function m_function;
    std::atomic<State> m_state{State::New};
    unsigned m_key = 0;
};

}  // namespace qvsys::detail
