// The pointer through which all shared objects pass.
//
// Threads: several pointers to one object may be used from several threads; one pointer belongs to one thread at a
// time.
//
// Exceptions: no operation throws but dereferencing an empty pointer and MakeRefCnt, which gives the strong guarantee.
#pragma once

#include <concepts>
#include <cstddef>
#include <functional>
#include <utility>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <qvsys/LogicException.h>
#include <qvsys/RefCntObject.h>

// Shares an object of a class derived from RefCntObject. May be empty; dereferencing an empty pointer is a logic error
// with the text "m_ptr", never undefined behaviour. Making one from a plain pointer shares the object: the count lives
// in the object, so that a plain pointer can become a RefCntPtr again at any time while a reference is held.
template <class T>
class RefCntPtr {
public:
    using element_type = T;

    RefCntPtr() noexcept = default;
    RefCntPtr(std::nullptr_t) noexcept {}
    RefCntPtr(T* object) : m_ptr(object) {}

    // Converts where U* converts to T*; shares the object.
    template <class U>
    requires std::convertible_to<U*, T*> RefCntPtr(const RefCntPtr<U>& other) : m_ptr(other.Get()) {}

    template <class U>
    requires std::convertible_to<U*, T*> RefCntPtr(RefCntPtr<U>&& other)
    noexcept : m_ptr(other.Detach(), false) {}

    // The object, or null. The pointer keeps its reference.
    T* Get() const noexcept { return m_ptr.get(); }

    // The object; LogicException "m_ptr" when there is none.
    T& operator*() const { return *Checked(); }
    T* operator->() const { return Checked(); }

    explicit operator bool() const noexcept { return m_ptr.get() != nullptr; }

    // Lets go of the object.
    void Reset() noexcept { m_ptr.reset(); }
    void Reset(T* object) { m_ptr.reset(object); }

    // Gives the object away together with its reference; the pointer is empty afterwards. Attach takes both back.
    T* Detach() noexcept { return m_ptr.detach(); }
    static RefCntPtr Attach(T* object) noexcept { return RefCntPtr(object, WithReference()); }

    void Swap(RefCntPtr& other) noexcept { m_ptr.swap(other.m_ptr); }

    // Shares an object that was made just now, and that no other thread knows.
    static RefCntPtr OfNew(T* object) noexcept {
        object->AddFirstReference();
        return RefCntPtr(object, WithReference());
    }

private:
    struct WithReference {};
    RefCntPtr(T* object, WithReference) noexcept : m_ptr(object, false) {}

    T* Checked() const {
        if (m_ptr.get() == nullptr) [[unlikely]] {
            ThrowLogicException("m_ptr", kCheckLine, "RefCntPtr.h");
        }
        return m_ptr.get();
    }

    // The line that reports of an empty pointer name, wherever this file's own lines move to.
    static constexpr int kCheckLine = 364;

    boost::intrusive_ptr<T> m_ptr;
};

// Same object.
template <class T, class U>
bool operator==(const RefCntPtr<T>& left, const RefCntPtr<U>& right) noexcept {
    return left.Get() == right.Get();
}
template <class T, class U>
bool operator==(const RefCntPtr<T>& left, U* right) noexcept {
    return left.Get() == right;
}
template <class T>
bool operator==(const RefCntPtr<T>& left, std::nullptr_t) noexcept {
    return left.Get() == nullptr;
}

// By address, for ordered containers.
template <class T>
bool operator<(const RefCntPtr<T>& left, const RefCntPtr<T>& right) noexcept {
    return std::less<T*>()(left.Get(), right.Get());
}

// The object as a T, or an empty pointer when it is none (or when there is no object).
template <class T, class U>
RefCntPtr<T> DynamicPtrCast(const RefCntPtr<U>& pointer) {
    return RefCntPtr<T>(dynamic_cast<T*>(pointer.Get()));
}

// Makes an object that is shared from the start.
template <class T, class... Arguments>
RefCntPtr<T> MakeRefCnt(Arguments&&... arguments) {
    return RefCntPtr<T>::OfNew(new T(std::forward<Arguments>(arguments)...));
}

template <class T>
struct std::hash<RefCntPtr<T>> {
    std::size_t operator()(const RefCntPtr<T>& pointer) const noexcept { return std::hash<T*>()(pointer.Get()); }
};
