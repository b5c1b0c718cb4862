#include <qvpreslayer/detail/DirectText.h>

#include <typeinfo>

#include <qvpreslayer/ParameterTypeSerializer.h>
#include <qvpreslayer/TStringSerializer.h>

namespace qvpreslayer::detail {

namespace {

// Exactly that class: a host's derived class may answer otherwise.
template <class Serializer>
bool Is(const IParameterSerializer& serializer) {
    return typeid(serializer) == typeid(Serializer);
}

}  // namespace

DirectType DirectTypeOf(const IParameterSerializer* serializer) {
    if (serializer == nullptr) {
        return DirectType::None;
    }
    if (Is<ParameterTypeSerializer<int>>(*serializer)) {
        return DirectType::Int;
    }
    if (Is<ParameterTypeSerializer<unsigned int>>(*serializer)) {
        return DirectType::UInt;
    }
    if (Is<ParameterTypeSerializer<::Int64>>(*serializer)) {
        return DirectType::Int64;
    }
    if (Is<ParameterTypeSerializer<::UInt64>>(*serializer)) {
        return DirectType::UInt64;
    }
    if (Is<ParameterTypeSerializer<float>>(*serializer)) {
        return DirectType::Float;
    }
    if (Is<ParameterTypeSerializer<double>>(*serializer)) {
        return DirectType::Double;
    }
    if (Is<ParameterTypeSerializer<bool>>(*serializer)) {
        return DirectType::Bool;
    }
    return Is<TStringSerializer>(*serializer) ? DirectType::String : DirectType::None;
}

}  // namespace qvpreslayer::detail
