// Matchers for what an operation throws: EXPECT_THAT(Doing([&] { serializer.FromString(L"x"); }),
// ThrowsParseFailure()).
//
// Each wants the very class, not one derived from it, with the content that is told.
#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <typeinfo>

#include <gmock/gmock.h>

#include <qvpreslayer/qvpreslayer.h>

// The operation as one type for all: a matcher for every lambda of its own takes long to compile.
inline std::function<void()> Doing(std::function<void()> operation) { return operation; }

// An E and nothing more special, that inner accepts.
template <class E, class Inner>
auto ThrowsExactly(Inner inner) {
    return testing::Throws<E>(
        testing::AllOf(testing::Truly([](const E& error) { return typeid(error) == typeid(E); }), inner));
}

// A text that is none of its type, reported by a serializer, which does not know whose text it reads.
inline auto ThrowsParseFailure() {
    return ThrowsExactly<ParameterParseException>(
        testing::AllOf(testing::Property(&ParameterParseException::GetID, 0),
                       testing::Property(&QuorvelException::GetMessageText,
                                         std::u16string(u"Error parsing command parameter value string"))));
}

inline auto ThrowsMissing(int id) {
    return ThrowsExactly<MissingParameterCommandException>(
        testing::Property(&MissingParameterCommandException::GetParameterID, id));
}

inline auto ThrowsTypeMismatch(int id) {
    return ThrowsExactly<TypeMismatchCommandException>(
        testing::Property(&TypeMismatchCommandException::GetParameterID, id));
}

inline auto ThrowsNotFound(int id) {
    return ThrowsExactly<ParameterNotFoundException>(testing::Property(&ParameterNotFoundException::GetID, id));
}

// A plain QuorvelException with this message.
inline auto ThrowsMessageText(const TString& message) {
    return ThrowsExactly<QuorvelException>(
        testing::Property(&QuorvelException::GetMessageText, std::u16string(message.view())));
}

// A plain QuorvelException whose message names this text.
inline auto ThrowsNaming(const TString& text) {
    return ThrowsExactly<QuorvelException>(
        testing::Truly([needle = std::u16string(text.view())](const QuorvelException& error) {
            return error.GetMessageText().find(needle) != std::u16string::npos;
        }));
}

inline auto ThrowsLogicFailure(const char* expression) {
    return ThrowsExactly<LogicException>(testing::Property(&LogicException::GetExpression, testing::StrEq(expression)));
}

// A failed check of the serializers: it names their source and a line in it.
inline auto ThrowsSerializerCheck(const char* expression) {
    return ThrowsExactly<LogicException>(
        testing::AllOf(testing::Property(&LogicException::GetExpression, testing::StrEq(expression)),
                       testing::Property(&LogicException::GetFile, testing::HasSubstr("CoreSerializers")),
                       testing::Property(&LogicException::GetLine, testing::Gt(0))));
}

// A type without a letter, or a letter without a type.
inline auto ThrowsUnknownLetter() {
    return ThrowsExactly<std::out_of_range>(testing::Truly(
        [](const std::out_of_range& error) { return std::string("invalid map<K, T> key") == error.what(); }));
}
