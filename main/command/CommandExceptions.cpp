#include <qvpreslayer/CommandExceptions.h>

#include "main/command/ExceptionMembers.h"

QV_DEFINE_EXCEPTION_MEMBERS(CommandException)
QV_DEFINE_EXCEPTION_MEMBERS(MissingParameterCommandException)
QV_DEFINE_EXCEPTION_MEMBERS(TypeMismatchCommandException)
QV_DEFINE_EXCEPTION_MEMBERS(BadValueParameterCommandException)

CommandException::CommandException(const TString& text)
    : QuorvelException(u"Error in command parameters"), m_text(text) {}

void CommandException::AddUnused(int id) { m_unused.push_back(id); }
void CommandException::AddMissing(int id) { m_missing.push_back(id); }
void CommandException::AddMissingOne(int id1, int id2) { m_missingOne.emplace_back(id1, id2); }
void CommandException::AddWrongType(int id) { m_wrongType.push_back(id); }
void CommandException::AddBadValue(int id) { m_badValue.push_back(id); }
void CommandException::AddOptional(int id) { m_optional.push_back(id); }
void CommandException::AddHasMoreThanOne(int id1, int id2) { m_hasMoreThanOne.emplace_back(id1, id2); }
void CommandException::AddAtMostOne(int id1, int id2) { m_atMostOne.emplace_back(id1, id2); }

bool CommandException::HasErrors() const noexcept {
    return !m_unused.empty() || !m_missing.empty() || !m_missingOne.empty() || !m_wrongType.empty() ||
           !m_badValue.empty() || !m_hasMoreThanOne.empty();
}

MissingParameterCommandException::MissingParameterCommandException(int id) : CommandException(TString()) {
    AddMissing(id);
}

TypeMismatchCommandException::TypeMismatchCommandException(int id) : CommandException(TString()) { AddWrongType(id); }

BadValueParameterCommandException::BadValueParameterCommandException(int id) : CommandException(TString()) {
    AddBadValue(id);
}

void ThrowMissingParameterCommandException() { throw MissingParameterCommandException(0); }

void ThrowTypeMismatchCommandException(int id) { throw TypeMismatchCommandException(id); }
