#include "main/json/direct/DirectWriter.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <map>
#include <utility>
#include <vector>

#include <qvcore/CaseConversion.h>

#include <qvpreslayer/BagStructureSerializer.h>
#include <qvpreslayer/CoreNamespace.h>
#include <qvpreslayer/PresModelBuilderSupport.h>
#include <qvpreslayer/ValParameter.h>
#include <qvpreslayer/VisitParametersStructure.h>
#include <qvpreslayer/detail/BagLevel.h>
#include <qvpreslayer/detail/DirectTypes.h>

#include "main/json/direct/DirectNumbers.h"
#include "main/json/direct/EscapedCopy.h"

using qvpreslayer::detail::BagLevel;
using qvpreslayer::detail::DirectType;
using qvpreslayer::detail::Exactly;
using qvpreslayer::detail::NameForm;
using qvpreslayer::detail::ParameterTable;

namespace {

// Deeper bags go the long way, which keeps the stack small.
constexpr int kDirectLevels = 32;

// Room around the text of a name: the comma, two quotation marks, the colon, a blank, a bracket.
constexpr std::size_t kAroundName = 8 + kCopySlack;

// Room for the beginning of a member that records hold, in both steps.
constexpr std::size_t kStartRoom =
    qvpreslayer::detail::DirectRecord::kFirstUnits + qvpreslayer::detail::DirectRecord::kOtherUnits;

// Texts that most are.
constexpr std::size_t kShortUnits = 64;

// Room for the values that most members have.
constexpr std::size_t kUsualUnits = kLongestNumber<double>;

// Requires: value is exactly a holder of T.
template <class T>
const T& Held(const IParameter& value) {
    return static_cast<const ValParameter<T>&>(value).GetValue();
}

// Stands where no record is known: that of no parameter, and another one behind it, as behind all.
constexpr qvpreslayer::detail::DirectRecord kNoRecord[2];

// Apart from plain lists, whose loop is better off alone.
template <class T>
[[gnu::noinline]] void WritePacked(TextSink& sink, const std::vector<T>& values) {
    PackedElements<T> elements(sink);
    qvpreslayer::detail::RunPieces<T, PackedElements<T>> pieces(elements);
    qvpreslayer::detail::ForEachRun(values, pieces);
    pieces.WriteMarker();
}

using Bags = BagStructureSerializer::Bags;
using BagMap = BagStructureSerializer::BagMap;

}  // namespace

[[gnu::always_inline]] inline void DirectWriter::Begin(TString& out, const ParametersRegistry& registry,
                                                       const PresModelBuilderSupport::TextOptions& options,
                                                       const Captures& captures) noexcept {
    m_sink.Begin(out);
    const NameForm form = options.useVerboseNames ? NameForm::Camel : NameForm::Short;
    if (m_generation != registry.GetGeneration() || m_form != form) [[unlikely]] {
        m_registry = &registry;
        m_generation = registry.GetGeneration();
        m_form = form;
        m_first = kNoRecord;
    }
    m_captures = captures;
    m_options = options;
    m_optionsMayDiffer = false;
    m_allHandedOver = false;
    m_guesses = !registry.HasOverlaps() && !registry.HasUnserializable();
    m_depth = 0;
    m_plainBags = {};
}

void DirectWriter::Write(TString& out, const ParametersRegistry& registry,
                         const PresModelBuilderSupport::TextOptions& options, const Captures& captures,
                         const RefCntPtr<const IParameters>& bag) {
    Begin(out, registry, options, captures);
    m_sink.Put(u'{');
    if (const Table* const entries = FindNested(bag)) {
        WriteMembers(*bag.Get(), *entries);
    } else {
        HandOverAll(bag);
    }
    m_sink.Put(u'}');
    m_sink.Flush();
}

// The entries of a bag that can be written here; null for one that cannot.
const ParameterTable* DirectWriter::FindNested(const Bag& bag) {
    return bag && m_depth < kDirectLevels ? m_plainBags.Find(*bag) : nullptr;
}

// Copies the first size units of a record's beginning, but for those that are skipped: the comma of the first member.
[[gnu::always_inline]] inline char16_t* DirectWriter::CopyStart(char16_t* to, const Record& parameter,
                                                                std::size_t skipped, std::size_t size) {
    const char16_t* const from = parameter.start + skipped;
    std::memcpy(to, from, Record::kFirstUnits * sizeof(char16_t));
    if (size > Record::kFirstUnits) {
        std::memcpy(to + Record::kFirstUnits, from + Record::kFirstUnits, Record::kOtherUnits * sizeof(char16_t));
    }
    return to + size - skipped;
}

[[gnu::always_inline]] inline char16_t* DirectWriter::StartMember(const Record& parameter, bool first,
                                                                  std::size_t room) {
    if (parameter.nameSize > Record::kNameUnits) [[unlikely]] {
        return StartLongMember(parameter, first, room);
    }
    return CopyStart(m_sink.Room(kStartRoom + room), parameter, first ? 1 : 0, parameter.nameSize + 4u);
}

[[gnu::always_inline]] inline char16_t* DirectWriter::StartSingle(const Record& parameter, bool first,
                                                                  std::size_t room) {
    char16_t* const to = StartMember(parameter, first, room);
    *to = u' ';
    return to + 1;
}

template <class T>
[[gnu::always_inline]] inline bool DirectWriter::WriteNumber(const Record& parameter, const IParameter& value,
                                                             bool first) {
    const T* content = Exactly<T>(value);
    if (content == nullptr) {
        return false;
    }
    m_sink.Accept(WriteNumberText(StartSingle(parameter, first, kLongestNumber<T>), *content));
    return true;
}

[[gnu::always_inline]] inline bool DirectWriter::WriteMember(const Record& parameter, const IParameter& value,
                                                             bool first) {
    if (parameter.nameSize == 0) {
        return false;
    }
    switch (parameter.single) {
        case DirectType::Int:
            return WriteNumber<int>(parameter, value, first);
        case DirectType::UInt:
            return WriteNumber<unsigned int>(parameter, value, first);
        case DirectType::Int64:
            return WriteNumber<Int64>(parameter, value, first);
        case DirectType::UInt64:
            return WriteNumber<UInt64>(parameter, value, first);
        case DirectType::Float:
            return WriteNumber<float>(parameter, value, first);
        case DirectType::Double:
            return WriteNumber<double>(parameter, value, first);
        case DirectType::Bool:
            return WriteNumber<bool>(parameter, value, first);
        case DirectType::String: {
            const TString* text = Exactly<TString>(value);
            return text != nullptr && WriteText(parameter, *text, first);
        }
        case DirectType::Text: {
            const std::u16string_view text = parameter.text->valueText(value, m_scratch);
            return text.data() != nullptr && WriteText(parameter, text, first);
        }
        default:
            return WriteOther(parameter, value, first);
    }
}

// A text between quotation marks, in room for the values that most members have; copy is for texts without escapes.
template <class Copy>
[[gnu::always_inline]] inline void DirectWriter::PutText(char16_t* to, std::u16string_view text, const Copy& copy) {
    char16_t* const end = text.size() <= kShortUnits ? copy(to, text) : nullptr;
    if (end != nullptr) [[likely]] {
        m_sink.Accept(end);
    } else {
        PutLongText(to, text);
    }
}

// The same for long texts, and those that need escapes.
[[gnu::noinline]] void DirectWriter::PutLongText(char16_t* to, std::u16string_view text) {
    m_sink.Accept(to);
    PutQuoted(m_sink, m_sink.Room(text.size() + 2 * kCopySlack), text);
}

// Writes the entries from one on that are what most are, each followed in the records by the next: values that are
// exactly of their type, under names that records hold. Answers behind the last of them. Requires: m_guesses.
//
// Nothing of the host's is called meanwhile, so that all that matters can stay in registers.
[[gnu::always_inline]] inline const DirectWriter::Table::Entry* DirectWriter::WriteUsual(const Table::Entry* entry,
                                                                                         const Table::Entry* end,
                                                                                         Members& members) {
    const Record* record = members.guess;
    std::size_t skipped = members.first ? 1 : 0;  // the comma
    for (; entry != end; ++entry, ++record, skipped = 0) {
        const IParameter& value = *entry->value.Get();
        if (record->id != entry->id || record->functions != qvpreslayer::detail::FunctionsOf(value)) {
            break;
        }
        char16_t* to = CopyStart(m_sink.Room(kStartRoom + kUsualUnits), *record, skipped, record->nameSize + 5u);
        switch (record->single) {
            case DirectType::Int:
                m_sink.Accept(WriteNumberText(to, Held<int>(value)));
                continue;
            case DirectType::Double:
                m_sink.Accept(WriteNumberText(to, Held<double>(value)));
                continue;
            case DirectType::Bool:
                m_sink.Accept(WriteNumberText(to, Held<bool>(value)));
                continue;
            case DirectType::String:
                PutText(to, Held<TString>(value).view(), CopyQuotedBlocks);
                continue;
            default:
                break;
        }
        const std::u16string_view text = record->text->valueText(value, m_scratch);
        if (record->text->isPlain && text.size() - 1 < kUsualUnits - kCopySlack) [[likely]] {
            *to = u'"';
            to = CopyPlain(to + 1, text);
            *to = u'"';
            m_sink.Accept(to + 1);
        } else if (text.data() == nullptr) [[unlikely]] {
            break;  // the long way tells
        } else {
            PutText(to, text, CopyQuoted);
        }
    }
    members = {skipped != 0, record};
    return entry;
}

// Most bags begin with the same parameter as the one before, and go on in the order in which records stand.
[[gnu::always_inline]] inline void DirectWriter::WriteEntry(const IParameters& bag, int id, const Value& value,
                                                            Members& members) {
    const Record* record = members.guess;
    if (!m_guesses || record->id != id) [[unlikely]] {
        if (m_registry->HasUnserializable() && m_registry->IsUnserializable(id)) {
            return;
        }
        record = FindRecord(id);
        m_first = members.guess == m_first ? record : m_first;
    }
    members.guess = record + 1;
    if (WriteMember(*record, *value.Get(), members.first)) [[likely]] {
        members.first = false;
    } else {
        members.first = HandOver(bag, id, value, members.first);
    }
}

// Requires: entries are those of bag, as FindNested found them.
void DirectWriter::WriteMembers(const IParameters& bag, const Table& entries) {
    const BagLevel level;
    ++m_depth;
    Members members{true, m_first};
    const Table::Entry* const begin = entries.Array().data();
    const Table::Entry* const end = begin + entries.Array().size();
    const Table::Entry* const written = m_guesses ? WriteUsual(begin, end, members) : begin;
    if (written != end || entries.IsTree()) {
        WriteOthers(bag, entries, static_cast<std::size_t>(written - begin), members);
    }
    --m_depth;
}

// The entries from one on, of which the first is not usual.
[[gnu::noinline]] void DirectWriter::WriteOthers(const IParameters& bag, const Table& entries, std::size_t from,
                                                 Members& members) {
    for (std::size_t i = from; i < entries.Array().size(); ++i) {  // host code that is called on the way may change it
        const Table::Entry& entry = entries.Array()[i];
        WriteEntry(bag, entry.id, entry.value, members);
        if (m_guesses) [[likely]] {
            const Table::Entry* const begin = entries.Array().data();
            const std::size_t next = std::min(i + 1, entries.Array().size());
            i = static_cast<std::size_t>(WriteUsual(begin + next, begin + entries.Array().size(), members) - begin) - 1;
        }
    }
    if (entries.IsTree()) [[unlikely]] {
        entries.ForEach([&](int id, const Value& value) { WriteEntry(bag, id, value, members); });
    }
}

// That of no parameter where the identifier, or its record, is not known, or all is for the visitor to spell.
const DirectWriter::Record* DirectWriter::FindRecord(int id) const {
    const ParameterInfo* const info = m_allHandedOver ? nullptr : m_registry->FindInfo(id);
    const Record* const record = info == nullptr ? nullptr : info->direct.Record(m_form);
    return record == nullptr ? kNoRecord : record;
}

bool DirectWriter::WriteOther(const Record& parameter, const IParameter& value, bool first) {
    switch (parameter.kind) {
        case PTC_List:
            return WriteList(parameter, value, first);
        case PTC_Map:
            return WriteMap(parameter, value, first);
        case PTC_Bag:
            return WriteBag(parameter, value, first);
        default:
            break;
    }
    if (parameter.type != DirectType::Bags) {
        return false;
    }
    switch (parameter.kind) {
        case PTC_Structure:
            return WriteBag(parameter, value, first);
        case PTC_StructureList:
            return WriteBags(parameter, value, first);
        case PTC_StructureMap:
            return WriteBagMap(parameter, value, first);
        default:
            return false;
    }
}

// Spells what comes next behind what the sink holds.
BuildParameterStrings& DirectWriter::Visitor() {
    if (!m_visitor) {
        TString& out = m_sink.Text();
        const std::size_t size = out.size();
        m_visitor.emplace(out, JSONSerializer::Compact, m_captures.enabled, m_captures.nested,
                          !m_options.useVerboseNames);
        out.resize(size);  // the opening brace stands at the start already
    }
    return *m_visitor;
}

// Answers whether the next member is the first.
bool DirectWriter::HandOver(const IParameters& bag, int id, const Value& value, bool first) {
    m_sink.Flush();
    BuildParameterStrings& visitor = Visitor();
    if (!m_allHandedOver) {
        visitor.ContinueMembers(first);
    }
    VisitStructuredParameters(*m_registry, RefCntPtr<const IParameters>(&bag), visitor, m_options.useVerboseNames,
                              m_options.compressArrays)
        .VisitParameter(id, value);
    m_sink.Reload();
    m_optionsMayDiffer = true;
    m_allHandedOver = m_allHandedOver || !visitor.IsBalanced();
    m_guesses = m_guesses && !m_allHandedOver && !m_registry->HasUnserializable();  // it may have marked some
    return visitor.IsFirstMember();
}

void DirectWriter::HandOverAll(const Bag& bag) {
    m_sink.Flush();
    VisitStructuredParameters(*m_registry, bag, Visitor(), m_options.useVerboseNames, m_options.compressArrays).Walk();
    m_sink.Reload();
}

// Names that records do not hold.
char16_t* DirectWriter::StartLongMember(const Record& parameter, bool first, std::size_t room) {
    const TString& name = m_options.useVerboseNames ? parameter.info->camelName : parameter.info->shortName;
    char16_t* to = m_sink.Room(name.size() + kAroundName + room);
    if (!first) {
        *to++ = u',';
    }
    if (m_options.useVerboseNames) {
        *to++ = u'"';
        to = CopyText(to, name);
        *to++ = u'"';
    } else if (char16_t* const end = CopyQuoted(to, name); end != nullptr) {
        to = end;
    } else {
        *to++ = u'"';
        m_sink.Accept(to);
        CopyEscaped(m_sink, name);
        to = m_sink.Room(kAroundName + room);
        *to++ = u'"';
    }
    *to++ = u':';
    return to;
}

bool DirectWriter::WriteText(const Record& parameter, std::u16string_view text, bool first) {
    PutQuoted(m_sink, StartSingle(parameter, first, text.size() + 2 * kCopySlack), text);
    return true;
}

bool DirectWriter::WriteList(const Record& parameter, const IParameter& value, bool first) {
    switch (parameter.type) {
        case DirectType::Int:
            return WriteNumbers<int>(parameter, value, first);
        case DirectType::UInt:
            return WriteNumbers<unsigned int>(parameter, value, first);
        case DirectType::Int64:
            return WriteNumbers<Int64>(parameter, value, first);
        case DirectType::UInt64:
            return WriteNumbers<UInt64>(parameter, value, first);
        case DirectType::Float:
            return WriteNumbers<float>(parameter, value, first);
        case DirectType::Double:
            return WriteNumbers<double>(parameter, value, first);
        case DirectType::Bool: {
            const auto* values = Exactly<std::vector<bool>>(value);
            if (values == nullptr) {
                return false;
            }
            char16_t* to = StartMember(parameter, first, 0);
            *to++ = u'[';
            m_sink.Accept(to);
            for (std::size_t i = 0; i < values->size(); ++i) {
                to = m_sink.Room(1 + kLongestNumber<bool>);
                if (i != 0) {
                    *to++ = u',';
                }
                m_sink.Accept(WriteNumberText<bool>(to, (*values)[i]));
            }
            m_sink.Put(u']');
            return true;
        }
        case DirectType::String:
        case DirectType::Text:
            return WriteTexts(parameter, value, first);
        default:
            return false;
    }
}

// The tag of nested lists must be registered as a list of bare items with a name, as the core namespace has it.
bool DirectWriter::CanPack(int tag) const {
    const ParameterInfo* info = m_registry->FindInfo(tag);
    return info != nullptr && info->kind == PTC_List && info->serializer &&
           !(m_options.useVerboseNames ? info->verboseName : info->shortName).empty() &&
           info->serializer->GetType() == PTC_Number;
}

template <class T>
bool DirectWriter::WriteNumbers(const Record& parameter, const IParameter& value, bool first) {
    constexpr CoreParameterID kTag = std::is_floating_point_v<T> ? CoreParameterID::FloatRLE
                                     : std::is_signed_v<T>       ? CoreParameterID::IntRLE
                                                                 : CoreParameterID::UIntRLE;
    const auto* values = Exactly<std::vector<T>>(value);
    if (values == nullptr || (m_options.compressArrays && !CanPack(static_cast<int>(kTag)))) {
        return false;
    }
    char16_t* to = StartMember(parameter, first, 0);
    *to++ = u'[';
    m_sink.Accept(to);
    if (m_options.compressArrays) {
        WritePacked(m_sink, *values);
    } else {
        NumberList<T>(m_sink).Write(*values);
    }
    m_sink.Put(u']');
    return true;
}

bool DirectWriter::WriteTexts(const Record& parameter, const IParameter& value, bool first) {
    const auto* texts = parameter.type == DirectType::String ? Exactly<std::vector<TString>>(value) : nullptr;
    const std::size_t size = texts != nullptr                     ? texts->size()
                             : parameter.type == DirectType::Text ? parameter.text->listSize(value)
                                                                  : qvpreslayer::detail::DirectTextType::kNoList;
    if (size == qvpreslayer::detail::DirectTextType::kNoList) {
        return false;
    }
    const auto textOf = [&](std::size_t i) {
        return texts != nullptr ? (*texts)[i].view() : parameter.text->elementText(value, i, m_scratch);
    };
    const std::size_t start = m_sink.Size();
    char16_t* to = StartMember(parameter, first, 0);
    *to++ = u'[';
    m_sink.Accept(to);
    for (std::size_t i = 0; i < size; ++i) {
        const std::u16string_view text = textOf(i);
        if (text.data() == nullptr) {
            m_sink.Shrink(start);  // an element without a text fails on the long way
            return false;
        }
        to = m_sink.Room(text.size() + 1 + 2 * kCopySlack);
        if (i != 0) {
            *to++ = u',';
        }
        PutQuoted(m_sink, to, text);
    }
    m_sink.Put(u']');
    return true;
}

// Keys are names: in camel case where those are, and then not escaped.
void DirectWriter::PutKey(const TString& key, bool first) {
    char16_t* to = m_sink.Room(key.size() + kAroundName + kCopySlack);
    if (!first) {
        *to++ = u',';
    }
    if (!m_options.useVerboseNames) {
        PutQuoted(m_sink, to, key);
        m_sink.Put(u':');
        return;
    }
    *to++ = u'"';
    m_sink.Accept(CopyUnits(WriteCamel(to, key), u"\":"));
}

bool DirectWriter::WriteMap(const Record& parameter, const IParameter& value, bool first) {
    switch (parameter.type) {
        case DirectType::Int:
            return WriteEntries<int>(parameter, value, first);
        case DirectType::UInt:
            return WriteEntries<unsigned int>(parameter, value, first);
        case DirectType::Int64:
            return WriteEntries<Int64>(parameter, value, first);
        case DirectType::UInt64:
            return WriteEntries<UInt64>(parameter, value, first);
        case DirectType::Float:
            return WriteEntries<float>(parameter, value, first);
        case DirectType::Double:
            return WriteEntries<double>(parameter, value, first);
        case DirectType::Bool:
            return WriteEntries<bool>(parameter, value, first);
        case DirectType::String:
            return WriteEntries<TString>(parameter, value, first);
        default:
            return false;
    }
}

template <class T>
bool DirectWriter::WriteEntries(const Record& parameter, const IParameter& value, bool first) {
    const auto* entries = Exactly<std::map<TString, T>>(value);
    if (entries == nullptr) {
        return false;
    }
    char16_t* to = StartMember(parameter, first, 0);
    *to++ = u'{';
    m_sink.Accept(to);
    bool firstEntry = true;
    for (const auto& [key, content] : *entries) {
        PutKey(key, std::exchange(firstEntry, false));
        if constexpr (std::is_same_v<T, TString>) {
            to = m_sink.Room(content.size() + 2 * kCopySlack);
            PutQuoted(m_sink, to, content);
        } else {
            to = m_sink.Room(kLongestNumber<T>);
            m_sink.Accept(WriteNumberText(to, content));
        }
    }
    m_sink.Put(u'}');
    return true;
}

void DirectWriter::WriteNested(const IParameters& bag, const Table& entries) {
    m_sink.Put(u'{');
    WriteMembers(bag, entries);
    m_sink.Put(u'}');
}

// Nested bags, other than structures, are written under the options in force where they begin. Nobody but host code
// changes them meanwhile.
bool DirectWriter::HaveOptionsChanged() const {
    if (!m_optionsMayDiffer) {
        return false;
    }
    const PresModelBuilderSupport::TextOptions options = PresModelBuilderSupport::GetTextOptions();
    return options.useVerboseNames != m_options.useVerboseNames || options.compressArrays != m_options.compressArrays;
}

bool DirectWriter::WriteBag(const Record& parameter, const IParameter& value, bool first) {
    const Bag* bag = Exactly<Bag>(value);
    const Table* const entries = bag == nullptr ? nullptr : FindNested(*bag);
    if (entries == nullptr || (parameter.kind == PTC_Bag && HaveOptionsChanged())) {
        return false;
    }
    m_sink.Accept(StartMember(parameter, first, 0));
    WriteNested(**bag, *entries);
    return true;
}

bool DirectWriter::WriteBags(const Record& parameter, const IParameter& value, bool first) {
    const auto* bags = Exactly<Bags>(value);
    const auto canNest = [this](const Bag& bag) { return FindNested(bag) != nullptr; };
    if (bags == nullptr || !std::all_of(bags->begin(), bags->end(), canNest)) {
        return false;
    }
    char16_t* to = StartMember(parameter, first, 0);
    *to++ = u'[';
    m_sink.Accept(to);
    bool firstBag = true;
    for (const Bag& bag : *bags) {
        to = m_sink.Room(1);
        *to = u',';
        m_sink.Accept(to + (std::exchange(firstBag, false) ? 0 : 1));
        WriteNested(*bag, *FindNested(bag));
    }
    m_sink.Put(u']');
    return true;
}

// The keys of structures are not names: they stay as they are, null entries excepted.
bool DirectWriter::WriteBagMap(const Record& parameter, const IParameter& value, bool first) {
    const auto* bags = Exactly<BagMap>(value);
    const auto canNest = [this](const auto& entry) { return !entry.second || FindNested(entry.second) != nullptr; };
    if (bags == nullptr || !std::all_of(bags->begin(), bags->end(), canNest)) {
        return false;
    }
    char16_t* to = StartMember(parameter, first, 0);
    *to++ = u'{';
    m_sink.Accept(to);
    bool firstEntry = true;
    for (const auto& [key, bag] : *bags) {
        if (!bag) {
            PutKey(key, std::exchange(firstEntry, false));
            to = m_sink.Room(4);
            m_sink.Accept(CopyUnits(to, u"null"));
            continue;
        }
        to = m_sink.Room(key.size() + kAroundName + kCopySlack);
        if (!std::exchange(firstEntry, false)) {
            *to++ = u',';
        }
        PutQuoted(m_sink, to, key);
        m_sink.Put(u':');
        WriteNested(*bag, *FindNested(bag));
    }
    m_sink.Put(u'}');
    return true;
}
