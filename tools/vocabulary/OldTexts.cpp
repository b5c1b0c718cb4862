#include "tools/vocabulary/OldTexts.h"

#include <algorithm>
#include <limits>

namespace qvpres {

namespace {

// Numbers that a type holds.
struct Bounds {
    double low;
    double high;

    bool IsWithin(const Bounds& other) const { return other.low <= low && high <= other.high; }
};

template <class T>
constexpr Bounds kBoundsOf = {static_cast<double>(std::numeric_limits<T>::min()),
                              static_cast<double>(std::numeric_limits<T>::max())};

// What integers become on their way in: 32 bits, with or without a sign.
constexpr Bounds kTravelling = {kBoundsOf<int>.low, kBoundsOf<unsigned int>.high};

// Whole numbers that a real holds exactly.
constexpr Bounds kWholeFloats = {-16777216.0, 16777216.0};
constexpr Bounds kWholeDoubles = {-9007199254740992.0, 9007199254740992.0};

// The bounds of an integer type or a duration.
Bounds BoundsOf(const ValueType& type) {
    const std::u16string_view name = type.name;
    if (name == u"int" || name == u"hours" || name == u"minutes") {
        return kBoundsOf<int>;
    }
    if (name == u"unsigned-int") {
        return kBoundsOf<unsigned int>;
    }
    return name == u"uint64" ? kBoundsOf<UInt64> : kBoundsOf<Int64>;
}

// The numbers that arrive where integers or ticks of a type were written; what the type itself refuses does not count.
// Ticks stand in quotes and arrive unchanged.
Bounds Arriving(const ValueType& older) {
    const Bounds bounds = BoundsOf(older);
    if (older.form == TextForm::Duration) {
        return bounds;
    }
    return {std::max(bounds.low, kTravelling.low), std::min(bounds.high, kTravelling.high)};
}

bool IsWholeNumber(const ValueType& type) { return type.form == TextForm::Integer || type.form == TextForm::Duration; }

// Whether a text may be about anything, so that only the text itself tells whether another type reads it.
bool MayBeAnything(const ValueType& type) {
    return type.form == TextForm::AnyText || type.form == TextForm::ParameterID;
}

OldTexts ReadAsInteger(const ValueType& older, const ValueType& newer) {
    if (IsWholeNumber(older)) {
        return Arriving(older).IsWithin(BoundsOf(newer)) ? OldTexts::Read : OldTexts::SomeFail;
    }
    return older.form == TextForm::Real || MayBeAnything(older) ? OldTexts::SomeFail : OldTexts::Fail;
}

// Ticks are read in 64 bits, and hours and minutes keep the lower half.
OldTexts ReadAsDuration(const ValueType& older, const ValueType& newer) {
    if (older.form == TextForm::Duration) {
        return OldTexts::Differ;  // the unit is another one
    }
    if (older.form == TextForm::Integer) {
        return Arriving(older).IsWithin(BoundsOf(newer)) ? OldTexts::Read : OldTexts::Differ;
    }
    return older.form == TextForm::Real || MayBeAnything(older) ? OldTexts::SomeFail : OldTexts::Fail;
}

OldTexts ReadAsReal(const ValueType& older, const ValueType& newer) {
    const bool isFloat = newer.name == u"float";
    if (IsWholeNumber(older)) {
        return Arriving(older).IsWithin(isFloat ? kWholeFloats : kWholeDoubles) ? OldTexts::Read : OldTexts::Differ;
    }
    if (older.form == TextForm::Real) {
        return isFloat ? OldTexts::SomeFail : OldTexts::Read;  // a double may be beyond the range of float
    }
    return MayBeAnything(older) ? OldTexts::SomeFail : OldTexts::Fail;
}

// A text without brackets is a name of one part.
OldTexts ReadAsName(const ValueType& older) {
    if (older.form == TextForm::Name) {
        return OldTexts::Read;
    }
    return MayBeAnything(older) || older.form == TextForm::TypedValue ? OldTexts::SomeFail : OldTexts::Differ;
}

OldTexts ReadAsEnumeration(const ValueType& older, const ValueType& newer) {
    const auto isKnown = [&](std::u16string_view name) {
        return std::find(newer.names.begin(), newer.names.end(), name) != newer.names.end();
    };
    const bool allKnown =
        older.form == TextForm::Enumeration && std::all_of(older.names.begin(), older.names.end(), isKnown);
    return allKnown ? OldTexts::Read : OldTexts::Differ;  // unknown ones are read as the default
}

// A list of packed numbers holds runs, which other types pass over.
bool PacksRuns(const ValueType& type) {
    return type.form == TextForm::Integer || type.form == TextForm::Real || type.form == TextForm::TypedValue;
}

enum class Shape { Scalar, Array, Object };

Shape ShapeOf(const ParameterDeclaration& parameter) {
    switch (parameter.kind) {
        case DeclaredKind::Value:
            return Shape::Scalar;
        case DeclaredKind::List:
        case DeclaredKind::StructureList:
            return Shape::Array;
        case DeclaredKind::Structure:
            return parameter.listForm ? Shape::Array : Shape::Object;
        default:
            return Shape::Object;
    }
}

bool TakesAnyText(const ValueType& type) {
    return type.form == TextForm::AnyText || type.form == TextForm::Password || type.form == TextForm::Enumeration;
}

const ValueType& TextType() { return *FindValueType(u"text"); }

OldTexts ReadAsList(const ParameterDeclaration& older, const ParameterDeclaration& newer) {
    if (older.kind == DeclaredKind::List) {
        const bool losesRuns = PacksRuns(*older.type) && !PacksRuns(*newer.type);
        // Lists of typed values are written bare, so that their texts may be about anything.
        const bool isBare = older.type->form == TextForm::TypedValue && older.type != newer.type;
        const OldTexts items = ReadAs(isBare ? TextType() : *older.type, *newer.type);
        return losesRuns ? Worse(items, OldTexts::Differ) : items;
    }
    if (older.kind == DeclaredKind::Structure) {
        return ReadAs(TextType(), *newer.type);
    }
    // Of structures inside a list, those in list form look like runs, others count as the empty text.
    if (TakesAnyText(*newer.type)) {
        return OldTexts::Differ;
    }
    return older.listForm ? OldTexts::SomeFail : OldTexts::Fail;
}

OldTexts ReadAsMap(const ParameterDeclaration& older, const ParameterDeclaration& newer) {
    if (older.kind == DeclaredKind::Map) {
        return ReadAs(*older.type, *newer.type);
    }
    // Objects inside count as the empty text.
    if (TakesAnyText(*newer.type)) {
        return OldTexts::Differ;
    }
    return older.kind == DeclaredKind::StructureMap ? OldTexts::Fail : OldTexts::SomeFail;
}

bool IsRecord(const ParameterDeclaration& parameter) {
    return parameter.kind == DeclaredKind::Bag || (parameter.kind == DeclaredKind::Structure && !parameter.listForm);
}

OldTexts ReadAsStructure(const ParameterDeclaration& older, const ParameterDeclaration& newer) {
    if (ShapeOf(older) == Shape::Array) {
        if (!newer.listForm) {
            return OldTexts::Differ;  // arrays are passed over
        }
        return older.kind == DeclaredKind::StructureList ? OldTexts::Differ : OldTexts::Read;
    }
    if (!IsRecord(older)) {
        return OldTexts::SomeFail;  // keys are taken for names
    }
    return newer.listForm ? OldTexts::Differ : OldTexts::Read;
}

}  // namespace

std::u16string_view ToText(OldTexts oldTexts) {
    constexpr std::u16string_view kTexts[] = {u"read", u"differ", u"some fail", u"fail"};
    return kTexts[static_cast<std::size_t>(oldTexts)];
}

OldTexts ReadAs(const ValueType& older, const ValueType& newer) {
    if (&older == &newer) {
        return OldTexts::Read;
    }
    switch (newer.form) {
        case TextForm::AnyText:
        case TextForm::Password:
            return OldTexts::Read;
        case TextForm::Enumeration:
            return ReadAsEnumeration(older, newer);
        case TextForm::Integer:
            return ReadAsInteger(older, newer);
        case TextForm::Duration:
            return ReadAsDuration(older, newer);
        case TextForm::Real:
            return ReadAsReal(older, newer);
        case TextForm::Name:
            return ReadAsName(older);
        case TextForm::ParameterID:
            return OldTexts::SomeFail;  // what is a parameter's name is for the vocabulary to say
        case TextForm::Bool:
        case TextForm::UUID:
        case TextForm::TypedValue:
            break;
    }
    return MayBeAnything(older) ? OldTexts::SomeFail : OldTexts::Fail;
}

OldTexts ReadAs(const ParameterDeclaration& older, const ParameterDeclaration& newer) {
    const Shape shape = ShapeOf(older);
    switch (newer.kind) {
        case DeclaredKind::Value:
            return shape == Shape::Scalar ? ReadAs(*older.type, *newer.type) : OldTexts::Fail;
        case DeclaredKind::List:
            return shape == Shape::Array ? ReadAsList(older, newer) : OldTexts::Fail;
        case DeclaredKind::Map:
            return shape == Shape::Object ? ReadAsMap(older, newer) : OldTexts::Fail;
        case DeclaredKind::Bag:
            if (shape != Shape::Object) {
                return OldTexts::Fail;
            }
            return IsRecord(older) ? OldTexts::Read : OldTexts::SomeFail;
        case DeclaredKind::Structure:
            return shape == Shape::Scalar ? OldTexts::Fail : ReadAsStructure(older, newer);
        case DeclaredKind::StructureList: {
            const bool same = older.kind == newer.kind && older.listForm == newer.listForm;
            return same ? OldTexts::Read : OldTexts::Fail;
        }
        case DeclaredKind::StructureMap:
            if (older.kind == newer.kind) {
                return OldTexts::Read;
            }
            return IsRecord(older) ? OldTexts::SomeFail : OldTexts::Fail;
    }
    return OldTexts::Fail;
}

}  // namespace qvpres
