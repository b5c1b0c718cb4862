// The output options in force.
//
// Exceptions: nothing is thrown but what the host's session and options throw, which passes.
#pragma once

#include <qvpreslayer/Export.h>

// Each asks the current session's IBuilderVars at every call. Without a session, or a session without options, the
// answer is the default.
//
// Threads: a thread may have a session of its own, see SessionContext.
namespace PresModelBuilderSupport {

// Whether names are written verbose: the opposite of IBuilderVars::UseShortNames(). Default true.
QVPRESLAYER_API bool UseVerboseNames();

// Whether long numeric lists are packed in runs. Default false.
QVPRESLAYER_API bool CompressArrays();

// Both at once, for the library's own use: the session is asked for its options once.
struct TextOptions {
    bool useVerboseNames = true;
    bool compressArrays = false;
};
QVPRESLAYER_API TextOptions GetTextOptions();

// Whether hosts may encode images with loss. Default false.
QVPRESLAYER_API bool LossyEncodeImages();

}  // namespace PresModelBuilderSupport
