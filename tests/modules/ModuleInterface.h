// What a module that is loaded at run time and the program that loads it share: a table of functions, and failures and
// values by number. Everything here is compiled into every module, so that each has its own throws, handlers and casts.
#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include <qvpreslayer/qvpreslayer.h>

namespace modules {

// A type that no library knows, in an enumeration and as a value.
enum class Season : int { Dry = 1, Wet = 2 };
struct Money {
    int cents = 0;
    friend bool operator==(const Money&, const Money&) = default;
};

enum class Shape { Integer, Text, Reals, TextMap, Typed, Season, Money, Bag };
inline constexpr Shape kShapes[] = {Shape::Integer, Shape::Text,   Shape::Reals, Shape::TextMap,
                                    Shape::Typed,   Shape::Season, Shape::Money, Shape::Bag};

template <class T>
bool IsHolderOf(const IParameter& value) {
    return dynamic_cast<const ValParameter<T>*>(&value) != nullptr;
}

inline bool IsOfShape(const IParameter& value, Shape shape) {
    switch (shape) {
        case Shape::Integer:
            return IsHolderOf<int>(value);
        case Shape::Text:
            return IsHolderOf<TString>(value);
        case Shape::Reals:
            return IsHolderOf<std::vector<double>>(value);
        case Shape::TextMap:
            return IsHolderOf<std::map<TString, TString>>(value);
        case Shape::Typed:
            return IsHolderOf<std::vector<DataValue>>(value);
        case Shape::Season:
            return IsHolderOf<Season>(value);
        case Shape::Money:
            return IsHolderOf<Money>(value);
        default:
            return IsHolderOf<RefCntPtr<const IParameters>>(value);
    }
}

// The one shape that a cast finds in a value; -1 when it finds none or several.
inline int ShapeOf(const IParameter& value) {
    int found = -1;
    for (const Shape shape : kShapes) {
        if (IsOfShape(value, shape)) {
            found = found == -1 ? static_cast<int>(shape) : -2;
        }
    }
    return found < 0 ? -1 : found;
}

enum class Failure {
    Missing,
    TypeMismatch,
    BadValue,
    NotFoundByID,
    NotFoundByName,
    Parse,
    NoNamespace,
    NamespaceExists,
    HasFallback,
    Cyclic,
    NotValid,
    KindMismatch,
    Quorvel,
    Logic,
    Runtime,
    OutOfRange,
};
inline constexpr int kFailures = 16;

// Throws it from the caller's own module.
inline void Raise(Failure failure) {
    switch (failure) {
        case Failure::Missing:
            throw MissingParameterCommandException(7);
        case Failure::TypeMismatch:
            throw TypeMismatchCommandException(7);
        case Failure::BadValue:
            throw BadValueParameterCommandException(7);
        case Failure::NotFoundByID:
            throw ParameterNotFoundException(7);
        case Failure::NotFoundByName:
            throw ParameterNotFoundException(L"seven");
        case Failure::Parse:
            throw ParameterParseException(7);
        case Failure::NoNamespace:
            throw ParameterNamespaceNotFoundException(L"seven");
        case Failure::NamespaceExists:
            throw ParameterNamespaceAlreadyExistsException(L"seven");
        case Failure::HasFallback:
            throw ParameterNamespaceAlreadyHasFallbackException(L"seven");
        case Failure::Cyclic:
            throw CyclicFallbacksException(L"seven");
        case Failure::NotValid:
            throw JSONParseException(Messages::kJSONNotValid);
        case Failure::KindMismatch:
            throw JSONParseException(Messages::kJSONKindMismatch, L"seven");
        case Failure::Quorvel:
            throw QuorvelException(u"seven");
        case Failure::Logic:
            ThrowLogicException("seven", 7, "seven");
        case Failure::Runtime:
            throw std::runtime_error("seven");
        default:
            throw std::out_of_range("seven");
    }
}

// What the first handler that fits says: the type, and what it carries.
template <class Call>
std::string CaughtFrom(Call&& call) {
    try {
        call();
        return "nothing";
    } catch (const MissingParameterCommandException& e) {
        return "missing " + std::to_string(e.GetParameterID());
    } catch (const TypeMismatchCommandException& e) {
        return "type " + std::to_string(e.GetParameterID());
    } catch (const BadValueParameterCommandException& e) {
        return "bad value " + std::to_string(e.GetParameterID());
    } catch (const ParameterNotFoundException& e) {
        return "not found " + std::to_string(e.GetID()) + e.GetName().ToUtf8();
    } catch (const ParameterParseException& e) {
        return "parse " + std::to_string(e.GetID());
    } catch (const ParameterNamespaceNotFoundException& e) {
        return "no namespace " + e.GetName().ToUtf8();
    } catch (const ParameterNamespaceAlreadyExistsException& e) {
        return "exists " + e.GetName().ToUtf8();
    } catch (const ParameterNamespaceAlreadyHasFallbackException& e) {
        return "has fallback " + e.GetName().ToUtf8();
    } catch (const CyclicFallbacksException& e) {
        return "cyclic " + e.GetName().ToUtf8();
    } catch (const JSONParseException& e) {
        return std::string("json ") + (e.GetStringId() == Messages::kJSONNotValid ? "not valid" : "mismatch");
    } catch (const QuorvelException& e) {
        return std::string("quorvel ") + e.what();
    } catch (const LogicException& e) {
        return std::string("logic ") + e.GetExpression();
    } catch (const std::out_of_range&) {
        return "out of range";
    } catch (const std::runtime_error&) {
        return "runtime";
    } catch (const std::exception& e) {
        return std::string("another exception: ") + e.what();
    } catch (...) {
        return "something else";
    }
}

// Whether a cast from the base finds the place that the exception carries.
template <class Call>
bool HasLocation(Call&& call) {
    try {
        call();
    } catch (const QuorvelException& e) {
        return dynamic_cast<const TextLocated*>(&e) != nullptr;
    }
    return false;
}

struct Module {
    // Values: made here, with a reference for the caller; looked at here.
    IParameter* (*makeValue)(Shape shape);
    int (*shapeOf)(const IParameter& value);

    // Failures: thrown here; caught here, also as their base, copied, and thrown again.
    void (*raise)(Failure failure);
    std::string (*catchFrom)(void (*raise)(Failure), Failure failure);
    std::string (*catchClonedFrom)(void (*raise)(Failure), Failure failure);
    bool (*hasLocation)(void (*raise)(Failure), Failure failure);

    // A namespace of this module, with the parameters "<name>-season" and "<name>-amounts" from first on.
    void (*registerNamespace)(ParametersRegistry& registry, const wchar_t* name, int first);

    // A text written and read in this module.
    std::string (*write)(const RefCntPtr<const IParameters>& bag, const wchar_t* namespaceName);
    IParameters* (*read)(const char* json, const wchar_t* namespaceName);
};

// The one function that a module exports.
inline constexpr const char* kEntryPoint = "GetTestModule";

}  // namespace modules

inline constexpr EnumName<modules::Season> kSeasonNames[] = {
    {modules::Season::Dry, u"dry-season"},
    {modules::Season::Wet, u"wet-season"},
};
template <>
struct ParameterTypeTraits<modules::Season> : EnumTraits<kSeasonNames, modules::Season::Dry> {};

template <>
struct ParameterTypeTraits<modules::Money> : ParameterTypeTraitsBase {
    static constexpr ParameterTypeCategory kCategory = PTC_Number;
    static TString ToText(const modules::Money& value) { return TString::number(value.cents); }
    static modules::Money FromText(const TString& text) {
        bool ok = false;
        const int cents = text.toInt(&ok);
        if (!ok) {
            throw ParameterParseException(0);
        }
        return {cents};
    }
};
