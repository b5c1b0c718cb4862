#include <qvsys/RefCntObject.h>

#include <gtest/gtest.h>

#include <type_traits>

#include <qvsys/RefCntPtr.h>

#include "support/Printing.h"

namespace {

// Tells when it is destroyed.
class Counted : public RefCntObject {
public:
    explicit Counted(int& destroyed) : m_destroyed(&destroyed) {}
    Counted(const Counted&) = default;
    Counted& operator=(const Counted&) = default;
    ~Counted() override { ++*m_destroyed; }

private:
    int* m_destroyed;
};

class FirstInterface : public virtual RefCntObject {};
class SecondInterface : public virtual RefCntObject {};
class Both : public FirstInterface, public SecondInterface {
public:
    explicit Both(int& destroyed) : m_destroyed(destroyed) {}
    ~Both() override { ++m_destroyed; }

private:
    int& m_destroyed;
};

// Hands out references of its own while it is made.
class SelfSharing : public RefCntObject {
public:
    SelfSharing(int& destroyed, RefCntPtr<SelfSharing>& own) : m_destroyed(destroyed) {
        own = RefCntPtr<SelfSharing>(this);
    }
    ~SelfSharing() override { ++m_destroyed; }

private:
    int& m_destroyed;
};

TEST(RefCntObject, StaysForReferencesThatItsConstructorHandedOut) {
    int destroyed = 0;
    RefCntPtr<SelfSharing> own;
    RefCntPtr<SelfSharing> made = MakeRefCnt<SelfSharing>(destroyed, own);
    EXPECT_EQ(own, made);
    made.Reset();
    EXPECT_EQ(0, destroyed);
    own.Reset();
    EXPECT_EQ(1, destroyed);
}

TEST(RefCntObject, GoesWithItsOnlyReference) {
    int destroyed = 0;
    const auto* object = new Counted(destroyed);
    object->AddReference();
    EXPECT_EQ(0, destroyed);
    object->RemoveReference();
    EXPECT_EQ(1, destroyed);
}

TEST(RefCntObject, GoesWithTheLastOfItsReferences) {
    int destroyed = 0;
    const auto* object = new Counted(destroyed);
    object->AddReference();
    object->AddReference();
    object->RemoveReference();
    EXPECT_EQ(0, destroyed);
    object->RemoveReference();
    EXPECT_EQ(1, destroyed);
}

TEST(RefCntObject, IsDeletedThroughItsBase) {
    int destroyed = 0;
    const RefCntObjectNonVirtualBase* object = new Counted(destroyed);
    object->AddReference();
    object->RemoveReference();
    EXPECT_EQ(1, destroyed);
}

TEST(RefCntObject, OnTheStackIsNeverDeletedByCounting) {
    int destroyed = 0;
    {
        const Counted object(destroyed);
        object.SetRefCountToOne();
        object.AddReference();
        object.RemoveReference();
        EXPECT_EQ(0, destroyed);
    }
    EXPECT_EQ(1, destroyed);
}

TEST(RefCntObject, CopyStartsWithoutReferences) {
    int destroyed = 0;
    const auto* source = new Counted(destroyed);
    source->AddReference();
    source->AddReference();
    const auto* copy = new Counted(*source);
    copy->AddReference();
    copy->RemoveReference();
    EXPECT_EQ(1, destroyed);
    source->RemoveReference();
    source->RemoveReference();
    EXPECT_EQ(2, destroyed);
}

TEST(RefCntObject, AssigningLeavesTheCountsAlone) {
    int destroyed = 0;
    const auto* source = new Counted(destroyed);
    source->AddReference();
    source->AddReference();
    auto* target = new Counted(destroyed);
    target->AddReference();
    *target = *source;
    target->RemoveReference();
    EXPECT_EQ(1, destroyed);
    source->RemoveReference();
    EXPECT_EQ(1, destroyed);
    source->RemoveReference();
    EXPECT_EQ(2, destroyed);
}

TEST(RefCntObject, InheritedVirtuallyTwiceHasOneCount) {
    int destroyed = 0;
    const Both& object = *new Both(destroyed);
    const FirstInterface& first = object;
    const SecondInterface& second = object;
    first.AddReference();
    second.AddReference();
    first.RemoveReference();
    EXPECT_EQ(0, destroyed);
    second.RemoveReference();
    EXPECT_EQ(1, destroyed);
}

TEST(RefCntObject, IsNotDestroyedByHand) {
    EXPECT_FALSE(std::is_destructible_v<RefCntObject>);
    EXPECT_FALSE(std::is_destructible_v<RefCntObjectNonVirtualBase>);
    EXPECT_TRUE(std::has_virtual_destructor_v<RefCntObject>);
}

}  // namespace
