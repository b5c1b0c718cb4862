#include "Comparison.h"

#include <type_traits>

#include "WeatherModel.h"

namespace weather {

namespace {

using Entries = std::map<int, RefCntPtr<IParameter>>;

// The walk over a bag that is not about text: one call for each parameter, upwards by identifier.
class EntryCollector final : public IParameterVisitor {
public:
    void VisitParameter(int id, const RefCntPtr<IParameter>& value) override { m_entries.emplace(id, value); }
    Entries Take() { return std::move(m_entries); }

private:
    Entries m_entries;
};

Entries EntriesOf(const IParameters& bag) {
    EntryCollector collector;
    bag.Accept(collector);
    return collector.Take();
}

// Single values as text, for the lines about differences.
template <class T>
TString TextOf(const T& value) {
    if constexpr (std::is_same_v<T, TString>) {
        return TString(L"\"") + value + TString(L"\"");
    } else {
        return ParameterTypeSerializer<T>::TypeToString(value);
    }
}

TString Below(const TString& path, const TString& name) { return path + TString(L"/") + name; }

}  // namespace

Comparison::Comparison(const IParameters& written, const IParameters& read) { CompareBags(TString(), written, read); }

void Comparison::CompareBags(const TString& path, const IParameters& written, const IParameters& read) {
    const ParametersRegistry& registry = ParametersRegistry::Get();
    Entries left = EntriesOf(read);
    for (const auto& [id, value] : EntriesOf(written)) {
        const TString place = Below(path, registry.GetName(id, true));
        const auto found = left.find(id);
        if (registry.IsUnserializable(id)) {
            if (found != left.end()) {
                Differ(place, L"came back although it is never written");
            }
        } else if (found == left.end()) {
            Differ(place, L"did not come back");
        } else {
            CompareParameters(place, *value, *found->second);
        }
        left.erase(id);
    }
    for (const auto& [id, value] : left) {
        Differ(Below(path, registry.GetName(id, true)), L"came back and was never there");
    }
}

// A host's own types join this list.
void Comparison::CompareParameters(const TString& path, const IParameter& written, const IParameter& read) {
    const bool known =
        CompareAsOneOf<int, unsigned int, Int64, UInt64, float, double, bool>(path, written, read) ||
        CompareAsOneOf<TString, FieldName, QualifiedName, PasswordString, TUUID>(path, written, read) ||
        CompareAsOneOf<MinutesDuration, CoreParameterID, DataValue>(path, written, read) ||
        CompareAsOneOf<FontWeight, TextAlign, StyleElement, AggType>(path, written, read) ||
        CompareAsOneOf<RefCntPtr<const IParameters>, RefCntPtr<const PresentationModel>>(path, written, read);
    if (!known) {
        Differ(path, L"is of a type that the comparison does not know");
    }
}

template <class... Types>
bool Comparison::CompareAsOneOf(const TString& path, const IParameter& written, const IParameter& read) {
    return ((CompareAs<Types>(path, written, read) || CompareAs<std::vector<Types>>(path, written, read) ||
             CompareAs<std::map<TString, Types>>(path, written, read)) ||
            ...);
}

template <class T>
bool Comparison::CompareAs(const TString& path, const IParameter& written, const IParameter& read) {
    const auto* writtenValue = dynamic_cast<const ValParameter<T>*>(&written);
    if (writtenValue == nullptr) {
        return false;
    }
    if (const auto* readValue = dynamic_cast<const ValParameter<T>*>(&read)) {
        Compare(path, writtenValue->GetValue(), readValue->GetValue());
    } else {
        Differ(path, L"came back as another type");
    }
    return true;
}

template <class T>
void Comparison::Compare(const TString& path, const T& written, const T& read) {
    ++m_valueCount;
    if (!(written == read)) {
        Differ(path, TextOf(written) + TString(L" came back as ") + TextOf(read));
    }
}

template <class T>
void Comparison::Compare(const TString& path, const std::vector<T>& written, const std::vector<T>& read) {
    if (written.size() != read.size()) {
        Differ(path, TString::number(UInt64{written.size()}) + TString(L" elements came back as ") +
                         TString::number(UInt64{read.size()}));
        return;
    }
    for (std::size_t i = 0; i < written.size(); ++i) {
        const T& writtenElement = written[i];
        const T& readElement = read[i];
        Compare(Below(path, TString::number(UInt64{i})), writtenElement, readElement);
    }
}

template <class T>
void Comparison::Compare(const TString& path, const std::map<TString, T>& written, const std::map<TString, T>& read) {
    for (const auto& [key, value] : written) {
        if (const auto found = read.find(key); found != read.end()) {
            Compare(Below(path, key), value, found->second);
        } else {
            Differ(Below(path, key), L"did not come back");
        }
    }
    for (const auto& [key, value] : read) {
        if (!written.contains(key)) {
            Differ(Below(path, key), L"came back and was never there");
        }
    }
}

void Comparison::Compare(const TString& path, const DataValue& written, const DataValue& read) {
    ++m_valueCount;
    const TString writtenText = TextOf(written);
    const TString readText = TextOf(read);
    if (!(written == read) || writtenText != readText) {
        Differ(path, writtenText + TString(L" came back as ") + readText);
    }
}

void Comparison::Compare(const TString& path, const PasswordString& /*written*/, const PasswordString& read) {
    ++m_valueCount;
    if (read.Reveal() != PasswordString::s_Mask) {
        Differ(path, L"came back as something else than the mask");
    }
}

void Comparison::Compare(const TString& path, const RefCntPtr<const IParameters>& written,
                         const RefCntPtr<const IParameters>& read) {
    if (written && read) {
        CompareBags(path, *written, *read);
    } else if (written || read) {
        Differ(path, written ? L"came back as null" : L"was null and came back as a bag");
    } else {
        ++m_valueCount;  // null on both sides
    }
}

void Comparison::Compare(const TString& path, const RefCntPtr<const PresentationModel>& written,
                         const RefCntPtr<const PresentationModel>& read) {
    const auto writtenModel = DynamicPtrCast<const WeatherModel>(written);
    const auto readModel = DynamicPtrCast<const WeatherModel>(read);
    if (writtenModel && readModel) {
        Compare(path, writtenModel->GetTable(), readModel->GetTable());
    } else {
        Differ(path, L"is not a weather model on both sides");
    }
}

void Comparison::Compare(const TString& path, const WeatherTable& written, const WeatherTable& read) {
    Compare(Below(path, L"day-numbers"), written.dayNumbers, read.dayNumbers);
    Compare(Below(path, L"precipitation"), written.precipitation, read.precipitation);
    Compare(Below(path, L"temp-max"), written.tempMax, read.tempMax);
    Compare(Below(path, L"temp-min"), written.tempMin, read.tempMin);
    Compare(Below(path, L"wind"), written.wind, read.wind);
    Compare(Below(path, L"conditions"), written.conditions, read.conditions);
}

void Comparison::Differ(const TString& path, const TString& how) {
    m_differences.push_back(path + TString(L": ") + how);
}

}  // namespace weather
