#include <qvpreslayer/RegistryExceptions.h>

#include <exception>
#include <memory>
#include <string>
#include <type_traits>
#include <typeinfo>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"

namespace {

template <class E>
constexpr bool kIsCommandException = std::is_base_of_v<CommandException, E>;

// An exception of each class, with 3 or "n" inside.
template <class E>
E Sample() {
    if constexpr (std::is_constructible_v<E, int>) {
        return E(3);
    } else {
        return E(TString(L"n"));
    }
}

// Another one of the same class.
template <class E>
E Other() {
    if constexpr (std::is_constructible_v<E, int>) {
        return E(4);
    } else {
        return E(TString(L"other"));
    }
}

// What the exception holds.
template <class E>
std::string ContentOf(const E& error) {
    if constexpr (std::is_same_v<E, CommandException>) {
        return error.GetText().ToUtf8();
    } else if constexpr (kIsCommandException<E>) {
        return std::to_string(error.GetParameterID());
    } else if constexpr (std::is_constructible_v<E, int>) {
        return std::to_string(error.GetID());
    } else {
        return error.GetName().ToUtf8();
    }
}

// Whether Throw through the base is caught by a handler for Handler.
template <class Handler>
bool IsCaughtAs(const QuorvelException& error) {
    bool isCaught = false;
    try {
        try {
            error.Throw();
        } catch (const Handler& caught) {
            isCaught = typeid(caught) == typeid(error);
        }
    } catch (...) {
        isCaught = false;
    }
    return isCaught;
}

template <class E>
class EveryException : public testing::Test {};

using ExceptionTypes =
    testing::Types<CommandException, MissingParameterCommandException, TypeMismatchCommandException,
                   BadValueParameterCommandException, ParameterNotFoundException, ParameterParseException,
                   ParameterNamespaceNotFoundException, ParameterNamespaceAlreadyExistsException,
                   ParameterNamespaceAlreadyHasFallbackException, CyclicFallbacksException>;
TYPED_TEST_SUITE(EveryException, ExceptionTypes);

}  // namespace

TYPED_TEST(EveryException, ClonesAsItsOwnType) {
    auto original = std::make_unique<TypeParam>(Sample<TypeParam>());
    const std::string message = original->what();
    const std::unique_ptr<QuorvelException> clone(static_cast<const QuorvelException&>(*original).Clone());
    ASSERT_NE(nullptr, clone);
    const QuorvelException& copy = *clone;
    ASSERT_EQ(typeid(TypeParam), typeid(copy));
    EXPECT_NE(static_cast<QuorvelException*>(original.get()), clone.get());
    original.reset();
    EXPECT_EQ(message, clone->what());
    EXPECT_EQ(ContentOf(Sample<TypeParam>()), ContentOf(dynamic_cast<const TypeParam&>(*clone)));
}

TYPED_TEST(EveryException, ThrowsAsItsOwnType) {
    const TypeParam error = Sample<TypeParam>();
    const QuorvelException& base = error;
    const auto thrown = Thrown<TypeParam>([&] { base.Throw(); });
    ASSERT_TRUE(thrown);
    EXPECT_EQ(ContentOf(error), ContentOf(*thrown));
    EXPECT_STREQ(error.what(), thrown->what());
}

TYPED_TEST(EveryException, IsCaughtAsEachOfItsBases) {
    const TypeParam error = Sample<TypeParam>();
    EXPECT_TRUE(IsCaughtAs<TypeParam>(error));
    EXPECT_TRUE(IsCaughtAs<QuorvelException>(error));
    EXPECT_TRUE(IsCaughtAs<std::exception>(error));
    EXPECT_EQ(kIsCommandException<TypeParam>, IsCaughtAs<CommandException>(error));
    EXPECT_FALSE(IsCaughtAs<LogicException>(error));
}

TYPED_TEST(EveryException, CopiesAndAssigns) {
    const TypeParam error = Sample<TypeParam>();
    const TypeParam copy(error);
    TypeParam assigned = Other<TypeParam>();
    ASSERT_NE(ContentOf(error), ContentOf(assigned));
    assigned = error;
    EXPECT_EQ(ContentOf(error), ContentOf(copy));
    EXPECT_EQ(ContentOf(error), ContentOf(assigned));
    EXPECT_STREQ(error.what(), copy.what());
    EXPECT_STREQ(error.what(), assigned.what());
}

TYPED_TEST(EveryException, NeedsNoRegistry) {
    ASSERT_EQ(nullptr, ParametersRegistry::GetInstance());
    EXPECT_NO_THROW(Sample<TypeParam>());
}

TEST(RegistryExceptions, Messages) {
    const TString name(L"n");
    const struct {
        std::unique_ptr<QuorvelException> error;
        const char* message;
    } cases[] = {
        {std::make_unique<ParameterNotFoundException>(TString(L"Foo")), "Error finding command parameter: Foo"},
        {std::make_unique<ParameterNotFoundException>(-5), "Error finding command parameter: -5"},
        {std::make_unique<ParameterNotFoundException>(2147483647), "Error finding command parameter: 2147483647"},
        {std::make_unique<ParameterNotFoundException>(TString()), "Error finding command parameter: "},
        {std::make_unique<ParameterParseException>(3), "Error parsing command parameter value string"},
        {std::make_unique<ParameterNamespaceNotFoundException>(name), "Unknown parameter namespace: n"},
        {std::make_unique<ParameterNamespaceAlreadyExistsException>(name),
         "Namespace \"n\" already exists in registry"},
        {std::make_unique<ParameterNamespaceAlreadyHasFallbackException>(name),
         "A fallback has already been registered for namespace \"n\""},
        {std::make_unique<CyclicFallbacksException>(name),
         "Trying to set a fallback for namespace \"n\" resulted in a fallback loop"},
    };
    for (const auto& c : cases) {
        EXPECT_STREQ(c.message, c.error->what());
    }
}

TEST(ParameterNotFoundException, HoldsANameOrAnIdentifier) {
    const ParameterNotFoundException byName(TString(L"Foo"));
    EXPECT_EQ(0, byName.GetID());
    EXPECT_EQ(L"Foo", byName.GetName());
    const ParameterNotFoundException byId(-5);
    EXPECT_EQ(-5, byId.GetID());
    EXPECT_EQ(L"", byId.GetName());
}

TEST(RegistryExceptions, NamesMayHoldAnyCharacter) {
    const TString name(L"a\"b\u00e9");
    const ParameterNamespaceAlreadyExistsException error(name);
    EXPECT_EQ(u"Namespace \"a\"b\u00e9\" already exists in registry", error.GetMessageText());
    EXPECT_EQ(name, error.GetName());
}

TEST(RegistryExceptions, AnswerACopyOfTheName) {
    EXPECT_TRUE((std::is_same_v<TString, decltype(ParameterNotFoundException(1).GetName())>));
    EXPECT_TRUE((std::is_same_v<TString, decltype(CyclicFallbacksException(TString()).GetName())>));
}

TEST(RegistryExceptions, CopiesKeepThePlaceInTheText) {
    TextLocation place;
    place.line = 3;
    place.path = L"/style";
    ParameterNotFoundException error(TString(L"Foo"));
    EXPECT_FALSE(error.GetLocation().IsKnown());
    error.SetLocation(place);
    const std::unique_ptr<QuorvelException> clone(error.Clone());
    const auto& located = dynamic_cast<const TextLocated&>(*clone);
    EXPECT_EQ(3U, located.GetLocation().line);
    EXPECT_EQ(L"/style", located.GetLocation().path);
}
