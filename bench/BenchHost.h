// What every benchmark needs from a host: a bag class, a published registry, and a session with options.
#pragma once

#include <qvpreslayer/qvpreslayer.h>

class BenchBag final : public BaseParameters {
protected:
    RefCntPtr<BaseParameters> DoEmptyClone() override { return MakeRefCnt<BenchBag>(); }
};

// A registry that is published as long as it lives.
class BenchRegistry final : public ParametersRegistry {
public:
    BenchRegistry() { SetInstance(this); }
    ~BenchRegistry() { SetInstance(nullptr); }

    RefCntPtr<IParameters> CreateParameters() override { return MakeRefCnt<BenchBag>(); }
};

class BenchOptions final : public IBuilderVars {
public:
    BenchOptions(bool shortNames, bool compressArrays) : m_shortNames(shortNames), m_compressArrays(compressArrays) {}

    bool UseShortNames() const override { return m_shortNames; }
    bool CompressArrays() const override { return m_compressArrays; }
    bool LossyEncodeImages() const override { return false; }

private:
    bool m_shortNames;
    bool m_compressArrays;
};

// A session with these options, in force on the calling thread as long as it lives.
class BenchSession final : public SessionContext {
public:
    BenchSession(bool shortNames, bool compressArrays)
        : m_options(MakeRefCnt<BenchOptions>(shortNames, compressArrays)), m_scope(*this) {}

    RefCntPtr<const IBuilderVars> GetIBuilderVars() const override { return m_options; }

private:
    RefCntPtr<const IBuilderVars> m_options;
    SessionContextScope m_scope;
};
