// The members of an object in the order in which they are applied. Included by the fillings.
#pragma once

#include <string_view>
#include <vector>

#include "main/json/JSONDocument.h"

struct JSONMember {
    std::u16string_view name;   // valid as long as the document
    JSONDocument::Index value;  // the name's node stands right before it
};

// Ascending by name (ordinal, by code unit), each name once: the last of equal ones counts. The others are added to
// overridden, where that is not null.
std::vector<JSONMember> SortedMembers(const JSONDocument& document, JSONDocument::Index object,
                                      std::vector<JSONMember>* overridden = nullptr);
