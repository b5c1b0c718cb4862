#include <qvcore/PasswordString.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <new>
#include <type_traits>
#include <utility>

#include "support/Printing.h"

namespace {

// Whether units occur in the bytes of a piece of memory.
bool Occurs(const unsigned char* memory, std::size_t size, const TString& units) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(units.data());
    const auto* end = memory + size;
    return std::search(memory, end, bytes, bytes + units.size() * sizeof(char16_t)) != end;
}

TEST(PasswordString, RevealsThePassword) {
    EXPECT_EQ(L"secret", PasswordString(L"secret").Reveal());
    EXPECT_EQ(L"", PasswordString().Reveal());
}

TEST(PasswordString, MaskIsEightAsterisks) { EXPECT_EQ(L"********", PasswordString::s_Mask); }

TEST(PasswordString, CopiesTheText) {
    const PasswordString password(L"secret");
    const PasswordString copy(password);
    PasswordString assigned(L"other");
    assigned = password;
    EXPECT_EQ(password, copy);
    EXPECT_EQ(password, assigned);
    EXPECT_NE(password, PasswordString(L"Secret"));
}

TEST(PasswordString, AssigningTakesTextsOfAnyLength) {
    PasswordString password;
    for (const std::size_t length : {3u, 100u, 5u, 0u, 8u, 1000u}) {
        const TString text(length, u'p');
        password = PasswordString(text);
        EXPECT_EQ(text, password.Reveal());
    }
}

TEST(PasswordString, AssigningItselfKeepsThePassword) {
    PasswordString password(L"secret");
    const PasswordString& same = password;
    password = same;
    EXPECT_EQ(L"secret", password.Reveal());
}

TEST(PasswordString, DestructionWipesTheStorage) {
    alignas(PasswordString) unsigned char memory[sizeof(PasswordString)] = {};
    auto* password = new (memory) PasswordString(L"secret");  // short enough to stand in the object itself
    ASSERT_TRUE(Occurs(memory, sizeof(memory), L"secret"));
    password->~PasswordString();
    EXPECT_FALSE(Occurs(memory, sizeof(memory), L"cre"));
}

TEST(PasswordString, AssigningWipesTheOldPassword) {
    const TString longText(L"a long and well-kept secret");
    PasswordString password(longText);
    const char16_t* const storage = password.Reveal().data();
    password = PasswordString(L"short");
    ASSERT_EQ(storage, password.Reveal().data());  // the room is used again, so that it may be looked into
    EXPECT_TRUE(std::all_of(storage + 5, storage + longText.size(), [](char16_t unit) { return unit == 0; }));
}

TEST(PasswordString, HasNoWayToMoveItsTextOutUnwiped) {
    PasswordString password(L"secret");
    const PasswordString moved(std::move(password));
    EXPECT_EQ(L"secret", moved.Reveal());
    EXPECT_EQ(L"secret", password.Reveal());  // NOLINT: a move is a copy, which is wiped like any other
}

TEST(PasswordString, DoesNotTurnIntoTextByItself) {
    EXPECT_FALSE((std::is_convertible_v<PasswordString, TString>));
    EXPECT_FALSE((std::is_convertible_v<TString, PasswordString>));
}

}  // namespace
