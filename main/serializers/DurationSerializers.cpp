#include <qvpreslayer/ParameterTypeSerializer.h>
#include <qvpreslayer/detail/LenientReads.h>

#include <qvsys/QuorvelException.h>

#include <qvcore/TextNumbers.h>

namespace qvpreslayer::detail {

template <class T>
TString DurationTraits<T>::ToText(const T& value) {
    return TString::number(value.count());
}

template <class T>
T DurationTraits<T>::FromText(const TString& text) {
    Int64 ticks = 0;
    if (!ParseInt64(text.view(), ticks)) {
        throw QuorvelException(u"Data serialization error");
    }
    // Narrower counts keep the low bits; a check would refuse texts that have always been read.
    const T value(static_cast<typename T::rep>(ticks));
    if (value.count() != ticks) {
        NoteLenientRead(LenientRead::WrappedInteger);
    }
    return value;
}

template struct DurationTraits<HoursDuration>;
template struct DurationTraits<MinutesDuration>;
template struct DurationTraits<SecondsDuration>;
template struct DurationTraits<MillisecondsDuration>;
template struct DurationTraits<MicrosecondsDuration>;
template struct DurationTraits<NanosecondsDuration>;

}  // namespace qvpreslayer::detail

template class ParameterTypeSerializer<HoursDuration>;
template class ParameterTypeSerializer<MinutesDuration>;
template class ParameterTypeSerializer<SecondsDuration>;
template class ParameterTypeSerializer<MillisecondsDuration>;
template class ParameterTypeSerializer<MicrosecondsDuration>;
template class ParameterTypeSerializer<NanosecondsDuration>;
