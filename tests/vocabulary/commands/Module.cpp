// A host's module: what every-type.json generates, for the commands that take a vocabulary from code.
#include <qvpres/HostModule.h>

#include "EveryType.h"

void QvpresRegisterParameters(ParametersRegistry& registry) { everytype::RegisterVocabulary(registry); }
