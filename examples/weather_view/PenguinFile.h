// The penguins, and the file that they come from.
#pragma once

#include <optional>
#include <vector>

#include <qvcore/TString.h>

#include <qvpreslayer/ParametersRegistry.h>

namespace weather {

// A row of the file. What was not measured is not there.
struct Penguin {
    TString species;
    std::optional<double> beakLength;  // millimetres
    std::optional<double> beakDepth;   // millimetres
    std::optional<int> flipperLength;  // millimetres
    std::optional<int> bodyMass;       // grams
    std::optional<TString> sex;        // "MALE", "FEMALE" or a mark that it is not known
};

// Registers the names that stand in the file, a namespace of its own.
void RegisterPenguinVocabulary(ParametersRegistry& registry);

// Reads JSON text that is an array of objects. Fails as JSONSerializer::ToParameters does, and with
// MissingParameterCommandException for a row without a species, std::runtime_error when there are no rows.
std::vector<Penguin> ReadPenguins(const TString& json);

}  // namespace weather
