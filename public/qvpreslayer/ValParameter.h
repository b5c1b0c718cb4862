// The value holder: one typed value, a vector of them, or a map from text to them.
//
// Exceptions: making one is strong; all else never throws.
#pragma once

#include <utility>

#include <qvpreslayer/Export.h>
#include <qvpreslayer/IParameter.h>
#include <qvpreslayer/IParameters.h>
#include <qvpreslayer/PresentationModel.h>

// Holds one value of type T. The library's own shapes are a simple value (numbers, bool, TString, names, passwords,
// TUUID, DataValue, durations, enumerations), a std::vector of one of these, and a std::map<TString, T> of one of
// these; hosts may hold types of their own, for example the elements of their structures.
template <class T>
class QVPRESLAYER_API ValParameter : public IParameter {
public:
    explicit ValParameter(T value) : m_value(std::move(value)) {}

    // Makes the value in place, from what one of its constructors takes.
    template <class... Arguments>
    explicit ValParameter(std::in_place_t, Arguments&&... arguments) : m_value(std::forward<Arguments>(arguments)...) {}

    // The value, valid as long as the object. Never changes.
    const T& GetValue() const noexcept { return m_value; }

private:
    T m_value;
};

// A nested bag. It is null when the pointer is, and answers the bag as a presentation model when the bag is one.
template <>
class QVPRESLAYER_API ValParameter<RefCntPtr<const IParameters>> : public IParameter {
public:
    explicit ValParameter(RefCntPtr<const IParameters> value);
    ~ValParameter() override;

    const RefCntPtr<const IParameters>& GetValue() const noexcept { return m_value; }

    RefCntPtr<const PresentationModel> GetPresentationModel() const override;
    bool IsNull() const override;

private:
    RefCntPtr<const IParameters> m_value;  // may be empty
};

// A presentation model. It is null when the pointer is, and answers the pointer as its model.
template <>
class QVPRESLAYER_API ValParameter<RefCntPtr<const PresentationModel>> : public IParameter {
public:
    explicit ValParameter(RefCntPtr<const PresentationModel> value);
    ~ValParameter() override;

    const RefCntPtr<const PresentationModel>& GetValue() const noexcept { return m_value; }

    RefCntPtr<const PresentationModel> GetPresentationModel() const override;
    bool IsNull() const override;

private:
    RefCntPtr<const PresentationModel> m_value;  // may be empty
};

// The shapes of nested bags and models, by the names that hosts use most.
using BagParameter = ValParameter<RefCntPtr<const IParameters>>;
using PresentationModelParameter = ValParameter<RefCntPtr<const PresentationModel>>;
