// Letting go of long chains of bags without a long chain of calls. Included by BaseParameters.cpp.
#pragma once

#include <qvpreslayer/detail/ParameterTable.h>

// A bag that is destroyed destroys the bags in its values, and these theirs. The first 64 levels do so directly; deeper
// ones leave their values to the outermost destructor of the thread, which lets go of them one bag after the other. So
// the stack holds 64 levels at most, however long the chain.
class ReleaseQueue {
public:
    using Table = qvpreslayer::detail::ParameterTable;

    // Lets go of what a bag holds, now or before the outermost destructor ends.
    static void Release(Table& parameters, Table& cacheParameters) noexcept;

private:
    class Pending;

    static void Postpone(Table& parameters, Table& cacheParameters) noexcept;
    static void ReleaseOutermost(Table& parameters, Table& cacheParameters) noexcept;

    static thread_local int s_depth;
    static thread_local Pending* s_pending;  // of the outermost destructor; null outside any
};
