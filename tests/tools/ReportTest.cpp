#include "tools/ToolsTestSupport.h"

#include "tools/qvpres/report/ReportData.h"
#include "tools/qvpres/report/ReportPage.h"

using nlohmann::ordered_json;

namespace {

ordered_json DataOf(const std::string& json) {
    const ChartHost host;
    qvpres::CheckOptions options;
    options.strict = true;
    const auto findings = Check(json, host.Loaded(), L"chart", options);
    return MakeReportData(*host.Cut(json), findings, "a title");
}

std::string String(const ordered_json& data, const char* column, std::size_t node) {
    return data.at("strings").at(data.at("nodes").at(column).at(node).get<std::size_t>());
}

}  // namespace

TEST(ReportData, NodesStandInColumns) {
    const ordered_json data = DataOf(R"({"title": "a", "marks": [{"xValue": 1}]})");
    EXPECT_EQ(data.at("title"), "a title");
    EXPECT_EQ(data.at("namespace"), "chart");
    EXPECT_EQ(data.at("characters"), 40);
    EXPECT_EQ(data.at("nodes").at("parent"), ordered_json({-1, 0, 0, 2, 3}));
    EXPECT_EQ(data.at("nodes").at("id"), ordered_json({0, 1001, 1008, 0, 1009}));
    EXPECT_EQ(data.at("nodes").at("size"), ordered_json({40, 12, 24, 13, 11}));
    EXPECT_EQ(String(data, "name", 1), "title");
    EXPECT_EQ(String(data, "short", 1), "ti");
    EXPECT_EQ(String(data, "type", 1), "text");
    EXPECT_EQ(String(data, "value", 1), "\"a\"");
    EXPECT_EQ(String(data, "name", 3), "0");
    EXPECT_EQ(String(data, "type", 3), "structure");
    EXPECT_EQ(data.at("findings"), ordered_json::array());
}

TEST(ReportData, ShortListsArePicturedElementByElement) {
    const ordered_json data = DataOf(R"({"days": [7, [1, 4, 2], [], null]})");
    const ordered_json& list = data.at("lists").at("1");
    EXPECT_EQ(list.at("count"), 6);
    EXPECT_EQ(list.at("nulls"), 1);
    EXPECT_EQ(list.at("runs"), 1);
    EXPECT_EQ(list.at("inRuns"), 4);
    EXPECT_EQ(list.at("min"), 1.0);
    EXPECT_EQ(list.at("max"), 7.0);
    EXPECT_EQ(list.at("mean"), 4.6);  // 7, 1, 3, 5, 7
    EXPECT_EQ(list.at("elements"), ordered_json({{7.0, 0.0, 1, 0, 0}, {1.0, 2.0, 4, 1, 0}, {0.0, 0.0, 1, 0, 1}}));
}

TEST(ReportData, LongListsArePicturedInParts) {
    const ordered_json data = DataOf(R"({"days": [[0, 400000, 1], [5, 400000], []]})");
    const ordered_json& list = data.at("lists").at("1");
    EXPECT_FALSE(list.contains("elements"));
    ASSERT_EQ(list.at("parts").size(), 400U);
    EXPECT_EQ(list.at("parts").at(1), ordered_json({2000.0, 3999.0, 1.0}));
    EXPECT_EQ(list.at("parts").at(399), ordered_json({5.0, 5.0, 1.0}));
}

TEST(ReportData, FindingsKnowTheirNode) {
    const ordered_json data = DataOf(R"({"title": "a", "style": {"fontSize": "x", "nobody": 1}})");
    ASSERT_EQ(data.at("findings").size(), 2U);
    EXPECT_EQ(data.at("findings").at(0).at("node"), 3);
    EXPECT_EQ(data.at("findings").at(1).at("node"), 4);
    EXPECT_EQ(data.at("findings").at(1).at("code"), "unknown-name");
}

TEST(ReportPage, DataCannotEndItsScript) {
    const ordered_json data = {{"k", "</script><!--&\xE2\x80\xA8\xE2\x80\xA9\xE2\x80\x93"}};
    const std::string json = qvpres::EmbeddableJSON(data);
    EXPECT_EQ(json, "{\"k\":\"\\u003c/script\\u003e\\u003c!--\\u0026\\u2028\\u2029\xE2\x80\x93\"}");
    EXPECT_EQ(ordered_json::parse(json), data);
}

TEST(ReportPage, ThePageIsWhole) {
    const std::string page = qvpres::MakeReportPage(DataOf(R"({"title": "</script><b>"})"));
    EXPECT_EQ(page.find("{{"), std::string::npos) << "every part of the template is filled";
    EXPECT_EQ(page.substr(0, 15), "<!DOCTYPE html>");
    EXPECT_NE(page.find("<title>a title</title>"), std::string::npos);
    EXPECT_EQ(page.find("<b>"), std::string::npos);
    for (const char* outside : {"http:", "https:", "src=", "@import", "url("}) {
        std::size_t found = 0;
        for (std::size_t at = page.find(outside); at != std::string::npos; at = page.find(outside, at + 1)) {
            ++found;
        }
        // The name of the SVG format, which nothing is loaded from.
        EXPECT_EQ(found, outside == std::string("http:") ? 1U : 0U) << outside;
    }
}

TEST(ReportPage, TitlesAreEscaped) {
    ordered_json data = DataOf("{}");
    data["title"] = "<i>&\"";
    const std::string page = qvpres::MakeReportPage(data);
    EXPECT_NE(page.find("<title>&lt;i&gt;&amp;&quot;</title>"), std::string::npos);
}
