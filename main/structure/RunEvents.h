// Writing runs onto the stream, as nested lists named by a tag of the core namespace. Included by the .cpp files that
// write packed lists.
#pragma once

#include <cstddef>
#include <type_traits>

#include <qvcore/TString.h>

#include <qvpreslayer/SerializeStructure.h>
#include <qvpreslayer/StructureScopes.h>
#include <qvpreslayer/detail/RunPieces.h>

// The stream as the output of RunPieces. ToText makes the text of an element. Requires: the stream outlives it.
template <class T, class ToText>
class RunEvents {
public:
    // tag names the nested lists.
    RunEvents(SerializeStructure& stream, int tag, ToText toText) : m_stream(stream), m_tag(tag), m_toText(toText) {}

    void Plain(const T& value, std::size_t count) {
        const TString text = m_toText(value);
        for (std::size_t i = 0; i < count; ++i) {
            m_stream.ListItem(text);
        }
    }

    void Nested(const qvpreslayer::detail::Run<T>& run) {
        const ListStructure nested(m_tag, m_stream, PTC_None);
        m_stream.ListItem(m_toText(run.first));
        m_stream.ListItem(TString::number(static_cast<unsigned int>(run.length)));
        if constexpr (std::is_integral_v<T>) {
            if (run.step != 0) {
                m_stream.ListItem(TString::number(run.SignedStep()));
            }
        }
    }

    void Marker() { const ListStructure marker(m_tag, m_stream, PTC_None); }

private:
    SerializeStructure& m_stream;
    int m_tag;
    ToText m_toText;
};
