// RapidJSON on UTF-16, which needs no conversion: the DOM both ways, and reading by events.
#include <rapidjson/document.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <stdexcept>

#include "Contestant.h"

namespace compare {

namespace {

using Encoding = rapidjson::UTF16<char16_t>;
using Document = rapidjson::GenericDocument<Encoding>;
using Value = Document::ValueType;
using Buffer = rapidjson::GenericStringBuffer<Encoding>;
using Writer = rapidjson::Writer<Buffer, Encoding, Encoding>;
using Stream = rapidjson::GenericStringStream<Encoding>;

template <class Result>
void Check(const Result& result) {
    if (result.HasParseError()) {
        throw std::runtime_error("RapidJSON refused the text");
    }
}

class DomContestant final : public Contestant {
public:
    std::string GetName() const override { return "RapidJSON"; }
    std::string GetVersion() const override { return RAPIDJSON_VERSION_STRING; }

    // All values share one pool: a pool for each of many small documents would take 64 KiB each.
    void Prepare(const Documents& documents) override {
        m_documents = &documents;
        m_pool = std::make_unique<Document::AllocatorType>();
        for (const auto& text : documents.texts) {
            Document document(m_pool.get());
            Stream stream(text.c_str());
            Check(document.ParseStream(stream));
            m_values.emplace_back();
            m_values.back().Swap(document);
        }
    }

    void Release() override {
        m_values.clear();
        m_pool.reset();
    }

    std::size_t Write(std::size_t index) override {
        Buffer buffer;
        Writer writer(buffer);
        m_values[index].Accept(writer);
        const std::size_t units = buffer.GetSize() / sizeof(char16_t);
        HaveResult();
        return units;
    }

    std::size_t Read(std::size_t index) override {
        Document document;
        Stream stream(m_documents->texts[index].c_str());
        Check(document.ParseStream(stream));
        HaveResult();
        return document.MemberCount();
    }

private:
    const Documents* m_documents = nullptr;
    std::unique_ptr<Document::AllocatorType> m_pool;
    std::vector<Value> m_values;
};

// Counts what it is told, and makes nothing of it.
struct CountingHandler : rapidjson::BaseReaderHandler<Encoding, CountingHandler> {
    bool Default() {
        ++count;
        return true;
    }
    std::size_t count = 0;
};

class SaxContestant final : public Contestant {
public:
    std::string GetName() const override { return "RapidJSON SAX"; }
    std::string GetVersion() const override { return RAPIDJSON_VERSION_STRING; }
    bool CanWrite() const override { return false; }

    void Prepare(const Documents& documents) override { m_documents = &documents; }
    void Release() override {}
    std::size_t Write(std::size_t) override { return 0; }

    std::size_t Read(std::size_t index) override {
        rapidjson::GenericReader<Encoding, Encoding> reader;
        Stream stream(m_documents->texts[index].c_str());
        CountingHandler handler;
        if (reader.Parse(stream, handler).IsError()) {
            throw std::runtime_error("RapidJSON refused the text");
        }
        HaveResult();
        return handler.count;
    }

private:
    const Documents* m_documents = nullptr;
};

}  // namespace

extern "C" void MakeContestants(Contestants& contestants) {
    contestants.push_back(std::make_unique<DomContestant>());
    contestants.push_back(std::make_unique<SaxContestant>());
}

}  // namespace compare
