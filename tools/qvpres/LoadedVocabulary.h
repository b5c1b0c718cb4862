// The vocabulary that a command works with, as a value and as the published registry.
#pragma once

#include <qvcore/TString.h>

#include "tools/qvpres/CommonOptions.h"
#include "tools/vocabulary/ToolHost.h"
#include "tools/vocabulary/Vocabulary.h"

namespace qvpres {

// One at a time in a process, since it publishes its registry.
class LoadedVocabulary {
public:
    // Loads what the options name. Failure when they name nothing or a library that cannot be used; what loading
    // throws (VocabularyException) passes.
    explicit LoadedVocabulary(const CommonOptions& options);

    // A vocabulary that is there already, for commands that make one.
    explicit LoadedVocabulary(Vocabulary vocabulary);

    const Vocabulary& GetVocabulary() const { return m_vocabulary; }
    const ParametersRegistry& GetRegistry() const { return m_registry; }

    // The namespace of texts: the one that was asked for, else the only one, else the only one that is no other's
    // fallback. Failure when that leaves none or several.
    TString GetNamespace() const;

private:
    ToolRegistry m_registry;
    Vocabulary m_vocabulary;
    TString m_askedNamespace;
};

}  // namespace qvpres
