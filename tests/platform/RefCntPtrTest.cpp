#include <qvsys/RefCntPtr.h>

#include <gtest/gtest.h>

#include <functional>
#include <utility>

#include "support/Printing.h"

namespace {

int gm_living = 0;

class Base : public RefCntObject {
public:
    Base() { ++gm_living; }
    ~Base() override { --gm_living; }
    virtual int Number() const { return 1; }
};
class Derived : public Base {
public:
    explicit Derived(int number = 2) : m_number(number) {}
    int Number() const override { return m_number; }

private:
    int m_number;
};
class Other : public Base {};

class RefCntPtrTest : public testing::Test {
protected:
    void SetUp() override { gm_living = 0; }
    void TearDown() override { EXPECT_EQ(0, gm_living); }
};

template <class Operation>
void ExpectEmptyPointerError(Operation operation) {
    try {
        operation();
        FAIL() << "no exception";
    } catch (const LogicException& exception) {
        EXPECT_STREQ("m_ptr", exception.GetExpression());
        EXPECT_EQ(364, exception.GetLine());
        EXPECT_STREQ("RefCntPtr.h", exception.GetFile());
    }
}

TEST_F(RefCntPtrTest, IsEmptyAtFirst) {
    EXPECT_FALSE(RefCntPtr<Base>());
    EXPECT_EQ(nullptr, RefCntPtr<Base>().Get());
    EXPECT_EQ(nullptr, RefCntPtr<Base>(nullptr).Get());
}

TEST_F(RefCntPtrTest, ArrowOnEmptyIsALogicError) {
    const RefCntPtr<Base> empty;
    ExpectEmptyPointerError([&] { empty->Number(); });
}

TEST_F(RefCntPtrTest, StarOnEmptyIsALogicError) {
    const RefCntPtr<Base> empty;
    ExpectEmptyPointerError([&] { (*empty).Number(); });
}

TEST_F(RefCntPtrTest, ReachesItsObject) {
    auto* object = new Derived(5);
    const RefCntPtr<Derived> pointer(object);
    EXPECT_TRUE(pointer);
    EXPECT_EQ(object, pointer.Get());
    EXPECT_EQ(5, pointer->Number());
    EXPECT_EQ(5, (*pointer).Number());
}

TEST_F(RefCntPtrTest, PlainPointerIsSharedAgain) {
    auto* object = new Base;
    RefCntPtr<Base> first(object);
    const RefCntPtr<Base> second(object);
    first.Reset();
    EXPECT_EQ(1, gm_living);
    EXPECT_EQ(1, second->Number());
}

TEST_F(RefCntPtrTest, CopyShares) {
    RefCntPtr<Base> first(new Base);
    const RefCntPtr<Base> second(first);
    EXPECT_EQ(first, second);
    first.Reset();
    EXPECT_FALSE(first);
    EXPECT_EQ(1, gm_living);
    EXPECT_EQ(1, second->Number());
}

TEST_F(RefCntPtrTest, MoveEmptiesTheSource) {
    RefCntPtr<Base> first(new Base);
    const RefCntPtr<Base> second(std::move(first));
    EXPECT_FALSE(first);  // NOLINT: the state after the move is the point
    EXPECT_TRUE(second);
    EXPECT_EQ(1, gm_living);
}

TEST_F(RefCntPtrTest, AssigningReleasesTheEarlierObject) {
    RefCntPtr<Base> pointer(new Base);
    pointer = RefCntPtr<Base>(new Derived(9));
    EXPECT_EQ(1, gm_living);
    EXPECT_EQ(9, pointer->Number());
    pointer = nullptr;
    EXPECT_EQ(0, gm_living);
}

TEST_F(RefCntPtrTest, AssigningToItselfKeepsTheObject) {
    RefCntPtr<Base> pointer(new Base);
    RefCntPtr<Base>& same = pointer;
    pointer = same;
    EXPECT_TRUE(pointer);
    pointer = std::move(same);
    EXPECT_TRUE(pointer);
    EXPECT_EQ(1, gm_living);
}

TEST_F(RefCntPtrTest, ConvertsToABaseClass) {
    RefCntPtr<Derived> derived(new Derived);
    const RefCntPtr<Base> copied(derived);
    const RefCntPtr<const Base> constant(copied);
    const RefCntPtr<Base> moved(std::move(derived));
    EXPECT_EQ(copied, moved);
    EXPECT_EQ(2, constant->Number());
    EXPECT_FALSE(derived);  // NOLINT: the state after the move is the point
    EXPECT_FALSE((std::is_convertible_v<RefCntPtr<Base>, RefCntPtr<Derived>>));
}

TEST_F(RefCntPtrTest, EqualMeansTheSameObject) {
    const RefCntPtr<Base> one(new Base);
    const RefCntPtr<Base> two(new Base);
    EXPECT_TRUE(one == RefCntPtr<const Base>(one));
    EXPECT_FALSE(one == two);
    EXPECT_TRUE(one != two);
    EXPECT_TRUE(one == one.Get());
    EXPECT_TRUE(one != nullptr);
    EXPECT_TRUE(RefCntPtr<Base>() == nullptr);
    EXPECT_TRUE((one < two) != (two < one));
    EXPECT_EQ(std::hash<RefCntPtr<Base>>()(one), std::hash<RefCntPtr<Base>>()(RefCntPtr<Base>(one)));
}

TEST_F(RefCntPtrTest, ResetTakesAnotherObject) {
    RefCntPtr<Base> pointer(new Base);
    pointer.Reset(new Derived(4));
    EXPECT_EQ(1, gm_living);
    EXPECT_EQ(4, pointer->Number());
}

TEST_F(RefCntPtrTest, DetachGivesTheReferenceAway) {
    RefCntPtr<Base> pointer(new Base);
    Base* const object = pointer.Detach();
    EXPECT_FALSE(pointer);
    EXPECT_EQ(1, gm_living);
    object->RemoveReference();
}

TEST_F(RefCntPtrTest, AttachTakesBackWhatDetachGaveAway) {
    RefCntPtr<Base> pointer(new Base);
    Base* const object = pointer.Detach();
    {
        const RefCntPtr<Base> again = RefCntPtr<Base>::Attach(object);
        EXPECT_EQ(object, again.Get());
        EXPECT_EQ(1, gm_living);
    }
    EXPECT_EQ(0, gm_living) << "the reference was taken over, none was added";
    EXPECT_FALSE(RefCntPtr<Base>::Attach(nullptr));
}

TEST_F(RefCntPtrTest, SwapExchangesTheObjects) {
    RefCntPtr<Base> one(new Derived(1));
    RefCntPtr<Base> two(new Derived(2));
    one.Swap(two);
    EXPECT_EQ(2, one->Number());
    EXPECT_EQ(1, two->Number());
}

TEST_F(RefCntPtrTest, DynamicCastSharesOrIsEmpty) {
    RefCntPtr<Base> pointer = MakeRefCnt<Derived>(7);
    const RefCntPtr<Derived> derived = DynamicPtrCast<Derived>(pointer);
    pointer.Reset();
    EXPECT_EQ(7, derived->Number());
    EXPECT_FALSE(DynamicPtrCast<Other>(derived));
    EXPECT_FALSE(DynamicPtrCast<Derived>(RefCntPtr<Base>()));
}

}  // namespace
