// Writing the view in one form, reading it back, and comparing.
#pragma once

#include <cstddef>
#include <vector>

#include <qvpreslayer/qvpreslayer.h>

#include "WeatherModel.h"

namespace weather {

// A form of the text. The first two are options of the session, the third is chosen at each write.
struct TextForm {
    bool packedArrays = false;
    bool shortNames = false;
    JSONSerializer::OutputType layout = JSONSerializer::Compact;
};

// All eight, in the order of a table: plain before packed, verbose before short, pretty before compact.
std::vector<TextForm> AllTextForms();

// What one way there and back gave.
struct RoundTrip {
    TextForm form;
    TString text;
    std::size_t valueCount = 0;        // values compared
    std::vector<TString> differences;  // a line each; empty when what came back is equal
};

// Writes bag with all that is in it and compares what is read from the text. Failures of writing or reading pass.
RoundTrip WriteAndReadBag(const RefCntPtr<IParameters>& bag, const TextForm& form);

// The same for the model alone, which JSONSerializer writes through its structure serializer.
RoundTrip WriteAndReadModel(const RefCntPtr<WeatherModel>& model, const TextForm& form);

}  // namespace weather
