#include <cmath>

#include "tools/ToolsTestSupport.h"

#include "tools/qvpres/text/NumberList.h"

using qvpres::NumberList;
using qvpres::NumberRange;

namespace {

// The list under a name of the chart.
std::optional<NumberList> ListOf(const std::string& name, const std::string& array) {
    const ChartHost host;
    const auto text = host.Cut("{\"" + name + "\": " + array + "}");
    return NumberList::From(*text, text->Find("/" + name));
}

std::optional<NumberList> Days(const std::string& array) { return ListOf("days", array); }

}  // namespace

TEST(NumberList, FiguresOfPlainNumbers) {
    const auto list = ListOf("markSizes", "[2, 4.5, -1e1, \"3\"]");
    ASSERT_TRUE(list);
    EXPECT_EQ(list->Total().elements, 4U);
    EXPECT_EQ(list->Total().numbers, 4U);
    EXPECT_EQ(list->Total().packed, 0U);
    EXPECT_EQ(list->PackedRuns(), 0U);
    EXPECT_EQ(list->Total().low, -10);
    EXPECT_EQ(list->Total().high, 4.5L);
    EXPECT_EQ(list->Total().sum, -0.5L);  // 2 + 4.5 - 10 + 3
    EXPECT_EQ(list->Total().first, 2);
    EXPECT_EQ(list->Total().last, 3);
}

TEST(NumberList, RunsStayRuns) {
    // 9, 10 8 6 4, 7 7 7, and the mark of packed lists
    const auto list = Days("[9, [10, 4, -2], [7, 3], []]");
    ASSERT_TRUE(list);
    EXPECT_EQ(list->Total().elements, 8U);
    EXPECT_EQ(list->Total().packed, 7U);
    EXPECT_EQ(list->PackedRuns(), 2U);
    EXPECT_EQ(list->Total().low, 4);
    EXPECT_EQ(list->Total().high, 10);
    EXPECT_EQ(list->Total().sum, 9 + 28 + 21);
    EXPECT_EQ(list->Total().last, 7);
}

TEST(NumberList, ARunOfBillionsCostsNothing) {
    const auto list = Days("[[1, 4000000000, 1], []]");
    ASSERT_TRUE(list);
    EXPECT_EQ(list->Total().elements, 4000000000U);
    EXPECT_EQ(list->Total().high, 4000000000.0L);
    EXPECT_EQ(list->Parts(3).size(), 3U);
    EXPECT_EQ(list->Parts(4)[1].low, 1000000001.0L);
}

TEST(NumberList, NestedArraysOfOtherLengthsStandForNothing) {
    const auto list = Days("[1, [], [5], [1, 2, 3, 4], [2, 0], [2, -3], 8]");
    ASSERT_TRUE(list);
    EXPECT_EQ(list->Total().elements, 2U);
    EXPECT_EQ(list->Total().sum, 9);
}

TEST(NumberList, NullsAreGaps) {
    const auto list = ListOf("markSizes", "[null, 1, null]");
    ASSERT_TRUE(list);
    EXPECT_EQ(list->Total().elements, 3U);
    EXPECT_EQ(list->Total().numbers, 1U);
    EXPECT_EQ(list->Total().low, 1);
    EXPECT_EQ(Sparkline(*list, 3), " ▁ ");
}

TEST(NumberList, TypedNumbersCount) {
    const auto list = ListOf("readings", R"(["i:1", "i:null", "r:::2.5", ["i:5", "4", "2"], []])");
    ASSERT_TRUE(list);
    EXPECT_EQ(list->Total().elements, 7U);
    EXPECT_EQ(list->Total().numbers, 6U);
    EXPECT_EQ(list->Total().high, 11);  // 5 7 9 11
    EXPECT_EQ(list->Total().sum, 1 + 2.5L + 32);
}

TEST(NumberList, NothingElseIsAListOfNumbers) {
    EXPECT_FALSE(Days(R"([1, "x"])"));
    EXPECT_FALSE(Days("[1, true]"));
    EXPECT_FALSE(Days("[1, {}]"));
    EXPECT_FALSE(Days(R"([["x", 4]])"));
    EXPECT_FALSE(Days("[[1, 1e20]]")) << "a length that no run has";
    EXPECT_FALSE(Days("7"));
    EXPECT_FALSE(ListOf("dateRange", "[1, 2]")) << "a structure in list form";
    EXPECT_FALSE(ListOf("readings", "[1, 2]")) << "typed values are texts";
    EXPECT_FALSE(ListOf("readings", R"(["s::a"])"));
    EXPECT_FALSE(ListOf("readings", R"(["i:x"])"));
    EXPECT_TRUE(Days("[]"));
}

TEST(NumberList, IntegersOf64BitsAreExact) {
    const auto list = Days("[9223372036854775807, 18446744073709551615, -9223372036854775808]");
    ASSERT_TRUE(list);
    EXPECT_EQ(list->Runs()[0].first, 9223372036854775807.0L);
    EXPECT_EQ(list->Total().high, 18446744073709551615.0L);
    EXPECT_EQ(list->Total().low, -9223372036854775808.0L);
}

// Parts of equal size, worked out from the elements one by one.
TEST(NumberList, PartsHoldTheElementsInOrder) {
    const auto list = Days("[9, [10, 5, -2], 7, [7, 4], 1, 2, 3, 50, []]");
    ASSERT_TRUE(list);
    const std::vector<double> elements = {9, 10, 8, 6, 4, 2, 7, 7, 7, 7, 7, 1, 2, 3, 50};
    for (std::size_t count = 1; count <= 20; ++count) {
        const auto parts = list->Parts(count);
        const std::size_t expected = std::min<std::size_t>(count, elements.size());
        ASSERT_EQ(parts.size(), expected);
        std::size_t from = 0;
        for (std::size_t i = 0; i < parts.size(); ++i) {
            const std::size_t to = elements.size() * (i + 1) / expected;
            double low = elements[from];
            double high = elements[from];
            double sum = 0;
            for (std::size_t j = from; j < to; ++j) {
                low = std::min(low, elements[j]);
                high = std::max(high, elements[j]);
                sum += elements[j];
            }
            EXPECT_EQ(parts[i].elements, to - from) << count << " " << i;
            EXPECT_EQ(static_cast<double>(parts[i].low), low) << count << " " << i;
            EXPECT_EQ(static_cast<double>(parts[i].high), high) << count << " " << i;
            EXPECT_EQ(static_cast<double>(parts[i].sum), sum) << count << " " << i;
            from = to;
        }
    }
}

TEST(NumberList, SparklinesRiseWithTheNumbers) {
    EXPECT_EQ(Sparkline(*Days("[0, 1, 2, 3, 4, 5, 6, 7]"), 8), "▁▂▃▄▅▆▇█");
    EXPECT_EQ(Sparkline(*Days("[[0, 8, 1], []]"), 4), "▁▃▆█");  // means 0.5, 2.5, 4.5, 6.5
    EXPECT_EQ(Sparkline(*Days("[5, 5]"), 10), "▁▁");
    EXPECT_EQ(Sparkline(*Days("[]"), 10), "");
}
