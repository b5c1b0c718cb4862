// One value of a bag.
//
// Exceptions: the operations of this library's values never throw.
#pragma once

#include <qvsys/BlockPool.h>
#include <qvsys/RefCntObject.h>
#include <qvsys/RefCntPtr.h>

#include <qvpreslayer/Export.h>

class PresentationModel;

// A value that bags share. Whoever puts it into a bag no longer changes it.
//
// Threads: a value in a bag may be read from any thread.
class QVPRESLAYER_API IParameter : public RefCntObject {
public:
    ~IParameter() override = default;

    // Values come and go by the thousand: small ones take kept blocks.
    QVSYS_USE_BLOCK_POOL

    // The presentation model that the value holds, with a reference of its own; empty for every other value.
    virtual RefCntPtr<const PresentationModel> GetPresentationModel() const;

    // Whether the value stands for nothing, as an empty pointer to a bag does.
    virtual bool IsNull() const;

    // A mark that hosts give meaning to; every value type of this library answers false.
    virtual bool IsMarked() const;
};
