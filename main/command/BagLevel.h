// The nesting of walks on a thread. Included by VisitParametersStructure.cpp and DeepWalk.cpp.
#pragma once

// One level of nested bags on this thread; also counts the bags that structure serializers walk on their own.
class BagLevel {
public:
    // QuorvelException when the bags are nested deeper than the limit, or the thread's stack is nearly used up.
    BagLevel();
    BagLevel(const BagLevel&) = delete;
    BagLevel& operator=(const BagLevel&) = delete;
    ~BagLevel() { --s_depth; }

    // Whether so many levels are open that the next ones should not be calls inside calls.
    bool IsDeep() const noexcept { return s_depth > kDirectLevels; }

private:
    static constexpr int kDirectLevels = 16;

    static thread_local int s_depth;
};
