// The short way from JSON values to typed values. Included by BagFilling.cpp.
#pragma once

#include <qvsys/RefCntPtr.h>

#include <qvpreslayer/IParameter.h>
#include <qvpreslayer/ParametersRegistry.h>

#include "main/json/JSONDocument.h"

// The value that the serializer of info would make of the text of a scalar, made without the text; or an empty pointer
// when that takes the serializer: another type than the library's own, a text that may not fit, anything unusual.
RefCntPtr<IParameter> ReadScalarDirectly(const ParameterInfo& info, const JSONDocument& document,
                                         JSONDocument::Index scalar);

// The same for the plain elements of an array.
RefCntPtr<IParameter> ReadListDirectly(const ParameterInfo& info, const JSONDocument& document,
                                       JSONDocument::Index array);
