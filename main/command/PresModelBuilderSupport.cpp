#include <qvpreslayer/PresModelBuilderSupport.h>

#include <qvcore/SessionContext.h>

#include <qvpreslayer/IBuilderVars.h>

namespace {

// The options of the session in force; empty without a session or without options.
RefCntPtr<const IBuilderVars> BuilderVars() {
    const SessionContext* const session = SessionContext::Find();
    return session == nullptr ? RefCntPtr<const IBuilderVars>() : session->GetIBuilderVars();
}

}  // namespace

IBuilderVars::~IBuilderVars() = default;

namespace PresModelBuilderSupport {

// The options object asks the opposite question.
bool UseVerboseNames() {
    const auto vars = BuilderVars();
    return vars ? !vars->UseShortNames() : true;
}

bool CompressArrays() {
    const auto vars = BuilderVars();
    return vars ? vars->CompressArrays() : false;
}

TextOptions GetTextOptions() {
    const auto vars = BuilderVars();
    if (!vars) {
        return {};
    }
    const bool verboseNames = !vars->UseShortNames();
    return {verboseNames, vars->CompressArrays()};
}

bool LossyEncodeImages() {
    const auto vars = BuilderVars();
    return vars ? vars->LossyEncodeImages() : false;
}

}  // namespace PresModelBuilderSupport
