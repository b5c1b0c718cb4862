#include "OwnContestant.h"

#include <optional>
#include <stdexcept>

#include "BenchHost.h"

namespace compare {

namespace {

class OwnContestant final : public Contestant {
public:
    OwnContestant(const Workload& workload, OwnForm form)
        : m_workload(workload), m_form(form), m_serializer(workload.namespaceName) {}

    std::string GetName() const override { return GetOwnName(m_form); }
    std::string GetVersion() const override { return ""; }

    void Prepare(const Documents& /*documents*/) override {
        Start();
        for (const auto& bag : m_workload.bags) {
            m_texts.push_back(m_serializer.ToString(bag, JSONSerializer::Compact));
        }
        End();
    }

    void Release() override { m_texts.clear(); }

    // The options hold for the calling thread.
    void Start() override { m_session.emplace(m_form.shortNames, m_form.packedArrays); }
    void End() override { m_session.reset(); }

    std::size_t Write(std::size_t index) override {
        const TString text = m_serializer.ToString(m_workload.bags[index], JSONSerializer::Compact);
        HaveResult();
        return text.size();
    }

    std::size_t Read(std::size_t index) override {
        const RefCntPtr<IParameters> bag = m_serializer.ToParameters(m_texts[index]);
        HaveResult();
        return bag ? 1 : 0;
    }

private:
    const Workload& m_workload;
    OwnForm m_form;
    JSONSerializer m_serializer;
    std::vector<TString> m_texts;
    std::optional<BenchSession> m_session;  // while a run lasts
};

}  // namespace

std::string GetOwnName(OwnForm form) {
    return std::string(form.shortNames ? "short names, " : "verbose names, ") +
           (form.packedArrays ? "packed arrays" : "plain arrays");
}

std::unique_ptr<Contestant> MakeOwnContestant(const Workload& workload, OwnForm form) {
    return std::make_unique<OwnContestant>(workload, form);
}

Documents MakeDocuments(const Workload& workload, bool shortNames) {
    const BenchSession session(shortNames, false);
    const JSONSerializer serializer(workload.namespaceName);
    Documents documents;
    documents.fields = GetShapes(ParametersRegistry::Get(), workload.fields, shortNames);
    for (const auto& bag : workload.bags) {
        const TString text = serializer.ToString(bag, JSONSerializer::Compact);
        if (serializer.ToString(serializer.ToParameters(text), JSONSerializer::Compact) != text) {
            throw std::logic_error(workload.name + ": what was written does not come back");
        }
        documents.texts.emplace_back(text.view());
    }
    return documents;
}

}  // namespace compare
