#include <qvpreslayer/StructureScopes.h>  // first: the header stands alone

#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <qvpreslayer/qvpreslayer.h>

#include "structure/FailingVisitor.h"
#include "structure/StructureHost.h"
#include "support/Failures.h"
#include "support/Printing.h"
#include "support/TraceVisitor.h"

namespace {

class ScopeFailures : public testing::Test {
protected:
    view::Host m_host;
    TraceVisitor m_visitor;
    SerializeStructure m_stream{m_visitor, true, false};
};

}  // namespace

TEST_F(ScopeFailures, ExceptionsCloseInnermostFirst) {
    const auto write = [&] {
        const CompositeStructure composite(view::kAxis, m_stream);
        const ListStructure list(view::kSizes, m_stream, PTC_None);
        throw std::runtime_error("in between");
    };
    EXPECT_THAT(write, testing::ThrowsMessage<std::runtime_error>(testing::StrEq("in between")));
    EXPECT_EQ("StartComposite(axis, false)\nStartList(sizes, 2)\nEndList(sizes)\nEndComposite(axis)\n",
              m_visitor.Text());
}

TEST_F(ScopeFailures, UnknownIdentifiersMakeNoScope) {
    for (const int id : {view::kNotRegistered, view::kNowhere}) {
        EXPECT_THAT(Doing([&] { CompositeStructure(id, m_stream); }), ThrowsNotFound(id));
        EXPECT_THAT(Doing([&] { ListStructure(id, m_stream, PTC_None); }), ThrowsNotFound(id));
        EXPECT_THAT(Doing([&] { MapStructure(id, m_stream); }), ThrowsNotFound(id));
        EXPECT_THAT(Doing([&] { SubStructure(id, m_stream, true); }), ThrowsNotFound(id));
        EXPECT_THAT(Doing([&] { SubStructure(id, m_stream, false); }), ThrowsNotFound(id));
    }
    EXPECT_EQ("", m_visitor.Text());
}

TEST_F(ScopeFailures, StartThatThrowsHasNoEnd) {
    FailingVisitor lists("StartList");
    SerializeStructure toLists(lists, true, false);
    EXPECT_THROW(ListStructure(view::kSizes, toLists, PTC_None), std::runtime_error);
    EXPECT_EQ("StartList(sizes, 2)\n", lists.Text());

    FailingVisitor composites("StartComposite");
    SerializeStructure toComposites(composites, true, false);
    EXPECT_THROW(MapItemStructure(L"k", toComposites), std::runtime_error);
    EXPECT_THROW(CompositeStructure(view::kAxis, toComposites), std::runtime_error);
    EXPECT_EQ("StartComposite(k, true)\nStartComposite(axis, false)\n", composites.Text());
}

TEST_F(ScopeFailures, EndThatThrowsReachesTheCaller) {
    const struct {
        const char* event;
        void (*scope)(SerializeStructure&);
    } cases[] = {
        {"EndComposite", [](SerializeStructure& stream) { CompositeStructure(view::kAxis, stream); }},
        {"EndList", [](SerializeStructure& stream) { ListStructure(view::kSizes, stream, PTC_None); }},
        {"EndMap", [](SerializeStructure& stream) { MapStructure(view::kNames, stream); }},
        {"EndComposite", [](SerializeStructure& stream) { SubStructure(view::kAxis, stream, true); }},
        {"EndList", [](SerializeStructure& stream) { SubStructure(view::kAxis, stream, false); }},
        {"EndComposite", [](SerializeStructure& stream) { MapItemStructure(L"k", stream); }},
    };
    for (const auto& c : cases) {
        FailingVisitor visitor(c.event);
        SerializeStructure stream(visitor, true, false);
        EXPECT_THAT(Doing([&] { c.scope(stream); }),
                    testing::ThrowsMessage<std::runtime_error>(testing::StrEq(c.event)));
    }
}

TEST_F(ScopeFailures, EndThatThrowsWhileAnotherPassesIsDropped) {
    const struct {
        const char* event;
        void (*write)(SerializeStructure&);
    } cases[] = {
        {"EndComposite",
         [](SerializeStructure& stream) {
             const CompositeStructure scope(view::kAxis, stream);
             throw std::logic_error("first");
         }},
        {"EndList",
         [](SerializeStructure& stream) {
             const ListStructure scope(view::kSizes, stream, PTC_None);
             throw std::logic_error("first");
         }},
        {"EndMap",
         [](SerializeStructure& stream) {
             const MapStructure scope(view::kNames, stream);
             throw std::logic_error("first");
         }},
        {"EndList",
         [](SerializeStructure& stream) {
             const SubStructure scope(view::kAxis, stream, false);
             throw std::logic_error("first");
         }},
        {"EndComposite",
         [](SerializeStructure& stream) {
             const MapItemStructure scope(L"k", stream);
             throw std::logic_error("first");
         }},
    };
    for (const auto& c : cases) {
        FailingVisitor visitor(c.event);
        SerializeStructure stream(visitor, true, false);
        EXPECT_THAT(Doing([&] { c.write(stream); }), testing::ThrowsMessage<std::logic_error>(testing::StrEq("first")));
    }
}

// The inner end throws, the outer scope goes by while that passes, and its own failure is dropped.
TEST_F(ScopeFailures, OnlyTheFirstOfTwoFailingEndsPasses) {
    FailingVisitor visitor("EndList");
    SerializeStructure stream(visitor, true, false);
    const auto write = [&] {
        const ListStructure outer(view::kLabels, stream, PTC_None);
        const ListStructure inner(view::kSizes, stream, PTC_None);
    };
    EXPECT_THAT(write, testing::ThrowsMessage<std::runtime_error>(testing::StrEq("EndList")));
    EXPECT_EQ("StartList(labels, 1)\nStartList(sizes, 2)\nEndList(sizes)\nEndList(labels)\n", visitor.Text());
}

// A scope that lives wholly in a handler's clean-up is no part of the exception on its way: its failure counts.
TEST_F(ScopeFailures, ScopesMadeDuringUnwindingMayFail) {
    FailingVisitor visitor("EndComposite");
    SerializeStructure stream(visitor, true, false);
    struct CleanUp {
        SerializeStructure& stream;
        bool& caught;
        ~CleanUp() {
            try {
                CompositeStructure(view::kAxis, stream);
            } catch (const std::runtime_error&) {
                caught = true;
            }
        }
    };
    bool caught = false;
    const auto write = [&] {
        const CleanUp cleanUp{stream, caught};
        throw std::logic_error("first");
    };
    EXPECT_THROW(write(), std::logic_error);
    EXPECT_TRUE(caught);
}

// The name of an end is looked up when it is told.
TEST_F(ScopeFailures, EndOfAnIdentifierThatIsGone) {
    const auto write = [&] {
        const CompositeStructure scope(view::kAxis, m_stream);
        m_host.Clear(L"view");
    };
    EXPECT_THAT(write, ThrowsNotFound(view::kAxis));
    EXPECT_EQ("StartComposite(axis, false)\n", m_visitor.Text());
}
