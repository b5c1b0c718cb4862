#include "main/command/ParametersNamespace.h"

#include <mutex>
#include <utility>

#include "main/command/ParamAdder.h"
#include "main/command/SourceModule.h"

namespace {

// A mark that stands while a scope lives.
class ScopedMark {
public:
    explicit ScopedMark(bool& mark) : m_mark(mark) { m_mark = true; }
    ScopedMark(const ScopedMark&) = delete;
    ScopedMark& operator=(const ScopedMark&) = delete;
    ~ScopedMark() { m_mark = false; }

private:
    bool& m_mark;
};

}  // namespace

ParametersNamespace::ParametersNamespace(RegistrationFunction fill, int firstId, int lastId)
    : m_namespace(firstId, lastId) {
    m_functions.push_back(std::move(fill));
}

void ParametersNamespace::AddPart(RegistrationFunction fill, int firstId, int lastId) {
    QV_ASSERT(m_needInit, kSourceModule);
    QV_ASSERT(m_namespace.FirstID() == firstId, kSourceModule);
    QV_ASSERT(m_namespace.LastID() == lastId, kSourceModule);
    m_functions.push_back(std::move(fill));
}

void ParametersNamespace::Fill() {
    const std::lock_guard<TRecursiveMutex> lock(m_mutex);
    // Without the mark, a function that looks into its own namespace would start the filling again, and so for ever.
    if (!m_needInit.load(std::memory_order_relaxed) || m_filling) {
        return;
    }
    const ScopedMark filling(m_filling);
    ParamAdder adder(m_namespace);
    // By index and through a copy: a function may register a further part, which makes the vector move.
    for (std::size_t i = 0; i < m_functions.size(); ++i) {
        const RegistrationFunction function = m_functions[i];
        function(adder);
    }
    m_namespace.MakeDirectRecords();
    m_needInit.store(false, std::memory_order_release);
}
