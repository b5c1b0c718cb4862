// The structure serializer of plain records: a structure is a bag.
//
// Exceptions: Serialize is basic: what was told stays told, and braces that were opened are closed. All else is strong.
#pragma once

#include <qvpreslayer/Export.h>
#include <qvpreslayer/IStructureSerializer.h>

// Structure values are ValParameter<RefCntPtr<const IParameters>>; structure lists are ValParameter<std::vector<...>>
// and structure maps ValParameter<std::map<TString, ...>> of RefCntPtr<const IParameters>. Null map entries are empty
// pointers.
//
// In list form a structure is a bag that holds, under the structure's own identifier, a list of texts
// (ValParameter<std::vector<TString>>), and is written as those texts in a list. A map entry has no list form, since
// its braces are written already: LogicException "ownComposite || !IsListForm()".
class QVPRESLAYER_API BagStructureSerializer : public IStructureSerializer {
public:
    enum Form {
        Record,  // members by name
        List,    // a list of texts
    };

    using Bag = RefCntPtr<const IParameters>;
    using Bags = std::vector<Bag>;
    using BagMap = std::map<TString, Bag>;

    explicit BagStructureSerializer(Form form = Record);
    ~BagStructureSerializer() override;

    // Writes the members by the walk of VisitParametersStructure, under the name form and array form of the stream.
    // TypeMismatchCommandException(0) when value is not a bag, LogicException "m_ptr" when the bag is null.
    void Serialize(RefCntPtr<const IParameter> value, SerializeStructure& stream, int id,
                   bool ownComposite) const override;

    std::vector<RefCntPtr<const IParameter>> SplitList(RefCntPtr<const IParameter> value) const override;
    std::map<TString, RefCntPtr<const IParameter>> SplitMap(RefCntPtr<const IParameter> value) const override;

    bool IsListForm() const override;

    // Elements need nothing from their surroundings: does nothing.
    void PrepareElement(int id, RefCntPtr<IParameters> elementBag, RefCntPtr<IParameters> recordedBag) const override;

    RefCntPtr<IParameter> FromParameters(int id, RefCntPtr<IParameters> bag) const override;
    RefCntPtr<IParameter> MakeList(const std::vector<RefCntPtr<IParameter>>& elements) const override;
    RefCntPtr<IParameter> MakeMap(const std::map<TString, RefCntPtr<IParameter>>& entries) const override;

private:
    Form m_form;
};
