// nlohmann/json with conversions.
#include <nlohmann/json.hpp>

#include "Contestant.h"
#include "Transcode.h"

namespace compare {

namespace {

class NlohmannContestant final : public Contestant {
public:
    std::string GetName() const override { return "nlohmann"; }
    std::string GetVersion() const override {
        return std::to_string(NLOHMANN_JSON_VERSION_MAJOR) + "." + std::to_string(NLOHMANN_JSON_VERSION_MINOR) + "." +
               std::to_string(NLOHMANN_JSON_VERSION_PATCH);
    }

    void Prepare(const Documents& documents) override {
        m_documents = &documents;
        for (std::size_t i = 0; i < documents.texts.size(); ++i) {
            m_values.push_back(Parse(i));
        }
        m_utf8.Release();
    }

    void Release() override {
        m_values.clear();
        m_utf8.Release();
    }

    std::size_t Write(std::size_t index) override {
        const std::u16string text = ToUtf16(m_values[index].dump());
        HaveResult();
        return text.size();
    }

    std::size_t Read(std::size_t index) override {
        const nlohmann::json value = Parse(index);
        HaveResult();
        return value.size();
    }

private:
    nlohmann::json Parse(std::size_t index) {
        const std::string_view utf8 = m_utf8.Convert(m_documents->texts[index]);
        return nlohmann::json::parse(utf8.begin(), utf8.end());
    }

    const Documents* m_documents = nullptr;
    std::vector<nlohmann::json> m_values;
    Utf8Buffer m_utf8;
};

}  // namespace

extern "C" void MakeContestants(Contestants& contestants) {
    contestants.push_back(std::make_unique<NlohmannContestant>());
}

}  // namespace compare
