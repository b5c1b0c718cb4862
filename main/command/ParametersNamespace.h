// One namespace, filled when it is first looked into. Included by ParametersRegistry.cpp.
#pragma once

#include <atomic>
#include <functional>
#include <vector>

#include <qvsys/RefCntObject.h>
#include <qvsys/TRecursiveMutex.h>

#include "main/command/EagerParametersNamespace.h"

// Threads: Filled may be called from any thread; AddPart comes before that.
class ParametersNamespace : public RefCntObject {
public:
    using RegistrationFunction = ParametersRegistry::RegistrationFunction;

    ParametersNamespace(RegistrationFunction fill, int firstId, int lastId);
    ~ParametersNamespace() override = default;

    // Adds a registration function. LogicException when the namespace is filled, or the range is another.
    void AddPart(RegistrationFunction fill, int firstId, int lastId);

    // The tables, filled. Runs the registration functions, in order, if they have not run. What one throws passes, and
    // the next call runs them all again. A registration function that looks into its own namespace sees what has been
    // added so far.
    const EagerParametersNamespace& Filled() {
        if (m_needInit.load(std::memory_order_acquire)) [[unlikely]] {
            Fill();
        }
        return m_namespace;
    }

    // The same where they are filled already, else null.
    const EagerParametersNamespace* FindFilled() const noexcept {
        return m_needInit.load(std::memory_order_acquire) ? nullptr : &m_namespace;
    }

    // Whether the registry finds the records without asking here. Changed by the registry alone.
    bool IsPublished() const noexcept { return m_published.load(std::memory_order_acquire); }
    void MarkPublished(bool published) noexcept { m_published.store(published, std::memory_order_release); }

    // The tables as they are, for what does not depend on their being filled.
    int FirstID() const noexcept { return m_namespace.FirstID(); }
    int LastID() const noexcept { return m_namespace.LastID(); }

private:
    void Fill();

    EagerParametersNamespace m_namespace;
    std::atomic<bool> m_needInit{true};    // until the registration functions have run
    std::atomic<bool> m_published{false};  // its records are in the table of all
    bool m_filling = false;                // while they run; guarded by m_mutex
    TRecursiveMutex m_mutex;               // held while filling
    std::vector<RegistrationFunction> m_functions;
};
