#include <qvpreslayer/StructureScopes.h>  // first: the header stands alone

#include <type_traits>

#include <gtest/gtest.h>

#include <qvpreslayer/qvpreslayer.h>

#include "structure/StructureHost.h"
#include "support/Printing.h"
#include "support/TraceVisitor.h"

namespace {

class StructureScopes : public testing::Test {
protected:
    view::Host m_host;
    TraceVisitor m_visitor;
    SerializeStructure m_stream{m_visitor, true, false};
};

// Copying a scope is allowed, and its end may throw.
static_assert(std::is_copy_constructible_v<CompositeStructure> && !std::is_nothrow_destructible_v<CompositeStructure>);
static_assert(std::is_copy_constructible_v<ListStructure> && !std::is_nothrow_destructible_v<ListStructure>);
static_assert(std::is_copy_constructible_v<MapStructure> && !std::is_nothrow_destructible_v<MapStructure>);
static_assert(std::is_copy_constructible_v<SubStructure> && !std::is_nothrow_destructible_v<SubStructure>);
static_assert(std::is_copy_constructible_v<MapItemStructure> && !std::is_nothrow_destructible_v<MapItemStructure>);

}  // namespace

TEST_F(StructureScopes, Composite) {
    {
        const CompositeStructure scope(view::kAxis, m_stream);
        EXPECT_EQ("StartComposite(axis, false)\n", m_visitor.Text());
    }
    EXPECT_EQ("StartComposite(axis, false)\nEndComposite(axis)\n", m_visitor.Text());
}

TEST_F(StructureScopes, List) {
    {
        const ListStructure scope(view::kSizes, m_stream, PTC_None);
        EXPECT_EQ("StartList(sizes, 2)\n", m_visitor.Text());
    }
    EXPECT_EQ("StartList(sizes, 2)\nEndList(sizes)\n", m_visitor.Text());
}

TEST_F(StructureScopes, ListKinds) {
    { const ListStructure scope(view::kLabels, m_stream, PTC_None); }
    { const ListStructure scope(view::kLabels, m_stream, PTC_Number); }
    { const ListStructure scope(view::kAxis, m_stream, PTC_Number); }
    EXPECT_EQ(
        "StartList(labels, 1)\nEndList(labels)\n"
        "StartList(labels, 2)\nEndList(labels)\n"
        "StartList(axis, 6)\nEndList(axis)\n",
        m_visitor.Text());
}

TEST_F(StructureScopes, Map) {
    {
        const MapStructure scope(view::kLimits, m_stream);
        EXPECT_EQ("StartMap(limits, 2)\n", m_visitor.Text());
    }
    EXPECT_EQ("StartMap(limits, 2)\nEndMap(limits)\n", m_visitor.Text());
}

TEST_F(StructureScopes, SubStructureAsComposite) {
    {
        const SubStructure scope(view::kAxis, m_stream, true);
        EXPECT_EQ("StartComposite(axis, false)\n", m_visitor.Text());
    }
    EXPECT_EQ("StartComposite(axis, false)\nEndComposite(axis)\n", m_visitor.Text());
}

TEST_F(StructureScopes, SubStructureAsList) {
    {
        const SubStructure scope(view::kAxis, m_stream, false);
        EXPECT_EQ("StartList(axis, 6)\n", m_visitor.Text());
    }
    { const SubStructure scope(view::kLabels, m_stream, false); }  // a list proper: the kind of its serializer
    EXPECT_EQ("StartList(axis, 6)\nEndList(axis)\nStartList(labels, 1)\nEndList(labels)\n", m_visitor.Text());
}

TEST_F(StructureScopes, MapItem) {
    {
        const MapItemStructure scope(L"count", m_stream);  // a registered name means nothing here
        EXPECT_EQ("StartComposite(count, true)\n", m_visitor.Text());
    }
    EXPECT_EQ("StartComposite(count, true)\nEndComposite(count)\n", m_visitor.Text());
}

TEST_F(StructureScopes, MapItemKeepsItsKey) {
    {
        TString key = L"before";
        const MapItemStructure scope(key, m_stream);
        key = L"after";
    }
    EXPECT_EQ("StartComposite(before, true)\nEndComposite(before)\n", m_visitor.Text());
}

TEST_F(StructureScopes, NestedScopesCloseInnermostFirst) {
    {
        const CompositeStructure composite(view::kAxis, m_stream);
        const MapStructure map(view::kAxesByName, m_stream);
        const MapItemStructure item(L"k", m_stream);
        const ListStructure list(view::kSizes, m_stream, PTC_None);
        m_stream.ListItem(L"1");
    }
    EXPECT_EQ(
        "StartComposite(axis, false)\nStartMap(axes-by-name, 9)\nStartComposite(k, true)\nStartList(sizes, 2)\n"
        "ListItem(1)\n"
        "EndList(sizes)\nEndComposite(k)\nEndMap(axes-by-name)\nEndComposite(axis)\n",
        m_visitor.Text());
}

TEST_F(StructureScopes, ShortNames) {
    SerializeStructure stream(m_visitor, false, false);
    { const CompositeStructure scope(view::kAxis, stream); }
    { const SubStructure scope(view::kAxis, stream, false); }
    { const MapItemStructure scope(L"key-itself", stream); }
    EXPECT_EQ(
        "StartComposite(ax, false)\nEndComposite(ax)\n"
        "StartList(ax, 6)\nEndList(ax)\n"
        "StartComposite(key-itself, true)\nEndComposite(key-itself)\n",
        m_visitor.Text());
}

TEST_F(StructureScopes, EveryCopyTellsAnEnd) {
    {
        const ListStructure original(view::kSizes, m_stream, PTC_None);
        const ListStructure copy(original);
    }
    EXPECT_EQ("StartList(sizes, 2)\nEndList(sizes)\nEndList(sizes)\n", m_visitor.Text());
}

TEST_F(StructureScopes, CopiesOfTheOtherScopes) {
    {
        const CompositeStructure composite(view::kAxis, m_stream);
        const CompositeStructure compositeCopy(composite);
    }
    {
        const MapStructure map(view::kNames, m_stream);
        const MapStructure mapCopy(map);
    }
    {
        const SubStructure sub(view::kAxis, m_stream, false);
        const SubStructure subCopy(sub);
    }
    {
        const MapItemStructure item(L"k", m_stream);
        const MapItemStructure itemCopy(item);
    }
    EXPECT_EQ(
        "StartComposite(axis, false)\nEndComposite(axis)\nEndComposite(axis)\n"
        "StartMap(names, 1)\nEndMap(names)\nEndMap(names)\n"
        "StartList(axis, 6)\nEndList(axis)\nEndList(axis)\n"
        "StartComposite(k, true)\nEndComposite(k)\nEndComposite(k)\n",
        m_visitor.Text());
}
