// The abstract bag, and the visitor of its entries.
//
// Exceptions: implementations give the strong guarantee, Accept the basic one: entries visited stay visited. What a
// visitor throws passes through Accept and ends it.
#pragma once

#include <qvsys/BlockPool.h>
#include <qvsys/RefCntPtr.h>

#include <qvpreslayer/Export.h>
#include <qvpreslayer/IParameter.h>

// Receives the entries of a bag, one call each.
class IParameterVisitor {
public:
    // The value is the bag's own pointer, valid during the call. The bag must not be changed before Accept returns.
    virtual void VisitParameter(int id, const RefCntPtr<IParameter>& value) = 0;

protected:
    ~IParameterVisitor() = default;
};

// A set of values keyed by signed 32-bit identifiers. BaseParameters says what each operation does.
//
// A class may be a bag and a presentation model at once, hence the virtual base: one object, one count.
class QVPRESLAYER_API IParameters : public virtual RefCntObject {
public:
    ~IParameters() override;

    // Bags come and go by the thousand: small ones take kept blocks.
    QVSYS_USE_BLOCK_POOL

    virtual void SetParameter(int id, RefCntPtr<IParameter> value) = 0;

    virtual IParameter& GetParameter(int id) = 0;
    virtual const IParameter& GetParameter(int id) const = 0;

    virtual bool HasParameter(int id) const = 0;

    virtual void SetCacheParameter(int id, RefCntPtr<IParameter> value) const = 0;
    virtual const IParameter& GetCacheParameter(int id) const = 0;
    virtual bool HasCacheParameter(int id) const = 0;

    virtual void RemoveParameter(int id) = 0;
    virtual void RemoveOptionalParameter(int id) = 0;

    virtual void Accept(IParameterVisitor& visitor) const = 0;

    // Whether this is a bag of a test; false for every bag of this library.
    virtual bool IsTestParameters() const;
};
