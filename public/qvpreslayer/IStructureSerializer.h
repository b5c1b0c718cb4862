// How structured values of one parameter are written, and made again from bags.
//
// Exceptions: implementations give the strong guarantee, Serialize and PrepareElement the basic one. What they throw
// passes through walks and readers, which close what their scopes opened and drop the bags that they were filling.
#pragma once

#include <map>
#include <vector>

#include <qvsys/RefCntObject.h>
#include <qvsys/RefCntPtr.h>

#include <qvcore/TString.h>

#include <qvpreslayer/Export.h>
#include <qvpreslayer/IParameter.h>
#include <qvpreslayer/IParameters.h>

class SerializeStructure;

// Hosts implement it for each type of structure that they register; BagStructureSerializer serves plain records.
//
// Structures are written as events on a stream and read through bags: the reader fills a bag from the text, under the
// registered kinds of the members, and the serializer turns it into the value.
//
// Threads: called from several threads at once, hence const; an implementation keeps no state of a call.
class QVPRESLAYER_API IStructureSerializer : public RefCntObject {
public:
    ~IStructureSerializer() override;

    // Writes one structure value. With ownComposite the serializer opens and closes the enclosing structure of id
    // itself (CompositeStructure, or SubStructure for a list form); without, the caller has opened it.
    virtual void Serialize(RefCntPtr<const IParameter> value, SerializeStructure& stream, int id,
                           bool ownComposite) const = 0;

    // The elements of a structure list, in order.
    virtual std::vector<RefCntPtr<const IParameter>> SplitList(RefCntPtr<const IParameter> value) const = 0;

    // The elements of a structure map. An element whose IsNull() is true is written as null.
    virtual std::map<TString, RefCntPtr<const IParameter>> SplitMap(RefCntPtr<const IParameter> value) const = 0;

    // Whether a structure is written as a list of texts rather than as members with names.
    virtual bool IsListForm() const = 0;

    // Called on the serializer of the first structure that a reading call met as an object, for each structure list
    // element and list-form structure that the call reads after that, inside it or not: elementBag is the element's
    // bag, filled; recordedBag is the bag that owns the first structure, still being filled. May add to elementBag what
    // elements need from their surroundings.
    virtual void PrepareElement(int id, RefCntPtr<IParameters> elementBag,
                                RefCntPtr<IParameters> recordedBag) const = 0;

    // The structure value that bag describes. In list form the bag holds, under id, the texts as a
    // ValParameter<std::vector<TString>>. An empty pointer stands for a null entry of a structure map.
    virtual RefCntPtr<IParameter> FromParameters(int id, RefCntPtr<IParameters> bag) const = 0;

    // The structure list, or structure map, of elements that FromParameters made.
    virtual RefCntPtr<IParameter> MakeList(const std::vector<RefCntPtr<IParameter>>& elements) const = 0;
    virtual RefCntPtr<IParameter> MakeMap(const std::map<TString, RefCntPtr<IParameter>>& entries) const = 0;
};
