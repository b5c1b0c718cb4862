// Host code whose thread is cancelled: what unwinds the stack then is no failure of reading or writing. Who catches
// everything lets it pass; the C library ends the program where one does not.
#include <qvpreslayer/JSONSerializer.h>

#include <functional>
#include <string>

#include <pthread.h>

#include "json/JSONTestSupport.h"
#include "support/Sanitized.h"

namespace {

// Set on threads that are to be cancelled by host code.
thread_local bool t_cancels = false;

void CancelThread() {
    if (t_cancels) {
        pthread_cancel(pthread_self());
        pthread_testcancel();
    }
}

// Whether work, on a thread of its own, ends by that thread being cancelled.
bool IsCancelled(const std::function<void()>& work) {
    const auto run = [](void* argument) -> void* {
        t_cancels = true;
        (*static_cast<const std::function<void()>*>(argument))();
        return nullptr;
    };
    pthread_t thread;
    void* result = nullptr;
    EXPECT_EQ(0, pthread_create(&thread, nullptr, run, const_cast<std::function<void()>*>(&work)));
    EXPECT_EQ(0, pthread_join(thread, &result));
    return result == PTHREAD_CANCELED;
}

class CancellingSerializer final : public ParameterTypeSerializer<int> {
public:
    RefCntPtr<IParameter> FromString(const TString& text) const override {
        CancelThread();
        return ParameterTypeSerializer<int>::FromString(text);
    }
};

class CancellingBag final : public TestBag {
public:
    void SetParameter(int id, RefCntPtr<IParameter> value) override {
        CancelThread();
        TestBag::SetParameter(id, std::move(value));
    }
    void Accept(IParameterVisitor& visitor) const override {
        CancelThread();
        TestBag::Accept(visitor);
    }
};

class CancellingRegistry final : public ViewRegistry {
public:
    CancellingRegistry() {
        Add(L"host", 2000, 2099,
            [](AbstractParamAdder& adder) { adder.AddSimple(2001, L"count", L"co", new CancellingSerializer); });
    }
    RefCntPtr<IParameters> CreateParameters() override { return RefCntPtr<IParameters>(new CancellingBag); }
};

class NoDiagnostics final : public IReadingDiagnostics {
    void Report(Leniency, int, const TextLocation&) override {}
};

class CancelledThreads : public testing::Test {
protected:
    void SetUp() override {
        if (QV_TEST_SANITIZED) {
            GTEST_SKIP()
                << "what unwinds a cancelled thread has no object, which the sanitizer takes for a null reference";
        }
    }

    CancellingRegistry m_registry;
};

TEST_F(CancelledThreads, WhileAValueIsParsed) {
    const auto parse = [&] {
        const RefCntPtr<TestBag> bag = MakeBag();
        m_registry.FromString(L"host", bag, L"count", L"5", true);
        EXPECT_EQ(5, GetParameterValue<int>(*bag, 2001));
    };
    EXPECT_TRUE(IsCancelled(parse));
    parse();
}

// The name is of one namespace, its identifier covered by another one, which is filled while the text is read.
TEST_F(CancelledThreads, WhileANamespaceIsFilled) {
    const auto fill = [](AbstractParamAdder& adder) {
        CancelThread();
        adder.AddSimple(3007, L"seven-of-one", L"s1", new ParameterTypeSerializer<int>);
    };
    m_registry.Add(L"one", 3000, 3009, fill);
    m_registry.RegisterNamespace(
        L"two",
        [](AbstractParamAdder& adder) {
            adder.AddSimple(3007, L"seven-of-two", L"s2", new ParameterTypeSerializer<int>);
        },
        3005, 3020, true);
    const JSONSerializer json(L"two");
    const auto read = [&] {
        EXPECT_EQ("seven-of-one=5", BagDescription::Of(*json.ToParameters(L"{\"sevenOfTwo\": 5}")));
    };
    EXPECT_TRUE(IsCancelled(read));
    read();
}

TEST_F(CancelledThreads, WhileAScalarIsStored) {
    const JSONSerializer json(L"view");
    const auto read = [&] { EXPECT_EQ("max-count=5", BagDescription::Of(*json.ToParameters(L"{\"maxCount\": 5}"))); };
    EXPECT_TRUE(IsCancelled(read));
    read();
}

TEST_F(CancelledThreads, WhileAValueIsWatched) {
    NoDiagnostics diagnostics;
    JSONSerializer json(L"host");
    json.SetDiagnostics(&diagnostics);
    const auto read = [&] { EXPECT_EQ("count=5", BagDescription::Of(*json.ToParameters(L"{\"count\": 5}"))); };
    EXPECT_TRUE(IsCancelled(read));
    read();
}

TEST_F(CancelledThreads, WhileADeepBagIsWalked) {
    constexpr int kLevels = 30;
    RefCntPtr<IParameters> bag(new CancellingBag);
    bag->SetParameter(view::kN, Val(1));
    std::string expected = "{\"n\": 1}";
    for (int level = 0; level < kLevels; ++level) {
        bag = MakeBag({{view::kSubBag, BagVal(bag)}});
        expected = "{\"subBag\":" + expected + "}";
    }
    const auto write = [&] {
        EXPECT_EQ(expected, JSONSerializer(L"view").ToString(bag, JSONSerializer::Compact).ToUtf8());
    };
    EXPECT_TRUE(IsCancelled(write));
    write();
}

}  // namespace
