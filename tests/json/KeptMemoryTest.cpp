// What a thread keeps from one document to the next, and texts that are read and written inside each other.
#include <qvpreslayer/PresLayerLimits.h>

#include <malloc.h>

#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include <qvsys/LargeBlocks.h>

#include "json/JSONTestSupport.h"
#include "support/Confined.h"
#include "support/Sanitized.h"

namespace {

// A number whose text is asked for by way of host code.
class CallingSerializer final : public ParameterTypeSerializer<int> {
public:
    explicit CallingSerializer(std::function<void()> call) : m_call(std::move(call)) {}

    TString ToString(RefCntPtr<const IParameter> value) override {
        m_call();
        return ParameterTypeSerializer<int>::ToString(value);
    }
    RefCntPtr<IParameter> FromString(const TString& text) const override {
        m_call();
        return ParameterTypeSerializer<int>::FromString(text);
    }

private:
    std::function<void()> m_call;
};

constexpr int kTitle = 2001;
constexpr int kCount = 2002;
constexpr int kLast = 2003;

class KeptMemory : public JSONTest {
protected:
    KeptMemory() {
        m_registry.Add(L"host", 2000, 2099, [this](AbstractParamAdder& adder) {
            adder.AddSimple(kTitle, L"title", L"ti", new TStringSerializer);
            adder.AddSimple(kCount, L"count", L"co", new CallingSerializer([this] {
                                if (m_call) {
                                    m_call();
                                }
                            }));
            adder.AddSimple(kLast, L"last", L"la", new TStringSerializer);
        });
    }

    std::string WriteHost() const {
        const auto bag = MakeBag({{kTitle, Text(L"a")}, {kCount, Val(5)}, {kLast, Text(L"b")}});
        return m_host.ToString(bag, JSONSerializer::Compact).ToUtf8();
    }

    std::function<void()> m_call;  // what host code does
    JSONSerializer m_host{L"host"};
};

constexpr const char* kHostText = R"({"title": "a","count": 5,"last": "b"})";

std::size_t BytesInUse() { return mallinfo2().uordblks + mallinfo2().hblkhd; }

TEST_F(KeptMemory, IsFreedWhenAskedFor) {
    if (QV_TEST_SANITIZED) {
        GTEST_SKIP() << "under a sanitizer nothing is kept";
    }
    constexpr std::size_t kUnits =
        500;  // short texts are written in memory that is kept, with more room than they need
    const auto bag = MakeBag({{view::kText, Text(TString(kUnits, u'x'))}});
    Write(bag);
    PresLayerLimits::ReleaseKeptMemory();
    const std::size_t before = BytesInUse();
    EXPECT_EQ(kUnits + std::string(R"({"text": ""})").size(), Write(bag).size());
    EXPECT_GE(BytesInUse(), before + 4 * kUnits * sizeof(char16_t)) << "the text that is written through";
    PresLayerLimits::ReleaseKeptMemory();
    EXPECT_LE(BytesInUse(), before + kUnits * sizeof(char16_t));
    PresLayerLimits::ReleaseKeptMemory();  // again: there is nothing left
    EXPECT_EQ("n=1", Outcome(R"({"n": 1})"));
}

TEST_F(KeptMemory, IsLimitedHoweverLargeATextIs) {
    if (QV_TEST_SANITIZED) {
        GTEST_SKIP() << "under a sanitizer nothing is kept";
    }
    constexpr int kEntries = 80'000;
    TString text = L"{\"byKey\":{";
    for (int i = 0; i < kEntries; ++i) {
        text += (i == 0 ? TString(L"\"") : TString(L",\"")) + TString::number(100'000'000 + i) + L"\":{}";
    }
    text += L"}}";
    Outcome(R"({"byKey": {"a": {}}})");  // fills the namespace
    PresLayerLimits::ReleaseKeptMemory();
    const std::size_t before = BytesInUse();
    const RefCntPtr<IParameters> bag = m_json.ToParameters(text);
    const auto& entries = GetParameterValue<BagStructureSerializer::BagMap>(*bag, view::kByKey);
    EXPECT_EQ(std::size_t{kEntries}, entries.size());
    EXPECT_EQ(L"100000000", entries.begin()->first);
    EXPECT_GE(BytesInUse(), before + kEntries * sizeof(void*));
    bag->SetParameter(view::kByKey, nullptr);
    constexpr std::size_t kMiB = 1024 * 1024;
    EXPECT_LE(BytesInUse(), before + (8 + 3) * kMiB + kMiB / 2) << "small blocks, and what is read through";
}

// How long the last text was is a guess at the next one, and no reason to fail.
TEST_F(KeptMemory, AShortTextNeedsNoMemoryForALongOne) {
    if (QV_TEST_SANITIZED) {
        GTEST_SKIP() << "under a sanitizer nothing is kept";
    }
    constexpr std::size_t kMiB = 1024 * 1024;
    EXPECT_EQ("done", OutcomeConfined([this] {
                  Write(MakeBag({{view::kText, Text(TString(8'000'000, u'x'))}}));
                  qvsys::detail::ReleaseKeptLargeBlock();
                  std::vector<std::unique_ptr<char[]>> taken;
                  taken.reserve(1000);
                  try {
                      while (true) {
                          taken.push_back(std::make_unique_for_overwrite<char[]>(kMiB));
                      }
                  } catch (const std::bad_alloc&) {
                      taken.resize(taken.size() - 4);
                  }
                  if (Write(MakeBag({{view::kText, Text(L"x")}})) != R"({"text": "x"})") {
                      throw std::runtime_error("another text");
                  }
              }));
}

TEST_F(KeptMemory, MayBeFreedByHostCodeMeanwhile) {
    m_call = [] { PresLayerLimits::ReleaseKeptMemory(); };
    EXPECT_EQ(kHostText, WriteHost());
    EXPECT_EQ("title=a count=5 last=b", BagDescription::Of(*m_host.ToParameters(TString::FromUtf8(kHostText))));
}

// What a thread remembers of a registry is of no use once that has changed.
TEST_F(KeptMemory, MarksThatAreMadeBetweenTexts) {
    TestSession session;
    EXPECT_EQ(kHostText, WriteHost());
    m_registry.AddUnserializable(kCount);
    EXPECT_EQ(R"({"title": "a","last": "b"})", WriteHost());
    m_registry.AddUnserializable(kTitle);
    EXPECT_EQ(R"({"last": "b"})", WriteHost());
    session.Vars().shortNames = true;
    EXPECT_EQ(R"({"la": "b"})", WriteHost());
    m_registry.Clear(L"host");
    EXPECT_FALSE(m_registry.HasUnserializable()) << "the marks of a namespace go with it";
    m_registry.Add(L"host", 2000, 2099, [](AbstractParamAdder& adder) {
        adder.AddSimple(kTitle, L"heading", L"he", new TStringSerializer);
        adder.AddSimple(kCount, L"number", L"nu", new ParameterTypeSerializer<int>);
        adder.AddSimple(kLast, L"end", L"en", new TStringSerializer);
    });
    EXPECT_EQ(R"({"he": "a","nu": 5,"en": "b"})", WriteHost());
    session.Vars().shortNames = false;
    EXPECT_EQ(R"({"heading": "a","number": 5,"end": "b"})", WriteHost());
}

TEST_F(KeptMemory, MarksThatHostCodeMakesMeanwhile) {
    m_call = [this] { m_registry.AddUnserializable(kLast); };
    EXPECT_EQ(R"({"title": "a","count": 5})", WriteHost());
}

TEST_F(KeptMemory, HostCodeWritesATextInsideAnother) {
    std::string inner;
    m_call = [&] { inner = Write(MakeBag({{view::kN, Val(7)}})); };
    EXPECT_EQ(kHostText, WriteHost());
    EXPECT_EQ(R"({"n": 7})", inner);
}

TEST_F(KeptMemory, HostCodeReadsATextInsideAnother) {
    std::string inner;
    m_call = [&] { inner = Outcome(R"({"n": 7, "subBag": {"c": "x"}})"); };
    for (int round = 0; round < 2; ++round) {  // the first one fills the namespaces
        EXPECT_EQ("title=a count=5 last=b", BagDescription::Of(*m_host.ToParameters(TString::FromUtf8(kHostText))));
        EXPECT_EQ("sub-bag=(c=x) n=7", inner);
    }
}

// Each bag of one text reads another text before it is made.
TEST(KeptMemoryOfReaders, BagsThatReadBeforeTheyAreMade) {
    class ReadingRegistry final : public ViewRegistry {
    public:
        RefCntPtr<IParameters> CreateParameters() override {
            if (!std::exchange(reading, true)) {
                inner += BagDescription::Of(*JSONSerializer(L"view").ToParameters(L"{\"n\": 1, \"subBag\": {}}")) + ";";
                reading = false;
            }
            return ViewRegistry::CreateParameters();
        }
        std::string inner;
        bool reading = false;
    };
    ReadingRegistry registry;
    const JSONSerializer json(L"view");
    for (int round = 0; round < 2; ++round) {
        registry.inner.clear();
        EXPECT_EQ("sub-bag=(c=x) n=2",
                  BagDescription::Of(*json.ToParameters(L"{\"subBag\": {\"c\": \"x\"}, \"n\": 2}")));
        EXPECT_EQ("sub-bag=() n=1;sub-bag=() n=1;", registry.inner);
    }
}

TEST_F(KeptMemory, AFailureBehindALongTextLeavesNothingBehind) {
    m_call = [] { throw std::runtime_error("no text"); };
    for (const std::size_t units : {std::size_t{10}, std::size_t{300'000}}) {
        const auto bag = MakeBag({{kTitle, Text(TString(units, u'x'))}, {kCount, Val(5)}});
        EXPECT_THROW(m_host.ToString(bag, JSONSerializer::Compact), std::runtime_error);
        EXPECT_EQ(R"({"n": 7})", Write(MakeBag({{view::kN, Val(7)}})));
    }
}

// Memory for a text is asked for by the length of the last one: a shorter one behind it gives back what it does not
// need.
TEST_F(KeptMemory, AShortTextBehindALongOneKeepsNoRoomForIt) {
    for (const std::size_t units : {std::size_t{2'000}, std::size_t{10'000}, std::size_t{50'000}}) {
        Write(MakeBag({{view::kText, Text(TString(100'000, u'x'))}}));
        const TString text =
            m_json.ToString(MakeBag({{view::kText, Text(TString(units, u'y'))}}), JSONSerializer::Compact);
        EXPECT_EQ("{\"text\": \"" + std::string(units, 'y') + "\"}", text.ToUtf8());
        EXPECT_LE(text.capacity(), text.size() + text.size() / 4);
    }
}

// The room for a list of reals is guessed from some of them: here all that are looked at are long, all others short.
TEST_F(KeptMemory, ATextDoesNotKeepRoomThatItDoesNotNeed) {
    std::vector<double> values(65'536, 0);
    std::string expected = R"({"realList":[)";
    for (std::size_t i = 0; i < values.size(); ++i) {
        expected += i == 0 ? "" : ",";
        if (i % 256 == 0) {
            values[i] = 1e22;  // the largest power of ten that is exact
            expected += "1" + std::string(22, '0');
        } else {
            expected += "0";
        }
    }
    expected += "]}";
    const TString text = m_json.ToString(MakeBag({{view::kRealList, Val(values)}}), JSONSerializer::Compact);
    EXPECT_EQ(expected, text.ToUtf8());
    EXPECT_LE(text.capacity(), 4 * text.size());
}

}  // namespace
