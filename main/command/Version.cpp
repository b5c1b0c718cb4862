#include <qvpreslayer/Version.h>

const char* GetPresLayerVersion() noexcept { return QVPRESLAYER_VERSION; }
