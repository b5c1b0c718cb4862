// A host's module: two namespaces, one of them the fallback of the other, and a type of the host's own.
#include <qvpres/HostModule.h>

#include <stdexcept>

#include <qvpreslayer/qvpreslayer.h>

namespace {

struct Money {
    long long cents = 0;
};

}  // namespace

template <>
struct ParameterTypeTraits<Money> : ParameterTypeTraitsBase {
    static TString ToText(const Money& value) { return TString::number(Int64{value.cents}) + u"c"; }
    static Money FromText(const TString& text) {
        bool ok = false;
        const Money value{text.endsWith(L"c") ? text.left(text.length() - 1).toLongLong(&ok) : 0};
        if (!ok) {
            throw ParameterParseException(0);
        }
        return value;
    }
};

void QvpresRegisterParameters(ParametersRegistry& registry) {
    registry.RegisterNamespace(
        L"shop",
        [](AbstractParamAdder& adder) {
            adder.AddSimple(5001, L"price", L"pr", new ParameterTypeSerializer<Money>);
            adder.AddList(5002, L"stock", L"st", new ParameterTypeSerializer<int>);
        },
        5000, 5999, false);
    registry.RegisterNamespace(
        L"common", [](AbstractParamAdder& adder) { adder.AddSimple(6001, L"title", L"ti", new TStringSerializer); },
        6000, 6999, false);
    registry.SetFallback(L"shop", L"common");
}
