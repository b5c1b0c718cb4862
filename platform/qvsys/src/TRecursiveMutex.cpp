#include <qvsys/TRecursiveMutex.h>

#include <mutex>

struct TRecursiveMutex::Impl {
    std::recursive_mutex mutex;
};

TRecursiveMutex::TRecursiveMutex() : m_impl(std::make_unique<Impl>()) {}

TRecursiveMutex::~TRecursiveMutex() = default;

void TRecursiveMutex::Lock() { m_impl->mutex.lock(); }

void TRecursiveMutex::Unlock() { m_impl->mutex.unlock(); }

bool TRecursiveMutex::try_lock() { return m_impl->mutex.try_lock(); }
