#include "RoundTrip.h"

#include "Comparison.h"
#include "ViewHost.h"
#include "WeatherVocabulary.h"

namespace weather {

namespace {

RoundTrip ReadAndCompare(const TextForm& form, TString text, const IParameters& written) {
    const RefCntPtr<IParameters> read = JSONSerializer(kViewNamespace).ToParameters(text);
    const Comparison comparison(written, *read);
    return {form, std::move(text), comparison.GetValueCount(), comparison.GetDifferences()};
}

}  // namespace

std::vector<TextForm> AllTextForms() {
    std::vector<TextForm> forms;
    for (const bool packedArrays : {false, true}) {
        for (const bool shortNames : {false, true}) {
            for (const auto layout : {JSONSerializer::Pretty, JSONSerializer::Compact}) {
                forms.push_back({packedArrays, shortNames, layout});
            }
        }
    }
    return forms;
}

RoundTrip WriteAndReadBag(const RefCntPtr<IParameters>& bag, const TextForm& form) {
    // The session tells the writer and the reader which names are meant.
    const ViewSession session(form.shortNames, form.packedArrays);
    return ReadAndCompare(form, JSONSerializer(kViewNamespace).ToString(bag, form.layout), *bag);
}

RoundTrip WriteAndReadModel(const RefCntPtr<WeatherModel>& model, const TextForm& form) {
    const ViewSession session(form.shortNames, form.packedArrays);
    TString text = JSONSerializer(kViewNamespace).PresModelToString(model, form.layout);
    return ReadAndCompare(form, std::move(text), *model->AsIParameters());
}

}  // namespace weather
