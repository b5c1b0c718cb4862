// Texts that are deep, long or large once expanded: at each limit, one past it and far beyond it, within 2 seconds,
// from 512 MiB of memory and a stack of 256 KiB.
#include <qvpreslayer/JSONSerializer.h>

#include <stdexcept>

#include "hostile/NestedForms.h"
#include "support/Confined.h"

namespace {

constexpr int kDepth = PresLayerLimits::kDefaultJSONDepth;
constexpr std::size_t kMillion = 1'000'000;
const char* const kNotValid = "The text is not valid JSON.";
const char* const kNotParsed = "Error parsing command parameter value string";

std::string Repeated(std::size_t count, std::string_view text) {
    std::string result;
    result.reserve(count * text.size());
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

// "done" when the text is read, else what reading fails with.
std::string OutcomeOfReading(const std::string& json) {
    const ViewRegistry registry;
    return OutcomeConfined([&] {
        if (!JSONSerializer(L"view").ToParameters(TString::FromUtf8(json))) {
            throw std::runtime_error("no bag");
        }
    });
}

// The text of a form with so many objects and arrays inside each other; one number is left out.
std::string NestedText(const NestedForm& form, std::size_t levels) {
    const std::size_t bags = levels / form.textLevels + levels % form.textLevels;
    return Repeated(bags - 1, form.opening) + "{}" + Repeated(bags - 1, form.closing);
}

// A packed list of so many ints, in runs of the largest length and a rest.
std::string PackedInts(std::uint64_t count) {
    std::string list;
    for (; count > 4294967295; count -= 4294967295) {
        list += "[1,4294967295],";
    }
    return "[" + list + "[1," + std::to_string(count) + "],[]]";
}

}  // namespace

TEST(TextBombs, NestedBagsAndStructures) {
    for (const NestedForm& form : kNestedForms) {
        SCOPED_TRACE(form.name);
        const std::size_t deepest = form.textLevels == 1 ? kDepth : kDepth - 1;  // an odd number of pairs and one
        EXPECT_EQ("done", OutcomeOfReading(NestedText(form, deepest)));
        EXPECT_EQ(kNotValid, OutcomeOfReading(NestedText(form, deepest + form.textLevels)));
        EXPECT_EQ(kNotValid, OutcomeOfReading(NestedText(form, kMillion)));
    }
}

TEST(TextBombs, NestedArrays) {
    const auto arrays = [](std::size_t levels) {
        return "{\"textList\":" + std::string(levels - 1, '[') + std::string(levels - 1, ']') + "}";
    };
    EXPECT_EQ("done", OutcomeOfReading(arrays(kDepth)));
    EXPECT_EQ(kNotValid, OutcomeOfReading(arrays(kDepth + 1)));
    EXPECT_EQ(kNotValid, OutcomeOfReading(arrays(kMillion)));
    EXPECT_EQ(kNotValid, OutcomeOfReading(std::string(10 * kMillion, '[')));
    EXPECT_EQ(kNotValid, OutcomeOfReading(std::string(10 * kMillion, '{')));
    EXPECT_EQ(kNotValid, OutcomeOfReading(Repeated(kMillion, "{\"\":")));
    EXPECT_EQ(kNotValid, OutcomeOfReading(Repeated(kMillion, "[/*\"*/")));
}

TEST(TextBombs, HostsSetTheDepth) {
    const LimitsScope scope;
    const auto arrays = [](int levels) {
        const auto count = static_cast<std::size_t>(levels) - 1;
        return "{\"textList\":" + std::string(count, '[') + std::string(count, ']') + "}";
    };
    for (const int limit : {2, 600, 100'000}) {
        PresLayerLimits::SetJSONDepth(limit);
        EXPECT_EQ("done", OutcomeOfReading(arrays(limit)));
        EXPECT_EQ(kNotValid, OutcomeOfReading(arrays(limit + 1)));
        EXPECT_EQ("done", OutcomeOfReading(NestedText(kNestedForms[1], static_cast<std::size_t>(limit))));
        EXPECT_EQ(kNotValid, OutcomeOfReading(NestedText(kNestedForms[1], static_cast<std::size_t>(limit) + 1)));
    }
    for (const int limit : {0, -1}) {
        PresLayerLimits::SetJSONDepth(limit);
        EXPECT_EQ(kNotValid, OutcomeOfReading("{}"));
        EXPECT_EQ("the JSON root is integer, not object", OutcomeOfReading("5"));
    }
}

TEST(TextBombs, RunsThatExpand) {
    const LimitsScope scope;
    constexpr std::uint64_t kElements = 1000;
    PresLayerLimits::SetExpansionBytes(kElements * sizeof(int));
    const auto list = [](std::uint64_t count) { return "{\"intList\":" + PackedInts(count) + "}"; };
    EXPECT_EQ("done", OutcomeOfReading(list(kElements)));
    EXPECT_EQ(kNotParsed, OutcomeOfReading(list(kElements + 1)));
    const auto twoLists = [](std::uint64_t count) {
        return "{\"intList\":" + PackedInts(count / 2) + ",\"unsignedList\":" + PackedInts(count - count / 2) + "}";
    };
    EXPECT_EQ("done", OutcomeOfReading(twoLists(kElements)));
    EXPECT_EQ(kNotParsed, OutcomeOfReading(twoLists(kElements + 1)));
    PresLayerLimits::SetExpansionBytes(0);
    EXPECT_EQ("done", OutcomeOfReading(R"({"intList":[1,2,[]]})"));
    EXPECT_EQ(kNotParsed, OutcomeOfReading(list(1)));
}

TEST(TextBombs, RunsFarBeyondTheDefaultLimit) {
    for (const char* name : {"intList", "unsignedList", "bigList", "bigUnsignedList", "smallRealList", "realList"}) {
        SCOPED_TRACE(name);
        const std::string member = std::string("{\"") + name + "\":";
        EXPECT_EQ(kNotParsed, OutcomeOfReading(member + PackedInts(536'870'912) + "}"));
        EXPECT_EQ(kNotParsed, OutcomeOfReading(member + PackedInts(4'000'000'000'000) + "}"));
        EXPECT_EQ(kNotParsed,
                  OutcomeOfReading(member + "[" + Repeated(10'000, "[\"1\",\"4000000000\",\"1\"],") + "[]]}"));
    }
}

TEST(TextBombs, LongTextsOfEveryKind) {
    constexpr std::size_t kLong = 300'000;
    const std::string digits(kLong, '7');
    const struct {
        std::string json;
        const char* outcome;
    } cases[] = {
        {"{\"real\":" + digits + "}", kNotValid},
        {"{\"real\":0." + digits + "}", "done"},
        {"{\"real\":-0." + digits + "e-" + std::string(18, '9') + "}", "done"},
        {"{\"real\":0.1e" + digits + "}", kNotValid},
        {"{\"real\":0.1e-" + digits + "}", "done"},
        {"{\"maxCount\":\"" + digits + "\"}", kNotParsed},
        {"{\"maxCount\":\"" + std::string(kLong, '0') + "7\"}", "done"},
        {"{\"big\":\"-" + digits + "\"}", kNotParsed},
        {"{\"uuid\":\"" + digits + "\"}", kNotParsed},
        {"{\"hours\":\"" + digits + "\"}", kNotParsed},
        {"{\"flag\":\"" + digits + "\"}", kNotParsed},
        {"{\"field\":\"" + Repeated(kLong / 4, "[a].") + "\"}", kNotParsed},
        {"{\"field\":\"" + std::string(kLong, '[') + "\"}", kNotParsed},
        {"{\"qualified\":\"[" + std::string(kLong, ']') + "\"}", kNotParsed},  // an odd one closes, the rest is left
        {"{\"text\":\"" + Repeated(kLong, "\\u0000") + "\"}", "done"},
        {"{\"text\":\"" + Repeated(kLong, "\\\\") + "\"}", "done"},
        {"{\"secret\":\"" + digits + "\"}", "done"},
        {"{\"textList\":[" + Repeated(kLong, "[],") + "[]]}", "done"},
        {"{\"textList\":[" + Repeated(kLong, "null,") + "1]}", "done"},
        {"{\"intList\":[" + Repeated(kLong / 2, "[],") + "[]]}", "done"},
        {"{\"myMap\":{" + Repeated(kLong / 2, "\"k\":1,") + "\"k\":2}}", "done"},
        {"{\"items\":[" + Repeated(kLong / 10, "{},") + "{}]}", "done"},
        {"{\"n\":1" + Repeated(kLong / 2, ",\"n\":1") + "}", "done"},
        {std::string(10 * kLong, ' ') + "{}", "done"},
        {Repeated(kLong, "/**/") + "{}", "done"},
        {"{}" + std::string(10 * kLong, '['), "done"},
        {"\"" + std::string(10 * kLong, 'x'), kNotValid},
        {"/*" + std::string(10 * kLong, '*'), kNotValid},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.outcome, OutcomeOfReading(c.json)) << c.json.substr(0, 60);
    }
    const std::string name(kLong, 'A');
    const std::string unknown = OutcomeOfReading("{\"" + name + "\":1}");
    EXPECT_EQ(0U, unknown.find("Error finding command parameter: -a-a")) << unknown.substr(0, 60);
}
