// What every test of the library needs from a host: a bag class, a published registry, and a session with options.
#pragma once

#include <initializer_list>
#include <utility>

#include <qvpreslayer/qvpreslayer.h>

// A concrete bag.
class TestBag : public BaseParameters {
public:
    TestBag() = default;

protected:
    ~TestBag() override = default;
    RefCntPtr<BaseParameters> DoEmptyClone() override { return RefCntPtr<BaseParameters>(new TestBag); }
};

// A registry that is published as long as it lives.
class TestRegistry : public ParametersRegistry {
public:
    TestRegistry() { SetInstance(this); }
    virtual ~TestRegistry() { SetInstance(nullptr); }

    RefCntPtr<IParameters> CreateParameters() override { return RefCntPtr<IParameters>(new TestBag); }

    // Registers a lazy namespace over a range.
    void Add(const TString& name, int first, int last, RegistrationFunction fill) {
        RegisterNamespace(name, std::move(fill), first, last, false);
    }
};

// Options that a test sets, and may change between calls. Counts how often names were asked for.
class TestBuilderVars : public IBuilderVars {
public:
    bool shortNames = false;
    bool compressArrays = false;
    bool lossyEncodeImages = false;
    mutable int nameQuestions = 0;

    bool UseShortNames() const override {
        ++nameQuestions;
        return shortNames;
    }
    bool CompressArrays() const override { return compressArrays; }
    bool LossyEncodeImages() const override { return lossyEncodeImages; }
};

// A session with these options, in force on the calling thread as long as it lives.
class TestSession : public SessionContext {
public:
    explicit TestSession(bool shortNames = false, bool compressArrays = false) : m_scope(*this) {
        m_vars->shortNames = shortNames;
        m_vars->compressArrays = compressArrays;
    }
    ~TestSession() override = default;

    RefCntPtr<const IBuilderVars> GetIBuilderVars() const override { return m_vars; }
    TestBuilderVars& Vars() { return *m_vars; }

private:
    RefCntPtr<TestBuilderVars> m_vars{new TestBuilderVars};
    SessionContextScope m_scope;
};

// A value holder.
template <class T>
RefCntPtr<IParameter> Val(T value) {
    return RefCntPtr<IParameter>(new ValParameter<T>(std::move(value)));
}
inline RefCntPtr<IParameter> Text(const TString& text) { return Val<TString>(text); }
inline RefCntPtr<IParameter> BagVal(RefCntPtr<IParameters> bag) {
    return Val<RefCntPtr<const IParameters>>(RefCntPtr<const IParameters>(bag));
}

// A bag of these entries.
inline RefCntPtr<TestBag> MakeBag(std::initializer_list<std::pair<int, RefCntPtr<IParameter>>> entries = {}) {
    RefCntPtr<TestBag> bag(new TestBag);
    for (const auto& [id, value] : entries) {
        bag->SetParameter(id, value);
    }
    return bag;
}
