// What the tests of values, bags, registry and walk share: failures as plain answers, values and serializers that count
// themselves, and sessions with options of a test's own making.
#pragma once

#include <optional>
#include <string>
#include <typeinfo>
#include <utility>

#include <gtest/gtest.h>

#include <qvpreslayer/qvpreslayer.h>

#include "support/Printing.h"
#include "support/TestHost.h"

// The E that action throws. Anything else, a class derived from E included, fails the test and answers nothing.
template <class E, class Action>
std::optional<E> Thrown(Action&& action) {
    try {
        action();
    } catch (const E& exception) {
        EXPECT_EQ(std::string(typeid(E).name()), typeid(exception).name()) << "a derived exception";
        return exception;
    } catch (const std::exception& other) {
        ADD_FAILURE() << "another exception: " << other.what();
        return std::nullopt;
    }
    ADD_FAILURE() << "no exception";
    return std::nullopt;
}

// The expression of the logic error that action reports, and the source module that it names.
template <class Action>
std::string LogicErrorOf(Action&& action) {
    const auto error = Thrown<LogicException>(action);
    return error ? error->GetExpression() : "";
}
template <class Action>
std::string LogicFileOf(Action&& action) {
    const auto error = Thrown<LogicException>(action);
    return error ? error->GetFile() : "";
}

// The identifier in the exception that action throws.
template <class Action>
std::optional<int> NotFoundId(Action&& action) {
    const auto error = Thrown<ParameterNotFoundException>(action);
    return error ? std::optional<int>(error->GetID()) : std::nullopt;
}
template <class Action>
std::optional<int> MissingId(Action&& action) {
    const auto error = Thrown<MissingParameterCommandException>(action);
    return error ? std::optional<int>(error->GetParameterID()) : std::nullopt;
}
template <class Action>
std::optional<int> MismatchId(Action&& action) {
    const auto error = Thrown<TypeMismatchCommandException>(action);
    return error ? std::optional<int>(error->GetParameterID()) : std::nullopt;
}
template <class Action>
std::optional<int> ParseId(Action&& action) {
    const auto error = Thrown<ParameterParseException>(action);
    return error ? std::optional<int>(error->GetID()) : std::nullopt;
}

// The name in the exception that action throws.
template <class Action>
std::string NotFoundName(Action&& action) {
    const auto error = Thrown<ParameterNotFoundException>(action);
    return error ? error->GetName().ToUtf8() : "";
}
template <class Action>
std::string UnknownNamespace(Action&& action) {
    const auto error = Thrown<ParameterNamespaceNotFoundException>(action);
    return error ? error->GetName().ToUtf8() : "";
}

// A value, and a serializer, that keep a count of the living ones.
class CountedValue final : public IParameter {
public:
    explicit CountedValue(int& alive) : m_alive(alive) { ++m_alive; }
    ~CountedValue() override { --m_alive; }

private:
    int& m_alive;
};

class CountedSerializer final : public TStringSerializer {
public:
    explicit CountedSerializer(int& alive) : m_alive(alive) { ++m_alive; }
    CountedSerializer(const CountedSerializer&) = delete;
    ~CountedSerializer() override { --m_alive; }

private:
    int& m_alive;
};

// The serializers that most tests register.
inline TStringSerializer* TextSerializer() { return new TStringSerializer; }
inline ParameterTypeSerializer<int>* IntSerializer() { return new ParameterTypeSerializer<int>; }
inline ParameterTypeSerializer<bool>* BoolSerializer() { return new ParameterTypeSerializer<bool>; }

// A session that answers these options, null ones too, in force on the calling thread as long as it lives.
class OptionsSession final : public SessionContext {
public:
    explicit OptionsSession(RefCntPtr<const IBuilderVars> vars) : m_vars(std::move(vars)), m_scope(*this) {}
    ~OptionsSession() override = default;

    RefCntPtr<const IBuilderVars> GetIBuilderVars() const override { return m_vars; }

private:
    RefCntPtr<const IBuilderVars> m_vars;
    SessionContextScope m_scope;
};

// A bag that is a presentation model as well.
class BagModel final : public BaseParameters, public PresentationModel {
public:
    BagModel() = default;
    explicit BagModel(int& alive) : m_alive(&alive) { ++alive; }

protected:
    ~BagModel() override {
        if (m_alive != nullptr) {
            --*m_alive;
        }
    }
    RefCntPtr<BaseParameters> DoEmptyClone() override { return RefCntPtr<BaseParameters>(new BagModel); }

private:
    int* m_alive = nullptr;
};

// A plain model.
class TestModel : public PresentationModel {
public:
    ~TestModel() override = default;
};
