// Threads that start their work at the same moment.
#pragma once

#include <latch>
#include <thread>
#include <vector>

// Runs work(0) to work(count - 1), each on a thread of its own, and waits for all of them. Nothing may be thrown.
template <class Work>
void Race(int count, Work work) {
    std::latch start(count);
    std::vector<std::thread> threads;
    threads.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        threads.emplace_back([&start, &work, i] {
            start.arrive_and_wait();
            work(i);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}
