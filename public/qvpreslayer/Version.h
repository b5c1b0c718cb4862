// The version of the library, by semantic versioning. Until 1.0 any minor version may change the interface.
//
// Exceptions: never throws.
//
// The three numbers stand here and nowhere else: the build and the packages read them from this file.
#pragma once

#include <qvpreslayer/Export.h>

#define QVPRESLAYER_VERSION_MAJOR 0
#define QVPRESLAYER_VERSION_MINOR 1
#define QVPRESLAYER_VERSION_PATCH 0

// One number that grows with the version, for #if: 102 is 0.1.2, 10203 is 1.2.3.
#define QVPRESLAYER_VERSION_NUMBER \
    (QVPRESLAYER_VERSION_MAJOR * 10000 + QVPRESLAYER_VERSION_MINOR * 100 + QVPRESLAYER_VERSION_PATCH)

// The version that a program is compiled against, as text: "0.1.0".
#define QVPRESLAYER_VERSION \
    QVPRESLAYER_DETAIL_VERSION_TEXT(QVPRESLAYER_VERSION_MAJOR, QVPRESLAYER_VERSION_MINOR, QVPRESLAYER_VERSION_PATCH)
#define QVPRESLAYER_DETAIL_VERSION_TEXT(major, minor, patch) \
    QVPRESLAYER_DETAIL_TEXT(major) "." QVPRESLAYER_DETAIL_TEXT(minor) "." QVPRESLAYER_DETAIL_TEXT(patch)
#define QVPRESLAYER_DETAIL_TEXT(number) #number

// The version of the library that is loaded, in the same form. It differs from QVPRESLAYER_VERSION where a program runs
// against another library than it was compiled with.
QVPRESLAYER_API const char* GetPresLayerVersion() noexcept;
