// What every host brings along: a class of bags, a registry that makes them, and a session with options.
#pragma once

#include <qvpreslayer/qvpreslayer.h>

namespace weather {

// The bag of this host. A bag class only says how to make an empty one of its own kind.
class ViewBag final : public BaseParameters {
protected:
    RefCntPtr<BaseParameters> DoEmptyClone() override { return MakeRefCnt<ViewBag>(); }
};

// The registry of this host, published as long as it lives. One for a process, made at start-up.
class ViewRegistry final : public ParametersRegistry {
public:
    ViewRegistry() { SetInstance(this); }
    ~ViewRegistry() { SetInstance(nullptr); }

    // The library calls this wherever it needs an empty bag.
    RefCntPtr<IParameters> CreateParameters() override { return MakeRefCnt<ViewBag>(); }
};

// The options that a session of this host knows.
class ViewOptions final : public IBuilderVars {
public:
    ViewOptions(bool shortNames, bool compressArrays) : m_shortNames(shortNames), m_compressArrays(compressArrays) {}

    bool UseShortNames() const override { return m_shortNames; }
    bool CompressArrays() const override { return m_compressArrays; }
    bool LossyEncodeImages() const override { return false; }

private:
    bool m_shortNames;
    bool m_compressArrays;
};

// A session with these options, in force on the calling thread as long as it lives.
class ViewSession final : public SessionContext {
public:
    ViewSession(bool shortNames, bool compressArrays)
        : m_options(MakeRefCnt<ViewOptions>(shortNames, compressArrays)), m_scope(*this) {}

    RefCntPtr<const IBuilderVars> GetIBuilderVars() const override { return m_options; }

private:
    RefCntPtr<const IBuilderVars> m_options;
    SessionContextScope m_scope;
};

}  // namespace weather
