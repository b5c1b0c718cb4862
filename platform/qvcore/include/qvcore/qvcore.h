// All of qvcore: texts, names, messages and the session.
#pragma once

#include <qvcore/CaseConversion.h>
#include <qvcore/Export.h>
#include <qvcore/FieldName.h>
#include <qvcore/IntegerTypes.h>
#include <qvcore/Messages.h>
#include <qvcore/PasswordString.h>
#include <qvcore/QualifiedName.h>
#include <qvcore/SessionContext.h>
#include <qvcore/TString.h>
#include <qvcore/TUUID.h>
#include <qvcore/TextNumbers.h>
