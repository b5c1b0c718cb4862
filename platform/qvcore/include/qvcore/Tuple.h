// Sequences of typed values that are themselves one value.
//
// Threads: a tuple never changes, so that it may be shared among threads.
//
// Exceptions: making one is strong; all else never throws. Tuples go without memory too, however deep they are, but for
// trees of deep tuples, which then take stack.
#pragma once

#include <cstddef>
#include <vector>

#include <qvsys/RefCntObject.h>

#include <qvcore/Export.h>

class DataValue;

// An ordered, immutable sequence of values, shared through RefCntPtr. A tuple may hold tuples, to any depth: freeing,
// comparing and hashing a deep one needs no more stack than a flat one.
class QVCORE_API Tuple : public RefCntObject {
public:
    explicit Tuple(std::vector<DataValue> values);
    Tuple(const Tuple&) = delete;
    Tuple& operator=(const Tuple&) = delete;

    // Frees the values. Those of deeply nested tuples are put aside and freed by the outermost tuple being destroyed on
    // this thread, before its own destructor ends.
    ~Tuple() override;

    // In the order they were given; valid as long as the tuple.
    const std::vector<DataValue>& GetValues() const noexcept { return m_values; }

    // Equal for tuples of equal values; worked out once, when the tuple is made.
    std::size_t GetHash() const noexcept { return m_hash; }

private:
    std::vector<DataValue> m_values;
    std::size_t m_hash;
};

// At the end, because a DataValue holds tuples and a tuple needs DataValue only to be used.
#include <qvcore/DataValue.h>
