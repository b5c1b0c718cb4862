// Writing runs onto the stream. Included by the .cpp files that write packed lists.
//
// A packed list holds, in place of every run of at least four elements, a nested list named by a tag of the core
// namespace:
//
//   first value      as the element's text
//   length           unsigned decimal
//   step             signed decimal, negative for a falling run; absent when the step is 0
//
// Shorter runs stand as plain elements. When any run was written so, a last nested list without items marks the list.
#pragma once

#include <cstddef>
#include <limits>

#include <qvcore/TString.h>

#include <qvpreslayer/DataSerializerHelpers.h>
#include <qvpreslayer/SerializeStructure.h>
#include <qvpreslayer/StructureScopes.h>

#include "main/structure/RunDetection.h"

// Emits runs of T. ToText makes the text of an element. Requires: the stream outlives the writer.
template <class T, class ToText>
class RunWriter {
public:
    // tag names the nested lists.
    RunWriter(SerializeStructure& stream, int tag, ToText toText) : m_stream(stream), m_tag(tag), m_toText(toText) {}

    void operator()(const Run<T>& run) {
        if (run.length < static_cast<std::size_t>(DataSerializerHelpers::kRLERunThreshold)) {
            WritePlain(run);
        } else {
            WritePacked(run);
        }
    }

    // Closes the list's contents: the marker, where a run was packed.
    void WriteMarker() {
        if (m_packed) {
            const ListStructure marker(m_tag, m_stream, PTC_None);
        }
    }

private:
    static constexpr std::size_t kLongestRun = std::numeric_limits<unsigned int>::max();

    void WritePlain(const Run<T>& run) {
        if (run.length == 1 || run.step == 0) {
            const TString text = m_toText(run.first);
            for (std::size_t i = 0; i < run.length; ++i) {
                m_stream.ListItem(text);
            }
            return;
        }
        for (std::size_t i = 0; i < run.length; ++i) {
            m_stream.ListItem(m_toText(run.At(i)));
        }
    }

    void WritePacked(Run<T> run) {
        // Lengths travel in 32 bits; a longer run goes in pieces.
        while (run.length > kLongestRun) {
            WriteNested(Run<T>{run.first, kLongestRun, run.step, run.descending});
            run.first = run.At(kLongestRun);
            run.length -= kLongestRun;
        }
        if (run.length < static_cast<std::size_t>(DataSerializerHelpers::kRLERunThreshold)) {
            WritePlain(run);
        } else {
            WriteNested(run);
        }
    }

    void WriteNested(const Run<T>& run) {
        const ListStructure nested(m_tag, m_stream, PTC_None);
        m_stream.ListItem(m_toText(run.first));
        m_stream.ListItem(TString::number(static_cast<unsigned int>(run.length)));
        if (run.step != 0) {
            m_stream.ListItem(StepText(run));
        }
        m_packed = true;
    }

    static TString StepText(const Run<T>& run) {
        if constexpr (std::is_integral_v<T>) {
            // A step that four values take fits the signed type.
            using Signed = std::make_signed_t<T>;
            const auto step = static_cast<Signed>(run.step);
            return TString::number(run.descending ? static_cast<Signed>(-step) : step);
        } else {
            return {};  // reals have no step
        }
    }

    SerializeStructure& m_stream;
    int m_tag;
    ToText m_toText;
    bool m_packed = false;  // a run was written as a nested list
};
