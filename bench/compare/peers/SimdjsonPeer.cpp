// simdjson's DOM with conversion: reading only, with one parser for all texts as its makers advise.
#include <simdjson.h>

#include "Contestant.h"
#include "Transcode.h"

namespace compare {

namespace {

class SimdjsonContestant final : public Contestant {
public:
    std::string GetName() const override { return "simdjson"; }
    std::string GetVersion() const override {
        return std::to_string(simdjson::SIMDJSON_VERSION_MAJOR) + "." +
               std::to_string(simdjson::SIMDJSON_VERSION_MINOR) + "." +
               std::to_string(simdjson::SIMDJSON_VERSION_REVISION) + " (" +
               simdjson::get_active_implementation()->name() + ")";
    }
    bool CanWrite() const override { return false; }

    void Prepare(const Documents& documents) override {
        m_documents = &documents;
        m_parser = std::make_unique<simdjson::dom::parser>();
    }

    void Release() override {
        m_parser.reset();
        m_utf8.Release();
    }

    std::size_t Write(std::size_t) override { return 0; }

    std::size_t Read(std::size_t index) override {
        const std::string_view utf8 = m_utf8.Convert(m_documents->texts[index], simdjson::SIMDJSON_PADDING);
        const simdjson::dom::object object = m_parser->parse(utf8.data(), utf8.size(), false);
        HaveResult();
        return object.size();
    }

private:
    const Documents* m_documents = nullptr;
    std::unique_ptr<simdjson::dom::parser> m_parser;
    Utf8Buffer m_utf8;
};

}  // namespace

extern "C" void MakeContestants(Contestants& contestants) {
    contestants.push_back(std::make_unique<SimdjsonContestant>());
}

}  // namespace compare
