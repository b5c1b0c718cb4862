#include "main/json/direct/DirectReader.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <map>
#include <type_traits>
#include <utility>

#include <cxxabi.h>

#include <qvsys/LargePages.h>

#include <qvpreslayer/PresLayerLimits.h>
#include <qvpreslayer/ValParameter.h>
#include <qvpreslayer/detail/RunFilling.h>
#include <qvpreslayer/detail/StackGuard.h>

#include "main/json/JSONDocument.h"
#include "main/json/JSONStrings.h"
#include "main/json/direct/DirectDigits.h"
#include "main/json/direct/DirectNumberLists.h"

using qvpreslayer::detail::DirectType;

// A run that follows so many plain elements.
template <class T>
struct RunAt {
    std::size_t position;
    T first;
    unsigned int length;
    typename std::conditional_t<std::is_integral_v<T>, std::make_signed<T>, std::type_identity<T>>::type step;
};

namespace {

// Deeper texts go the long way, which keeps the stack small.
constexpr int kDirectLevels = 32;

template <class T, class From>
bool Fits(From number, T& value) {
    if constexpr (std::is_same_v<T, float>) {
        return NarrowReal(number, value);
    }
    if constexpr (std::is_integral_v<T> && std::is_integral_v<From>) {
        if (!std::in_range<T>(number)) {
            return false;
        }
    }
    value = static_cast<T>(number);
    return true;
}

// Room for so many elements, in large pages where they fill some.
template <class T>
void ReserveLarge(std::vector<T>& values, std::size_t elements) {
    values.reserve(elements);
    qvsys::detail::PreferLargePages(values.data(), elements * sizeof(T));
}

// The list that plain elements and the runs between them make, in memory that is asked for once.
template <class T>
std::vector<T> Expanded(const std::vector<T>& plain, const std::vector<RunAt<T>>& runs) {
    std::size_t size = plain.size();
    for (const RunAt<T>& run : runs) {
        size += run.length;
    }
    std::vector<T> values;
    ReserveLarge(values, size);
    std::size_t taken = 0;
    for (const RunAt<T>& run : runs) {
        values.insert(values.end(), plain.data() + taken, plain.data() + run.position);
        taken = run.position;
        qvpreslayer::detail::AppendRun(values, run.first, run.length, run.step);
    }
    values.insert(values.end(), plain.data() + taken, plain.data() + plain.size());
    return values;
}

// Behind a unit that is to come next; null when another one does.
const char16_t* Expect(const char16_t* at, char16_t unit) {
    at = SkipBlanks(at);
    return *at == unit ? at + 1 : nullptr;
}

// Behind a string of plain units alone, from behind its opening quotation mark on; null for any other.
[[gnu::always_inline]] inline const char16_t* TakeUnescaped(const char16_t* begin, const char16_t* at,
                                                            const char16_t* end, std::u16string_view& text) {
    const char16_t* const close = SkipPlainUnits(begin, at, end);
    text = {at, static_cast<std::size_t>(close - at)};
    return *close == u'"' ? close + 1 : nullptr;
}

// Behind a string without escapes, from behind its opening quotation mark on; null for any other.
const char16_t* TakePlainString(const char16_t* at, const char16_t* end, std::u16string_view& text) {
    const char16_t* close = SkipPlainUnits(at, end);
    if (*close != u'"') [[unlikely]] {
        const StringInside inside = SkipString(close, end);
        if (!inside.closed || inside.escaped) {
            return nullptr;
        }
        close = inside.end;
    }
    text = {at, static_cast<std::size_t>(close - at)};
    return close + 1;
}

// The same for any string, whose text is resolved.
const char16_t* TakeString(const char16_t* at, const char16_t* end, TString& text) {
    const char16_t* close = SkipPlainUnits(at, end);
    bool escaped = false;
    if (*close != u'"') [[unlikely]] {
        const StringInside inside = SkipString(close, end);
        if (!inside.closed) {
            return nullptr;
        }
        close = inside.end;
        escaped = inside.escaped;
    }
    const std::u16string_view raw(at, static_cast<std::size_t>(close - at));
    if (escaped) [[unlikely]] {
        text = Unescaped(raw);
    } else {
        text = raw;
    }
    return close + 1;
}

}  // namespace

// One container of the text that is being read.
class DirectReader::Level {
public:
    explicit Level(DirectReader& reader) : m_reader(reader) { ++m_reader.m_depth; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;
    ~Level() { --m_reader.m_depth; }

    bool IsTooDeep() const {
        const int depth = m_reader.m_depth;
        return depth > m_reader.m_maxDepth ||
               (depth > qvpreslayer::detail::kUnguardedLevels && qvpreslayer::detail::IsStackLow());
    }

private:
    DirectReader& m_reader;
};

// The strings of an array, from behind its opening bracket on.
class DirectReader::StringTexts final : public qvpreslayer::detail::ITextSource {
public:
    StringTexts(const char16_t* at, const char16_t* end) : m_at(at), m_end(end) {}

    bool Next(std::u16string_view& text) override {
        const char16_t* at = SkipBlanks(m_at);
        if (*at == u']') {
            m_behind = at + 1;
            return false;
        }
        if (!std::exchange(m_first, false)) {
            at = Expect(at, u',');
        }
        at = at == nullptr ? nullptr : Expect(at, u'"');
        at = at == nullptr ? nullptr : TakePlainString(at, m_end, text);
        if (at == nullptr) {
            return false;
        }
        m_at = at;
        return true;
    }

    // Behind the closing bracket; null before it was reached.
    const char16_t* Behind() const { return m_behind; }

private:
    const char16_t* m_at;
    const char16_t* m_end;
    const char16_t* m_behind = nullptr;
    bool m_first = true;
};

bool DirectReader::Read(const TString& json, ParametersRegistry& registry, const TString& namespaceName,
                        NameForm form) {
    if (json.size() >= std::numeric_limits<std::uint32_t>::max() || !m_names.Prepare(registry, namespaceName, form)) {
        return false;
    }
    m_begin = json.data();
    m_end = m_begin + json.size();
    m_names.Begin(m_end);
    m_numbers = DirectNumberReader(m_begin, m_end);
    m_depth = 0;
    m_maxDepth = std::min(kDirectLevels, PresLayerLimits::GetJSONDepth());
    m_items.Clear();
    m_others = 0;
    m_spent = 0;
    const PresLayerLimits::ExpansionBudgetScope budget;
    if (ReadWholeText()) {
        return true;
    }
    PresLayerLimits::ExpansionBudgetScope::GiveBack(m_spent);  // the long way spends it again
    return false;
}

// What fails here fails again on the long way, which says why.
bool DirectReader::ReadWholeText() {
    try {
        const char16_t* const at = Expect(m_begin, u'{');
        return at != nullptr && ReadBag(at, nullptr, 0) != nullptr;
    } catch (const abi::__forced_unwind&) {
        throw;  // the thread is being cancelled
    } catch (...) {
        return false;
    }
}

// Behind the opening brace. owner is what the object belongs to, id that of its item.
const char16_t* DirectReader::ReadBag(const char16_t* at, const Record* owner, int id) {
    const Level level(*this);
    if (level.IsTooDeep()) {
        return nullptr;
    }
    const std::size_t position = m_items.Add(id);
    const std::size_t othersBefore = m_others;
    bool ascends = true;
    std::uint32_t members = 0;
    at = ReadMembers(at, owner, members, ascends);
    if (at == nullptr || (!ascends && HasEqualMembers(position, members))) {
        return nullptr;
    }
    const bool isLeaf = ascends && m_others == othersBefore;
    SetInside(position, isLeaf ? DirectItem::Kind::Leaf : DirectItem::Kind::Bag, members);
    return at;
}

const char16_t* DirectReader::TakeWord(const char16_t* at, std::u16string_view word) const {
    const bool stands =
        static_cast<std::size_t>(m_end - at) >= word.size() && std::u16string_view(at, word.size()) == word;
    return stands ? at + word.size() : nullptr;
}

inline const char16_t* DirectReader::TakeBool(const char16_t* at, bool& value) const {
    if (m_end - at < 5) [[unlikely]] {
        value = *at == u't';
        return TakeWord(at, value ? u"true" : u"false");
    }
    // Without a jump between the two: truth is hard to foretell.
    value = std::memcmp(at, u"true", 4 * sizeof(char16_t)) == 0;
    const auto isFalse = static_cast<unsigned>(at[4] == u'e') &
                         static_cast<unsigned>(std::memcmp(at, u"fals", 4 * sizeof(char16_t)) == 0);
    if ((isFalse | static_cast<unsigned>(value)) == 0) [[unlikely]] {
        return nullptr;
    }
    return at + 4 + isFalse;
}

const char16_t* DirectReader::ReadNull(const char16_t* at, int id) {
    at = TakeWord(at, u"null");
    if (at != nullptr) {
        m_items.Add(id);
        ++m_others;
    }
    return at;
}

template <class T>
[[gnu::always_inline]] inline const char16_t* DirectReader::TakeNumber(const char16_t* at, T& value) const {
    std::conditional_t<std::is_floating_point_v<T>, double, ::Int64> number = 0;
    if constexpr (std::is_floating_point_v<T>) {
        at = m_numbers.TakeReal(at, number);
    } else {
        at = m_numbers.TakeInteger(at, number);
    }
    return at != nullptr && Fits(number, value) ? at : nullptr;
}

template <class T>
[[gnu::always_inline]] inline const char16_t* DirectReader::ReadNumber(const char16_t* at, int id) {
    T number{};
    const char16_t* const behind = TakeNumber(at, number);
    if (behind == nullptr) [[unlikely]] {
        return ReadNull(at, id);
    }
    m_items.AddValue<ValParameter<T>>(id, number);
    return behind;
}

const char16_t* DirectReader::ReadBool(const char16_t* at, int id) {
    bool truth = false;
    const char16_t* const behind = TakeBool(at, truth);
    if (behind == nullptr) [[unlikely]] {
        return ReadNull(at, id);
    }
    m_items.AddValue<ValParameter<bool>>(id, truth);
    return behind;
}

[[gnu::always_inline]] inline const char16_t* DirectReader::ReadString(const char16_t* at, int id) {
    if (*at != u'"') [[unlikely]] {
        return ReadNull(at, id);
    }
    std::u16string_view text;
    if (const char16_t* const behind = TakeUnescaped(m_begin, at + 1, m_end, text)) [[likely]] {
        if (m_end - behind >= TString::kBlockUnits) [[likely]] {
            m_items.AddValue<ValParameter<TString>>(id, std::in_place, TString::WholeBlocks(), text);
        } else {
            m_items.AddValue<ValParameter<TString>>(id, std::in_place, text);
        }
        return behind;
    }
    return ReadUnusualString(at, id);
}

const char16_t* DirectReader::ReadUnusualString(const char16_t* at, int id) {
    TString text;
    at = TakeString(at + 1, m_end, text);
    if (at != nullptr) {
        m_items.AddValue<ValParameter<TString>>(id, std::move(text));
    }
    return at;
}

const char16_t* DirectReader::ReadText(const char16_t* at, const Record& parameter) {
    if (*at != u'"') [[unlikely]] {
        return ReadNull(at, parameter.id);
    }
    std::u16string_view text;
    const char16_t* behind = TakeUnescaped(m_begin, at + 1, m_end, text);
    if (behind == nullptr) [[unlikely]] {
        behind = TakePlainString(at + 1, m_end, text);
    }
    if (behind == nullptr) {
        return nullptr;
    }
    Value value = parameter.text->fromText(text);
    if (!value) {
        return nullptr;
    }
    m_items.Add(parameter.id, std::move(value));
    return behind;
}

[[gnu::always_inline]] inline const char16_t* DirectReader::ReadMember(const char16_t* at, const Record& parameter) {
    switch (parameter.single) {
        case DirectType::Int:
            return ReadNumber<int>(at, parameter.id);
        case DirectType::UInt:
            return ReadNumber<unsigned int>(at, parameter.id);
        case DirectType::Int64:
            return ReadNumber<::Int64>(at, parameter.id);
        case DirectType::UInt64:
            return ReadNumber<::UInt64>(at, parameter.id);
        case DirectType::Float:
            return ReadNumber<float>(at, parameter.id);
        case DirectType::Double:
            return ReadNumber<double>(at, parameter.id);
        case DirectType::Bool:
            return ReadBool(at, parameter.id);
        case DirectType::String:
            return ReadString(at, parameter.id);
        case DirectType::Text:
            return ReadText(at, parameter);
        default:
            return ReadOther(at, parameter);
    }
}

// Clears ascends when identifiers do not. As they are written, each member follows the one before in the records, too.
const char16_t* DirectReader::ReadMembers(const char16_t* at, const Record* owner, std::uint32_t& members,
                                          bool& ascends) {
    at = SkipBlanks(at);
    if (*at == u'}') {
        return at + 1;
    }
    const Record* member = owner;
    const Record* guess = m_names.First(owner);
    for (std::uint32_t read = 0;;) {
        if (const char16_t* const behind = m_names.SkipMember(*guess, at)) [[likely]] {
            at = behind;
            member = guess++;
        } else {
            const Record* const previous = member;
            at = TakeName(at, guess, previous, read == 0);
            if (at == nullptr) {
                return nullptr;
            }
            member = guess;
            guess = m_names.Behind(member);
            ascends = ascends && (read == 0 || previous->id < member->id);
        }
        at += *at == u' ' ? 1 : 0;  // as it is written before single values
        at = ReadMember(SkipBlanks(at), *member);
        if (at == nullptr) {
            return nullptr;
        }
        ++read;
        at = *at == u',' ? at : SkipBlanks(at);
        if (*at != u',') {
            members = read;
            return *at == u'}' ? at + 1 : nullptr;
        }
        ++at;
    }
}

// Behind a name and its colon, in any spelling. guess is left at the parameter that it stands for; previous is the
// member before, or, with first, what the object belongs to.
const char16_t* DirectReader::TakeName(const char16_t* at, const Record*& guess, const Record* previous, bool first) {
    at = Expect(at, u'"');
    if (at == nullptr) {
        return nullptr;
    }
    if (const char16_t* const behind = m_names.Skip(*guess, at)) {
        return Expect(behind, u':');
    }
    guess = m_names.Find(at, previous, first);
    return guess == nullptr ? nullptr : Expect(at, u':');
}

// The last of equal members counts, which is for the long way to see to.
bool DirectReader::HasEqualMembers(std::size_t position, std::uint32_t members) const {
    std::vector<int> ids;
    ids.reserve(members);
    std::size_t item = position + 1;
    for (; members != 0; --members) {
        ids.push_back(m_items[item].id);
        item = m_items.Behind(item);
    }
    std::sort(ids.begin(), ids.end());
    return std::adjacent_find(ids.begin(), ids.end()) != ids.end();
}

const char16_t* DirectReader::ReadOther(const char16_t* at, const Record& parameter) {
    switch (parameter.kind) {
        case PTC_Text:
        case PTC_Number:
        case PTC_Bool:
            return ReadNull(at, parameter.id);
        case PTC_List:
            return *at == u'[' ? ReadList(at + 1, parameter) : ReadNull(at, parameter.id);
        case PTC_Map:
            return *at == u'{' ? ReadMap(at + 1, parameter) : ReadNull(at, parameter.id);
        case PTC_Bag:
            return *at == u'{' ? ReadBag(at + 1, &parameter, parameter.id) : ReadNull(at, parameter.id);
        case PTC_Structure:
            return *at == u'{' && parameter.type == DirectType::Bags ? ReadBag(at + 1, &parameter, parameter.id)
                                                                     : ReadNull(at, parameter.id);
        case PTC_StructureList:
            return *at == u'[' && parameter.type == DirectType::Bags ? ReadBags(at + 1, parameter)
                                                                     : ReadNull(at, parameter.id);
        case PTC_StructureMap:
            return *at == u'{' && parameter.type == DirectType::Bags ? ReadBagMap(at + 1, parameter)
                                                                     : ReadNull(at, parameter.id);
        default:
            return nullptr;
    }
}

// Behind the opening bracket.
const char16_t* DirectReader::ReadBags(const char16_t* at, const Record& parameter) {
    const Level level(*this);
    if (level.IsTooDeep()) {
        return nullptr;
    }
    const std::size_t position = m_items.Add(parameter.id);
    std::uint32_t elements = 0;
    at = SkipBlanks(at);
    if (*at != u']') {
        do {
            at = elements == 0 ? at : at + 1;
            at = Expect(at, u'{');
            at = at == nullptr ? nullptr : ReadBag(at, &parameter, 0);
            if (at == nullptr) {
                return nullptr;
            }
            ++elements;
            at = SkipBlanks(at);
        } while (*at == u',');
    }
    SetInside(position, DirectItem::Kind::Bags, elements);
    return *at == u']' ? at + 1 : nullptr;
}

// Behind the opening brace. Keys stand as they are, and ascend, as they are written.
const char16_t* DirectReader::ReadBagMap(const char16_t* at, const Record& parameter) {
    const Level level(*this);
    if (level.IsTooDeep()) {
        return nullptr;
    }
    const std::size_t position = m_items.Add(parameter.id);
    std::u16string_view lastKey;
    std::uint32_t entries = 0;
    at = SkipBlanks(at);
    if (*at != u'}') {
        do {
            std::u16string_view key;
            at = Expect(entries == 0 ? at : at + 1, u'"');
            at = at == nullptr ? nullptr : TakePlainString(at, m_end, key);
            at = at == nullptr || (entries != 0 && key <= lastKey) ? nullptr : Expect(at, u':');
            if (at == nullptr) {
                return nullptr;
            }
            lastKey = key;
            at = ReadEntry(SkipBlanks(at), parameter, m_items.AddKey(key));
            if (at == nullptr) {
                return nullptr;
            }
            ++entries;
            at = SkipBlanks(at);
        } while (*at == u',');
    }
    SetInside(position, DirectItem::Kind::BagMap, entries);
    return *at == u'}' ? at + 1 : nullptr;
}

const char16_t* DirectReader::ReadEntry(const char16_t* at, const Record& parameter, int key) {
    return *at == u'{' ? ReadBag(at + 1, &parameter, key) : ReadNull(at, key);
}

// Behind the opening bracket.
const char16_t* DirectReader::ReadList(const char16_t* at, const Record& parameter) {
    const Level level(*this);
    if (level.IsTooDeep()) {
        return nullptr;
    }
    switch (parameter.type) {
        case DirectType::Int:
            return ReadNumbers<int>(at, parameter.id);
        case DirectType::UInt:
            return ReadNumbers<unsigned int>(at, parameter.id);
        case DirectType::Int64:
            return ReadNumbers<::Int64>(at, parameter.id);
        case DirectType::UInt64:
            return ReadNumbers<::UInt64>(at, parameter.id);
        case DirectType::Float:
            return ReadNumbers<float>(at, parameter.id);
        case DirectType::Double:
            return ReadNumbers<double>(at, parameter.id);
        case DirectType::Bool:
            return ReadBools(at, parameter.id);
        case DirectType::String:
            return ReadStrings(at, parameter.id);
        case DirectType::Text:
            return ReadTexts(at, parameter);
        default:
            return nullptr;
    }
}

// Behind the opening brace.
const char16_t* DirectReader::ReadMap(const char16_t* at, const Record& parameter) {
    const Level level(*this);
    if (level.IsTooDeep()) {
        return nullptr;
    }
    switch (parameter.type) {
        case DirectType::Int:
            return ReadEntries<int>(at, parameter.id);
        case DirectType::UInt:
            return ReadEntries<unsigned int>(at, parameter.id);
        case DirectType::Int64:
            return ReadEntries<::Int64>(at, parameter.id);
        case DirectType::UInt64:
            return ReadEntries<::UInt64>(at, parameter.id);
        case DirectType::Float:
            return ReadEntries<float>(at, parameter.id);
        case DirectType::Double:
            return ReadEntries<double>(at, parameter.id);
        case DirectType::Bool:
            return ReadEntries<bool>(at, parameter.id);
        case DirectType::String:
            return ReadEntries<TString>(at, parameter.id);
        default:
            return nullptr;
    }
}

// Keys stand as they are.
template <class T>
const char16_t* DirectReader::ReadEntries(const char16_t* at, int id) {
    std::map<TString, T> entries;
    at = SkipBlanks(at);
    if (*at != u'}') {
        do {
            std::u16string_view key;
            at = Expect(entries.empty() ? at : at + 1, u'"');
            at = at == nullptr ? nullptr : TakePlainString(at, m_end, key);
            at = at == nullptr ? nullptr : Expect(at, u':');
            if (at == nullptr) {
                return nullptr;
            }
            const std::size_t size = entries.size();
            const auto entry = entries.emplace_hint(entries.end(), std::piecewise_construct, std::forward_as_tuple(key),
                                                    std::forward_as_tuple());
            at = entries.size() == size ? nullptr : TakeValue(SkipBlanks(at), entry->second);
            if (at == nullptr) {
                return nullptr;
            }
            at = SkipBlanks(at);
        } while (*at == u',');
    }
    m_items.AddValue<ValParameter<std::map<TString, T>>>(id, std::move(entries));
    return *at == u'}' ? at + 1 : nullptr;
}

template <class T>
const char16_t* DirectReader::TakeValue(const char16_t* at, T& value) const {
    if constexpr (std::is_same_v<T, TString>) {
        return *at == u'"' ? TakeString(at + 1, m_end, value) : nullptr;
    } else if constexpr (std::is_same_v<T, bool>) {
        return TakeBool(at, value);
    } else {
        return TakeNumber(at, value);
    }
}

// Behind the opening bracket, as all lists.
const char16_t* DirectReader::ReadTexts(const char16_t* at, const Record& parameter) {
    StringTexts texts(at, m_end);
    Value value = parameter.text->fromTexts(texts);
    if (!value) {
        return nullptr;
    }
    m_items.Add(parameter.id, std::move(value));
    return texts.Behind();
}

template <class T>
const char16_t* DirectReader::ReadNumbers(const char16_t* at, int id) {
    std::vector<T> plain;
    std::vector<RunAt<T>> runs;
    at = SkipBlanks(at);
    if (*at != u']') {
        ReserveLarge(plain, CountElements(at, m_end));
        while (true) {
            at = SkipBlanks(TakeUsualNumbers(SkipBlanks(at), m_begin, m_end, plain));
            if (*at == u'[') {
                at = ReadRun(at + 1, plain.size(), runs);
            } else {
                T number{};
                at = TakeNumber(at, number);
                plain.push_back(number);
            }
            if (at == nullptr) {
                return nullptr;
            }
            at = SkipBlanks(at);
            if (*at != u',') {
                break;
            }
            ++at;
        }
    }
    if (*at != u']') {
        return nullptr;
    }
    m_items.AddValue<ValParameter<std::vector<T>>>(id, runs.empty() ? std::move(plain) : Expanded(plain, runs));
    return at + 1;
}

// Behind the closing bracket of a run as it is written, from behind its opening one on: integers of few digits without
// blanks. Null for all others, of which nothing is said.
template <class T>
inline const char16_t* DirectReader::TakeUsualRun(const char16_t* at, RunAt<T>& run) const {
    if (m_end - at < UsualRun::kLookahead || at - m_begin < kDigitsLookbehind) [[unlikely]] {
        return nullptr;
    }
    UsualRun text(at);
    ::Int64 first = 0;
    ::Int64 length = 0;
    ::Int64 step = 0;
    if (!text.TakeInteger(first) || !text.TakeUnit(u',') || !text.TakeInteger(length)) {
        return nullptr;
    }
    if (text.TakeUnit(u',') && !text.TakeInteger(step)) {
        return nullptr;
    }
    const bool isRun = text.TakeUnit(u']') && length >= 0 && (std::is_signed_v<T> || first >= 0);
    run.first = static_cast<T>(first);
    run.length = static_cast<unsigned int>(length);
    run.step = static_cast<decltype(run.step)>(step);
    return isRun ? text.At() : nullptr;
}

// A nested list, from behind its opening bracket on: a run of two or three items, or the marker that a packed list ends
// with. Other sizes go the long way, as do runs that it refuses.
template <class T>
const char16_t* DirectReader::ReadRun(const char16_t* at, std::size_t position, std::vector<RunAt<T>>& runs) {
    const Level level(*this);
    if (level.IsTooDeep()) [[unlikely]] {
        return nullptr;
    }
    RunAt<T> run{position, {}, 0, {}};
    const char16_t* behind = nullptr;
    if constexpr (std::is_integral_v<T>) {
        behind = TakeUsualRun(at, run);
    }
    if (behind == nullptr) {
        at = SkipBlanks(at);
        if (*at == u']') {
            return at + 1;
        }
        behind = TakeRun(at, run);
    }
    if (behind == nullptr) {
        return nullptr;
    }
    PresLayerLimits::ExpansionBudgetScope::Spend(run.length * sizeof(T));
    m_spent += run.length * sizeof(T);
    runs.push_back(run);
    return behind;
}

// The same for a run in any spelling.
template <class T>
const char16_t* DirectReader::TakeRun(const char16_t* at, RunAt<T>& run) const {
    at = TakeNumber(at, run.first);
    at = at == nullptr ? nullptr : Expect(at, u',');
    at = at == nullptr ? nullptr : TakeNumber(SkipBlanks(at), run.length);
    if (at == nullptr) {
        return nullptr;
    }
    at = SkipBlanks(at);
    if (std::is_integral_v<T> && *at == u',') {
        at = TakeNumber(SkipBlanks(at + 1), run.step);
    }
    return at == nullptr ? nullptr : Expect(at, u']');
}

const char16_t* DirectReader::ReadBools(const char16_t* at, int id) {
    std::vector<bool> values;
    at = SkipBlanks(at);
    if (*at != u']') {
        do {
            bool truth = false;
            at = TakeBool(SkipBlanks(values.empty() ? at : at + 1), truth);
            if (at == nullptr) {
                return nullptr;
            }
            values.push_back(truth);
            at = SkipBlanks(at);
        } while (*at == u',');
    }
    m_items.AddValue<ValParameter<std::vector<bool>>>(id, std::move(values));
    return *at == u']' ? at + 1 : nullptr;
}

const char16_t* DirectReader::ReadStrings(const char16_t* at, int id) {
    std::vector<TString> values;
    at = SkipBlanks(at);
    if (*at != u']') {
        do {
            at = Expect(values.empty() ? at : at + 1, u'"');
            at = at == nullptr ? nullptr : TakeString(at, m_end, values.emplace_back());
            if (at == nullptr) {
                return nullptr;
            }
            at = SkipBlanks(at);
        } while (*at == u',');
    }
    m_items.AddValue<ValParameter<std::vector<TString>>>(id, std::move(values));
    return *at == u']' ? at + 1 : nullptr;
}
