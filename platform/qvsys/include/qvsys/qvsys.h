// All of qvsys: reference counts, the recursive mutex, the exception base and the logic-error routine.
#pragma once

#include <qvsys/Export.h>
#include <qvsys/LogicException.h>
#include <qvsys/QuorvelException.h>
#include <qvsys/RefCntObject.h>
#include <qvsys/RefCntPtr.h>
#include <qvsys/TRecursiveMutex.h>
#include <qvsys/Utf8.h>
