// Intrusive, atomic reference counts: the base of everything that is shared through RefCntPtr.
//
// Threads: counts may be changed from any thread, but not from a signal handler. The object itself is as thread-safe as
// its own class says.
//
// Exceptions: counting never throws.
#pragma once

#include <atomic>

#include <qvsys/Export.h>
#include <qvsys/OneThread.h>

// Holds the count. An object starts without a reference (count 0); the first RefCntPtr makes it 1, and the last one to
// go deletes the object through its virtual destructor.
class QVSYS_API RefCntObjectNonVirtualBase {
public:
    // Adds one reference.
    void AddReference() const noexcept {
        if (qvsys::detail::HasOneThread()) {
            m_count.store(m_count.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
        } else {
            m_count.fetch_add(1, std::memory_order_relaxed);
        }
    }

    // Adds the first reference of an object that nobody else knows yet; as AddReference where its constructor has
    // already handed out some.
    [[gnu::always_inline]] void AddFirstReference() const noexcept {
        if (m_count.load(std::memory_order_relaxed) == 0) [[likely]] {
            m_count.store(1, std::memory_order_relaxed);
        } else {
            AddReference();
        }
    }

    // Takes one reference away; deletes the object when it was the last.
    void RemoveReference() const noexcept {
        // The holder of the only reference is alone with the object: nobody is left to add another one meanwhile. Most
        // objects go this way, which spares the locked subtraction.
        const int count = m_count.load(std::memory_order_acquire);
        if (count == 1) {
            delete this;
        } else if (qvsys::detail::HasOneThread()) {
            m_count.store(count - 1, std::memory_order_relaxed);
        } else if (m_count.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            delete this;
        }
    }

    // The one reference of an object that has none yet: one of static or automatic storage, from which nobody takes it
    // away, so that no RefCntPtr ever deletes it; or one that was made just now and shared with nobody.
    void SetRefCountToOne() const noexcept { m_count.store(1, std::memory_order_relaxed); }

protected:
    RefCntObjectNonVirtualBase() noexcept = default;

    // A copy is an object of its own: it starts without references, and assigning leaves both counts alone.
    RefCntObjectNonVirtualBase(const RefCntObjectNonVirtualBase&) noexcept {}
    RefCntObjectNonVirtualBase& operator=(const RefCntObjectNonVirtualBase&) noexcept { return *this; }

    virtual ~RefCntObjectNonVirtualBase() = default;

private:
    mutable std::atomic<int> m_count{0};
};

// The base that shared classes name. Interfaces that one class may combine (a bag that is also a model) name it as a
// virtual base, so that the object has a single count; all others name it plainly.
class QVSYS_API RefCntObject : public RefCntObjectNonVirtualBase {
protected:
    RefCntObject() noexcept = default;
    RefCntObject(const RefCntObject&) noexcept = default;
    RefCntObject& operator=(const RefCntObject&) noexcept = default;
    ~RefCntObject() override = default;
};

// The hooks through which the intrusive pointer counts.
inline void intrusive_ptr_add_ref(const RefCntObjectNonVirtualBase* object) noexcept { object->AddReference(); }
inline void intrusive_ptr_release(const RefCntObjectNonVirtualBase* object) noexcept { object->RemoveReference(); }
