// A mutex that its holder may lock again.
//
// Exceptions: making one and Lock are strong; Unlock and try_lock never throw.
#pragma once

#include <memory>

#include <qvsys/Export.h>

// Recursive mutual exclusion. As many Unlock calls as Lock calls set it free. Not copyable.
//
// The lower-case names make it a standard lockable, so that std::lock_guard and std::unique_lock work with it.
class QVSYS_API TRecursiveMutex {
public:
    TRecursiveMutex();
    TRecursiveMutex(const TRecursiveMutex&) = delete;
    TRecursiveMutex& operator=(const TRecursiveMutex&) = delete;

    // Requires: not locked.
    ~TRecursiveMutex();

    // Waits until no other thread holds the mutex; std::system_error when the system refuses.
    void Lock();

    // Requires: locked by the calling thread.
    void Unlock();

    void lock() { Lock(); }
    void unlock() { Unlock(); }

    // Locks and answers true when no other thread holds the mutex, else answers false at once.
    bool try_lock();

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
