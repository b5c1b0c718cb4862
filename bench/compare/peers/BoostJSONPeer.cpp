// Boost.JSON with conversions.
#include <boost/json.hpp>
#include <boost/version.hpp>

#include "Contestant.h"
#include "Transcode.h"

namespace compare {

namespace {

class BoostContestant final : public Contestant {
public:
    std::string GetName() const override { return "Boost.JSON"; }
    std::string GetVersion() const override {
        return std::to_string(BOOST_VERSION / 100000) + "." + std::to_string(BOOST_VERSION / 100 % 1000);
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
        const std::u16string text = ToUtf16(boost::json::serialize(m_values[index]));
        HaveResult();
        return text.size();
    }

    std::size_t Read(std::size_t index) override {
        const boost::json::value value = Parse(index);
        HaveResult();
        return value.as_object().size();
    }

private:
    boost::json::value Parse(std::size_t index) {
        const std::string_view utf8 = m_utf8.Convert(m_documents->texts[index]);
        return boost::json::parse(boost::json::string_view(utf8.data(), utf8.size()));
    }

    const Documents* m_documents = nullptr;
    std::vector<boost::json::value> m_values;
    Utf8Buffer m_utf8;
};

}  // namespace

extern "C" void MakeContestants(Contestants& contestants) {
    contestants.push_back(std::make_unique<BoostContestant>());
}

}  // namespace compare
