// Typed access to values that are known only as IParameter.
//
// Exceptions: strong.
#pragma once

#include <typeinfo>

#include <qvpreslayer/CommandExceptions.h>
#include <qvpreslayer/IParameter.h>
#include <qvpreslayer/IParameters.h>
#include <qvpreslayer/ValParameter.h>

// The T that parameter holds, valid as long as parameter. MissingParameterCommandException(0) for a null pointer,
// TypeMismatchCommandException(0) when it is no ValParameter<T>; the identifier is not known here.
template <class T>
const T& GetParameterValue(const IParameter* parameter) {
    if (parameter == nullptr) {
        ThrowMissingParameterCommandException();
    }
    // Comparing types first is the quick way for exact types; the cast also accepts classes derived by hosts.
    if (typeid(*parameter) == typeid(ValParameter<T>)) [[likely]] {
        return static_cast<const ValParameter<T>*>(parameter)->GetValue();
    }
    const auto* typed = dynamic_cast<const ValParameter<T>*>(parameter);
    if (typed == nullptr) {
        ThrowTypeMismatchCommandException(0);
    }
    return typed->GetValue();
}

// The T that bag holds under id, valid until the entry is replaced. MissingParameterCommandException(id) when there is
// none, TypeMismatchCommandException(id) when it is of another type.
template <class T>
const T& GetParameterValue(const IParameters& bag, int id) {
    const auto* typed = dynamic_cast<const ValParameter<T>*>(&bag.GetParameter(id));
    if (typed == nullptr) {
        ThrowTypeMismatchCommandException(id);
    }
    return typed->GetValue();
}

// Stores value under id in a holder of its own type.
template <class T>
void SetParameterValue(IParameters& bag, int id, T value) {
    bag.SetParameter(id, RefCntPtr<IParameter>(new ValParameter<T>(std::move(value))));
}
