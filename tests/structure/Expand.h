// Lists of runs, expanded through the serializers.
#pragma once

#include <vector>

#include <qvpreslayer/qvpreslayer.h>

using Records = std::vector<RunRecord>;

// What the serializer of T makes of plain texts and nested lists.
template <class T>
std::vector<T> Expand(const std::vector<TString>& values, const Records& records) {
    const auto list = ParameterTypeSerializer<T>().FromStringList(values, records);
    return GetParameterValue<std::vector<T>>(list.Get());
}
