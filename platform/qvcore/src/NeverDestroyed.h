// Objects that live as long as the program and need no memory for it. Internal to qvcore.
#pragma once

#include <cstddef>
#include <new>
#include <utility>

namespace qvcore::detail {

// Holds a T that is never destroyed: values in static objects may ask for it after every static of its file has gone.
// Unlike an object on the heap it can be made without memory, hence inside functions that never throw.
template <class T>
class NeverDestroyed {
public:
    template <class... Arguments>
    explicit NeverDestroyed(Arguments&&... arguments) {
        new (m_storage) T(std::forward<Arguments>(arguments)...);
    }
    NeverDestroyed(const NeverDestroyed&) = delete;
    NeverDestroyed& operator=(const NeverDestroyed&) = delete;

    const T& Get() const noexcept { return *std::launder(reinterpret_cast<const T*>(m_storage)); }

private:
    alignas(T) std::byte m_storage[sizeof(T)];
};

}  // namespace qvcore::detail
