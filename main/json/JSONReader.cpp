#include "main/json/JSONReader.h"

#include <new>
#include <stdexcept>
#include <string>

#include <cxxabi.h>

#include <qvcore/CaseConversion.h>
#include <qvcore/TextNumbers.h>

#include <qvpreslayer/ParameterTypeTraits.h>
#include <qvpreslayer/PresLayerLimits.h>
#include <qvpreslayer/PresModelBuilderSupport.h>
#include <qvpreslayer/detail/LenientReads.h>

#include "main/json/BagFilling.h"
#include "main/json/JSONNumbers.h"

using qvpreslayer::detail::CountLenientReads;
using qvpreslayer::detail::DirectType;
using qvpreslayer::detail::LenientRead;

namespace {

const char* KindName(JSONKind kind) {
    constexpr const char* kNames[] = {"object", "array", "string", "bool", "integer", "real", "null"};
    return kNames[static_cast<std::size_t>(kind)];
}

TString IntegerText(std::u16string_view digits) { return TString::number(TravellingInteger(digits)); }

TString RealText(std::u16string_view digits) {
    double value = 0;
    ParseDouble(digits, value);
    return ParameterTypeTraits<double>::ToText(value);
}

bool IsWrapped(std::u16string_view digits) { return digits != u"-0" && IntegerText(digits).view() != digits; }

// Whether a real is another one when it arrives. Where it is too small for a double, that is one with a digit but 0.
bool LosesDigits(std::u16string_view digits) {
    double real = 0;
    double arrived = 0;
    ParseDouble(digits, real);
    if (real == 0) {
        return digits.find_first_of(u"123456789") < digits.find_first_of(u"eE");
    }
    return !ParseDouble(RealText(digits), arrived) || arrived != real;
}

// Whether a serializer has let something pass that it counts.
class Probe {
public:
    // Reads text and forgets the value; what fails is told when it is read in earnest.
    Probe(const IParameterSerializer& serializer, const TString& text) {
        try {
            serializer.FromString(text);
        } catch (const abi::__forced_unwind&) {
            throw;  // the thread is being cancelled
        } catch (const std::bad_alloc&) {
            throw;  // nobody knows what would have been let pass
        } catch (...) {
        }
    }

    bool Met(LenientRead read) const { return CountLenientReads(read) != m_before[static_cast<int>(read)]; }

private:
    std::uint64_t m_before[2] = {CountLenientReads(LenientRead::UnknownName),
                                 CountLenientReads(LenientRead::WrappedInteger)};
};

}  // namespace

JSONReader::JSONReader(const JSONDocument& document, const TString& namespaceName, bool shortNames, bool lookupFlag,
                       IReadingDiagnostics* diagnostics)
    : m_document(document),
      m_registry(ParametersRegistry::Get()),
      m_namespace(namespaceName),
      m_shortNames(shortNames),
      m_lookupFlag(lookupFlag),
      m_diagnostics(diagnostics) {}

JSONReader::~JSONReader() = default;

RefCntPtr<IParameters> JSONReader::Read(RefCntPtr<IParameters>* root) {
    RefCntPtr<IParameters> result = root != nullptr ? std::move(*root) : NewBag();
    if (m_document[0].kind != JSONKind::Object) {
        throw std::runtime_error(std::string("the JSON root is ") + KindName(m_document[0].kind) + ", not object");
    }
    const PresLayerLimits::ExpansionBudgetScope budget;
    try {
        Push(std::make_unique<BagFilling>(*this, result, 0));
        while (!m_fillings.empty()) {
            if (!m_fillings.back()->Step(*this)) {
                m_fillings.pop_back();
            }
        }
    } catch (QuorvelException& failure) {
        auto* located = dynamic_cast<TextLocated*>(&failure);
        if (located != nullptr && !located->GetLocation().IsKnown() && !m_fillings.empty()) {
            located->SetLocation(Locate());
        }
        throw;
    }
    ReportTextAfterValue();
    return result;
}

void JSONReader::ReportTextAfterValue() const {
    const std::size_t offset = m_document.FindTextAfterValue();
    if (IsWatched() && offset != m_document.Size()) {
        m_diagnostics->Report(Leniency::TextAfterValue, 0, m_document.LocateOffset(offset));
    }
}

void JSONReader::Report(Leniency leniency, int id, JSONDocument::Index node, const TString& step) const {
    TextLocation location = m_document.Locate(node);
    for (const auto& filling : m_fillings) {
        filling->AppendStep(location.path, m_document);
    }
    location.path += step;
    m_diagnostics->Report(leniency, id, location);
}

void JSONReader::ReportScalar(const ParameterInfo& info, JSONDocument::Index node, const TString& step) const {
    const bool told = ReportText(info.id, node, step);
    const bool isPlain = info.direct.type != DirectType::None && info.direct.type != DirectType::Text;
    if (told || isPlain || !info.serializer) {
        return;
    }
    const Probe probe(*info.serializer, ScalarText(node));
    if (probe.Met(LenientRead::UnknownName)) {
        Report(Leniency::UnknownName, info.id, node, step);
    } else if (probe.Met(LenientRead::WrappedInteger)) {
        Report(Leniency::WrappedInteger, info.id, node, step);
    }
}

void JSONReader::ReportTexts(int id, JSONDocument::Index array, const TString& step) const {
    std::size_t position = 0;
    for (auto element = array + 1; element != m_document.Next(array); element = m_document.Next(element), ++position) {
        TString inner = step;
        AppendPath(inner, position);
        ReportText(id, element, inner);
    }
}

// Answers whether there was something to tell.
bool JSONReader::ReportText(int id, JSONDocument::Index node, const TString& step) const {
    switch (m_document[node].kind) {
        case JSONKind::String:
        case JSONKind::Bool:
            return false;
        case JSONKind::Integer:
            if (!IsWrapped(m_document.Text(node))) {
                return false;
            }
            Report(Leniency::WrappedInteger, id, node, step);
            return true;
        case JSONKind::Real:
            if (!LosesDigits(m_document.Text(node))) {
                return false;
            }
            Report(Leniency::LostDigits, id, node, step);
            return true;
        default:
            Report(Leniency::IgnoredValue, id, node, step);
            return true;
    }
}

std::vector<JSONMember> JSONReader::Members(JSONDocument::Index object, int id) const {
    if (!IsWatched()) {
        return SortedMembers(m_document, object);
    }
    std::vector<JSONMember> overridden;
    std::vector<JSONMember> members = SortedMembers(m_document, object, &overridden);
    for (const JSONMember& member : overridden) {
        TString step;
        AppendPath(step, member.name);
        Report(Leniency::DuplicateMember, id, member.value - 1, step);
    }
    return members;
}

TString JSONReader::RegisteredName(std::u16string_view name) const {
    return m_shortNames ? TString(name) : CamelToDashed(name);
}

const ParameterInfo* JSONReader::FindDirectly(std::u16string_view name) {
    if (!m_camelNamesSought) {
        m_camelNamesSought = true;
        m_camelNames = m_shortNames ? nullptr : m_registry.FindNames(m_namespace, true);
    }
    // The option may change from one member to the next, when host code runs in between.
    if (m_camelNames == nullptr || !(m_lookupFlag || PresModelBuilderSupport::UseVerboseNames())) {
        return nullptr;
    }
    const int id = m_camelNames->FindCamel(name);
    return id == 0 ? nullptr : m_registry.FindInfo(id);
}

TString JSONReader::ScalarText(JSONDocument::Index node) const {
    switch (m_document[node].kind) {
        case JSONKind::String:
        case JSONKind::Bool:  // spelled as its serializer spells it
            return m_document.Text(node);
        case JSONKind::Integer:
            return IntegerText(m_document.Text(node));
        case JSONKind::Real:
            return RealText(m_document.Text(node));
        default:
            return {};
    }
}

std::vector<TString> JSONReader::ScalarTexts(JSONDocument::Index array) const {
    std::vector<TString> texts;
    texts.reserve(m_document.Next(array) - array - 1);
    for (auto element = array + 1; element != m_document.Next(array); element = m_document.Next(element)) {
        texts.push_back(ScalarText(element));
    }
    return texts;
}

std::size_t JSONReader::CountElements(JSONDocument::Index array) const {
    std::size_t count = 0;
    for (auto element = array + 1; element != m_document.Next(array); element = m_document.Next(element)) {
        ++count;
    }
    return count;
}

void JSONReader::RequireKind(JSONDocument::Index node, JSONKind kind) const {
    if (m_document[node].kind != kind) {
        throw std::runtime_error(std::string("a JSON value is ") + KindName(m_document[node].kind) + ", not " +
                                 KindName(kind));
    }
}

void JSONReader::Record(RefCntPtr<IStructureSerializer> serializer, RefCntPtr<IParameters> owner) {
    if (!m_recordedSerializer && serializer) {
        m_recordedSerializer = std::move(serializer);
        m_recordedBag = std::move(owner);
    }
}

void JSONReader::PrepareElement(int id, const RefCntPtr<IParameters>& elementBag) const {
    if (m_recordedSerializer) {
        m_recordedSerializer->PrepareElement(id, elementBag, m_recordedBag);
    }
}

TextLocation JSONReader::Locate() const {
    TextLocation location = m_document.Locate(m_fillings.back()->Current());
    for (const auto& filling : m_fillings) {
        filling->AppendStep(location.path, m_document);
    }
    return location;
}
