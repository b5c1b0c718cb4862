// Work on a thread with a stack of 256 KiB; of 1 MiB under sanitizers, whose frames are several times as large.
#pragma once

#include <pthread.h>

#include <cstddef>
#include <exception>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "support/Sanitized.h"

inline constexpr std::size_t kSmallStackBytes = std::size_t{QV_TEST_SANITIZED ? 1024 : 256} * 1024;

// Runs work on a thread of its own with a stack of so many bytes, and waits for it. Nothing may be thrown.
inline void OnStackOf(std::size_t bytes, const std::function<void()>& work) {
    pthread_attr_t attributes;
    ASSERT_EQ(0, pthread_attr_init(&attributes));
    ASSERT_EQ(0, pthread_attr_setstacksize(&attributes, bytes));
    pthread_t thread;
    const auto run = [](void* argument) -> void* {
        (*static_cast<const std::function<void()>*>(argument))();
        return nullptr;
    };
    ASSERT_EQ(0, pthread_create(&thread, &attributes, run, const_cast<std::function<void()>*>(&work)));
    ASSERT_EQ(0, pthread_join(thread, nullptr));
    pthread_attr_destroy(&attributes);
}

inline void OnSmallStack(const std::function<void()>& work) { OnStackOf(kSmallStackBytes, work); }

// What work comes to there: "done", or the message of its failure.
inline std::string OutcomeOnSmallStack(const std::function<void()>& work) {
    std::string outcome;
    OnSmallStack([&] {
        try {
            work();
            outcome = "done";
        } catch (const std::exception& e) {
            outcome = e.what();
        }
    });
    return outcome;
}
