#include <atomic>
#include <chrono>
#include <sstream>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tools/qvpres/convert/LinePipeline.h"

using qvpres::LineOutcome;
using qvpres::LineWork;
using qvpres::PipelineOptions;
using qvpres::PipelineResult;

namespace {

struct Ran {
    PipelineResult result;
    std::string out;
    std::string complaints;
};

Ran RunLines(const std::string& input, const LineWork& work, const PipelineOptions& options = {}) {
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream complaints;
    const PipelineResult result = qvpres::RunPipeline(in, out, complaints, work, options);
    return {result, out.str(), complaints.str()};
}

// The line with its number; lines of "bad" fail.
LineOutcome Number(std::string_view text, std::size_t line) {
    if (text == "bad") {
        return {"", "line " + std::to_string(line) + " is bad\n", true, true};
    }
    return {std::to_string(line) + ":" + std::string(text), "", false, false};
}

}  // namespace

TEST(LinePipeline, LinesComeOutInOrder) {
    EXPECT_EQ(RunLines("a\nb\nc", Number).out, "0:a\n1:b\n2:c\n");
    EXPECT_EQ(RunLines("", Number).out, "");
    EXPECT_EQ(RunLines("a\n\n \t\r\nb\n", Number).out, "0:a\n\n \t\r\n3:b\n") << "blank lines pass as they are";
}

// Lines of many blocks, the first of each block being slow.
TEST(LinePipeline, OrderStaysHoweverManyThreadsThereAre) {
    std::string input;
    std::string expected;
    for (int i = 0; i < 40000; ++i) {
        input += "line " + std::to_string(i) + "\n";
        expected += std::to_string(i) + ":line " + std::to_string(i) + "\n";
    }
    const auto slowAtTimes = [](std::string_view text, std::size_t line) {
        if (line % 7000 == 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        return Number(text, line);
    };
    for (const unsigned jobs : {1U, 2U, 7U}) {
        const Ran ran = RunLines(input, slowAtTimes, {jobs, false});
        EXPECT_TRUE(ran.out == expected) << jobs;
        EXPECT_EQ(ran.result.lines, 40000U);
    }
}

TEST(LinePipeline, ThreadsShareTheLines) {
    std::string input;
    for (int i = 0; i < 20000; ++i) {
        input += "some line of text\n";
    }
    std::atomic<int> inside = 0;
    std::atomic<int> most = 0;
    RunLines(input,
             [&](std::string_view, std::size_t line) {
                 const int now = ++inside;
                 if (now > most) {
                     most = now;
                 }
                 // Until a second thread has been seen; at the most a second for the whole.
                 for (int i = 0; line % 4096 == 0 && most < 2 && i < 100; ++i) {
                     std::this_thread::sleep_for(std::chrono::milliseconds(2));
                 }
                 --inside;
                 return LineOutcome{};
             },
             {2, false});
    EXPECT_EQ(most, 2);
}

TEST(LinePipeline, AFailureEndsTheRunBehindWhatWasBefore) {
    const Ran ran = RunLines("a\nbad\nb\n", Number, {2, false});
    EXPECT_EQ(ran.out, "0:a\n");
    EXPECT_EQ(ran.complaints, "line 1 is bad\n");
    EXPECT_EQ(ran.result.failures, 1U);
}

TEST(LinePipeline, FailuresAreLeftOutWhereTheRunGoesOn) {
    const Ran ran = RunLines("bad\na\nbad\nb\n", Number, {2, true});
    EXPECT_EQ(ran.out, "1:a\n3:b\n");
    EXPECT_EQ(ran.complaints, "line 0 is bad\nline 2 is bad\n");
    EXPECT_EQ(ran.result.failures, 2U);
}
