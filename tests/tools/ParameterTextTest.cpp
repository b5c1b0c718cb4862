#include "tools/ToolsTestSupport.h"

using qvpres::NameForm;
using qvpres::ParameterText;
using qvpres::Role;

namespace {

using Node = ParameterText::Node;

// The text of a node, its name included.
std::string Slice(const ParameterText& text, Node node) {
    return TString(text.Text().substr(text[node].begin, text[node].behind - text[node].begin)).ToUtf8();
}

}  // namespace

TEST(ParameterText, MembersAreParametersOrUnknown) {
    const ChartHost host;
    const auto text = host.Cut(R"({"title": "a", "nobody": {"title": 1}, "markSizes": [1]})");
    const auto children = text->Children(0);
    ASSERT_EQ(children.size(), 3U);
    EXPECT_EQ((*text)[children[0]].role, Role::Parameter);
    EXPECT_EQ((*text)[children[0]].info->id, 1001);
    EXPECT_EQ((*text)[children[1]].role, Role::Unknown);
    EXPECT_EQ((*text)[children[1]].info, nullptr);
    EXPECT_TRUE(text->Children(children[1]).empty()) << "nothing inside an unknown member is looked at";
    EXPECT_EQ((*text)[children[2]].info->id, 1002);
    EXPECT_TRUE(text->Children(children[2]).empty()) << "lists are leaves";
}

TEST(ParameterText, StructuresListsAndMapsHoldNodes) {
    const ChartHost host;
    const auto text = host.Cut(
        R"({"marks": [{"xValue": 1}, 7], "colors": {"a-b": "c"}, "byRegion": {"n": {"title": "t"}, "m": null}})");
    const auto top = text->Children(0);
    const auto marks = text->Children(top[0]);
    ASSERT_EQ(marks.size(), 2U);
    EXPECT_EQ((*text)[marks[0]].role, Role::Element);
    EXPECT_EQ(text->Path(text->Children(marks[0])[0]), "/marks/0/xValue");
    EXPECT_TRUE(text->Children(marks[1]).empty());
    const auto colors = text->Children(top[1]);
    ASSERT_EQ(colors.size(), 1U);
    EXPECT_EQ((*text)[colors[0]].role, Role::Entry);
    EXPECT_EQ(text->Path(colors[0]), "/colors/a-b");
    const auto regions = text->Children(top[2]);
    ASSERT_EQ(regions.size(), 2U);
    EXPECT_EQ(text->Children(regions[0]).size(), 1U);
    EXPECT_TRUE(text->Children(regions[1]).empty());
}

TEST(ParameterText, EveryNodeKnowsItsStretchOfTheText) {
    const ChartHost host;
    const std::string json =
        R"( {"style" : { "fontSize":/* } */ 1 , "showGrid": true } , "title" : "}\"]" , "days":[ [1,4], [] ] } rest )";
    const auto text = host.Cut(json);
    EXPECT_EQ(Slice(*text, 0), json.substr(1, json.size() - 7));
    const auto top = text->Children(0);
    ASSERT_EQ(top.size(), 3U);
    EXPECT_EQ(Slice(*text, top[0]), R"("style" : { "fontSize":/* } */ 1 , "showGrid": true })");
    EXPECT_EQ(Slice(*text, text->Children(top[0])[0]), R"("fontSize":/* } */ 1)");
    EXPECT_EQ(Slice(*text, top[1]), R"("title" : "}\"]")");
    EXPECT_EQ(Slice(*text, top[2]), R"("days":[ [1,4], [] ])");
}

TEST(ParameterText, StretchesOfNestedContainersEndAtTheirOwnBracket) {
    const ChartHost host;
    const auto text = host.Cut(R"({"style":{"style":{"style":{}}},"title":"x"})");
    const auto outer = text->Children(0)[0];
    const auto middle = text->Children(outer)[0];
    EXPECT_EQ(Slice(*text, outer), R"("style":{"style":{"style":{}}})");
    EXPECT_EQ(Slice(*text, middle), R"("style":{"style":{}})");
}

TEST(ParameterText, AnEarlierMemberOfTheSameNameIsOverridden) {
    const ChartHost host;
    const auto text = host.Cut(R"({"title": "a", "title": "b", "nobody": 1, "nobody": 2, "title": "c"})");
    std::vector<bool> overridden;
    for (const Node child : text->Children(0)) {
        overridden.push_back((*text)[child].overridden);
    }
    EXPECT_EQ(overridden, (std::vector<bool>{true, true, true, false, false}));
}

TEST(ParameterText, NamesAreFoundOutFromTheFirstThatTells) {
    const ChartHost host;
    EXPECT_EQ(host.Cut(R"({"title": 1})")->Names(), NameForm::Verbose);
    EXPECT_EQ(host.Cut(R"({"nobody": 1, "ti": 1, "title": 1})")->Names(), NameForm::Short);
    EXPECT_EQ(host.Cut(R"({"ti": 1})", "verbose")->Names(), NameForm::Verbose);
    EXPECT_EQ(host.Cut(R"({"title": 1})", "short")->Names(), NameForm::Short);
    EXPECT_EQ(host.Cut(R"({"nobody": 1})")->Names(), NameForm::Verbose);
    EXPECT_EQ(host.Cut("{}")->Names(), NameForm::Verbose);
    EXPECT_EQ(host.Cut("[1]")->Names(), NameForm::Verbose);
}

TEST(ParameterText, ShortNamesLeadToParameters) {
    const ChartHost host;
    const auto text = host.Cut(R"({"ms": [1], "title": 1})");
    const auto top = text->Children(0);
    EXPECT_EQ((*text)[top[0]].info->id, 1002);
    EXPECT_EQ((*text)[top[1]].role, Role::Unknown) << "a verbose name among short ones";
}

TEST(ParameterText, PathsFindNodesInAnySpelling) {
    const ChartHost host;
    const auto text = host.Cut(R"({"style": {"fontSize": 11}, "marks": [{"xValue": 1}, {"xValue": 2}]})");
    const auto size = text->Find("/style/fontSize");
    ASSERT_NE(size, ParameterText::kNone);
    EXPECT_EQ(text->ValueText(size), u"11");
    for (const char* path : {"/style/font-size", "style/fs", "/1003/1004", "/sy/fontSize"}) {
        EXPECT_EQ(text->Find(path), size) << path;
    }
    EXPECT_EQ(text->ValueText(text->Find("/marks/1/xValue")), u"2");
    EXPECT_EQ(text->Find(""), 0U);
    EXPECT_EQ(text->Find("/"), 0U);
    for (const char* path : {"/nobody", "/marks/2", "/marks/x", "/style/fontSize/0", "//"}) {
        EXPECT_EQ(text->Find(path), ParameterText::kNone) << path;
    }
}

TEST(ParameterText, APathLeadsToTheMemberThatIsRead) {
    const ChartHost host;
    const auto text = host.Cut(R"({"title": "a", "title": "b"})");
    EXPECT_EQ(text->ValueText(text->Find("/title")), u"b");
}

TEST(ParameterText, TheDeepestValidTextIsCut) {
    const ChartHost host;
    std::string json;
    for (int i = 0; i < 511; ++i) {
        json += R"({"style":)";
    }
    json += "{}" + std::string(511, '}');
    const auto text = host.Cut(json);
    EXPECT_EQ(text->Nodes().size(), 512U);
    EXPECT_EQ(text->Text().size(), (*text)[0].behind);
    EXPECT_THROW(host.Cut(R"({"style":)" + json + "}"), JSONParseException);
}
