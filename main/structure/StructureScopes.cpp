#include <qvpreslayer/StructureScopes.h>

#include <exception>

#include <qvpreslayer/SerializeStructure.h>

namespace {

// Tells an end. While an exception that came up inside the scope is on its way, a second one would end the program: it
// is dropped, since the first already says that the output is lost.
template <class End>
void Close(int exceptionsAtStart, const End& end) {
    if (std::uncaught_exceptions() == exceptionsAtStart) {
        end();
        return;
    }
    try {
        end();
    } catch (...) {
    }
}

}  // namespace

CompositeStructure::CompositeStructure(int id, SerializeStructure& stream)
    : m_id(id), m_stream(stream), m_exceptions(std::uncaught_exceptions()) {
    m_stream.StartComposite(m_id);
}

CompositeStructure::~CompositeStructure() noexcept(false) {
    Close(m_exceptions, [this] { m_stream.EndComposite(m_id); });
}

ListStructure::ListStructure(int id, SerializeStructure& stream, ParameterTypeCategory category)
    : m_id(id), m_stream(stream), m_exceptions(std::uncaught_exceptions()) {
    m_stream.StartList(m_id, category);
}

ListStructure::~ListStructure() noexcept(false) {
    Close(m_exceptions, [this] { m_stream.EndList(m_id); });
}

MapStructure::MapStructure(int id, SerializeStructure& stream)
    : m_id(id), m_stream(stream), m_exceptions(std::uncaught_exceptions()) {
    m_stream.StartMap(m_id);
}

MapStructure::~MapStructure() noexcept(false) {
    Close(m_exceptions, [this] { m_stream.EndMap(m_id); });
}

SubStructure::SubStructure(int id, SerializeStructure& stream, bool composite)
    : m_id(id), m_stream(stream), m_composite(composite), m_exceptions(std::uncaught_exceptions()) {
    if (m_composite) {
        m_stream.StartComposite(m_id);
    } else {
        m_stream.StartList(m_id, PTC_None);
    }
}

SubStructure::~SubStructure() noexcept(false) {
    Close(m_exceptions, [this] {
        if (m_composite) {
            m_stream.EndComposite(m_id);
        } else {
            m_stream.EndList(m_id);
        }
    });
}

MapItemStructure::MapItemStructure(const TString& key, SerializeStructure& stream)
    : m_key(key), m_stream(stream), m_exceptions(std::uncaught_exceptions()) {
    m_stream.StartMapItem(m_key);
}

MapItemStructure::~MapItemStructure() noexcept(false) {
    Close(m_exceptions, [this] { m_stream.EndMapItem(m_key); });
}
