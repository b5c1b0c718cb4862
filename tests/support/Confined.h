// Work that may take little: in a process of its own, with 512 MiB of memory and a stack of 256 KiB. What breaks a
// limit, or crashes, ends that process and not the tests. Processor time is limited only so far that nothing hangs: all
// of it takes less than 2 seconds on a machine of its own, but tests run on machines that are shared.
#pragma once

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>

#include "support/Sanitized.h"
#include "support/SmallStack.h"

namespace confined {

inline void Limit(decltype(RLIMIT_AS) what, rlim_t most) {
    const rlimit limit{most, most};
    setrlimit(what, &limit);
}

// All that comes through the pipe.
inline std::string ReadAll(int pipe) {
    std::string text;
    char buffer[512];
    for (ssize_t count; (count = read(pipe, buffer, sizeof(buffer))) > 0;) {
        text.append(buffer, static_cast<std::size_t>(count));
    }
    return text;
}

inline std::string HowItEnded(int status, const std::string& outcome) {
    if (WIFSIGNALED(status)) {
        return "killed by signal " + std::to_string(WTERMSIG(status));
    }
    return WEXITSTATUS(status) == 0 ? outcome : "ended with " + std::to_string(WEXITSTATUS(status));
}

}  // namespace confined

// What work comes to: "done", the message of its failure, or the signal that ended it. Under a sanitizer there is no
// process of its own, since sanitizers take terabytes of addresses.
inline std::string OutcomeConfined(const std::function<void()>& work) {
#if QV_TEST_SANITIZED
    return OutcomeOnSmallStack(work);
#else
    int ends[2];
    if (pipe(ends) != 0) {
        return "no pipe";
    }
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        confined::Limit(RLIMIT_CORE, 0);
        confined::Limit(RLIMIT_AS, rlim_t{512} * 1024 * 1024);
        confined::Limit(RLIMIT_CPU, 30);
        const std::string outcome = OutcomeOnSmallStack(work);
        const ssize_t written = write(ends[1], outcome.data(), outcome.size());
        const int result = written == static_cast<ssize_t>(outcome.size()) ? 0 : 1;
#if QV_TEST_COUNTED
        std::exit(result);  // which writes the counts
#else
        _exit(result);
#endif
    }
    close(ends[1]);
    const std::string outcome = confined::ReadAll(ends[0]);
    close(ends[0]);
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child) {
        return "no process";
    }
    return confined::HowItEnded(status, outcome);
#endif
}
