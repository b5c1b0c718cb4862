#include "faults/Scenario.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <new>
#include <typeinfo>

#include <gtest/gtest.h>

#include <qvsys/BlockPool.h>

#include <qvcore/IndirectString.h>

#include <qvpreslayer/RegistryExceptions.h>

#include "faults/Allocations.h"
#include "support/Sanitized.h"

namespace {

using allocations::Mode;

const char* const kDone = "done";
const char* const kNoMemory = "no memory";
const char* const kNotParsed = "not parsed";

// What all scenarios of the program came to.
struct Figures {
    long scenarios = 0;
    long allocations = 0;  // of undisturbed runs
    long points = 0;       // failures injected
    long absorbed = 0;     // of them, without an effect on the outcome
};
Figures s_figures;

class Summary final : public testing::Environment {
public:
    void TearDown() override {
        std::printf("faults: %ld scenarios with %ld allocations; %ld runs with failures, %ld of them absorbed\n",
                    s_figures.scenarios, s_figures.allocations, s_figures.points, s_figures.absorbed);
    }
};
[[maybe_unused]] const testing::Environment* const s_summary = testing::AddGlobalTestEnvironment(new Summary);

// The table of shared texts keeps the room that it once needed, in parts that depend on addresses: this makes the room
// of each part once and keeps it, so that blocks can be counted.
void MakeRoomForSharedTexts() {
    static std::vector<IndirectString>* const s_texts = new std::vector<IndirectString>;  // never freed
    for (int i = static_cast<int>(s_texts->size()); i < 2000; ++i) {
        s_texts->push_back(IndirectString::Lookup({}, L"kept " + TString::number(i)));
    }
}

// Reads nothing and allocates nothing while allocations fail: the outcome is put into words afterwards.
struct Outcome {
    std::string word;
    allocations::Tally tally;
};

template <class Arming>
Outcome Run(const std::function<void()>& operate, Arming arm) {
    std::exception_ptr failure;
    arm();
    try {
        operate();
    } catch (...) {
        failure = std::current_exception();
    }
    const allocations::Tally tally = allocations::Disarm();
    if (!failure) {
        return {kDone, tally};
    }
    try {
        std::rethrow_exception(failure);
    } catch (const std::bad_alloc&) {
        return {kNoMemory, tally};
    } catch (const ParameterParseException& e) {
        return {std::string(kNotParsed) + " " + std::to_string(e.GetID()), tally};
    } catch (const std::exception& e) {
        return {std::string(typeid(e).name()) + ": " + e.what(), tally};
    }
}

Outcome RunUndisturbed(const Subject& subject) {
    return Run(subject.operate, [] { allocations::ArmToCount(); });
}

// The allocations to fail: all of the first 200, then samples, and the last few. Fewer under sanitizers, which look at
// each run more closely.
std::vector<long> PointsOf(long allocations) {
    constexpr long kAll = QV_TEST_SANITIZED ? 40 : 200;
    constexpr long kSamples = QV_TEST_SANITIZED ? 8 : 40;
    std::vector<long> points;
    for (long point = 0; point < std::min(allocations, kAll); ++point) {
        points.push_back(point);
    }
    for (long sample = 0; allocations > kAll && sample < kSamples; ++sample) {
        points.push_back(kAll + sample * (allocations - kAll) / kSamples);
    }
    for (long last = std::max(kAll, allocations - 5); last < allocations; ++last) {
        points.push_back(last);
    }
    points.erase(std::unique(points.begin(), points.end()), points.end());
    return points;
}

// One scenario, beside what it comes to when nothing fails.
class Check {
public:
    explicit Check(const Scenario& scenario) : m_scenario(scenario) {
        // What is made once for the whole program is made before blocks are counted.
        for (int run = 0; run < 2; ++run) {
            const Subject subject = scenario.prepare();
            m_undisturbed = RunUndisturbed(subject);
            m_after = subject.describe();
        }
        m_before = scenario.prepare().describe();
    }

    void FailEach() {
        ++s_figures.scenarios;
        s_figures.allocations += m_undisturbed.tally.asked;
        for (const Mode mode : {Mode::Once, Mode::FromThereOn}) {
            for (const long point : PointsOf(m_undisturbed.tally.asked)) {
                SCOPED_TRACE(std::string(m_scenario.name) + ", allocation " + std::to_string(point) +
                             (mode == Mode::Once ? "" : " and all after it"));
                ++s_figures.points;
                Fail(point, mode, false);
                if (m_scenario.promise == Promise::Strong) {
                    Fail(point, mode, true);
                }
                if (testing::Test::HasFailure()) {
                    return;
                }
            }
        }
    }

private:
    void Fail(long point, Mode mode, bool tryAgain) {
        const long live = allocations::Live();
        {
            const Subject subject = m_scenario.prepare();
            const Outcome outcome = Run(subject.operate, [&] { allocations::Arm(point, mode); });
            EXPECT_GT(outcome.tally.failed, 0) << "the runs of a scenario differ";
            const bool failed = outcome.word != m_undisturbed.word;
            ExpectKnown(outcome.word);
            s_figures.absorbed += failed ? 0 : 1;
            if (failed && tryAgain) {
                EXPECT_EQ(m_undisturbed.word, RunUndisturbed(subject).word) << "at the second try";
                EXPECT_EQ(m_after, subject.describe()) << "after the second try";
            } else if (!failed) {
                EXPECT_EQ(m_after, subject.describe()) << "after a failure that was absorbed";
            } else if (m_scenario.promise == Promise::Strong) {
                EXPECT_EQ(m_before, subject.describe()) << "after the failure";
            } else {
                subject.describe();
            }
        }
        EXPECT_EQ(live, allocations::Live()) << "blocks are left, or were freed twice";
    }

    void ExpectKnown(const std::string& outcome) const {
        if (outcome == m_undisturbed.word) {
            return;
        }
        EXPECT_NE(Promise::NoFail, m_scenario.promise) << outcome;
        EXPECT_TRUE(outcome == kNoMemory || outcome.starts_with(kNotParsed)) << outcome;
    }

    const Scenario& m_scenario;
    Outcome m_undisturbed;
    std::string m_before;
    std::string m_after;
};

}  // namespace

void CheckUnderFaults(const std::vector<Scenario>& scenarios) {
    const qvsys::detail::KeepNoBlocks noPool;
    MakeRoomForSharedTexts();
    for (const Scenario& scenario : scenarios) {
        Check(scenario).FailEach();
    }
}
