// A declaration file that cannot be taken.
#pragma once

#include <string>

#include <qvsys/QuorvelException.h>

#include <qvcore/TString.h>

#include <qvpreslayer/TextLocation.h>

namespace qvpres {

// The message is "source:line:column: /path: what is wrong", with the parts that are known: a file that cannot be
// opened has no place in it, and at the root the path is left out. Lines and columns count from 1, columns in UTF-16
// units.
class VocabularyException : public QuorvelException, public TextLocated {
public:
    VocabularyException(const std::string& source, const TextLocation& location, const TString& problem);
    VocabularyException(const VocabularyException&);
    VocabularyException& operator=(const VocabularyException&);
    ~VocabularyException() override;

    QuorvelException* Clone() const override;
    [[noreturn]] void Throw() const override;

    // The file, as it was named; and what is wrong, without the place.
    const std::string& GetSource() const noexcept { return m_source; }
    const TString& GetProblem() const noexcept { return m_problem; }

private:
    std::string m_source;
    TString m_problem;
};

}  // namespace qvpres
