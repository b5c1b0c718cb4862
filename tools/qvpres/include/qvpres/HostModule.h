// What a host's shared library exports so that qvpres knows its parameters: qvpres --module LIB.so
//
// The library is loaded into qvpres and must be built with the same qvpreslayer (the same soname) and C++ library.
#pragma once

#include <qvpreslayer/ParametersRegistry.h>

// Registers every namespace that the host's texts need, and their fallbacks. qvpres publishes the registry first, calls
// this once, on its main thread, and keeps the library loaded to the end. The core namespace may be registered too;
// when it is not, qvpres registers it as "qvcore" afterwards.
//
// Nothing else of the host runs, so registration must not rely on what its start-up code does. What it throws ends
// qvpres with a message.
extern "C" __attribute__((visibility("default"))) void QvpresRegisterParameters(ParametersRegistry& registry);
