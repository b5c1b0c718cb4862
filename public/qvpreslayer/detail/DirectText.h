// The short way between typed values and text. Not for callers.
//
// Values of the library's own types need no text of their own on the way into a document or out of one. Whoever makes
// or reads documents asks the registry how the values of a parameter go the short way, and falls back to events and
// texts for every value, and every type, that does not. What comes out is the same either way.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string_view>

#include <qvsys/RefCntPtr.h>

#include <qvcore/TString.h>

#include <qvpreslayer/Export.h>
#include <qvpreslayer/IParameter.h>
#include <qvpreslayer/ParameterTypeCategory.h>

class IParameterSerializer;
class IStructureSerializer;
struct ParameterInfo;

namespace qvpreslayer::detail {

// How the values of a parameter go the short way.
enum class DirectType : unsigned char {
    None,  // not at all: a host's own serializer
    Int,
    UInt,
    Int64,
    UInt64,
    Float,
    Double,
    Bool,
    String,
    Text,  // by the operations of DirectTextType
    Bags,  // structures, lists and maps of them that are bags (BagStructureSerializer in record form)
};

// Room for the text of a value that does not hold one.
struct TextScratch {
    static constexpr std::size_t kUnits = 48;
    char16_t units[kUnits];
};

// Texts one after the other.
class ITextSource {
public:
    // The next text, valid until the next call; false when there is none, or none that goes the short way.
    virtual bool Next(std::u16string_view& text) = 0;

protected:
    ~ITextSource() = default;
};

// A type whose values are texts: enumerations, identifiers, durations, names.
struct DirectTextType {
    // The text of a single value, in scratch or in constant storage or in the value; the default view when value is not
    // exactly of this type, or has no text.
    std::u16string_view (*valueText)(const IParameter& value, TextScratch& scratch);

    bool isPlain;  // no text of a value needs an escape in JSON

    // What stands at the start of every object that holds one of this type (FunctionsOf).
    const void* (*functions)();

    // The elements of a list: their number and the text of one by position. kNoList when value is not exactly a list of
    // this type.
    static constexpr std::size_t kNoList = static_cast<std::size_t>(-1);
    std::size_t (*listSize)(const IParameter& value);
    std::u16string_view (*elementText)(const IParameter& list, std::size_t position, TextScratch& scratch);

    // A single value, or a list, from texts; empty when one does not fit.
    RefCntPtr<IParameter> (*fromText)(std::u16string_view text);
    RefCntPtr<IParameter> (*fromTexts)(ITextSource& texts);
};

// How names are spelled in a document.
enum class NameForm : unsigned char {
    Camel,  // the camel-case forms of verbose names
    Short,  // short names
};
inline constexpr std::size_t kNameForms = 2;

// What the short way needs of a parameter in documents of one form, side by side for the parameters of a namespace in
// the order of identifiers: in documents one mostly follows the other.
struct DirectRecord {
    static constexpr std::size_t kNameUnits = 36;
    static constexpr std::size_t kFirstUnits = 24;  // the beginning of most members is copied at once, the rest of it
    static constexpr std::size_t kOtherUnits = 20;  // in a second step

    const ParameterInfo* info = nullptr;   // null for the record behind the last one
    const DirectTextType* text = nullptr;  // for DirectType::Text
    const void* functions = nullptr;       // of the values, where those and the name are usual (FunctionsOf); else null
    int id = std::numeric_limits<int>::min();
    ParameterTypeCategory kind = PTC_None;
    DirectType type = DirectType::None;
    DirectType single = DirectType::None;  // of single values, the type
    bool isFoundByNames = false;  // the namespace finds it by the names that it has now, and documents spell them so
    std::uint8_t nameSize = 0;    // more than kNameUnits where the name is not held here; 0 where there is none
    std::uint8_t memberSize = 0;  // up to the colon behind the name; 0 where documents do not find it so

    // How a member begins: a comma, the name between quotation marks, a colon and a blank. Filled up with zeros, so
    // that both steps can be copied from the second unit on, too.
    char16_t start[1 + kFirstUnits + kOtherUnits] = {};

    const char16_t* Name() const noexcept { return start + 2; }
    const char16_t* Member() const noexcept { return start + 1; }
};

static_assert(sizeof(DirectRecord) == 128);  // two lines of the cache

// What the registry keeps of each parameter for the short way.
struct DirectInfo {
    DirectType type = DirectType::None;
    const DirectTextType* text = nullptr;          // for DirectType::Text
    const DirectRecord* records[kNameForms] = {};  // by form; null until the namespace is filled

    const DirectRecord* Record(NameForm form) const noexcept { return records[static_cast<std::size_t>(form)]; }
};

// How the values of a serializer go the short way. Only serializers that are exactly of one of the library's own
// classes do: a derived class may convert otherwise.
QVPRESLAYER_API DirectInfo DirectInfoOf(const IParameterSerializer& serializer);
QVPRESLAYER_API DirectInfo DirectInfoOf(const IStructureSerializer& serializer);

// What stands at the start of an object: where its virtual functions are, which tells its class apart from all others.
// One class may have several of these, where modules do not share them; so another one tells nothing.
inline const void* FunctionsOf(const IParameter& value) noexcept {
    return *reinterpret_cast<const void* const*>(&value);
}

// What stands at the start of most values of such a parameter; null where nothing is known of them.
QVPRESLAYER_API const void* FunctionsOf(DirectType type, const DirectTextType* text);

// Implemented by visitors that can take values as they are, beside IStructuredParameterVisitor.
class IDirectVisitor {
public:
    // Writes value, of the kind PTC_Text, PTC_Number, PTC_Bool or PTC_List (plain) that info tells, under the name of
    // that form. False, with nothing written, when the value is not exactly of info's type.
    virtual bool WriteDirectly(const ParameterInfo& info, bool useVerboseNames, const IParameter& value) = 0;

protected:
    ~IDirectVisitor() = default;
};

// The names of one namespace as documents spell them.
class INameIndex {
public:
    // The identifier that the namespace itself gives to the name whose camel-case form this is; 0 when it has none, or
    // when the form does not lead back to the name.
    virtual int FindCamel(std::u16string_view camelName) const noexcept = 0;

    // The identifier of a short name; 0 when it has none.
    virtual int FindShort(std::u16string_view shortName) const noexcept = 0;

    // All records of a form, ascending by identifier; one more stands behind the last.
    virtual std::span<const DirectRecord> GetRecords(NameForm form) const noexcept = 0;

protected:
    ~INameIndex() = default;
};

}  // namespace qvpreslayer::detail
