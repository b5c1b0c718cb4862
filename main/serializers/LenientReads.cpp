#include <qvpreslayer/detail/LenientReads.h>

namespace qvpreslayer::detail {

namespace {

thread_local constinit std::uint64_t t_counts[kLenientReads] = {};

}  // namespace

void NoteLenientRead(LenientRead read) noexcept { ++t_counts[static_cast<int>(read)]; }

std::uint64_t CountLenientReads(LenientRead read) noexcept { return t_counts[static_cast<int>(read)]; }

}  // namespace qvpreslayer::detail
