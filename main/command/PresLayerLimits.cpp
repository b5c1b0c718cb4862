#include <qvpreslayer/PresLayerLimits.h>

#include <atomic>

#include <qvpreslayer/RegistryExceptions.h>

namespace PresLayerLimits {

namespace {

std::atomic<int> s_jsonDepth{kDefaultJSONDepth};
std::atomic<int> s_bagDepth{kDefaultBagDepth};
std::atomic<int> s_tupleDepth{kDefaultTupleDepth};
std::atomic<std::size_t> s_stackReserve{kDefaultStackReserve};
std::atomic<std::size_t> s_expansionBytes{kDefaultExpansionBytes};

// What the outermost scope of the thread has left.
thread_local bool s_scopeOpen = false;
thread_local std::size_t s_bytesLeft = 0;

}  // namespace

int GetJSONDepth() { return s_jsonDepth.load(std::memory_order_relaxed); }
void SetJSONDepth(int levels) { s_jsonDepth.store(levels, std::memory_order_relaxed); }
int GetBagDepth() { return s_bagDepth.load(std::memory_order_relaxed); }
void SetBagDepth(int levels) { s_bagDepth.store(levels, std::memory_order_relaxed); }
int GetTupleDepth() { return s_tupleDepth.load(std::memory_order_relaxed); }
void SetTupleDepth(int levels) { s_tupleDepth.store(levels, std::memory_order_relaxed); }
std::size_t GetStackReserve() { return s_stackReserve.load(std::memory_order_relaxed); }
void SetStackReserve(std::size_t bytes) { s_stackReserve.store(bytes, std::memory_order_relaxed); }
std::size_t GetExpansionBytes() { return s_expansionBytes.load(std::memory_order_relaxed); }
void SetExpansionBytes(std::size_t bytes) { s_expansionBytes.store(bytes, std::memory_order_relaxed); }

ExpansionBudgetScope::ExpansionBudgetScope() : m_outermost(!s_scopeOpen) {
    if (m_outermost) {
        s_scopeOpen = true;
        s_bytesLeft = GetExpansionBytes();
    }
}

ExpansionBudgetScope::~ExpansionBudgetScope() {
    if (m_outermost) {
        s_scopeOpen = false;
    }
}

void ExpansionBudgetScope::GiveBack(std::size_t bytes) noexcept { s_bytesLeft += bytes; }

void ExpansionBudgetScope::Spend(std::size_t bytes) {
    const ExpansionBudgetScope scope;
    if (bytes > s_bytesLeft) {
        throw ParameterParseException(0);
    }
    s_bytesLeft -= bytes;
}

}  // namespace PresLayerLimits
