#include "tools/qvpres/check/Suggestions.h"

#include <qvcore/CaseConversion.h>

#include "tools/vocabulary/NearestNames.h"

namespace qvpres {

std::vector<std::string> SuggestNames(std::u16string_view unknown, const ParameterText& text) {
    const Vocabulary& vocabulary = text.GetLoaded().GetVocabulary();
    const NamespaceDeclaration* nameSpace = vocabulary.FindNamespace(text.Namespace());
    const bool shortNames = text.Names() == NameForm::Short;
    std::vector<TString> known;
    if (nameSpace != nullptr) {
        for (const ParameterDeclaration* parameter : vocabulary.GetReachable(*nameSpace, shortNames)) {
            known.push_back(shortNames ? parameter->shortName : DashedToCamel(parameter->name));
        }
    }
    std::vector<std::string> names;
    for (const TString& name : NearestNames(unknown, known)) {
        names.push_back(name.ToUtf8());
    }
    return names;
}

}  // namespace qvpres
