// Threads that meet again and again: each round starts for all at the same moment, and its end is waited for.
#pragma once

#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

// The number in an environment variable that asks for a longer run, as scripts/soak does; usual when it is not set.
inline int NumberFrom(const char* variable, int usual) {
    const char* const text = std::getenv(variable);
    return text == nullptr ? usual : std::stoi(text);
}

// Where so many threads wait for each other.
class Meeting {
public:
    explicit Meeting(int count) : m_count(count) {}

    void Arrive() {
        std::unique_lock lock(m_mutex);
        const int round = m_round;
        if (++m_arrived == m_count) {
            m_arrived = 0;
            ++m_round;
            m_changed.notify_all();
            return;
        }
        m_changed.wait(lock, [&] { return m_round != round; });
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_count;
    int m_arrived = 0;
    int m_round = 0;
};

// For each round: prepare(round) on the calling thread, work(thread) on each of count threads at once, then
// check(round) on the calling thread. Nothing may be thrown.
template <class Prepare, class Work, class Check>
void RaceRounds(int count, int rounds, Prepare prepare, Work work, Check check) {
    Meeting start(count + 1);
    Meeting end(count + 1);
    std::vector<std::thread> threads;
    threads.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        threads.emplace_back([&, i] {
            for (int round = 0; round < rounds; ++round) {
                start.Arrive();
                work(i);
                end.Arrive();
            }
        });
    }
    for (int round = 0; round < rounds; ++round) {
        prepare(round);
        start.Arrive();
        end.Arrive();
        check(round);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}
