// All of qvcore: texts, names, identifiers, messages, typed values and the session.
#pragma once

#include <qvcore/CaseConversion.h>
#include <qvcore/Collation.h>
#include <qvcore/DataType.h>
#include <qvcore/DataValue.h>
#include <qvcore/DataValueFormatter.h>
#include <qvcore/DataValueParser.h>
#include <qvcore/Date.h>
#include <qvcore/Export.h>
#include <qvcore/FieldName.h>
#include <qvcore/IndirectString.h>
#include <qvcore/IntegerTypes.h>
#include <qvcore/Messages.h>
#include <qvcore/PasswordString.h>
#include <qvcore/QualifiedName.h>
#include <qvcore/SessionContext.h>
#include <qvcore/Spatial.h>
#include <qvcore/TString.h>
#include <qvcore/TUUID.h>
#include <qvcore/TextNumbers.h>
#include <qvcore/Tuple.h>
