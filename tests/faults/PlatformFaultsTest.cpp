// Texts, names, typed values and the rest of the platform without memory.
#include <qvcore/qvcore.h>

#include <new>
#include <string>
#include <thread>
#include <vector>

#include <qvsys/BlockPool.h>
#include <qvsys/qvsys.h>

#include "faults/Allocations.h"
#include "faults/Subjects.h"
#include "support/TypedValues.h"

namespace {

using enum Promise;

const TString kLarge(20'000, u'x');
const char* const kUtf8 = "text in UTF-8 of some length: \xC3\xA9\xF0\x9F\x98\x80\xFF and so on, and so on, and so on";

// A text without memory of its own keeps what it held, whatever its size.
std::vector<Scenario> OnEachText(const char* name, Promise promise, const std::function<void(TString&)>& operation) {
    std::vector<Scenario> scenarios;
    for (const TString& text : {TString(), TString(L"short"), kLong, kLarge}) {
        scenarios.push_back({name, promise, [=] { return OnText(text, operation); }});
    }
    return scenarios;
}

std::string NumbersOf(const TString& text) {
    const IndirectString string = IndirectString::Lookup(Collation(L"en_US"), text);
    return string.GetText().ToUtf8() + std::to_string(IndirectString::GetTableSize());
}

template <class Operation>
Subject OnValue(DataValue value, Operation operation) {
    return On(std::make_shared<DataValue>(std::move(value)), operation, [](const DataValue& left) {
        DataValueFormatter::FormatOptions options;
        options.style = 1;
        return DataValueFormatter::Format(left, options).ToUtf8();
    });
}

DataValue Parsed(DataType type, const TString& text) {
    return DataValueParser::ParseGeneric(type, Collation(L"en_US"), DataValue::kUnset, DataValue::kUnset, text, false);
}

DataValue Mixed() {
    return typed::TupleOf({1, 0.5, typed::String(kLong, L"en_US"), typed::TupleOf({true, typed::LeapEvening(5)}),
                           typed::Day(2024, 2, 29), typed::NullString(L"en_US")});
}

}  // namespace

// What is made at its first use, in a program that has no memory left by then. Run as the first test of its process, as
// ctest does, it is the first use.
TEST(Faults, FirstUses) {
    const DataValue moved = [] {
        DataValue tuple = typed::TupleOf({1});
        const DataValue taken = std::move(tuple);
        return tuple;
    }();
    const IndirectString empty;
    const Spatial nowhere;
    allocations::Arm(0, allocations::Mode::FromThereOn);
    const bool right = Collation().GetName() == std::u16string_view(u"unknown") && empty.GetText().empty() &&
                       nowhere.GetText().empty() && GetUnknownCollation() == empty.GetCollation() &&
                       moved.GetHash() == moved.GetHash();
    allocations::Disarm();
    EXPECT_TRUE(right);
}

// With the pool that the other tests do without: it may hand out what it has left, and fails then.
TEST(Faults, KeptBlocksWithoutMemory) {
    using namespace qvsys::detail;
    constexpr std::size_t kBytes = 400;
    constexpr int kMany = 20'000;  // more than the empty slabs that a thread keeps hold
    std::vector<void*> blocks;
    blocks.reserve(kMany);
    std::thread([&] {
        allocations::Arm(0, allocations::Mode::FromThereOn);
        for (void* block; blocks.size() < kMany && (block = TryAllocateBlock(kBytes)) != nullptr;) {
            blocks.push_back(block);
        }
        bool failed = false;
        try {
            blocks.push_back(AllocateBlock(kBytes));
        } catch (const std::bad_alloc&) {
            failed = true;
        }
        allocations::Disarm();
        EXPECT_LT(blocks.size(), std::size_t{kMany});
        EXPECT_TRUE(failed);
        blocks.push_back(AllocateBlock(kBytes));  // with memory again
        for (void* const block : blocks) {
            ReleaseBlock(block, kBytes);
        }
        ReleaseKeptBlocks();
        allocations::Arm(0, allocations::Mode::FromThereOn);
        void* const none = TryAllocateBlock(kBytes);  // of a thread that keeps slabs no longer
        allocations::Disarm();
        EXPECT_EQ(nullptr, none);
    }).join();
}

TEST(Faults, ChangingTexts) {
    CheckUnderFaults(OnEachText("appending a unit", Strong, [](TString& t) { t += u'x'; }));
    CheckUnderFaults(OnEachText("appending", Strong, [](TString& t) { t += kLong; }));
    CheckUnderFaults(OnEachText("appending much", Strong, [](TString& t) { t.append(kLarge); }));
    CheckUnderFaults(
        OnEachText("appending a wide text", Strong, [](TString& t) { t += L"another text that is long"; }));
    CheckUnderFaults(OnEachText("appending itself", Strong, [](TString& t) { t += t; }));
    CheckUnderFaults(OnEachText("appending one unit many times", Strong, [](TString& t) { t.append(500, u'y'); }));
    CheckUnderFaults(OnEachText("making room", Strong, [](TString& t) { t.reserve(100'000); }));
    CheckUnderFaults(OnEachText("lengthening", Strong, [](TString& t) { t.resize(50'000); }));
    CheckUnderFaults(OnEachText("shortening", NoFail, [](TString& t) { t.resize(t.size() / 2); }));
    CheckUnderFaults(OnEachText("clearing", NoFail, [](TString& t) { t.clear(); }));
    CheckUnderFaults({{"giving room back", NoFail, [] {
                           auto text = std::make_shared<TString>(kLarge);
                           text->reserve(100'000);
                           return On(
                               text, [](TString& t) { t.shrink_to_fit(); },
                               [](const TString& t) { return t.ToUtf8(); });
                       }}});
    CheckUnderFaults(OnEachText("room to write in", Strong, [](TString& t) { t.Accept(t.Extend(1000)); }));
    CheckUnderFaults(OnEachText("assigning", Strong, [](TString& t) { t = kLong; }));
    CheckUnderFaults(OnEachText("assigning much", Strong, [](TString& t) { t = kLarge; }));
    CheckUnderFaults(OnEachText("replacing", Strong, [](TString& t) { t.replace(L"x", L"something longer"); }));
    CheckUnderFaults(OnEachText("removing a unit", NoFail, [](TString& t) { t.removeAt(0); }));
}

TEST(Faults, MakingTexts) {
    CheckUnderFaults(OnEachText("copying", Strong, [](const TString& t) { const TString copy(t); }));
    CheckUnderFaults(OnEachText("to UTF-8", Strong, [](const TString& t) { t.ToUtf8(); }));
    CheckUnderFaults(OnEachText("to a wide text", Strong, [](const TString& t) { t.ToStdWString(); }));
    CheckUnderFaults(OnEachText("joining", Strong, [](const TString& t) { t + kLong; }));
    CheckUnderFaults(OnEachText("splitting", Strong, [](const TString& t) { t.split(L"x"); }));
    CheckUnderFaults(OnEachText("cutting out", Strong, [](const TString& t) { t.mid(1).left(1000).right(999); }));
    CheckUnderFaults(OnEachText("camel case", Strong, [](const TString& t) { DashedToCamel(CamelToDashed(t)); }));
    CheckUnderFaults({
        {"from UTF-8", Strong, [] { return Nothing([] { TString::FromUtf8(kUtf8); }); }},
        {"from a wide text", Strong, [] { return Nothing([] { TString(std::wstring(300, L'\x1F600')); }); }},
        {"from a wide literal", Strong,
         [] { return Nothing([] { TString(L"a wide text of more than some units"); }); }},
        {"comparing with a wide literal", Strong,
         [] { return Nothing([] { (void)(kLong == L"another long text, wide"); }); }},
        {"a number", Strong, [] { return Nothing([] { TString::number(Int64{-1} << 60, 2, 80, u'0'); }); }},
        {"a number to a base that is none", Strong, [] { return Nothing([] { TString::number(1, 99); }); }},
        {"of another library's text to UTF-8", Strong,
         [] { return Nothing([] { ToUtf8(std::u16string_view(kLarge)); }); }},
    });
}

TEST(Faults, NamesAndMessages) {
    CheckUnderFaults({
        {"a qualified name", Strong,
         [] { return Nothing([] { QualifiedName::ParseGlobal(L"[orders].[unit price]"); }); }},
        {"a plain name", Strong, [] { return Nothing([] { FieldName::ParseGlobal(kLong); }); }},
        {"a malformed name", Strong,
         [] { return Nothing([] { QualifiedName::ParseGlobal(L"[orders].[unit price"); }); }},
        {"segments", Strong,
         [] { return Nothing([] { QualifiedName::ParseGlobal(L"[a].[b]]c].[d]").GetSegments(); }); }},
        {"a UUID", Strong, [] { return Nothing([] { TUUID(L"6f1c2a90-51d4-4e0b-9b7e-3a8d5c0f7e21").ToString(0); }); }},
        {"a malformed UUID", Strong, [] { return Nothing([] { TUUID(L"6f1c2a90-51d4-4e0b-9b7e"); }); }},
        {"a format of UUIDs that is none", Strong, [] { return Nothing([] { TUUID().ToString(1); }); }},
        {"a message", Strong, [] { return Nothing([] { LookupTStr(Messages::kEnumValueUnknown); }); }},
        {"a message that is not there", Strong, [] { return Nothing([] { LookupTStr(1); }); }},
        {"a message with arguments", Strong,
         [] { return Nothing([] { LookupTFmtStr(Messages::kJSONKindMismatch, {kLong}); }); }},
        {"a password", Strong, [] { return Nothing([] { PasswordString copy = PasswordString(kLong); }); }},
        {"assigning a password", Strong,
         [] {
             static const PasswordString other(kLong);
             return On(
                 std::make_shared<PasswordString>(L"before"), [](PasswordString& p) { p = other; },
                 [](const PasswordString& p) { return p.Reveal().ToUtf8(); });
         }},
        {"no session", Strong, [] { return Nothing([] { SessionContext::Get(); }); }},
        {"a session", NoFail,
         [] {
             static TestSession* const session = new TestSession;
             return Nothing([] { const SessionContextScope scope(*session, SessionContextScope::Process); });
         }},
    });
}

TEST(Faults, SharedTexts) {
    CheckUnderFaults({
        {"a collation", Strong, [] { return Nothing([] { Collation(L"en_US_a-long-name-of-a-collation", 1); }); }},
        {"a collation that is none", Strong, [] { return Nothing([] { Collation(L"en US"); }); }},
        {"a shared text", Strong,
         [] {
             return Subject{[] { IndirectString::Lookup(Collation(L"en_US"), kLong); },
                            [] { return NumbersOf(L"other"); }};
         }},
        {"a shared text that is there", NoFail,
         [] {
             static const Collation collation(L"en_US");
             static const IndirectString held = IndirectString::Lookup(collation, kLong);
             return Subject{[] { IndirectString::Lookup(collation, kLong); }, [] { return NumbersOf(kLong); }};
         }},
        {"a geometry", Strong, [] { return Nothing([] { Spatial(kLong).GetText(); }); }},
    });
}

// The table of shared texts grows for the whole program, hence a test of its own: what it holds stays whole, whichever
// allocation of 3,000 new texts fails, and goes with the last user.
TEST(Faults, TheTableOfSharedTexts) {
    const IndirectString held = IndirectString::Lookup({}, kLong);
    const std::size_t size = IndirectString::GetTableSize();
    std::vector<TString> texts;
    for (int i = 0; i < 3000; ++i) {
        texts.push_back(kLong + TString::number(i));
    }
    for (const auto mode : {allocations::Mode::Once, allocations::Mode::FromThereOn}) {
        for (long point = 0; point < 9000; point += 41) {
            std::vector<IndirectString> shared;
            shared.reserve(texts.size());
            allocations::Arm(point, mode);
            try {
                for (const TString& text : texts) {
                    shared.push_back(IndirectString::Lookup({}, text));
                }
            } catch (const std::bad_alloc&) {
            }
            if (allocations::Disarm().failed == 0) {
                break;
            }
            ASSERT_EQ(size + shared.size(), IndirectString::GetTableSize()) << point;
            if (!shared.empty()) {
                ASSERT_EQ(texts[shared.size() - 1], shared.back().GetText()) << point;
            }
            shared.clear();
            ASSERT_EQ(size, IndirectString::GetTableSize()) << point;
        }
    }
    EXPECT_EQ(kLong, held.GetText());
}

TEST(Faults, TypedValues) {
    CheckUnderFaults({
        {"a tuple", Strong, [] { return Nothing([] { Mixed(); }); }},
        {"copying", NoFail, [] { return OnValue(Mixed(), [](const DataValue& v) { DataValue(v).IsSpecial(); }); }},
        {"assigning", NoFail,
         [] {
             static const DataValue other = Mixed();
             return OnValue(DataValue(5), [](DataValue& v) { v = other; });
         }},
        {"comparing", Strong,
         [] {
             static const DataValue other = typed::Nested(300);
             return OnValue(typed::Nested(300), [](const DataValue& v) { (void)(v == other); });
         }},
        {"ordering", Strong,
         [] {
             static const DataValue other = typed::Nested(301);
             return OnValue(typed::Nested(300), [](const DataValue& v) { (void)(v < other); });
         }},
        {"hashing", NoFail, [] { return OnValue(Mixed(), [](const DataValue& v) { v.GetHash(); }); }},
        {"adding", NoFail, [] { return OnValue(DataValue(1), [](DataValue& v) { v = v + DataValue(0.5); }); }},
        {"adding what is no number", Strong, [] { return OnValue(Mixed(), [](DataValue& v) { v = v + v; }); }},
        {"asking for another type", Strong,
         [] { return OnValue(Mixed(), [](const DataValue& v) { v.GetInteger(); }); }},
        {"a day that is none", Strong, [] { return Nothing([] { DataValue(typed::Day(2023, 2, 29)); }); }},
        {"a time that is none", Strong,
         [] { return Nothing([] { DateTime(typed::Day(2024, 2, 29), std::chrono::hours(24)); }); }},
        {"a null of no type", Strong, [] { return Nothing([] { DataValue::Null(static_cast<DataType>(9)); }); }},
        {"formatting", Strong,
         [] { return OnValue(Mixed(), [](const DataValue& v) { DataValueFormatter::Format(v, {}); }); }},
        {"appending a format", Basic,
         [] {
             return OnText(kLong, [](TString& t) {
                 static const DataValue value = Mixed();
                 DataValueFormatter::Append(t, value, {});
             });
         }},
        {"parsing an integer", Strong, [] { return Nothing([] { Parsed(DataType::Integer, L"-42"); }); }},
        {"parsing a text", Strong, [] { return Nothing([] { Parsed(DataType::CString, L"\"" + kLong + L"\\%\""); }); }},
        {"parsing a date", Strong, [] { return Nothing([] { Parsed(DataType::Date, L"#2024-02-29#"); }); }},
        {"parsing nothing", Strong, [] { return Nothing([] { Parsed(DataType::Boolean, L"maybe"); }); }},
    });
}

TEST(Faults, Foundations) {
    CheckUnderFaults({
        {"a mutex", Strong,
         [] {
             return Nothing([] {
                 TRecursiveMutex mutex;
                 mutex.Lock();
                 mutex.Lock();
                 mutex.Unlock();
                 mutex.Unlock();
             });
         }},
        {"a logic error", Strong, [] { return Nothing([] { ThrowLogicException("a condition", 1, "a file"); }); }},
        {"an empty pointer", Strong, [] { return Nothing([] { *RefCntPtr<IParameter>(); }); }},
        {"a shared object", Strong, [] { return Nothing([] { MakeRefCnt<TestBag>(); }); }},
        {"a block", Strong,
         [] { return Nothing([] { qvsys::detail::ReleaseBlock(qvsys::detail::AllocateBlock(40), 40); }); }},
        {"a block or none", NoFail,
         [] { return Nothing([] { qvsys::detail::ReleaseBlock(qvsys::detail::TryAllocateBlock(40), 40); }); }},
    });
}
