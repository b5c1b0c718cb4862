#include "tools/vocabulary/VocabularyException.h"

namespace qvpres {

namespace {

TString MessageOf(const std::string& source, const TextLocation& location, const TString& problem) {
    TString message = TString::FromUtf8(source) + u':';
    if (location.IsKnown()) {
        message += TString::number(UInt64{location.line}) + u':' + TString::number(UInt64{location.column}) + u':';
    }
    message += u' ';
    if (!location.path.empty()) {
        message += location.path + u": ";
    }
    return message + problem;
}

}  // namespace

VocabularyException::VocabularyException(const std::string& source, const TextLocation& location,
                                         const TString& problem)
    : QuorvelException(MessageOf(source, location, problem)), m_source(source), m_problem(problem) {
    SetLocation(location);
}

VocabularyException::VocabularyException(const VocabularyException&) = default;
VocabularyException& VocabularyException::operator=(const VocabularyException&) = default;
VocabularyException::~VocabularyException() = default;

QuorvelException* VocabularyException::Clone() const { return new VocabularyException(*this); }

void VocabularyException::Throw() const { throw VocabularyException(*this); }

}  // namespace qvpres
