// The seam between walking a bag and writing it: one call for each event.
//
// Exceptions: what an event throws passes and ends the walk; what scope objects opened is then told closed, and what
// fails in that is dropped.
#pragma once

#include <qvcore/TString.h>

#include <qvpreslayer/ParameterTypeCategory.h>

// Implemented by the output side; JSON is the library's own. Starts and ends pair up when writers use the scope objects
// of StructureScopes.h; a visitor that met an exception is discarded, since nothing takes back what it was told.
//
// Texts are those of the serializers, unescaped. Names are verbose or short, as the walk was told. All references are
// valid during the call only.
class IStructuredParameterVisitor {
public:
    // One value of kind PTC_Text, PTC_Number or PTC_Bool.
    virtual void Parameter(const TString& name, const TString& valueText, ParameterTypeCategory kind) = 0;

    // A list. elementKind tells numbers and truth values from texts; it is the kind of a structure in structure lists.
    virtual void StartList(const TString& name, ParameterTypeCategory elementKind) = 0;
    virtual void ListItem(const TString& valueText) = 0;
    virtual void EndList(const TString& name) = 0;

    // A map. rawKey tells that the key is no parameter name and is written as it is.
    virtual void StartMap(const TString& name, ParameterTypeCategory valueKind) = 0;
    virtual void MapItem(const TString& key, const TString& valueText, bool rawKey) = 0;
    virtual void EndMap(const TString& name) = 0;

    // A nested bag or a structure. For an entry of a structure map isMapItem is true and the name is the key.
    virtual void StartComposite(const TString& name, bool isMapItem) = 0;
    virtual void EndComposite(const TString& name) = 0;

    // An entry of a structure map that stands for nothing.
    virtual void NullMapItem(const TString& key, bool rawKey) = 0;

    // Structure serializers of models keep the text that they write, and emit it again while the model is unchanged.
    // EndCapture answers what was written since the matching StartCapture; visitors without texts answer empty.
    virtual void StartCapture() = 0;
    virtual TString EndCapture() = 0;
    virtual void WriteCaptured(const TString& text) = 0;

protected:
    ~IStructuredParameterVisitor() = default;
};
