#include "main/json/direct/DirectNames.h"

#include <functional>

#include "main/json/PlainUnits.h"

using qvpreslayer::detail::INameIndex;

namespace {

// Whether the text at at begins with size units of name. Compares in blocks of eight units: both go on to the end of
// the last one.
bool StartsWith(const char16_t* at, const char16_t* name, std::size_t size) {
#if defined(__SSE2__)
    for (std::size_t i = 0; i < size; i += 8) {
        const __m128i left = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + i));
        const __m128i right = _mm_loadu_si128(reinterpret_cast<const __m128i*>(name + i));
        const auto differ = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi16(left, right))) ^ 0xFFFFu;
        const unsigned looked = size - i >= 8 ? 0xFFFFu : (1u << (2 * (size - i))) - 1;
        if ((differ & looked) != 0) {
            return false;
        }
    }
    return true;
#else
    return std::u16string_view(at, size) == std::u16string_view(name, size);
#endif
}

// What StartsWith may look at behind a name.
constexpr std::size_t kLookahead = 9;

}  // namespace

bool DirectNames::Prepare(const ParametersRegistry& registry, const TString& namespaceName, NameForm form) {
    if (m_registry == &registry && m_generation == registry.GetGeneration() && m_form == form &&
        m_namespace == namespaceName) {
        return true;
    }
    m_registry = nullptr;
    m_names = registry.FindNames(namespaceName, false);
    if (m_names == nullptr) {
        return false;
    }
    m_namespace = namespaceName;
    m_generation = registry.GetGeneration();
    m_form = form;
    m_guesses = !registry.HasOverlaps();
    m_records = m_names->GetRecords();
    m_successors.fill({});
    m_registry = &registry;
    return true;
}

const DirectNames::Record* DirectNames::Take(const char16_t*& at, const char16_t* end, const Record* previous,
                                             bool first) {
    if (!first && IsOwn(previous) && StandsAt(previous[1], at, end)) [[likely]] {
        return previous + 1;
    }
    Successor& successor = Remembered(previous, first);
    if (successor.next != nullptr && successor.previous == previous && successor.first == first &&
        StandsAt(*successor.next, at, end)) {
        return successor.next;
    }
    const Record* const found = Seek(at, end);
    if (found != nullptr && m_guesses && IsOwn(found)) {
        successor = {previous, found, first};
    }
    return found;
}

const DirectNames::Record* DirectNames::Seek(const char16_t*& at, const char16_t* end) const {
    const char16_t* const behind = SkipPlainUnits(at, end);
    if (behind == end || *behind != u'"') {
        return nullptr;
    }
    const Record* const found = Find({at, static_cast<std::size_t>(behind - at)});
    at = behind + 1;
    return found;
}

bool DirectNames::IsOwn(const Record* record) const {
    const std::less<const Record*> isBefore;
    return !isBefore(record, m_records.data()) && isBefore(record, m_records.data() + m_records.size());
}

// Only parameters of this namespace, which it finds by their names; the record behind the last one never stands.
bool DirectNames::StandsAt(const Record& record, const char16_t*& at, const char16_t* end) const {
    if (!record.isFoundByNames || !m_guesses) {
        return false;
    }
    const bool isShort = m_form == NameForm::Short;
    const std::size_t size = isShort ? record.info->shortName.size() : record.nameSize;
    if (size - 1 >= Record::kNameUnits || static_cast<std::size_t>(end - at) < size + kLookahead || at[size] != u'"' ||
        !StartsWith(at, isShort ? record.info->shortName.data() : record.name, size)) {
        return false;
    }
    at += size + 1;
    return true;
}

const DirectNames::Record* DirectNames::Find(std::u16string_view name) const {
    const TString* space = &m_namespace;
    for (const INameIndex* names = m_names; names != nullptr;) {
        const int id = m_form == NameForm::Camel ? names->FindCamel(name) : names->FindShort(name);
        if (id != 0) {
            const ParameterInfo* const info = m_registry->FindInfo(id);
            return info == nullptr ? nullptr : info->direct.record;
        }
        space = m_registry->FindFallback(*space);
        names = space == nullptr ? nullptr : m_registry->FindNames(*space, false);
    }
    return nullptr;
}

DirectNames::Successor& DirectNames::Remembered(const Record* previous, bool first) {
    const std::uint32_t id = previous == nullptr ? 0 : static_cast<std::uint32_t>(previous->id);
    return m_successors[(id * 2 + (first ? 1 : 0)) % m_successors.size()];
}
