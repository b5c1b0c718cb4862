#include "main/json/direct/DirectNames.h"

#include <functional>

using qvpreslayer::detail::INameIndex;

constexpr DirectNames::Record DirectNames::s_none;

bool DirectNames::PrepareAnew(const ParametersRegistry& registry, const TString& namespaceName, NameForm form) {
    m_generation = 0;
    m_names = registry.FindNames(namespaceName, false);
    if (m_names == nullptr) {
        return false;
    }
    m_namespace = namespaceName;
    m_form = form;
    m_guesses = !registry.HasOverlaps();
    m_records = m_names->GetRecords(form);
    m_successors.fill({});
    m_registry = &registry;
    m_generation = registry.GetGeneration();
    return true;
}

const DirectNames::Record* DirectNames::Find(const char16_t*& at, const Record* previous, bool first) {
    Successor& successor = const_cast<Successor&>(Remembered(previous, first));
    if (!first && successor.next != nullptr && successor.previous == previous && !successor.first) {
        if (const char16_t* const behind = Skip(*successor.next, at)) {
            at = behind;
            return successor.next;
        }
    }
    const Record* const found = Seek(at);
    if (found != nullptr && m_guesses && IsOwn(found)) {
        successor = {previous, found, first};
    }
    return found;
}

const DirectNames::Record* DirectNames::Seek(const char16_t*& at) const {
    const char16_t* const behind = SkipPlainUnits(at, m_end);
    if (behind == m_end || *behind != u'"') {
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

const DirectNames::Record* DirectNames::Find(std::u16string_view name) const {
    const TString* space = &m_namespace;
    for (const INameIndex* names = m_names; names != nullptr;) {
        const int id = m_form == NameForm::Camel ? names->FindCamel(name) : names->FindShort(name);
        if (id != 0) {
            const ParameterInfo* const info = m_registry->FindInfo(id);
            return info == nullptr ? nullptr : info->direct.Record(m_form);
        }
        space = m_registry->FindFallback(*space);
        names = space == nullptr ? nullptr : m_registry->FindNames(*space, false);
    }
    return nullptr;
}
