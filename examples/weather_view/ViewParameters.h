// The bag that describes the whole view.
#pragma once

#include <cstddef>

#include <qvpreslayer/IParameters.h>

#include "WeatherModel.h"
#include "WeatherSummary.h"

namespace weather {

// A bag with the model and, beside it, a parameter of every kind. sourceBytes is the size of the file that was read.
RefCntPtr<IParameters> MakeViewParameters(const RefCntPtr<WeatherModel>& model, const WeatherSummary& summary,
                                          std::size_t sourceBytes);

}  // namespace weather
