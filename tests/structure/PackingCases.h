// Lists with what they are packed to.
#pragma once

#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "support/ListHost.h"

template <class T>
struct PackingCase {
    std::vector<T> values;
    std::string items;  // as ListTraceVisitor notes them, between the brackets of the outer list
};

template <class T>
void ExpectPacked(const std::vector<PackingCase<T>>& cases) {
    ListHost<T> host;
    for (const auto& c : cases) {
        EXPECT_EQ("values:2[" + c.items + "]", host.Packed(c.values));
    }
}

// The name of a type's runs.
template <class T>
std::string TagOf() {
    if constexpr (std::is_floating_point_v<T>) {
        return "float-rle";
    } else {
        return std::is_signed_v<T> ? "int-rle" : "uint-rle";
    }
}

// The trace of one run, and the marker.
template <class T>
std::string Run(const std::string& items) {
    return TagOf<T>() + ":2[" + items + "]";
}
