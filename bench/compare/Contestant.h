// What every contestant of the comparison offers, and the documents that it is given. Peers include this header and
// Transcode.h only: they know nothing of the library that they are compared with.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace compare {

enum class FieldKind { Int, Double, Bool, Text, IntList, DoubleList, TextList, TextMap, Bag, RecordList, RecordMap };

// One member of an object: what a peer with a schema needs to know. The members of a Bag are those of the object that
// it stands in; records have members of their own.
struct FieldShape {
    std::string name;  // as the JSON text spells it
    FieldKind kind;
    std::vector<FieldShape> members;  // of a record
};

// The texts of one workload, each one JSON object.
struct Documents {
    std::vector<std::u16string> texts;
    std::vector<FieldShape> fields;

    std::size_t GetCharacters() const {
        std::size_t characters = 0;
        for (const auto& text : texts) {
            characters += text.size();
        }
        return characters;
    }
};

// One library, or one way to use it. Writing starts from what the library itself read (a DOM, a message) and ends with
// UTF-16; reading starts from UTF-16. What a library needs in between is part of its time.
class Contestant {
public:
    Contestant() = default;
    Contestant(const Contestant&) = delete;
    Contestant& operator=(const Contestant&) = delete;
    virtual ~Contestant() = default;

    virtual std::string GetName() const = 0;
    virtual std::string GetVersion() const = 0;
    virtual bool CanWrite() const { return true; }
    virtual bool CanRead() const { return true; }

    // Makes everything that writing starts from, and no buffers beyond. The documents stay until Release, which forgets
    // all of it. Throws when the library cannot take these documents.
    virtual void Prepare(const Documents& documents) = 0;
    virtual void Release() = 0;

    // Around a run of calls of Write or Read on the calling thread; not measured.
    virtual void Start() {}
    virtual void End() {}

    // Write answers the number of UTF-16 units, Read something that depends on what was read.
    virtual std::size_t Write(std::size_t index) = 0;
    virtual std::size_t Read(std::size_t index) = 0;

    // Called when a result is complete and still alive; null for none.
    void SetResultHook(void (*hook)()) { m_resultHook = hook; }

protected:
    void HaveResult() const {
        if (m_resultHook != nullptr) {
            m_resultHook();
        }
    }

private:
    void (*m_resultHook)() = nullptr;
};

using Contestants = std::vector<std::unique_ptr<Contestant>>;

// The one function that the module of a peer exports, and its name.
using PeerEntry = void (*)(Contestants& contestants);
inline constexpr const char* kPeerEntry = "MakeContestants";

}  // namespace compare
