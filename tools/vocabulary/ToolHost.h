// What every host brings along, for programs that have no bags of their own.
#pragma once

#include <qvpreslayer/qvpreslayer.h>

namespace qvpres {

class ToolBag final : public BaseParameters {
    RefCntPtr<BaseParameters> DoEmptyClone() override { return MakeRefCnt<ToolBag>(); }
};

// A registry that is published as long as it lives.
//
// Threads: one at a time in a process.
class ToolRegistry final : public ParametersRegistry {
public:
    ToolRegistry() { SetInstance(this); }
    ~ToolRegistry() { SetInstance(nullptr); }

    RefCntPtr<IParameters> CreateParameters() override { return MakeRefCnt<ToolBag>(); }
};

// Options of names and packing, in force on this thread as long as it lives.
class ToolSession final : public SessionContext {
public:
    explicit ToolSession(bool shortNames, bool packedLists = false)
        : m_options(MakeRefCnt<Options>(shortNames, packedLists)), m_scope(*this) {}
    ~ToolSession() override = default;

    RefCntPtr<const IBuilderVars> GetIBuilderVars() const override { return m_options; }

private:
    class Options final : public IBuilderVars {
    public:
        Options(bool shortNames, bool packedLists) : m_shortNames(shortNames), m_packedLists(packedLists) {}

        bool UseShortNames() const override { return m_shortNames; }
        bool CompressArrays() const override { return m_packedLists; }
        bool LossyEncodeImages() const override { return false; }

    private:
        bool m_shortNames;
        bool m_packedLists;
    };

    RefCntPtr<const IBuilderVars> m_options;
    SessionContextScope m_scope;
};

}  // namespace qvpres
