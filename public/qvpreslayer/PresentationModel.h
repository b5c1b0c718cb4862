// A model object that travels as a parameter and remembers its last serialized form.
//
// Exceptions: strong; asking and SetHash never throw.
#pragma once

#include <qvsys/RefCntObject.h>
#include <qvsys/RefCntPtr.h>

#include <qvcore/TString.h>

#include <qvpreslayer/Export.h>

class IParameters;

// The base of the records that describe what a view shows. Always held through RefCntPtr: AsIParameters hands out a
// reference to the model itself.
//
// Threads: the two remembered fields change on a const model without a lock; who shares a model between threads keeps
// those calls apart.
class QVPRESLAYER_API PresentationModel : public virtual RefCntObject {
protected:
    // Stands first since that is its place in the virtual table, which hosts are built against.
    ~PresentationModel() override;

public:
    PresentationModel();

    // Copy the hash and the serialized text; the copy starts without references.
    PresentationModel(const PresentationModel&);
    PresentationModel& operator=(const PresentationModel&);

    // A new bag of the current registry that holds this model, and nothing else, under GetDefaultParamID().
    // LogicException "gm_RegistryInstance != nullptr" when no registry is published.
    virtual RefCntPtr<IParameters> AsIParameters();

    // The identifier under which the model travels; 16777216 unless a subclass moves it.
    virtual int GetDefaultParamID() const;

    // The hash and the text of the last write, kept by the structure serializers of models so that an unchanged model
    // can be written again from its text. The library itself does not look at them. 0 and empty at first.
    UInt64 GetHash() const noexcept { return m_hash; }
    void SetHash(UInt64 hash) const noexcept { m_hash = hash; }
    const TString& GetSerializedVal() const noexcept { return m_serializedVal; }
    void SetSerializedVal(const TString& text) const { m_serializedVal = text; }

private:
    mutable TString m_serializedVal;
    mutable UInt64 m_hash = 0;
};
