// Scope objects: each tells the stream a start when it is made and the matching end when it goes, also when an
// exception passes, so that what was opened is always closed, innermost first.
//
// An end that throws passes its exception on, unless another one is already on its way: then it is dropped. A start
// that throws leaves no scope and no end. Copying a scope copies its fields: each copy tells an end of its own.
//
// Exceptions: basic, as the stream is; ends may throw out of the destructor, as told above.
#pragma once

#include <qvcore/TString.h>

#include <qvpreslayer/Export.h>
#include <qvpreslayer/ParameterTypeCategory.h>

class SerializeStructure;

// StartComposite and EndComposite of id.
class QVPRESLAYER_API CompositeStructure {
public:
    CompositeStructure(int id, SerializeStructure& stream);
    CompositeStructure(const CompositeStructure&) = default;
    ~CompositeStructure() noexcept(false);

private:
    int m_id;
    SerializeStructure& m_stream;
    int m_exceptions;  // in flight when the scope was made
};

// StartList and EndList of id; category as SerializeStructure::StartList takes it.
class QVPRESLAYER_API ListStructure {
public:
    ListStructure(int id, SerializeStructure& stream, ParameterTypeCategory category);
    ListStructure(const ListStructure&) = default;
    ~ListStructure() noexcept(false);

private:
    int m_id;
    SerializeStructure& m_stream;
    int m_exceptions;  // in flight when the scope was made
};

// StartMap and EndMap of id.
class QVPRESLAYER_API MapStructure {
public:
    MapStructure(int id, SerializeStructure& stream);
    MapStructure(const MapStructure&) = default;
    ~MapStructure() noexcept(false);

private:
    int m_id;
    SerializeStructure& m_stream;
    int m_exceptions;  // in flight when the scope was made
};

// A structure that is written as a composite or as a list, decided at run time.
class QVPRESLAYER_API SubStructure {
public:
    SubStructure(int id, SerializeStructure& stream, bool composite);
    SubStructure(const SubStructure&) = default;
    ~SubStructure() noexcept(false);

private:
    int m_id;
    SerializeStructure& m_stream;
    bool m_composite;
    int m_exceptions;  // in flight when the scope was made
};

// An entry of a structure map. Keeps a copy of the key.
class QVPRESLAYER_API MapItemStructure {
public:
    MapItemStructure(const TString& key, SerializeStructure& stream);
    MapItemStructure(const MapItemStructure&) = default;
    ~MapItemStructure() noexcept(false);

private:
    TString m_key;
    SerializeStructure& m_stream;
    int m_exceptions;  // in flight when the scope was made
};
