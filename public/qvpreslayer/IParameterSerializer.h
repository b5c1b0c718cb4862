// How the values of one parameter become texts, and texts become values.
//
// Exceptions: implementations give the strong guarantee, SerializeList the basic one: what was told stays told, and
// what scopes opened is closed. What they throw passes, but for single values that the registry reads, where it becomes
// ParameterParseException.
#pragma once

#include <map>
#include <utility>
#include <vector>

#include <qvsys/RefCntObject.h>
#include <qvsys/RefCntPtr.h>

#include <qvcore/TString.h>

#include <qvpreslayer/Export.h>
#include <qvpreslayer/IParameter.h>
#include <qvpreslayer/ParameterTypeCategory.h>

class SerializeStructure;

// One nested list inside a list: its position among all elements of the outer list, and the texts of its items.
using RunRecord = std::pair<int, std::vector<TString>>;

// Converts single values, lists and maps. List and map texts are exactly the single-value texts of their elements:
// nothing is joined, quoted or escaped here.
//
// A serializer holds no state; one object may serve any number of parameters and threads. Hosts derive from it for
// values that the library does not know.
class QVPRESLAYER_API IParameterSerializer : public RefCntObject {
public:
    // The kind of a single value: PTC_Text, PTC_Number or PTC_Bool.
    virtual ParameterTypeCategory GetType() const = 0;

    // One value to its text, and back to a new value.
    virtual TString ToString(RefCntPtr<const IParameter> value) = 0;
    virtual RefCntPtr<IParameter> FromString(const TString& text) const = 0;

    // A list to one text for each element, and back. runs are the nested lists met among the texts; values holds the
    // other elements in order. Serializers of packed lists expand the runs into the list, others ignore them.
    virtual std::vector<TString> ToStringList(RefCntPtr<const IParameter> value) = 0;
    virtual RefCntPtr<IParameter> FromStringList(
        const std::vector<TString>& values, const std::vector<std::pair<int, std::vector<TString>>>& runs) const = 0;

    // Writes a list as parameter id onto the stream, from StartList to EndList.
    virtual void SerializeList(RefCntPtr<const IParameter> value, SerializeStructure& stream, int id) const = 0;

    // A map to one text for each key, and back.
    virtual std::map<TString, TString> ToStringMap(RefCntPtr<const IParameter> value) = 0;
    virtual RefCntPtr<IParameter> FromStringMap(const std::map<TString, TString>& texts) const = 0;

protected:
    ~IParameterSerializer() override;
};
