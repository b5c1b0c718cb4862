// Everything that qvpreslayer offers, in reading order.
#pragma once

#include <qvsys/qvsys.h>

#include <qvcore/qvcore.h>

#include <qvpreslayer/Version.h>

// Values and bags.
#include <qvpreslayer/IParameter.h>
#include <qvpreslayer/IParameters.h>
#include <qvpreslayer/BaseParameters.h>
#include <qvpreslayer/ValParameter.h>
#include <qvpreslayer/ParameterAccess.h>
#include <qvpreslayer/PresentationModel.h>

// Names, kinds and serializers.
#include <qvpreslayer/ParameterTypeCategory.h>
#include <qvpreslayer/ParametersRegistry.h>
#include <qvpreslayer/AbstractParamAdder.h>
#include <qvpreslayer/CoreNamespace.h>
#include <qvpreslayer/IBuilderVars.h>
#include <qvpreslayer/PresModelBuilderSupport.h>

// JSON.
#include <qvpreslayer/JSONSerializer.h>
#include <qvpreslayer/BuildParameterStrings.h>
#include <qvpreslayer/IReadingDiagnostics.h>

// Serializers of values and structures.
#include <qvpreslayer/IParameterSerializer.h>
#include <qvpreslayer/ParameterTypeTraits.h>
#include <qvpreslayer/ParameterTypeSerializer.h>
#include <qvpreslayer/TStringSerializer.h>
#include <qvpreslayer/DataValueSerializer.h>
#include <qvpreslayer/IStructureSerializer.h>
#include <qvpreslayer/BagStructureSerializer.h>

// Walking and streaming.
#include <qvpreslayer/IStructuredParameterVisitor.h>
#include <qvpreslayer/VisitParametersStructure.h>
#include <qvpreslayer/SerializeStructure.h>
#include <qvpreslayer/StructureScopes.h>
#include <qvpreslayer/DataSerializerHelpers.h>

// Failures and limits.
#include <qvpreslayer/CommandExceptions.h>
#include <qvpreslayer/RegistryExceptions.h>
#include <qvpreslayer/JSONParseException.h>
#include <qvpreslayer/TextLocation.h>
#include <qvpreslayer/PresLayerLimits.h>

// Enumerations.
#include <qvpreslayer/EnumTable.h>
#include <qvpreslayer/Enumerations.h>
