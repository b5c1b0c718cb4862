#include <qvpreslayer/detail/DirectTypes.h>

#include <qvcore/TextNumbers.h>

#include <qvpreslayer/detail/NumberText.h>

namespace qvpreslayer::detail {

IDirectSerializer::~IDirectSerializer() = default;

DirectInfo DirectInfoOf(const RefCntObject* serializer) noexcept {
    const auto* direct = dynamic_cast<const IDirectSerializer*>(serializer);
    return direct == nullptr ? DirectInfo{} : direct->GetDirectInfo();
}

template <class T>
std::u16string_view DirectDuration<T>::Text(const T& value, TextScratch& scratch) {
    const char16_t* end = WriteInteger(scratch.units, value.count());
    return {scratch.units, static_cast<std::size_t>(end - scratch.units)};
}

template <class T>
bool DirectDuration<T>::Read(std::u16string_view text, T& value) {
    ::Int64 ticks = 0;
    if (!ParseInt64(text, ticks)) {
        return false;
    }
    value = T(static_cast<typename T::rep>(ticks));
    return true;
}

template struct DirectDuration<HoursDuration>;
template struct DirectDuration<MinutesDuration>;
template struct DirectDuration<SecondsDuration>;
template struct DirectDuration<MillisecondsDuration>;
template struct DirectDuration<MicrosecondsDuration>;
template struct DirectDuration<NanosecondsDuration>;

static_assert(kLongestInteger <= TextScratch::kUnits && TUUID::kTextUnits <= TextScratch::kUnits);

std::u16string_view DirectTraits<TUUID>::Text(const TUUID& value, TextScratch& scratch) {
    value.WriteText(scratch.units);
    return {scratch.units, TUUID::kTextUnits};
}

bool DirectTraits<TUUID>::Read(std::u16string_view text, TUUID& value) { return TUUID::TryParse(text, value); }

std::u16string_view DirectTraits<FieldName>::Text(const FieldName& value, TextScratch&) { return value.GetFullValue(); }

bool DirectTraits<FieldName>::Read(std::u16string_view text, FieldName& value) {
    return FieldName::TryParseGlobal(text, value);
}

std::u16string_view DirectTraits<QualifiedName>::Text(const QualifiedName& value, TextScratch&) {
    return value.GetFullValue();
}

bool DirectTraits<QualifiedName>::Read(std::u16string_view text, QualifiedName& value) {
    return QualifiedName::TryParseGlobal(text, value);
}

}  // namespace qvpreslayer::detail
