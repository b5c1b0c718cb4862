// The options that a session gives to everything that builds output.
//
// Exceptions: what an implementation throws passes through whoever asks for options.
#pragma once

#include <qvsys/RefCntObject.h>

#include <qvpreslayer/Export.h>

// Answers are asked for at every use and never kept, so that an object may change its mind between calls.
class QVPRESLAYER_API IBuilderVars : public RefCntObject {
public:
    ~IBuilderVars() override;

    // Whether names are to be written short. PresModelBuilderSupport::UseVerboseNames() asks the opposite question.
    virtual bool UseShortNames() const = 0;

    // Whether long numeric lists are to be packed in runs.
    virtual bool CompressArrays() const = 0;

    // Whether images may be encoded with loss. Passed on to hosts; the library encodes no images.
    virtual bool LossyEncodeImages() const = 0;
};
