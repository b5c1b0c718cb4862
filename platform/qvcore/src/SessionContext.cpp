#include <qvcore/SessionContext.h>

#include <atomic>
#include <utility>

#include <qvsys/LogicException.h>

namespace {

thread_local SessionContext* gm_threadContext = nullptr;
std::atomic<SessionContext*> gm_processContext{nullptr};

// Puts a context in force and answers the one that was.
SessionContext* Exchange(SessionContextScope::Scope scope, SessionContext* context) noexcept {
    return scope == SessionContextScope::Process ? gm_processContext.exchange(context, std::memory_order_acq_rel)
                                                 : std::exchange(gm_threadContext, context);
}

}  // namespace

SessionContext::~SessionContext() = default;

SessionContext* SessionContext::Find() noexcept {
    return gm_threadContext != nullptr ? gm_threadContext : gm_processContext.load(std::memory_order_acquire);
}

bool SessionContext::HasSessionContext() noexcept { return Find() != nullptr; }

SessionContext& SessionContext::Get() {
    SessionContext* const context = Find();
    if (context == nullptr) {
        ThrowLogicException("HasSessionContext()", __LINE__, "SessionContext");
    }
    return *context;
}

SessionContextScope::SessionContextScope(SessionContext& context, Scope scope)
    : m_scope(scope), m_previous(Exchange(scope, &context)) {}

SessionContextScope::~SessionContextScope() { Exchange(m_scope, m_previous); }
