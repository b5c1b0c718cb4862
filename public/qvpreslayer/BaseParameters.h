// A bag of typed values keyed by signed 32-bit identifiers.
//
// A bag knows neither names nor text forms; ParametersRegistry does. Nothing checks that an identifier is registered.
// Values are shared, never copied: a clone holds the very objects of its source.
//
// Threads: once filled, a bag may be read from several threads at once. Every change, SetCacheParameter on a const bag
// included, needs the caller's own exclusion.
//
// Exceptions: strong: a bag that cannot be changed stays as it was. HasParameter, HasCacheParameter,
// RemoveOptionalParameter, storing a null and replacing a value never throw, nor does destroying, which needs no
// memory.
#pragma once

#include <qvsys/RefCntPtr.h>

#include <qvpreslayer/Export.h>
#include <qvpreslayer/IParameters.h>
#include <qvpreslayer/detail/ParameterTable.h>

namespace qvpreslayer::detail {
class PlainBags;
}

class QVPRESLAYER_API BaseParameters : public IParameters {
public:
    BaseParameters();

    // Stores value under id in place of any earlier one. A null value removes the entry, and is no error when there is
    // none.
    void SetParameter(int id, RefCntPtr<IParameter> value) override;

    // The value under id, valid until it is replaced or removed; MissingParameterCommandException(id) when there is
    // none.
    IParameter& GetParameter(int id) override { return Get(m_parameters, id); }
    const IParameter& GetParameter(int id) const override;  // not inline: PlainBags compares where it stands

    bool HasParameter(int id) const override { return m_parameters.Find(id) != nullptr; }

    // Cache entries stand beside the parameters, under identifiers of their own; the same rules hold for them. They
    // may be stored in a const bag, travel with Copy and Clone, and are never visited, so that they reach no text.
    void SetCacheParameter(int id, RefCntPtr<IParameter> value) const override;
    const IParameter& GetCacheParameter(int id) const override { return Get(m_cacheParameters, id); }
    bool HasCacheParameter(int id) const override { return m_cacheParameters.Find(id) != nullptr; }

    // Removes the entry of id. RemoveParameter throws MissingParameterCommandException(id) when there is none and
    // leaves the bag as it was; RemoveOptionalParameter accepts that: a command may legitimately lack some.
    void RemoveParameter(int id) override;
    void RemoveOptionalParameter(int id) override;

    // Calls visitor once for every parameter, upwards by signed identifier. Requires: nobody changes the bag meanwhile.
    void Accept(IParameterVisitor& visitor) const override;

    // A new, empty bag of the same class.
    RefCntPtr<BaseParameters> EmptyClone() const;

    // A new bag of the same class with the same value objects, cache entries included. LogicException "m_ptr" when the
    // class makes no empty bag.
    RefCntPtr<BaseParameters> Clone() const;

    // Stores every entry of from, cache entries included, in to, sharing the values. Entries of to under other
    // identifiers stay. LogicException "m_ptr" when either pointer is empty; nothing is stored then.
    static void Copy(RefCntPtr<const BaseParameters> from, RefCntPtr<BaseParameters> to);

protected:
    ~BaseParameters() override;

    // Makes a new, empty bag of the concrete class.
    virtual RefCntPtr<BaseParameters> DoEmptyClone() = 0;

private:
    friend class qvpreslayer::detail::PlainBags;

    static IParameter& Get(const qvpreslayer::detail::ParameterTable& table, int id) {
        IParameter* const value = table.Find(id);
        if (value == nullptr) [[unlikely]] {
            ThrowMissing(id);
        }
        return *value;
    }

    [[noreturn]] static void ThrowMissing(int id);

    qvpreslayer::detail::ParameterTable m_parameters;               // no null pointers
    mutable qvpreslayer::detail::ParameterTable m_cacheParameters;  // likewise
};
