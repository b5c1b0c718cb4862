#include <qvsys/ThreadEnd.h>

#include <type_traits>

#include <pthread.h>

namespace qvsys::detail {

static_assert(std::is_same_v<pthread_key_t, unsigned>);

ThreadEnd::~ThreadEnd() {
    if (m_state.exchange(State::Failed, std::memory_order_acq_rel) == State::Made) {
        pthread_key_delete(m_key);
    }
    m_function();
}

bool ThreadEnd::Watch() noexcept { return IsMade() && pthread_setspecific(m_key, this) == 0; }

// Where another thread is making the key just now, this one does without for once.
bool ThreadEnd::IsMade() noexcept {
    State state = m_state.load(std::memory_order_acquire);
    if (state != State::New) {
        return state == State::Made;
    }
    if (!m_state.compare_exchange_strong(state, State::Making, std::memory_order_acq_rel)) {
        return state == State::Made;
    }
    const bool made = pthread_key_create(&m_key, Call) == 0;
    m_state.store(made ? State::Made : State::Failed, std::memory_order_release);
    return made;
}

void ThreadEnd::Call(void* self) noexcept { static_cast<ThreadEnd*>(self)->m_function(); }

}  // namespace qvsys::detail
