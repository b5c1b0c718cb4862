#include "main/json/direct/DirectReader.h"

#include <algorithm>
#include <limits>
#include <map>
#include <optional>
#include <type_traits>
#include <utility>

#include <cxxabi.h>

#include <qvpreslayer/BagStructureSerializer.h>
#include <qvpreslayer/PresLayerLimits.h>
#include <qvpreslayer/ValParameter.h>
#include <qvpreslayer/detail/PlainBags.h>
#include <qvpreslayer/detail/RunFilling.h>
#include <qvpreslayer/detail/StackGuard.h>

#include "main/json/JSONDocument.h"
#include "main/json/JSONStrings.h"
#include "main/json/direct/DirectDigits.h"
#include "main/json/direct/DirectNumberLists.h"

using qvpreslayer::detail::DirectType;
using qvpreslayer::detail::ParameterTable;
using qvpreslayer::detail::PlainBags;

namespace {

// Deeper texts go the long way, which keeps the stack small.
constexpr int kDirectLevels = 32;

constexpr std::size_t kKeptItems = 32768;

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

    bool IsTooDeep() const {
        const int depth = m_reader.m_depth;
        return depth > m_reader.m_maxDepth ||
               (depth > qvpreslayer::detail::kUnguardedLevels && qvpreslayer::detail::IsStackLow());
    }

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

bool DirectReader::Read(const TString& json, ParametersRegistry& registry, const TString& namespaceName,
                        NameForm form) {
    if (json.size() >= std::numeric_limits<std::uint32_t>::max() || !m_names.Prepare(registry, namespaceName, form)) {
        return false;
    }
    m_at = json.data();
    m_begin = m_at;
    m_end = m_at + json.size();
    m_numbers = DirectNumberReader(m_at, m_end);
    m_registry = &registry;
    m_depth = 0;
    m_maxDepth = std::min(kDirectLevels, PresLayerLimits::GetJSONDepth());
    m_items.clear();
    m_keys.clear();
    m_spent = 0;
    const PresLayerLimits::ExpansionBudgetScope budget;
    if (ReadText()) {
        return true;
    }
    PresLayerLimits::ExpansionBudgetScope::GiveBack(m_spent);  // the long way spends it again
    return false;
}

// What fails here fails again on the long way, which says why.
bool DirectReader::ReadText() {
    try {
        return Take(u'{') && ReadBag(nullptr, nullptr);
    } catch (const abi::__forced_unwind&) {
        throw;  // the thread is being cancelled
    } catch (...) {
        return false;
    }
}

bool DirectReader::MakeBag(IParameters& root) {
    if (PlainBags::Find(root) == nullptr) {
        return false;
    }
    m_item = 1;
    Fill(root, m_items[0].children);
    return true;
}

void DirectReader::Forget() noexcept {
    m_items.clear();
    m_keys.clear();
    if (m_items.capacity() > kKeptItems) {
        std::vector<Item>().swap(m_items);
    }
    if (m_keys.capacity() > kKeptItems) {
        std::vector<TString>().swap(m_keys);
    }
}

// Behind the opening brace. owner is what the object belongs to, record what the item is to name: elements name
// nothing.
bool DirectReader::ReadBag(const Record* owner, const Record* record) {
    const Level level(*this);
    if (level.IsTooDeep()) {
        return false;
    }
    const std::size_t position = m_items.size();
    m_items.push_back({record, {}, 0, 0, ItemKind::Bag});
    bool inOrder = true;
    std::uint32_t members = 0;
    if (!ReadMembers(owner, members, inOrder)) {
        return false;
    }
    m_items[position].children = members;
    return inOrder || !HasEqualMembers(position + 1, members);
}

// Clears inOrder when identifiers do not ascend.
bool DirectReader::ReadMembers(const Record* owner, std::uint32_t& members, bool& inOrder) {
    if (Take(u'}')) {
        return true;
    }
    const Record* previous = owner;
    do {
        if (!Take(u'"')) {
            return false;
        }
        const Record* const parameter = m_names.Take(m_at, m_end, previous, members == 0);
        if (parameter == nullptr || !Take(u':')) {
            return false;
        }
        SkipBlanks();
        if (!ReadMember(*parameter)) {
            return false;
        }
        inOrder = inOrder && (members == 0 || previous->id < parameter->id);
        previous = parameter;
        ++members;
    } while (Take(u','));
    return Take(u'}');
}

// The last of equal members counts, which is for the long way to see to.
bool DirectReader::HasEqualMembers(std::size_t firstItem, std::uint32_t members) const {
    std::vector<int> ids;
    ids.reserve(members);
    std::size_t inside = 0;  // items that belong to what is inside a member
    for (std::size_t item = firstItem; item != m_items.size(); ++item) {
        if (inside != 0) {
            --inside;
        } else {
            ids.push_back(m_items[item].record->id);
        }
        inside += m_items[item].children;
    }
    std::sort(ids.begin(), ids.end());
    return std::adjacent_find(ids.begin(), ids.end()) != ids.end();
}

bool DirectReader::ReadMember(const Record& parameter) {
    if (parameter.kind == PTC_None) {
        return false;
    }
    if (*m_at == u'n' && TakeWord(u"null")) {
        m_items.push_back({&parameter, {}, 0, 0, ItemKind::Null});
        return true;
    }
    Value value;
    switch (parameter.kind) {
        case PTC_Text:
        case PTC_Number:
        case PTC_Bool:
            value = ReadScalar(parameter);
            break;
        case PTC_List:
            value = ReadList(parameter);
            break;
        case PTC_Map:
            value = ReadMap(parameter);
            break;
        case PTC_Bag:
            return Take(u'{') && ReadBag(&parameter, &parameter);
        case PTC_Structure:
            return parameter.type == DirectType::Bags && Take(u'{') && ReadBag(&parameter, &parameter);
        case PTC_StructureList:
            return parameter.type == DirectType::Bags && ReadBags(parameter);
        case PTC_StructureMap:
            return parameter.type == DirectType::Bags && ReadBagMap(parameter);
        default:
            break;
    }
    if (!value) {
        return false;
    }
    m_items.push_back({&parameter, std::move(value), 0, 0, ItemKind::Value});
    return true;
}

bool DirectReader::ReadBags(const Record& parameter) {
    const Level level(*this);
    if (level.IsTooDeep() || !Take(u'[')) {
        return false;
    }
    const std::size_t position = m_items.size();
    m_items.push_back({&parameter, {}, 0, 0, ItemKind::Bags});
    if (Take(u']')) {
        return true;
    }
    std::uint32_t elements = 0;
    do {
        if (!Take(u'{') || !ReadBag(&parameter, nullptr)) {
            return false;
        }
        ++elements;
    } while (Take(u','));
    m_items[position].children = elements;
    return Take(u']');
}

// Keys stand as they are, and ascend, as they are written.
bool DirectReader::ReadBagMap(const Record& parameter) {
    const Level level(*this);
    if (level.IsTooDeep() || !Take(u'{')) {
        return false;
    }
    const std::size_t position = m_items.size();
    m_items.push_back({&parameter, {}, 0, static_cast<std::uint32_t>(m_keys.size()), ItemKind::BagMap});
    if (Take(u'}')) {
        return true;
    }
    std::u16string_view lastKey;
    std::uint32_t entries = 0;
    do {
        std::u16string_view key;
        if (!Take(u'"') || !TakePlainString(key) || (entries != 0 && key <= lastKey) || !Take(u':')) {
            return false;
        }
        lastKey = key;
        m_keys.emplace_back(key);
        SkipBlanks();
        if (*m_at == u'n' && TakeWord(u"null")) {
            m_items.push_back({nullptr, {}, 0, 0, ItemKind::Null});
        } else if (!Take(u'{') || !ReadBag(&parameter, nullptr)) {
            return false;
        }
        ++entries;
    } while (Take(u','));
    m_items[position].children = entries;
    return Take(u'}');
}

RefCntPtr<IParameters> DirectReader::MakeNested() {
    const std::uint32_t members = m_items[m_item++].children;
    RefCntPtr<IParameters> bag = m_registry->CreateParameters();
    Fill(*bag, members);
    return bag;
}

void DirectReader::Fill(IParameters& bag, std::uint32_t members) {
    ParameterTable* const table = PlainBags::Find(bag);
    if (table == nullptr) {
        FillInNameOrder(bag, members);
        return;
    }
    table->Reserve(members);
    for (; members != 0; --members) {
        if (m_items[m_item].kind == ItemKind::Null) {
            ++m_item;
            continue;
        }
        const int id = m_items[m_item].record->id;
        table->Set(id, MakeValue());
    }
}

// For a bag among plain ones that watches its values: they come in the order of their names, as on the long way.
void DirectReader::FillInNameOrder(IParameters& bag, std::uint32_t members) {
    std::vector<std::pair<std::u16string_view, std::size_t>> order;
    for (; members != 0; --members) {
        const ParameterInfo& info = *m_items[m_item].record->info;
        order.emplace_back(m_names.Form() == NameForm::Camel ? info.camelName : info.shortName, m_item);
        SkipItem();
    }
    std::sort(order.begin(), order.end());
    const std::size_t behind = m_item;
    for (const auto& [name, item] : order) {
        m_item = item;
        const Record& parameter = *m_items[item].record;
        if (m_items[item].kind == ItemKind::Bag) {
            FillNested(bag, parameter);
        } else if (m_items[item].kind != ItemKind::Null) {
            bag.SetParameter(parameter.id, MakeValue());
        }
    }
    m_item = behind;
}

// A nested bag stands in its place while it is being filled.
void DirectReader::FillNested(IParameters& bag, const Record& parameter) {
    const std::uint32_t members = m_items[m_item++].children;
    const RefCntPtr<IParameters> nested = m_registry->CreateParameters();
    bag.SetParameter(parameter.id, MakeRefCnt<BagParameter>(Bag(nested)));
    Fill(*nested, members);
    bag.SetParameter(parameter.id, parameter.kind == PTC_Bag ? MakeRefCnt<BagParameter>(Bag(nested)) : nullptr);
    if (parameter.kind == PTC_Structure) {
        bag.SetParameter(parameter.id, MakeRefCnt<BagParameter>(Bag(nested)));
    }
}

void DirectReader::SkipItem() {
    for (std::size_t left = 1; left != 0; --left) {
        left += m_items[m_item++].children;
    }
}

// A null entry takes a bag too, and drops it.
RefCntPtr<IParameters> DirectReader::MakeEntry() {
    if (m_items[m_item].kind != ItemKind::Null) {
        return MakeNested();
    }
    ++m_item;
    m_registry->CreateParameters();
    return {};
}

DirectReader::Value DirectReader::MakeValue() {
    Item& item = m_items[m_item];
    switch (item.kind) {
        case ItemKind::Bag:
            return MakeRefCnt<BagParameter>(Bag(MakeNested()));
        case ItemKind::Bags: {
            ++m_item;
            Bags bags;
            bags.reserve(item.children);
            for (std::uint32_t left = item.children; left != 0; --left) {
                bags.push_back(MakeNested());
            }
            return MakeRefCnt<ValParameter<Bags>>(std::move(bags));
        }
        case ItemKind::BagMap: {
            ++m_item;
            BagMap bags;
            for (std::uint32_t left = item.children; left != 0; --left) {
                TString& key = m_keys[item.firstKey + item.children - left];
                bags.emplace_hint(bags.end(), std::move(key), MakeEntry());
            }
            return MakeRefCnt<ValParameter<BagMap>>(std::move(bags));
        }
        default:
            ++m_item;
            return std::move(item.value);
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
    m_spent += length * sizeof(T);
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
