// protobuf's JSON mapping of messages whose types are made at run time, with conversions.
#include <google/protobuf/descriptor.h>
#include <google/protobuf/dynamic_message.h>
#include <google/protobuf/stubs/common.h>
#include <google/protobuf/util/json_util.h>

#include <stdexcept>

#include "Contestant.h"
#include "ProtobufSchema.h"
#include "Transcode.h"

namespace compare {

namespace {

using google::protobuf::DescriptorPool;
using google::protobuf::DynamicMessageFactory;
using google::protobuf::Message;
namespace util = google::protobuf::util;

template <class Status>
void Check(const Status& status) {
    if (!status.ok()) {
        throw std::runtime_error("protobuf: " + status.ToString());
    }
}

class ProtobufContestant final : public Contestant {
public:
    std::string GetName() const override { return "protobuf"; }
    std::string GetVersion() const override {
        return google::protobuf::internal::VersionString(GOOGLE_PROTOBUF_VERSION);
    }

    void Prepare(const Documents& documents) override {
        m_documents = &documents;
        m_pool = std::make_unique<DescriptorPool>();
        const auto* file = m_pool->BuildFile(MakeProtobufSchema(documents.fields));
        if (file == nullptr) {
            throw std::runtime_error("protobuf refused the schema");
        }
        m_factory = std::make_unique<DynamicMessageFactory>(m_pool.get());
        m_prototype = m_factory->GetPrototype(file->FindMessageTypeByName("Document"));
        for (std::size_t i = 0; i < documents.texts.size(); ++i) {
            m_messages.push_back(Parse(i));
        }
        m_utf8.Release();
    }

    void Release() override {
        m_messages.clear();
        m_factory.reset();
        m_pool.reset();
        m_utf8.Release();
    }

    std::size_t Write(std::size_t index) override {
        std::string utf8;
        Check(util::MessageToJsonString(*m_messages[index], &utf8));
        const std::u16string text = ToUtf16(utf8);
        HaveResult();
        return text.size();
    }

    std::size_t Read(std::size_t index) override {
        const std::unique_ptr<Message> message = Parse(index);
        HaveResult();
        return message->IsInitialized() ? 1 : 0;
    }

private:
    std::unique_ptr<Message> Parse(std::size_t index) {
        const std::string_view utf8 = m_utf8.Convert(m_documents->texts[index]);
        std::unique_ptr<Message> message(m_prototype->New());
        Check(util::JsonStringToMessage(google::protobuf::StringPiece(utf8.data(), utf8.size()), message.get()));
        return message;
    }

    const Documents* m_documents = nullptr;
    std::unique_ptr<DescriptorPool> m_pool;
    std::unique_ptr<DynamicMessageFactory> m_factory;
    const Message* m_prototype = nullptr;
    std::vector<std::unique_ptr<Message>> m_messages;
    Utf8Buffer m_utf8;
};

}  // namespace

extern "C" void MakeContestants(Contestants& contestants) {
    contestants.push_back(std::make_unique<ProtobufContestant>());
}

}  // namespace compare
