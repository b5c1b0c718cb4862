// Capture: structure serializers keep the text that they write, and write kept text again.
#include <qvpreslayer/BuildParameterStrings.h>
#include <qvpreslayer/JSONSerializer.h>

#include <string>
#include <vector>

#include "json/JSONTestSupport.h"

namespace {

// A visitor over a text of its own.
struct Writer {
    Writer(JSONSerializer::OutputType type, bool enabled, bool nested) : visitor(out, type, enabled, nested, true) {}

    std::string End() { return visitor.EndCapture().ToUtf8(); }
    std::string Finished() {
        visitor.Finish();
        return out.ToUtf8();
    }

    TString out;
    BuildParameterStrings visitor;
};

// Starts two captures, one inside the other, and keeps what their ends answer, the inner one first.
class CapturingSerializer : public BagStructureSerializer {
public:
    explicit CapturingSerializer(std::vector<std::string>& captures) : m_captures(captures) {}

    void Serialize(RefCntPtr<const IParameter> value, SerializeStructure& stream, int id,
                   bool ownComposite) const override {
        auto& visitor = stream.GetVisitor();
        visitor.StartCapture();
        visitor.StartCapture();
        BagStructureSerializer::Serialize(value, stream, id, ownComposite);
        m_captures.push_back(visitor.EndCapture().ToUtf8());
        m_captures.push_back(visitor.EndCapture().ToUtf8());
    }

private:
    std::vector<std::string>& m_captures;
};

using Captures = std::vector<std::string>;

// A serializer's two flags, as a structure serializer sees them.
class CaptureFlags : public testing::Test {
protected:
    CaptureFlags() {
        m_registry.Add(L"ns", 1, 9, [this](AbstractParamAdder& adder) {
            adder.AddStructure(1, L"model", new CapturingSerializer(m_captures));
            adder.AddSimple(2, L"n", new ParameterTypeSerializer<int>);
        });
    }
    ~CaptureFlags() override { JSONSerializer::ForceDisableCapture(false); }

    Captures CapturesOf(const JSONSerializer& serializer) {
        m_captures.clear();
        serializer.ToString(MakeBag({{1, BagVal(MakeBag({{2, Val(5)}}))}}), JSONSerializer::Compact);
        return m_captures;
    }

    Captures m_captures;
    TestRegistry m_registry;
    JSONSerializer m_serializer{L"ns"};
};

const Captures kOff = {"", ""};
const Captures kOuterOnly = {"", R"("model":{"n": 5})"};
const Captures kBoth = {R"("model":{"n": 5})", R"("model":{"n": 5})"};

}  // namespace

TEST(Capture, OfATextThatIsGoneIsEmpty) {
    Writer writer(JSONSerializer::Compact, true, false);
    writer.visitor.Parameter(L"a", L"1", PTC_Number);
    writer.visitor.StartCapture();
    writer.visitor.Parameter(L"b", L"2", PTC_Number);
    writer.out.clear();
    EXPECT_EQ("", writer.End());
}

TEST(Capture, DisabledAnswersNothingAndChangesNothing) {
    for (const bool nested : {false, true}) {
        Writer w(JSONSerializer::Compact, false, nested);
        w.visitor.StartCapture();
        w.visitor.Parameter(L"a", L"1", PTC_Number);
        EXPECT_EQ("", w.End());
        EXPECT_EQ(R"({"a": 1})", w.Finished());
    }
}

TEST(Capture, AnswersTheTextSinceItsStart) {
    Writer w(JSONSerializer::Compact, true, false);
    w.visitor.StartComposite(L"outer", false);
    w.visitor.StartCapture();
    w.visitor.Parameter(L"a", L"1", PTC_Number);
    w.visitor.Parameter(L"b", L"2", PTC_Number);
    EXPECT_EQ(R"("a": 1,"b": 2)", w.End());
    w.visitor.EndComposite(L"outer");
    EXPECT_EQ(R"({"outer":{"a": 1,"b": 2}})", w.Finished());
}

TEST(Capture, OfASecondChildBeginsWithItsSeparator) {
    Writer w(JSONSerializer::Compact, true, false);
    w.visitor.Parameter(L"z", L"0", PTC_Number);
    w.visitor.StartCapture();
    w.visitor.StartComposite(L"child", false);
    w.visitor.Parameter(L"a", L"1", PTC_Number);
    w.visitor.EndComposite(L"child");
    EXPECT_EQ(R"(,"child":{"a": 1})", w.End());
}

TEST(Capture, InnerOnesAreEmptyWithoutNesting) {
    Writer w(JSONSerializer::Compact, true, false);
    w.visitor.StartComposite(L"outer", false);
    w.visitor.StartCapture();
    w.visitor.Parameter(L"a", L"1", PTC_Number);
    w.visitor.StartCapture();
    w.visitor.Parameter(L"b", L"2", PTC_Number);
    EXPECT_EQ("", w.End());
    EXPECT_EQ(R"("a": 1,"b": 2)", w.End());
    EXPECT_EQ("", w.End());  // none is open any more
}

TEST(Capture, InnerOnesAnswerTheirOwnTextWithNesting) {
    Writer w(JSONSerializer::Compact, true, true);
    w.visitor.StartComposite(L"outer", false);
    w.visitor.StartCapture();
    w.visitor.Parameter(L"a", L"1", PTC_Number);
    w.visitor.StartCapture();
    w.visitor.Parameter(L"b", L"2", PTC_Number);
    EXPECT_EQ(R"(,"b": 2)", w.End());
    EXPECT_EQ(R"("a": 1,"b": 2)", w.End());
}

TEST(Capture, EndWithoutAStartIsEmpty) {
    Writer w(JSONSerializer::Compact, true, true);
    w.visitor.Parameter(L"a", L"1", PTC_Number);
    EXPECT_EQ("", w.End());
}

TEST(Capture, OneAfterAnotherWithoutNestingBothAnswer) {
    Writer w(JSONSerializer::Compact, true, false);
    w.visitor.StartCapture();
    w.visitor.Parameter(L"a", L"1", PTC_Number);
    EXPECT_EQ(R"("a": 1)", w.End());
    w.visitor.StartCapture();
    w.visitor.Parameter(L"b", L"2", PTC_Number);
    EXPECT_EQ(R"(,"b": 2)", w.End());
}

TEST(Capture, OfNothingIsEmpty) {
    Writer w(JSONSerializer::Compact, true, true);
    w.visitor.StartCapture();
    EXPECT_EQ("", w.End());
}

TEST(Capture, CountsUTF16Units) {
    Writer w(JSONSerializer::Compact, true, true);
    w.visitor.Parameter(L"é\U0001F600", L"\U0001F600", PTC_Text);
    w.visitor.StartCapture();
    w.visitor.Parameter(L"b", L"\U0001F600é", PTC_Text);
    EXPECT_EQ(TString(L",\"b\": \"\U0001F600é\""), w.visitor.EndCapture());
}

TEST(Capture, InPrettyHoldsTheIndentation) {
    Writer w(JSONSerializer::Pretty, true, false);
    w.visitor.StartComposite(L"outer", false);
    w.visitor.StartCapture();
    w.visitor.Parameter(L"a", L"1", PTC_Number);
    w.visitor.Parameter(L"b", L"2", PTC_Number);
    EXPECT_EQ("    \"a\": 1, \n    \"b\": 2", w.End());
}

TEST(Capture, WriteCapturedInCompactFormsAppendsTheTextAlone) {
    Writer w(JSONSerializer::Compact, false, false);
    w.visitor.StartComposite(L"outer", false);
    w.visitor.WriteCaptured(LR"("a": 1,"b": 2)");
    w.visitor.EndComposite(L"outer");
    EXPECT_EQ(R"({"outer":{"a": 1,"b": 2}})", w.Finished());
}

TEST(Capture, WriteCapturedInCompactFormsDoesNotCountAsAnElement) {
    // What follows is still the first element and gets no comma.
    Writer w(JSONSerializer::Compact, false, false);
    w.visitor.StartComposite(L"outer", false);
    w.visitor.WriteCaptured(LR"("a": 1,"b": 2)");
    w.visitor.Parameter(L"z", L"9", PTC_Number);
    w.visitor.EndComposite(L"outer");
    EXPECT_EQ(R"({"outer":{"a": 1,"b": 2"z": 9}})", w.Finished());
}

TEST(Capture, WriteCapturedEscapesNothing) {
    Writer w(JSONSerializer::Compact, false, false);
    w.visitor.WriteCaptured(L"\"\t\\\n\u0001");
    EXPECT_EQ("{\"\t\\\n\u0001}", w.Finished());
}

TEST(Capture, WriteCapturedInEveryCompactForm) {
    const struct {
        JSONSerializer::OutputType type;
        const char* text;
    } cases[] = {
        {JSONSerializer::Compact, "{x}"},
        {JSONSerializer::Bare, "x"},
        {JSONSerializer::BareRawNames, "x"},
        {JSONSerializer::UnquotedNames, "{x}"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.type);
        Writer w(c.type, false, false);
        w.visitor.WriteCaptured(L"x");
        EXPECT_EQ(c.text, w.Finished());
    }
}

TEST(Capture, WriteCapturedInPrettyIndentsEveryLine) {
    Writer w(JSONSerializer::Pretty, true, false);
    w.visitor.StartComposite(L"outer", false);
    w.visitor.WriteCaptured(L"    \"a\": 1, \n    \"b\": 2");
    w.visitor.EndComposite(L"outer");
    EXPECT_EQ("{\n  \"outer\": {\n        \"a\": 1, \n        \"b\": 2\n  }\n}", w.Finished());
}

TEST(Capture, WriteCapturedInPrettyIsSeparatedLikeAnElement) {
    Writer w(JSONSerializer::Pretty, false, false);
    w.visitor.Parameter(L"a", L"1", PTC_Number);
    w.visitor.WriteCaptured(L"\"b\": [\n]");
    w.visitor.Parameter(L"c", L"3", PTC_Number);
    EXPECT_EQ("{\n  \"a\": 1, \n  \"b\": [\n  ], \n  \"c\": 3\n}", w.Finished());
}

TEST(Capture, WriteCapturedOfNothingInPrettyStillSeparates) {
    Writer w(JSONSerializer::Pretty, false, false);
    w.visitor.WriteCaptured(L"");
    w.visitor.WriteCaptured(L"\n");
    EXPECT_EQ("{\n  , \n  \n  \n}", w.Finished());
}

TEST(Capture, WhatWasCapturedCanBeWrittenAgain) {
    Writer first(JSONSerializer::Pretty, true, false);
    first.visitor.StartList(L"list", PTC_Structure);
    first.visitor.StartCapture();
    first.visitor.StartComposite(L"", false);
    first.visitor.Parameter(L"a", L"1", PTC_Number);
    first.visitor.EndComposite(L"");
    const TString kept = first.visitor.EndCapture();
    EXPECT_EQ(TString(L"    {\n      \"a\": 1\n    }"), kept);

    Writer second(JSONSerializer::Pretty, true, false);
    second.visitor.WriteCaptured(kept);
    EXPECT_EQ("{\n      {\n        \"a\": 1\n      }\n}", second.Finished());
}

TEST_F(CaptureFlags, OffAtFirst) { EXPECT_EQ(kOff, CapturesOf(m_serializer)); }

TEST_F(CaptureFlags, EnableCaptureTakesBothArguments) {
    m_serializer.EnableCapture(true, false);
    EXPECT_EQ(kOuterOnly, CapturesOf(m_serializer));
    m_serializer.EnableCapture(true, true);
    EXPECT_EQ(kBoth, CapturesOf(m_serializer));
    m_serializer.EnableCapture(false, true);
    EXPECT_EQ(kOff, CapturesOf(m_serializer));
}

TEST_F(CaptureFlags, ForceDisableIsOffAtLoad) { EXPECT_FALSE(JSONSerializer::s_forceDisableCapture); }

TEST_F(CaptureFlags, ForceDisableTurnsOffWhatIsEnabledLater) {
    JSONSerializer::ForceDisableCapture(true);
    EXPECT_TRUE(JSONSerializer::s_forceDisableCapture);
    m_serializer.EnableCapture(true, true);
    EXPECT_EQ(kOff, CapturesOf(m_serializer));

    JSONSerializer::ForceDisableCapture(false);
    EXPECT_EQ(kOff, CapturesOf(m_serializer));  // both flags were cleared, not only hidden
    m_serializer.EnableCapture(true, true);
    EXPECT_EQ(kBoth, CapturesOf(m_serializer));
}

TEST_F(CaptureFlags, ForceDisableLeavesWhatIsEnabledAlready) {
    m_serializer.EnableCapture(true, true);
    JSONSerializer::ForceDisableCapture(true);
    EXPECT_EQ(kBoth, CapturesOf(m_serializer));
    m_serializer.EnableCapture(true, true);
    EXPECT_EQ(kOff, CapturesOf(m_serializer));
}

TEST_F(CaptureFlags, CopiesKeepTheFlagsAndTheNamespace) {
    m_serializer.EnableCapture(true, false);
    const JSONSerializer copy(m_serializer);
    EXPECT_EQ(kOuterOnly, CapturesOf(copy));
    EXPECT_EQ("n=3", OutcomeOf([&] { return copy.ToParameters(LR"({"n":3})"); }));

    JSONSerializer assigned(L"another");
    assigned = m_serializer;
    EXPECT_EQ(kOuterOnly, CapturesOf(assigned));
    EXPECT_EQ("n=3", OutcomeOf([&] { return assigned.ToParameters(LR"({"n":3})"); }));
}
