// The serializers of all enumerations, so that hosts need not compile their own.
#include <qvpreslayer/Enumerations.h>

template class ParameterTypeSerializer<AggType>;
template class ParameterTypeSerializer<BoxplotStyle>;
template class ParameterTypeSerializer<DataScaling>;
template class ParameterTypeSerializer<DataType>;
template class ParameterTypeSerializer<FontWeight>;
template class ParameterTypeSerializer<ForecastModelType>;
template class ParameterTypeSerializer<ForecastRangeType>;
template class ParameterTypeSerializer<ForecastStatus>;
template class ParameterTypeSerializer<ParserMode>;
template class ParameterTypeSerializer<QuorvelFontStyle>;
template class ParameterTypeSerializer<StyleAttribute>;
template class ParameterTypeSerializer<StyleDataClass>;
template class ParameterTypeSerializer<StyleElement>;
template class ParameterTypeSerializer<StyleFieldScope>;
template class ParameterTypeSerializer<StyleSwatch>;
template class ParameterTypeSerializer<TextAlign>;
template class ParameterTypeSerializer<TextBreakMode>;
template class ParameterTypeSerializer<TextDecoration>;
template class ParameterTypeSerializer<TextOrient>;
template class ParameterTypeSerializer<TextWholeLineMode>;
template class ParameterTypeSerializer<TextWrapMode>;
template class ParameterTypeSerializer<WhiskerEnd>;
