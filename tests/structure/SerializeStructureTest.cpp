#include <qvpreslayer/SerializeStructure.h>  // first: the header stands alone

#include <stdexcept>
#include <type_traits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <qvpreslayer/qvpreslayer.h>

#include "structure/FailingVisitor.h"
#include "structure/StructureHost.h"
#include "support/Failures.h"
#include "support/Printing.h"
#include "support/TraceVisitor.h"

namespace {

class SerializeStructureTest : public testing::Test {
protected:
    view::Host m_host;
    TraceVisitor m_visitor;
    SerializeStructure m_stream{m_visitor, true, false};
};

// A structure serializer that tells when it goes.
class WatchedStructureSerializer : public BagStructureSerializer {
public:
    static inline int s_alive = 0;
    WatchedStructureSerializer() { ++s_alive; }

protected:
    ~WatchedStructureSerializer() override { --s_alive; }
};

static_assert(std::is_abstract_v<IStructureSerializer> && std::has_virtual_destructor_v<IStructureSerializer>);
static_assert(std::is_base_of_v<RefCntObject, IStructureSerializer>);

}  // namespace

TEST_F(SerializeStructureTest, ConstructionTellsNothing) { EXPECT_EQ("", m_visitor.Text()); }

TEST_F(SerializeStructureTest, AnswersWhatItWasGiven) {
    EXPECT_EQ(&m_visitor, &m_stream.GetVisitor());
    EXPECT_FALSE(m_stream.GetCompressArrays());
    EXPECT_TRUE(m_stream.GetUseVerboseNames());
    const SerializeStructure other(m_visitor, false, true);
    EXPECT_TRUE(other.GetCompressArrays());
    EXPECT_FALSE(other.GetUseVerboseNames());
    EXPECT_EQ("", m_visitor.Text());
}

TEST_F(SerializeStructureTest, ParameterGoesUnderItsKind) {
    m_stream.Parameter(view::kTitle, L"a \"b\"");
    m_stream.Parameter(view::kCount, L"5");
    m_stream.Parameter(view::kVisible, L"true");
    m_stream.Parameter(view::kStyle, L"x");  // whatever is registered
    EXPECT_EQ(
        "Parameter(main-title, a \"b\", 1)\n"
        "Parameter(count, 5, 2)\n"
        "Parameter(visible, true, 3)\n"
        "Parameter(style, x, 5)\n",
        m_visitor.Text());
}

TEST_F(SerializeStructureTest, ListKindIsThatOfItsSerializer) {
    m_stream.StartList(view::kLabels, PTC_None);
    m_stream.StartList(view::kSizes, PTC_None);
    m_stream.StartList(view::kFlags, PTC_None);
    EXPECT_EQ("StartList(labels, 1)\nStartList(sizes, 2)\nStartList(flags, 3)\n", m_visitor.Text());
}

TEST_F(SerializeStructureTest, ListKindThatTheCallerGivesCounts) {
    m_stream.StartList(view::kLabels, PTC_Number);
    m_stream.StartList(view::kSizes, PTC_Text);
    m_stream.StartList(view::kSizes, PTC_Structure);
    EXPECT_EQ("StartList(labels, 2)\nStartList(sizes, 1)\nStartList(sizes, 6)\n", m_visitor.Text());
}

TEST_F(SerializeStructureTest, ListOfAnotherKindPassesThatKind) {
    const struct {
        int id;
        const char* trace;
    } cases[] = {
        {view::kTitle, "StartList(main-title, 1)\n"},
        {view::kCount, "StartList(count, 2)\n"},
        {view::kVisible, "StartList(visible, 3)\n"},
        {view::kStyle, "StartList(style, 5)\n"},
        {view::kAxis, "StartList(axis, 6)\n"},
        {view::kAxes, "StartList(axes, 7)\n"},
        {view::kNames, "StartList(names, 8)\n"},
        {view::kAxesByName, "StartList(axes-by-name, 9)\n"},
        {view::kListWithoutSerializer, "StartList(untyped, 5)\n"},  // registered so, a bag
    };
    for (const auto& c : cases) {
        for (const auto kind : {PTC_None, PTC_Number, PTC_List}) {
            TraceVisitor visitor;
            SerializeStructure stream(visitor, true, false);
            stream.StartList(c.id, kind);
            EXPECT_EQ(c.trace, visitor.Text());
        }
    }
}

TEST_F(SerializeStructureTest, ListItemsAndEnd) {
    m_stream.ListItem(L"a,b");
    m_stream.ListItem(L"");
    m_stream.EndList(view::kLabels);
    EXPECT_EQ("ListItem(a,b)\nListItem()\nEndList(labels)\n", m_visitor.Text());
}

TEST_F(SerializeStructureTest, MapKindIsThatOfItsSerializer) {
    m_stream.StartMap(view::kNames);
    m_stream.StartMap(view::kLimits);
    EXPECT_EQ("StartMap(names, 1)\nStartMap(limits, 2)\n", m_visitor.Text());
}

TEST_F(SerializeStructureTest, MapOfAnotherKindPassesThatKind) {
    m_stream.StartMap(view::kAxesByName);
    m_stream.StartMap(view::kLabels);
    m_stream.StartMap(view::kStyle);
    EXPECT_EQ("StartMap(axes-by-name, 9)\nStartMap(labels, 4)\nStartMap(style, 5)\n", m_visitor.Text());
}

TEST_F(SerializeStructureTest, MapItemsPassUnchanged) {
    m_stream.MapItem(L"a-b", L"x", false);
    m_stream.MapItem(L"count", L"y", true);
    m_stream.NullMapItem(L"c-d", false);
    m_stream.NullMapItem(L"e", true);
    m_stream.EndMap(view::kNames);
    EXPECT_EQ(
        "MapItem(a-b, x, false)\n"
        "MapItem(count, y, true)\n"
        "NullMapItem(c-d, false)\n"
        "NullMapItem(e, true)\n"
        "EndMap(names)\n",
        m_visitor.Text());
}

TEST_F(SerializeStructureTest, Composites) {
    m_stream.StartComposite(view::kAxis);
    m_stream.StartComposite(view::kTitle);  // the kind does not matter
    m_stream.EndComposite(view::kTitle);
    m_stream.EndComposite(view::kAxis);
    EXPECT_EQ(
        "StartComposite(axis, false)\n"
        "StartComposite(main-title, false)\n"
        "EndComposite(main-title)\n"
        "EndComposite(axis)\n",
        m_visitor.Text());
}

// The key itself, never a registered name.
TEST_F(SerializeStructureTest, MapItemsThatAreStructures) {
    m_stream.StartMapItem(L"any Key");
    m_stream.EndMapItem(L"any Key");
    EXPECT_EQ("StartComposite(any Key, true)\nEndComposite(any Key)\n", m_visitor.Text());
}

TEST_F(SerializeStructureTest, ShortNames) {
    SerializeStructure stream(m_visitor, false, false);
    stream.Parameter(view::kTitle, L"x");
    stream.StartList(view::kSizes, PTC_None);
    stream.EndList(view::kSizes);
    stream.StartMap(view::kNames);
    stream.EndMap(view::kNames);
    stream.StartComposite(view::kAxis);
    stream.EndComposite(view::kAxis);
    EXPECT_EQ(
        "Parameter(ti, x, 1)\nStartList(si, 2)\nEndList(si)\nStartMap(na, 1)\nEndMap(na)\nStartComposite(ax, false)\n"
        "EndComposite(ax)\n",
        m_visitor.Text());
}

TEST_F(SerializeStructureTest, MissingShortNameIsNotFound) {
    SerializeStructure stream(m_visitor, false, false);
    EXPECT_THAT(Doing([&] { stream.Parameter(view::kLongNameOnly, L"x"); }), ThrowsNotFound(view::kLongNameOnly));
    EXPECT_EQ("", m_visitor.Text());
}

TEST_F(SerializeStructureTest, UnknownIdentifiersAreNotFound) {
    for (const int id : {view::kNotRegistered, view::kNowhere, 0, -1}) {
        EXPECT_THAT(Doing([&] { m_stream.Parameter(id, L"x"); }), ThrowsNotFound(id));
        EXPECT_THAT(Doing([&] { m_stream.StartList(id, PTC_None); }), ThrowsNotFound(id));
        EXPECT_THAT(Doing([&] { m_stream.StartList(id, PTC_Number); }), ThrowsNotFound(id));
        EXPECT_THAT(Doing([&] { m_stream.EndList(id); }), ThrowsNotFound(id));
        EXPECT_THAT(Doing([&] { m_stream.StartMap(id); }), ThrowsNotFound(id));
        EXPECT_THAT(Doing([&] { m_stream.EndMap(id); }), ThrowsNotFound(id));
        EXPECT_THAT(Doing([&] { m_stream.StartComposite(id); }), ThrowsNotFound(id));
        EXPECT_THAT(Doing([&] { m_stream.EndComposite(id); }), ThrowsNotFound(id));
        EXPECT_THAT(Doing([&] { m_stream.GetStructureSerializer(id); }), ThrowsNotFound(id));
    }
    EXPECT_EQ("", m_visitor.Text());
}

TEST_F(SerializeStructureTest, StructureSerializerOfAStructure) {
    EXPECT_EQ(m_host.GetStructureSerializer(view::kAxis), m_stream.GetStructureSerializer(view::kAxis).Get());
    EXPECT_TRUE(m_stream.GetStructureSerializer(view::kAxis));
}

TEST_F(SerializeStructureTest, StructureWithoutASerializerHasAnEmptyOne) {
    EXPECT_FALSE(m_stream.GetStructureSerializer(view::kPlainAxis));
}

TEST_F(SerializeStructureTest, OtherKindsHaveNoStructureSerializer) {
    for (const int id : {view::kTitle, view::kLabels, view::kStyle, view::kAxes, view::kAxesByName, view::kNames}) {
        EXPECT_THAT(Doing([&] { m_stream.GetStructureSerializer(id); }), ThrowsNotFound(id));
    }
}

TEST_F(SerializeStructureTest, StructureSerializerComesWithAReferenceOfItsOwn) {
    m_host.Add(L"watched", 200, 209,
               [](AbstractParamAdder& adder) { adder.AddStructure(200, L"w", new WatchedStructureSerializer); });
    {
        const auto serializer = m_stream.GetStructureSerializer(200);
        EXPECT_EQ(1, WatchedStructureSerializer::s_alive);
        m_host.Clear(L"watched");
        EXPECT_EQ(1, WatchedStructureSerializer::s_alive);
    }
    EXPECT_EQ(0, WatchedStructureSerializer::s_alive);
}

// No nesting is kept: what does not match is told as it comes.
TEST_F(SerializeStructureTest, BalanceIsTheWritersBusiness) {
    m_stream.EndMap(view::kNames);
    m_stream.StartList(view::kLabels, PTC_None);
    m_stream.EndComposite(view::kAxis);
    EXPECT_EQ("EndMap(names)\nStartList(labels, 1)\nEndComposite(axis)\n", m_visitor.Text());
}

TEST_F(SerializeStructureTest, WhatTheVisitorThrowsPasses) {
    FailingVisitor visitor("Parameter");
    SerializeStructure stream(visitor, true, false);
    EXPECT_THAT(Doing([&] { stream.Parameter(view::kTitle, L"x"); }),
                testing::ThrowsMessage<std::runtime_error>(testing::StrEq("Parameter")));
    EXPECT_EQ("Parameter(main-title, x, 1)\n", visitor.Text());
}

TEST(SerializeStructure, NeedsARegistry) {
    TraceVisitor visitor;
    EXPECT_THAT(Doing([&] { SerializeStructure(visitor, true, false); }),
                ThrowsLogicFailure("gm_RegistryInstance != nullptr"));
}

TEST(SerializeStructure, KeepsTheRegistryOfItsConstruction) {
    view::Host host;
    TraceVisitor visitor;
    SerializeStructure stream(visitor, true, false);
    TestRegistry another;  // published in its place, and empty
    stream.StartComposite(view::kAxis);
    EXPECT_EQ("StartComposite(axis, false)\n", visitor.Text());
}
