#include "main/command/DeepWalk.h"

#include <exception>
#include <optional>
#include <typeinfo>
#include <utility>

#include <cxxabi.h>

#include <qvpreslayer/BagStructureSerializer.h>
#include <qvpreslayer/ParameterAccess.h>
#include <qvpreslayer/ParametersRegistry.h>
#include <qvpreslayer/SerializeStructure.h>
#include <qvpreslayer/detail/BagLevel.h>

namespace qvpreslayer::detail {

namespace {

using Bag = BagStructureSerializer::Bag;

// Whether the structure is a bag whose members are walked, and nothing else. A class derived from the library's may
// write more.
bool IsPlainRecord(const IStructureSerializer& serializer) {
    return typeid(serializer) == typeid(BagStructureSerializer) && !serializer.IsListForm();
}

// The entries of a bag, each with a reference of its own.
class Entries final : public IParameterVisitor {
public:
    // What Accept throws is kept until the entries before it have been told.
    void Collect(const IParameters& bag) {
        try {
            bag.Accept(*this);
        } catch (const abi::__forced_unwind&) {
            throw;  // the thread is being cancelled
        } catch (...) {
            m_failure = std::current_exception();
        }
    }

    void VisitParameter(int id, const RefCntPtr<IParameter>& value) override { m_entries.emplace_back(id, value); }

    // The next entry; null behind the last one.
    const std::pair<int, RefCntPtr<IParameter>>* Next() {
        if (m_next != m_entries.size()) {
            return &m_entries[m_next++];
        }
        if (m_failure) {
            std::rethrow_exception(m_failure);
        }
        return nullptr;
    }

private:
    std::vector<std::pair<int, RefCntPtr<IParameter>>> m_entries;
    std::size_t m_next = 0;
    std::exception_ptr m_failure;
};

}  // namespace

// A level whose events are being told: a bag, or the elements of a structure list or map.
class DeepWalk::Step {
public:
    virtual ~Step() = default;

    // Tells the next part, or has the walk enter a level inside; false when there are no more.
    virtual bool TellNext(DeepWalk& walk) = 0;

    // Tells the end of the level. Called once, when the step is no longer part of the walk.
    virtual void End() = 0;

    // Stands in for a scope object while an exception passes.
    virtual void Abandon() noexcept {}
};

// A bag: the outermost one, a parameter, a record with braces of its own, or one that is an entry of a map.
class DeepWalk::BagStep final : public Step {
public:
    // Whose end is to be told; nobody's for the outermost bag. The key of an entry belongs to the step around it.
    struct Ending {
        static Ending OfBag(const TString& name) { return {&name, {}, 0}; }
        static Ending OfEntry(const TString& key) { return {&key, {}, 0}; }
        static Ending OfRecord(const SerializeStructure& stream, int id) { return {nullptr, stream, id}; }

        const TString* name = nullptr;
        std::optional<SerializeStructure> record;  // has braces of its own
        int recordId = 0;
    };

    BagStep(DeepWalk& walk, const VisitStructuredParameters& walker, const Ending& ending)
        : m_walker(walker), m_ending(ending) {
        m_walker.m_deepWalk = &walk;
    }

    // Who started the walk has counted the level.
    void TakeAsCounted() noexcept { m_counted = true; }

    bool TellNext(DeepWalk&) override {
        if (!std::exchange(m_started, true)) {
            if (!m_counted) {
                m_level.emplace();
            }
            m_entries.Collect(*m_walker.m_bag);
        }
        const auto* entry = m_entries.Next();
        if (entry == nullptr) {
            return false;
        }
        m_walker.VisitParameter(entry->first, entry->second);
        return true;
    }

    void End() override {
        m_level.reset();
        if (m_ending.name != nullptr) {
            m_walker.m_visitor.EndComposite(*m_ending.name);
        } else if (m_ending.record) {
            m_ending.record->EndComposite(m_ending.recordId);
        }
    }

    // As CompositeStructure does: a second exception would end the program.
    void Abandon() noexcept override {
        m_level.reset();
        if (m_ending.record) {
            try {
                m_ending.record->EndComposite(m_ending.recordId);
            } catch (...) {
            }
        }
    }

private:
    VisitStructuredParameters m_walker;
    Ending m_ending;
    bool m_counted = false;
    bool m_started = false;
    std::optional<BagLevel> m_level;
    Entries m_entries;
};

// A structure that its serializer writes. A step of its own, so that little of the walk stands on the stack when the
// serializer comes back with a walk inside this one.
class DeepWalk::HostStep final : public Step {
public:
    // key is null for a structure with braces of its own; that of an entry belongs to the step around it.
    HostStep(RefCntPtr<IStructureSerializer> serializer, Value value, const SerializeStructure& stream, int id,
             const TString* key)
        : m_serializer(std::move(serializer)), m_value(std::move(value)), m_stream(stream), m_id(id), m_key(key) {}

    bool TellNext(DeepWalk&) override {
        m_serializer->Serialize(m_value, m_stream, m_id, m_key == nullptr);
        return false;
    }

    void End() override {
        if (m_key != nullptr) {
            m_stream.EndMapItem(*m_key);
        }
    }

private:
    RefCntPtr<IStructureSerializer> m_serializer;
    Value m_value;
    SerializeStructure m_stream;
    int m_id;
    const TString* m_key;
};

// The elements of a structure list or map. What is told of them follows the serializer of the parameter.
class DeepWalk::ElementsStep : public Step {
protected:
    ElementsStep(const VisitStructuredParameters& walker, int id, const TString& name,
                 RefCntPtr<IStructureSerializer> serializer)
        : m_walker(walker), m_id(id), m_name(name), m_serializer(std::move(serializer)) {}

    VisitStructuredParameters m_walker;  // around the elements
    int m_id;
    const TString& m_name;
    RefCntPtr<IStructureSerializer> m_serializer;
};

// One element after the other.
class DeepWalk::ListStep final : public ElementsStep {
public:
    ListStep(const VisitStructuredParameters& walker, int id, const TString& name,
             RefCntPtr<IStructureSerializer> serializer, std::vector<Value> elements)
        : ElementsStep(walker, id, name, std::move(serializer)), m_elements(std::move(elements)) {}

    bool TellNext(DeepWalk& walk) override {
        if (m_next == m_elements.size()) {
            return false;
        }
        walk.WriteStructure(m_walker, m_id, m_serializer, m_elements[m_next++]);
        return true;
    }

    void End() override { m_walker.m_visitor.EndList(m_name); }

private:
    std::vector<Value> m_elements;
    std::size_t m_next = 0;
};

// One entry after the other, upwards by key.
class DeepWalk::MapStep final : public ElementsStep {
public:
    MapStep(const VisitStructuredParameters& walker, int id, const TString& name,
            RefCntPtr<IStructureSerializer> serializer, std::map<TString, Value> elements)
        : ElementsStep(walker, id, name, std::move(serializer)),
          m_elements(std::move(elements)),
          m_next(m_elements.begin()) {}

    bool TellNext(DeepWalk& walk) override {
        if (m_next == m_elements.end()) {
            return false;
        }
        const auto& [key, element] = *m_next++;
        auto stream = StreamOf(m_walker);
        if (element->IsNull()) {
            stream.NullMapItem(key, false);
            return true;
        }
        stream.StartMapItem(key);
        if (IsPlainRecord(*m_serializer)) {
            walk.Enter(std::make_unique<BagStep>(walk, MembersOf(element, m_walker), BagStep::Ending::OfEntry(key)));
        } else {
            walk.Enter(std::make_unique<HostStep>(m_serializer, element, stream, m_id, &key));
        }
        return true;
    }

    void End() override { m_walker.m_visitor.EndMap(m_name); }

private:
    std::map<TString, Value> m_elements;
    std::map<TString, Value>::const_iterator m_next;
};

DeepWalk::DeepWalk() = default;

DeepWalk::~DeepWalk() {
    for (; !m_steps.empty(); m_steps.pop_back()) {
        m_steps.back()->Abandon();
    }
}

// What a serializer that comes back adds to the stack is this loop, the step that calls it, and Walk.
void DeepWalk::Run(const VisitStructuredParameters& walker) {
    Start(walker);
    while (!m_steps.empty()) {
        if (!m_steps.back()->TellNext(*this)) {
            EndInnermost();
        }
    }
}

void DeepWalk::Start(const VisitStructuredParameters& walker) {
    auto outermost = std::make_unique<BagStep>(*this, walker, BagStep::Ending());
    outermost->TakeAsCounted();
    Enter(std::move(outermost));
}

// The step leaves the walk before its end is told: an end that fails is not told again.
void DeepWalk::EndInnermost() {
    const std::unique_ptr<Step> done = std::move(m_steps.back());
    m_steps.pop_back();
    done->End();
}

void DeepWalk::EnterBag(const VisitStructuredParameters& inner, const TString& name) {
    Enter(std::make_unique<BagStep>(*this, inner, BagStep::Ending::OfBag(name)));
}

void DeepWalk::EnterList(const VisitStructuredParameters& walker, int id, const TString& name,
                         RefCntPtr<IStructureSerializer> serializer, std::vector<Value> elements) {
    Enter(std::make_unique<ListStep>(walker, id, name, std::move(serializer), std::move(elements)));
}

void DeepWalk::EnterMap(const VisitStructuredParameters& walker, int id, const TString& name,
                        RefCntPtr<IStructureSerializer> serializer, std::map<TString, Value> elements) {
    Enter(std::make_unique<MapStep>(walker, id, name, std::move(serializer), std::move(elements)));
}

void DeepWalk::WriteStructure(const VisitStructuredParameters& walker, int id,
                              const RefCntPtr<IStructureSerializer>& serializer, const Value& value) {
    auto stream = StreamOf(walker);
    if (!IsPlainRecord(*serializer)) {
        Enter(std::make_unique<HostStep>(serializer, value, stream, id, nullptr));
        return;
    }
    // All that may fail comes before the start: a start that was told has an end.
    auto step = std::make_unique<BagStep>(*this, MembersOf(value, walker), BagStep::Ending::OfRecord(stream, id));
    ReserveStep();
    stream.StartComposite(id);
    Enter(std::move(step));
}

SerializeStructure DeepWalk::StreamOf(const VisitStructuredParameters& walker) {
    return {walker.m_visitor, walker.m_useVerboseNames, walker.m_compressArrays};
}

VisitStructuredParameters DeepWalk::MembersOf(const Value& record, const VisitStructuredParameters& walker) {
    const Bag& bag = GetParameterValue<Bag>(record.Get());
    return {ParametersRegistry::Get(), bag, walker.m_visitor, walker.m_useVerboseNames, walker.m_compressArrays};
}

void DeepWalk::ReserveStep() {
    if (m_steps.size() == m_steps.capacity()) {
        m_steps.reserve(2 * m_steps.size() + 8);
    }
}

void DeepWalk::Enter(std::unique_ptr<Step> step) {
    ReserveStep();
    m_steps.push_back(std::move(step));
}

}  // namespace qvpreslayer::detail
