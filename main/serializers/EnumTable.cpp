#include <qvpreslayer/EnumTable.h>

#include <qvsys/QuorvelException.h>

#include <qvcore/Messages.h>

namespace qvpreslayer::detail {

void ThrowUnknownEnumValue() { throw QuorvelException(LookupTStr(Messages::kEnumValueUnknown)); }

}  // namespace qvpreslayer::detail
