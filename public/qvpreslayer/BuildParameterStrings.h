// The visitor that spells events as JSON text, in one pass.
//
// JSONSerializer drives it; hosts use it to write with events of their own.
//
// Threads: a visitor lives for one write and belongs to it.
//
// Exceptions: events are basic: what was written before a failure stays in the text, which is then of no use. Making
// one is strong.
#pragma once

#include <cstdint>
#include <vector>

#include <qvcore/TString.h>

#include <qvpreslayer/Export.h>
#include <qvpreslayer/IStructuredParameterVisitor.h>
#include <qvpreslayer/JSONSerializer.h>
#include <qvpreslayer/detail/DirectText.h>

class QVPRESLAYER_API BuildParameterStrings final : public IStructuredParameterVisitor,
                                                    public qvpreslayer::detail::IDirectVisitor {
public:
    // Appends to out, at once the opening brace where the form has outer braces. shortNames says that the names that
    // arrive are short ones, which are never turned into camel case. Requires: out outlives the visitor.
    BuildParameterStrings(TString& out, JSONSerializer::OutputType type, bool captureEnabled, bool nestedCapture,
                          bool shortNames);
    BuildParameterStrings(const BuildParameterStrings&) = delete;
    BuildParameterStrings& operator=(const BuildParameterStrings&) = delete;
    ~BuildParameterStrings();

    // Appends the closing brace where the form has outer braces. Call it once, last. Balance of starts and ends is not
    // checked: unbalanced events give unbalanced text.
    void Finish();

    void Parameter(const TString& name, const TString& valueText, ParameterTypeCategory kind) override;
    void StartList(const TString& name, ParameterTypeCategory elementKind) override;
    void ListItem(const TString& valueText) override;
    void EndList(const TString& name) override;
    void StartMap(const TString& name, ParameterTypeCategory valueKind) override;
    void MapItem(const TString& key, const TString& valueText, bool rawKey) override;
    void EndMap(const TString& name) override;
    void StartComposite(const TString& name, bool isMapItem) override;
    void EndComposite(const TString& name) override;
    void NullMapItem(const TString& key, bool rawKey) override;

    // Captures stack up. EndCapture answers the text since its StartCapture; an inner capture answers the empty text
    // unless nested captures are on; without capture, or without a start, the answer is the empty text.
    void StartCapture() override;
    TString EndCapture() override;

    // Compact forms append the text as it stands, without a separator before or after; Pretty writes a separator and
    // indents every line of the text to the current depth.
    void WriteCaptured(const TString& text) override;

    // The events of a single value or a plain list at once.
    bool WriteDirectly(const ParameterInfo& info, bool useVerboseNames, const IParameter& value) override;

    // For the library's own use: the next event is a member of an object whose text so far was written without events;
    // first says that none of its members was.
    void ContinueMembers(bool first) noexcept { m_frame.firstToCome = first; }
    bool IsFirstMember() const noexcept { return m_frame.firstToCome; }
    bool IsBalanced() const noexcept { return m_outerFrames.empty(); }

private:
    struct Frame {
        bool inList;
        bool firstToCome;
        ParameterTypeCategory valueKind;
    };

    void Separate();
    void SeparateClosing();
    void BreakLine(bool first);
    bool WriteName(const TString& name, bool raw);
    void WriteKnownName(const ParameterInfo& info, bool useVerboseNames, const char16_t* colon);
    template <class T>
    bool WriteDirectScalar(const ParameterInfo& info, bool useVerboseNames, const IParameter& value);
    template <class T>
    bool WriteDirectList(const ParameterInfo& info, bool useVerboseNames, const IParameter& value);
    void WriteValue(const TString& text, ParameterTypeCategory kind);
    void Open(const TString& name, bool raw, char16_t bracket, Frame frame);
    void Close(char16_t bracket);

    bool m_pretty;
    bool m_prettyConfigured;
    bool m_quoteNames;
    bool m_omitOuterBraces;
    bool m_suppressNextName;
    bool m_camelCaseNames;
    TString& m_out;
    std::int32_t m_depth;
    Frame m_frame{false, true, PTC_None};  // the innermost
    std::vector<Frame> m_outerFrames;
    bool m_captureEnabled;
    bool m_nestedCapture;
    std::vector<std::uint32_t> m_captureStarts;  // the largest value: not recorded
    bool m_shortNames;
};
