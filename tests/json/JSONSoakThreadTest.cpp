// Writers and readers of different bags, and readers of one bag, on 16 threads at once, each under options of its own.
// scripts/soak runs them for 60 seconds under the thread sanitizer.
#include <qvpreslayer/JSONSerializer.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>

#include "json/JSONTestSupport.h"
#include "support/Race.h"
#include "support/Races.h"

namespace {

constexpr int kThreads = 16;
constexpr int kUsualRounds = 40;

const TString kText =
    LR"({"maxCount":3,"text":"a text that is longer than what fits in place","real":0.5,"flag":true,)"
    LR"("uuid":"6f1c2a90-51d4-4e0b-9b7e-3a8d5c0f7e21","hours":"24","intList":[1,2,3,4,5,9,9,9,9],)"
    LR"("realList":[0.5,0.5,0.5,0.5],"textList":["a","b"],"myMap":{"k":"v"},"subBag":{"subBag":{"n":1}},)"
    LR"("myModel":{"aB":1,"c":"t"},"items":[{"n":1},{}],"byKey":{"x":null,"y":{"n":2}},"rows":[["a"],[]]})";

// Whether a thread goes on: so many rounds, or so many seconds where the environment asks for them.
class Duration {
public:
    Duration()
        : m_seconds(NumberFrom("QVPRESLAYER_SOAK_SECONDS", 0)),
          m_end(std::chrono::steady_clock::now() + std::chrono::seconds(m_seconds)) {}

    bool GoesOn(int round) const {
        return m_seconds == 0 ? round < kUsualRounds : std::chrono::steady_clock::now() < m_end;
    }

private:
    int m_seconds;
    std::chrono::steady_clock::time_point m_end;
};

class Counter final : public IParameterVisitor {
public:
    void VisitParameter(int, const RefCntPtr<IParameter>& value) override { m_count += value->IsNull() ? 0 : 1; }
    int Count() const { return m_count; }

private:
    int m_count = 0;
};

class Soak {
public:
    Soak() {
        for (int options = 0; options < 4; ++options) {
            const TestSession session((options & 1) != 0, (options & 2) != 0);
            m_expected[static_cast<std::size_t>(options)] = m_json.ToString(m_shared, JSONSerializer::Compact);
        }
    }

    // One round of a thread; false when something came out other than it must.
    bool Work(int thread, int round, TestSession& session) {
        session.Vars().shortNames = ((thread + round) & 1) != 0;
        session.Vars().compressArrays = ((thread + round) & 2) != 0;
        const TString& expected = m_expected[static_cast<std::size_t>((thread + round) & 3)];
        switch (thread % 4) {
            case 0:
                return WriteAndReadOwnBag(expected, round);
            case 1:
                return ReadSharedBag(expected);
            case 2:
                return CloneSharedBag(thread, round);
            default:
                return FailAndGoOn(expected);
        }
    }

private:
    // A bag of the thread's own, changed between two writes.
    bool WriteAndReadOwnBag(const TString& expected, int round) {
        const RefCntPtr<IParameters> bag = m_json.ToParameters(expected);
        const bool same = m_json.ToString(bag, JSONSerializer::Compact) == expected;
        bag->SetParameter(view::kMaxCount, Val(round));
        bag->SetParameter(view::kSubBag, nullptr);
        bag->SetCacheParameter(1, Text(L"cached"));
        const auto back = m_json.ToParameters(m_json.ToString(bag, JSONSerializer::Pretty));
        return same && GetParameterValue<int>(*back, view::kMaxCount) == round && !back->HasParameter(view::kSubBag);
    }

    bool ReadSharedBag(const TString& expected) const {
        Counter counter;
        m_shared->Accept(counter);
        return m_json.ToString(m_shared, JSONSerializer::Compact) == expected && counter.Count() == 15 &&
               GetParameterValue<int>(*m_shared, view::kMaxCount) == 3 && !m_shared->HasParameter(view::kN);
    }

    // Clones share the values, and end on whichever thread lets go of them last.
    bool CloneSharedBag(int thread, int round) const {
        const auto* const shared = dynamic_cast<const TestBag*>(m_shared.Get());
        RefCntPtr<BaseParameters> clone = shared->Clone();
        clone->SetParameter(view::kMaxCount, Val(thread));
        auto chain = MakeBag();
        for (int i = 0; i < 200; ++i) {
            chain = MakeBag({{view::kSubBag, BagVal(chain)}, {view::kN, Val(round)}});
        }
        clone->SetParameter(view::kSubBag, BagVal(chain));
        const DataValue value = ParameterTypeSerializer<DataValue>::TypeFromString(
            L"t:[s:en_US:shared " + TString::number(round % 3) + L"],[i:1]");
        const DataValue same = DataValue(value.GetTuple());
        return GetParameterValue<int>(*clone, view::kMaxCount) == thread && value == same &&
               &clone->GetParameter(view::kText) == &shared->GetParameter(view::kText);
    }

    bool FailAndGoOn(const TString& expected) {
        const bool cut =
            OutcomeOf([&] { return m_json.ToParameters(expected.left(expected.length() - 1)); }) == "not valid";
        const bool unknown = OutcomeOf([&] { return m_json.ToParameters(LR"({"zzz":1})"); }) == "not found: zzz";
        const bool deep = OutcomeOf([&] { return m_json.ToParameters(TString(5000, u'[')); }) == "not valid";
        return cut && unknown && deep &&
               m_json.ToString(m_json.ToParameters(expected), JSONSerializer::Compact) == expected;
    }

    ViewRegistry m_registry;
    JSONSerializer m_json{L"view"};
    RefCntPtr<const IParameters> m_shared = m_json.ToParameters(kText);
    std::array<TString, 4> m_expected;  // of the shared bag, by options: 1 short names, 2 packed
};

}  // namespace

TEST(JSONSoakThread, ReadersAndWritersOfDifferentBagsAndOfOne) {
    Soak soak;
    const Duration duration;
    std::atomic<long> rounds{0};
    std::atomic<int> wrong{0};
    Race(kThreads, [&](int thread) {
        TestSession session;
        for (int round = 0; duration.GoesOn(round); ++round) {
            wrong += soak.Work(thread, round, session) ? 0 : 1;
            ++rounds;
        }
    });
    EXPECT_EQ(0, wrong);
    EXPECT_GE(rounds, kThreads);
    std::printf("soak: %ld rounds on %d threads\n", rounds.load(), kThreads);
}

// A session of the process for those without one of their own, whose options change while others read theirs.
TEST(JSONSoakThread, OptionsOfThreadsAndOfTheProcess) {
    class ProcessSession final : public SessionContext {
    public:
        class Vars final : public IBuilderVars {
        public:
            bool UseShortNames() const override { return true; }
            bool CompressArrays() const override { return false; }
            bool LossyEncodeImages() const override { return false; }
        };
        RefCntPtr<const IBuilderVars> GetIBuilderVars() const override { return m_vars; }

    private:
        RefCntPtr<const IBuilderVars> m_vars{new Vars};
    } process;
    const SessionContextScope scope(process, SessionContextScope::Process);
    const ViewRegistry registry;
    const JSONSerializer json(L"view");
    const auto bag = MakeBag({{view::kMaxCount, Val(5)},
                              {view::kIntList, Val(std::vector<int>{1, 2, 3, 4})},
                              {view::kSubBag, BagVal(MakeBag({{view::kN, Val(1)}}))}});
    const TString texts[] = {LR"({"mc": 5,"il":[1,2,3,4],"sb":{"nn": 1}})",
                             LR"({"maxCount": 5,"intList":[1,2,3,4],"subBag":{"n": 1}})",
                             LR"({"mc": 5,"il":[[1,4,1],[]],"sb":{"nn": 1}})",
                             LR"({"maxCount": 5,"intList":[[1,4,1],[]],"subBag":{"n": 1}})"};
    const Duration duration;
    std::atomic<int> wrong{0};
    Race(kThreads, [&](int thread) {
        for (int round = 0; duration.GoesOn(round); ++round) {
            if (thread % 4 == 0) {  // that of the process
                wrong += json.ToString(bag, JSONSerializer::Compact) == texts[0] ? 0 : 1;
                continue;
            }
            const int form = (thread + round) % 4;
            const TestSession session(form % 2 == 0, form >= 2);
            wrong += json.ToString(bag, JSONSerializer::Compact) == texts[form] ? 0 : 1;
            wrong += json.ToString(json.ToParameters(texts[form]), JSONSerializer::Compact) == texts[form] ? 0 : 1;
            wrong += PresModelBuilderSupport::UseVerboseNames() == (form % 2 != 0) ? 0 : 1;
        }
    });
    EXPECT_EQ(0, wrong);
}
