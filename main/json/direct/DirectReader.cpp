#include "main/json/direct/DirectReader.h"

#include <algorithm>
#include <limits>
#include <map>
#include <optional>
#include <type_traits>
#include <utility>

#include <qvpreslayer/BagStructureSerializer.h>
#include <qvpreslayer/PresLayerLimits.h>
#include <qvpreslayer/ValParameter.h>
#include <qvpreslayer/detail/PlainBags.h>
#include <qvpreslayer/detail/RunFilling.h>

#include "main/json/JSONDocument.h"
#include "main/json/JSONStrings.h"
#include "main/json/direct/DirectDigits.h"
#include "main/json/direct/DirectNumberLists.h"

using qvpreslayer::detail::DirectType;
using qvpreslayer::detail::ParameterTable;
using qvpreslayer::detail::PlainBags;

namespace {

// Deeper texts go the long way, which keeps the stack small.
constexpr int kDirectLevels = 64;

constexpr std::size_t kKeptEntries = 4096;

using Bag = BagStructureSerializer::Bag;
using Bags = BagStructureSerializer::Bags;
using BagMap = BagStructureSerializer::BagMap;

template <class T, class From>
bool Fits(From number, T& value) {
    if constexpr (std::is_integral_v<T> && std::is_integral_v<From>) {
        if (!std::in_range<T>(number)) {
            return false;
        }
    }
    value = static_cast<T>(number);
    return true;
}

}  // namespace

// One container of the text that is being read.
class DirectReader::Level {
public:
    explicit Level(DirectReader& reader) : m_reader(reader) { ++m_reader.m_depth; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;
    ~Level() { --m_reader.m_depth; }

    bool IsTooDeep() const { return m_reader.m_depth > m_reader.m_maxDepth; }

private:
    DirectReader& m_reader;
};

// The strings of an array whose opening bracket has been taken. Ended tells that the closing one has been, too.
class DirectReader::StringTexts final : public qvpreslayer::detail::ITextSource {
public:
    explicit StringTexts(DirectReader& reader) : m_reader(reader) {}

    bool Next(std::u16string_view& text) override {
        m_ended = m_reader.Take(u']');
        if (m_ended || (!std::exchange(m_first, false) && !m_reader.Take(u','))) {
            return false;
        }
        return m_reader.Take(u'"') && m_reader.TakePlainString(text);
    }

    bool Ended() const { return m_ended; }

private:
    DirectReader& m_reader;
    bool m_first = true;
    bool m_ended = false;
};

RefCntPtr<IParameters> DirectReader::Read(const TString& json, ParametersRegistry& registry,
                                          const TString& namespaceName, NameForm form) {
    if (json.size() >= std::numeric_limits<std::uint32_t>::max() || !m_names.Prepare(registry, namespaceName, form)) {
        return {};
    }
    m_at = json.data();
    m_begin = m_at;
    m_end = m_at + json.size();
    m_numbers = DirectNumberReader(m_at, m_end);
    m_registry = &registry;
    m_depth = 0;
    m_maxDepth = std::min(kDirectLevels, PresLayerLimits::GetJSONDepth());
    m_entries.clear();
    if (!Take(u'{')) {
        return {};
    }
    const PresLayerLimits::ExpansionBudgetScope budget;
    RefCntPtr<IParameters> bag = registry.CreateParameters();
    if (!bag || !ReadBag(*bag, nullptr)) {
        return {};
    }
    return bag;
}

void DirectReader::Forget() noexcept {
    m_entries.clear();
    if (m_entries.capacity() > kKeptEntries) {
        std::vector<Entry>().swap(m_entries);
    }
}

bool DirectReader::ReadBag(IParameters& bag, const Record* owner) {
    const Level level(*this);
    ParameterTable* const table = PlainBags::Find(bag);
    if (table == nullptr || level.IsTooDeep()) {
        return false;
    }
    const std::size_t firstEntry = m_entries.size();
    bool inOrder = true;
    if (!ReadMembers(owner, inOrder) || (!inOrder && !PutInOrder(firstEntry))) {
        return false;
    }
    const auto begin = m_entries.begin() + static_cast<std::ptrdiff_t>(firstEntry);
    table->TakeAscending(std::span(begin, m_entries.end()));
    m_entries.erase(begin, m_entries.end());
    return true;
}

// Clears inOrder when identifiers do not ascend, or a value is null.
bool DirectReader::ReadMembers(const Record* owner, bool& inOrder) {
    if (Take(u'}')) {
        return true;
    }
    const Record* previous = owner;
    bool first = true;
    do {
        if (!Take(u'"')) {
            return false;
        }
        const Record* const parameter = m_names.Take(m_at, m_end, previous, first);
        if (parameter == nullptr || !Take(u':')) {
            return false;
        }
        SkipBlanks();
        Value value;
        if (*m_at == u'n' && TakeWord(u"null")) {
            inOrder = false;
        } else if (value = ReadValue(*parameter); !value) {
            return false;
        }
        inOrder = inOrder && (first || previous->id < parameter->id);
        m_entries.push_back({parameter->id, std::move(value)});
        previous = parameter;
        first = false;
    } while (Take(u','));
    return Take(u'}');
}

// Members are applied in the order of their names, the last of equal names alone: without equal ones, and without
// anybody to watch, the order cannot be told from another. Null values are left out. False for equal ones.
bool DirectReader::PutInOrder(std::size_t firstEntry) {
    const auto begin = m_entries.begin() + static_cast<std::ptrdiff_t>(firstEntry);
    std::sort(begin, m_entries.end(), [](const Entry& left, const Entry& right) { return left.id < right.id; });
    const auto isSame = [](const Entry& left, const Entry& right) { return left.id == right.id; };
    if (std::adjacent_find(begin, m_entries.end(), isSame) != m_entries.end()) {
        return false;
    }
    const auto isNull = [](const Entry& entry) { return !entry.value; };
    m_entries.erase(std::remove_if(begin, m_entries.end(), isNull), m_entries.end());
    return true;
}

DirectReader::Value DirectReader::ReadValue(const Record& parameter) {
    switch (parameter.kind) {
        case PTC_Text:
        case PTC_Number:
        case PTC_Bool:
            return ReadScalar(parameter);
        case PTC_List:
            return ReadList(parameter);
        case PTC_Map:
            return ReadMap(parameter);
        case PTC_Bag:
            if (RefCntPtr<IParameters> bag = ReadNested(parameter)) {
                return MakeRefCnt<BagParameter>(Bag(std::move(bag)));
            }
            return {};
        default:
            return parameter.type == DirectType::Bags ? ReadStructure(parameter) : Value();
    }
}

DirectReader::Value DirectReader::ReadScalar(const Record& parameter) {
    switch (parameter.type) {
        case DirectType::Int:
            return ReadNumber<int>();
        case DirectType::UInt:
            return ReadNumber<unsigned int>();
        case DirectType::Int64:
            return ReadNumber<Int64>();
        case DirectType::UInt64:
            return ReadNumber<UInt64>();
        case DirectType::Double:
            return ReadNumber<double>();
        case DirectType::Bool:
            return ReadBool();
        case DirectType::String: {
            TString text;
            if (*m_at != u'"' || !TakeString((++m_at, text))) {
                return {};
            }
            return MakeRefCnt<ValParameter<TString>>(std::move(text));
        }
        case DirectType::Text: {
            std::u16string_view text;
            return *m_at == u'"' && TakePlainString((++m_at, text)) ? parameter.text->fromText(text) : Value();
        }
        default:
            return {};
    }
}

DirectReader::Value DirectReader::ReadList(const Record& parameter) {
    const Level level(*this);
    if (level.IsTooDeep() || *m_at != u'[') {
        return {};
    }
    ++m_at;
    switch (parameter.type) {
        case DirectType::Int:
            return ReadNumbers<int>();
        case DirectType::UInt:
            return ReadNumbers<unsigned int>();
        case DirectType::Int64:
            return ReadNumbers<Int64>();
        case DirectType::UInt64:
            return ReadNumbers<UInt64>();
        case DirectType::Double:
            return ReadNumbers<double>();
        case DirectType::Bool:
            return ReadBools();
        case DirectType::String:
            return ReadStrings();
        case DirectType::Text: {
            StringTexts texts(*this);
            Value list = parameter.text->fromTexts(texts);
            return texts.Ended() ? list : Value();
        }
        default:
            return {};
    }
}

DirectReader::Value DirectReader::ReadStructure(const Record& parameter) {
    switch (parameter.kind) {
        case PTC_Structure:
            if (RefCntPtr<IParameters> bag = ReadNested(parameter)) {
                return MakeRefCnt<BagParameter>(Bag(std::move(bag)));
            }
            return {};
        case PTC_StructureList:
            return ReadBags(parameter);
        case PTC_StructureMap:
            return ReadBagMap(parameter);
        default:
            return {};
    }
}

RefCntPtr<IParameters> DirectReader::ReadNested(const Record& parameter) {
    if (!Take(u'{')) {
        return {};
    }
    RefCntPtr<IParameters> bag = m_registry->CreateParameters();
    if (!bag || !ReadBag(*bag, &parameter)) {
        return {};
    }
    return bag;
}

DirectReader::Value DirectReader::ReadBags(const Record& parameter) {
    const Level level(*this);
    if (level.IsTooDeep() || !Take(u'[')) {
        return {};
    }
    Bags bags;
    if (!Take(u']')) {
        do {
            RefCntPtr<IParameters> bag = ReadNested(parameter);
            if (!bag) {
                return {};
            }
            bags.push_back(std::move(bag));
        } while (Take(u','));
        if (!Take(u']')) {
            return {};
        }
    }
    return MakeRefCnt<ValParameter<Bags>>(std::move(bags));
}

DirectReader::Value DirectReader::ReadBagMap(const Record& parameter) {
    const Level level(*this);
    if (level.IsTooDeep() || !Take(u'{')) {
        return {};
    }
    BagMap bags;
    if (!Take(u'}')) {
        do {
            std::u16string_view key;
            if (!Take(u'"') || !TakePlainString(key) || !Take(u':')) {
                return {};
            }
            SkipBlanks();
            RefCntPtr<IParameters> bag;
            if (*m_at != u'n' || !TakeWord(u"null")) {
                bag = ReadNested(parameter);
                if (!bag) {
                    return {};
                }
            }
            const std::size_t size = bags.size();
            bags.emplace_hint(bags.end(), key, std::move(bag));
            if (bags.size() == size) {
                return {};
            }
        } while (Take(u','));
        if (!Take(u'}')) {
            return {};
        }
    }
    return MakeRefCnt<ValParameter<BagMap>>(std::move(bags));
}

// Keys stand as they are.
DirectReader::Value DirectReader::ReadMap(const Record& parameter) {
    const Level level(*this);
    if (level.IsTooDeep() || parameter.type != DirectType::String || !Take(u'{')) {
        return {};
    }
    std::map<TString, TString> texts;
    if (!Take(u'}')) {
        do {
            std::u16string_view key;
            TString text;
            if (!Take(u'"') || !TakePlainString(key) || !Take(u':') || !Take(u'"') || !TakeString(text)) {
                return {};
            }
            const std::size_t size = texts.size();
            texts.emplace_hint(texts.end(), key, std::move(text));
            if (texts.size() == size) {
                return {};
            }
        } while (Take(u','));
        if (!Take(u'}')) {
            return {};
        }
    }
    return MakeRefCnt<ValParameter<std::map<TString, TString>>>(std::move(texts));
}

template <class T>
bool DirectReader::TakeNumber(T& value) {
    std::conditional_t<std::is_same_v<T, double>, double, Int64> number = 0;
    const char16_t* behind = nullptr;
    if constexpr (std::is_same_v<T, double>) {
        behind = m_numbers.TakeReal(m_at, number);
    } else {
        behind = m_numbers.TakeInteger(m_at, number);
    }
    if (behind == nullptr || !Fits(number, value)) {
        return false;
    }
    m_at = behind;
    return true;
}

template <class T>
DirectReader::Value DirectReader::ReadNumber() {
    T value{};
    return TakeNumber(value) ? MakeRefCnt<ValParameter<T>>(value) : Value();
}

// A list whose opening bracket has been taken.
template <class T>
DirectReader::Value DirectReader::ReadNumbers() {
    std::vector<T> values;
    if (!Take(u']')) {
        SkipBlanks();
        values.reserve(CountElements(m_at, m_end));
        do {
            SkipBlanks();
            m_at = TakeUsualNumbers(m_at, m_begin, m_end, values);
            if (*m_at == u'[') {
                if (!ReadRun(values)) {
                    return {};
                }
                continue;
            }
            T value{};
            if (!TakeNumber(value)) {
                return {};
            }
            values.push_back(value);
        } while (Take(u','));
        if (!Take(u']')) {
            return {};
        }
    }
    return MakeRefCnt<ValParameter<std::vector<T>>>(std::move(values));
}

// A nested list: a run of two or three items, or the marker that a packed list ends with. Other sizes go the long way,
// as do runs that it refuses.
template <class T>
bool DirectReader::ReadRun(std::vector<T>& values) {
    using Step = typename std::conditional_t<std::is_integral_v<T>, std::make_signed<T>, std::type_identity<T>>::type;
    const Level level(*this);
    ++m_at;
    if (level.IsTooDeep() || Take(u']')) {
        return !level.IsTooDeep();
    }
    T first{};
    unsigned int length = 0;
    Step step{};
    SkipBlanks();
    if (!TakeNumber(first) || !Take(u',') || (SkipBlanks(), !TakeNumber(length))) {
        return false;
    }
    if (std::is_integral_v<T> && Take(u',') && (SkipBlanks(), !TakeNumber(step))) {
        return false;
    }
    if (!Take(u']')) {
        return false;
    }
    PresLayerLimits::ExpansionBudgetScope::Spend(length * sizeof(T));
    qvpreslayer::detail::AppendRun(values, first, length, step);
    return true;
}

bool DirectReader::TakeWord(std::u16string_view word) {
    if (static_cast<std::size_t>(m_end - m_at) < word.size() || std::u16string_view(m_at, word.size()) != word) {
        return false;
    }
    m_at += word.size();
    return true;
}

bool DirectReader::TakeBool(bool& value) {
    value = *m_at == u't';
    return TakeWord(value ? u"true" : u"false");
}

DirectReader::Value DirectReader::ReadBool() {
    bool value = false;
    return TakeBool(value) ? MakeRefCnt<ValParameter<bool>>(value) : Value();
}

DirectReader::Value DirectReader::ReadBools() {
    std::vector<bool> values;
    if (!Take(u']')) {
        do {
            SkipBlanks();
            bool value = false;
            if (!TakeBool(value)) {
                return {};
            }
            values.push_back(value);
        } while (Take(u','));
        if (!Take(u']')) {
            return {};
        }
    }
    return MakeRefCnt<ValParameter<std::vector<bool>>>(std::move(values));
}

DirectReader::Value DirectReader::ReadStrings() {
    std::vector<TString> values;
    if (!Take(u']')) {
        do {
            if (!Take(u'"') || !TakeString(values.emplace_back())) {
                return {};
            }
        } while (Take(u','));
        if (!Take(u']')) {
            return {};
        }
    }
    return MakeRefCnt<ValParameter<std::vector<TString>>>(std::move(values));
}

// Behind the opening quotation mark; behind the closing one afterwards.
bool DirectReader::TakeString(TString& text) {
    const StringInside inside = SkipString(m_at, m_end);
    if (!inside.closed) {
        return false;
    }
    const std::u16string_view raw(m_at, static_cast<std::size_t>(inside.end - m_at));
    if (inside.escaped) [[unlikely]] {
        text = Unescaped(raw);
    } else {
        text = raw;
    }
    m_at = inside.end + 1;
    return true;
}

// The same for a string without escapes.
bool DirectReader::TakePlainString(std::u16string_view& text) {
    const StringInside inside = SkipString(m_at, m_end);
    if (!inside.closed || inside.escaped) {
        return false;
    }
    text = {m_at, static_cast<std::size_t>(inside.end - m_at)};
    m_at = inside.end + 1;
    return true;
}
