// The limits that hold hostile input in check, in one place: defaults, and how a host changes them.
//
// Each breach is one exception; the caller's data is as it was. At the default depths everything fits a stack of
// 256 KiB: reading, and writing bags and the records of BagStructureSerializer, take no more of it however deep they
// are. Where structure serializers of the host, or tuples that are written, make calls inside calls, a look at what is
// left of the stack comes before each level.
//
// Threads: set them at start-up; each is one atomic value, read wherever the limit is checked.
//
// Exceptions: setting and asking never throw; Spend is strong.
#pragma once

#include <cstddef>

#include <qvpreslayer/Export.h>

namespace PresLayerLimits {

// Levels of objects and arrays in a JSON text. A deeper text is not valid: JSONParseException.
inline constexpr int kDefaultJSONDepth = 512;

// Levels of bags in a walk, so also a bag that holds itself. QuorvelException "Parameter bags are nested too deeply".
// Above the limit of texts, so that whatever was read can be written.
inline constexpr int kDefaultBagDepth = 1000;

// Levels of tuples in a typed value's text, both ways. QuorvelException "Malformed serialization of a tuple element".
inline constexpr int kDefaultTupleDepth = 256;

// Bytes of its stack that a thread keeps for what happens inside a level: where less is left, from the 17th level on,
// bags in a walk, and tuples that are written, are nested too deeply whatever the limits above say. 0 for no such look.
inline constexpr std::size_t kDefaultStackReserve = std::size_t{32} * 1024;

// Bytes of elements that runs expand to, for one list and for one reading call. ParameterParseException(0).
inline constexpr std::size_t kDefaultExpansionBytes = std::size_t{512} * 1024 * 1024;

QVPRESLAYER_API int GetJSONDepth();
QVPRESLAYER_API void SetJSONDepth(int levels);
QVPRESLAYER_API int GetBagDepth();
QVPRESLAYER_API void SetBagDepth(int levels);
QVPRESLAYER_API int GetTupleDepth();
QVPRESLAYER_API void SetTupleDepth(int levels);
QVPRESLAYER_API std::size_t GetStackReserve();
QVPRESLAYER_API void SetStackReserve(std::size_t bytes);
QVPRESLAYER_API std::size_t GetExpansionBytes();
QVPRESLAYER_API void SetExpansionBytes(std::size_t bytes);

// Threads keep some memory from one document to the next: small blocks, up to 8 MiB, and the text and the list of
// members that documents are written and read through, up to 3 MiB. This frees what the calling thread keeps; its
// end does so, too. The process keeps the memory of the last text of 1 to 32 MiB that was let go of, for the next one
// of about that size; this frees it, whichever thread asks.
QVPRESLAYER_API void ReleaseKeptMemory() noexcept;

// Makes all lists that the calling thread reads while it lives share one budget of expanded bytes; what readers of
// whole texts open for each call. An inner scope joins the outer one.
class QVPRESLAYER_API ExpansionBudgetScope {
public:
    ExpansionBudgetScope();
    ExpansionBudgetScope(const ExpansionBudgetScope&) = delete;
    ExpansionBudgetScope& operator=(const ExpansionBudgetScope&) = delete;
    ~ExpansionBudgetScope();

    // Takes bytes from the calling thread's budget (one of its own for a call outside any scope);
    // ParameterParseException(0) when they are more than is left.
    static void Spend(std::size_t bytes);

    // Gives back what a reading spent that has come to nothing. Requires: a scope of the calling thread is open.
    static void GiveBack(std::size_t bytes) noexcept;

private:
    bool m_outermost;
};

}  // namespace PresLayerLimits
