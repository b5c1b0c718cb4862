// The penguins as typed values.
#pragma once

#include <vector>

#include <qvpreslayer/IParameters.h>

#include "PenguinFile.h"

namespace weather {

// The identifiers of the columns, one for each type of value, in the order of the table.
std::vector<int> PenguinColumnIDs();

// Adds typed values to the bag of the view: single ones, two penguins as maps, and the table, a bag that holds a list
// for each column. Requires: there is a penguin.
void AddPenguinValues(IParameters& bag, const std::vector<Penguin>& penguins);

}  // namespace weather
