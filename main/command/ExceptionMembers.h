// The members that every exception class defines in the same words. Included by the exception .cpp files only.
#pragma once

#include <new>

// Copying, destruction, and the two operations through which an exception is copied and thrown as its own type.
#define QV_DEFINE_EXCEPTION_MEMBERS(Class)                                             \
    Class::Class(const Class&) = default;                                              \
    Class& Class::operator=(const Class&) = default;                                   \
    Class::~Class() = default;                                                         \
    QuorvelException* Class::Clone() const { return new (std::nothrow) Class(*this); } \
    void Class::Throw() const { throw *this; }
