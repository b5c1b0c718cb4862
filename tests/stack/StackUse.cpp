// How much stack each operation takes for each level of nesting, as a table. Run by scripts/stack, which builds it with
// both compilers, with and without optimisation.
//
// Each operation runs on a thread whose stack has been filled with a pattern; the lowest byte that changed tells how
// far it went. Bytes for a level follow from two depths.
#include <pthread.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>

#include "hostile/NestedForms.h"
#include "support/TypedValues.h"

namespace {

constexpr std::size_t kStackBytes = std::size_t{16} * 1024 * 1024;
constexpr unsigned char kPattern = 0xA5;

// The bytes of stack that work took on a thread of its own.
std::size_t StackUse(const std::function<void()>& work) {
    void* const stack =
        mmap(nullptr, kStackBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK, -1, 0);
    std::memset(stack, kPattern, kStackBytes);
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstack(&attributes, stack, kStackBytes);
    pthread_t thread;
    const auto run = [](void* argument) -> void* {
        (*static_cast<const std::function<void()>*>(argument))();
        return nullptr;
    };
    if (pthread_create(&thread, &attributes, run, const_cast<std::function<void()>*>(&work)) != 0) {
        std::perror("pthread_create");
        std::exit(1);
    }
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    const auto* const bytes = static_cast<const unsigned char*>(stack);
    const std::size_t untouched = static_cast<std::size_t>(
        std::find_if(bytes, bytes + kStackBytes, [](unsigned char byte) { return byte != kPattern; }) - bytes);
    munmap(stack, kStackBytes);
    return kStackBytes - untouched;
}

// A host's structure serializer that walks its bag with a walker of its own.
class HostSerializer final : public BagStructureSerializer {
public:
    void Serialize(RefCntPtr<const IParameter> value, SerializeStructure& stream, int id, bool) const override {
        const CompositeStructure composite(id, stream);
        VisitStructuredParameters(ParametersRegistry::Get(), GetParameterValue<Bag>(value.Get()), stream.GetVisitor())
            .Walk();
    }
};

class StackRegistry final : public ViewRegistry {
public:
    StackRegistry() {
        RegisterNamespacePart(
            L"view", [](AbstractParamAdder& adder) { adder.AddStructure(300, L"host-model", new HostSerializer); }, 1,
            999);
    }
};

const JSONSerializer& Serializer() {
    static const JSONSerializer serializer(L"view");
    return serializer;
}

// Makes the data of a depth, and answers what is to be measured.
using Preparation = std::function<std::function<void()>(int levels)>;

Preparation Writing(const NestedForm& form) {
    return [&form](int levels) -> std::function<void()> {
        return [bag = form.Bags(levels)] { Serializer().ToString(bag, JSONSerializer::Compact); };
    };
}

Preparation Reading(const NestedForm& form) {
    return [&form](int levels) -> std::function<void()> {
        return [json = TString::FromUtf8(form.Text(levels))] { Serializer().ToParameters(json); };
    };
}

// The bag goes on the measured thread.
Preparation Freeing(const NestedForm& form) {
    return [&form](int levels) -> std::function<void()> {
        auto* const chain = new RefCntPtr<TestBag>(form.Bags(levels));
        return [chain] { delete chain; };
    };
}

void Print(const char* operation, const Preparation& prepare, int low, int high, int limit) {
    const std::size_t first = StackUse(prepare(low));
    const std::size_t second = StackUse(prepare(high));
    const std::size_t atLimit = StackUse(prepare(limit));
    std::printf("%-46s %8.1f %10d %12zu\n", operation,
                (static_cast<double>(second) - static_cast<double>(first)) / (high - low), limit, atLimit);
}

}  // namespace

int main() {
    const StackRegistry registry;
    Serializer().ToString(kNestedForms[0].Bags(2), JSONSerializer::Compact);  // fills the namespace
    PresLayerLimits::SetJSONDepth(3000);
    PresLayerLimits::SetTupleDepth(2000);

    std::printf("%-46s %8s %10s %12s\n", "operation", "a level", "levels", "bytes there");
    for (const NestedForm& form : kNestedForms) {
        Print((std::string("write, ") + form.name).c_str(), Writing(form), 100, 900, 1000);
    }
    const NestedForm host{"host structure", 300, AsBag, "{\"hostModel\":", "}", 1};
    Print("write, the first levels", Writing(kNestedForms[0]), 2, 14, 16);
    Print("write, structures, the first levels", Writing(kNestedForms[1]), 2, 14, 16);
    Print("write, a host's serializer that walks", Writing(host), 100, 900, 1000);
    for (const NestedForm& form : kNestedForms) {
        Print((std::string("read, ") + form.name).c_str(), Reading(form), 100, 500, 512);
    }
    for (const NestedForm& form : kNestedForms) {
        Print((std::string("free, ") + form.name).c_str(), Freeing(form), 1000, 9000, 100000);
    }
    Print("free, the first levels", Freeing(kNestedForms[0]), 4, 60, 64);
    Print("free, structure maps, the first levels", Freeing(kNestedForms[3]), 4, 60, 64);
    const Preparation writeTuples = [](int levels) -> std::function<void()> {
        return [value = typed::Nested(static_cast<std::size_t>(levels))] {
            ParameterTypeSerializer<DataValue>::TypeToString(value);
        };
    };
    const Preparation readTuples = [](int levels) -> std::function<void()> {
        return [text = typed::NestedText(static_cast<std::size_t>(levels))] {
            ParameterTypeSerializer<DataValue>::TypeFromString(text);
        };
    };
    const Preparation compareTuples = [](int levels) -> std::function<void()> {
        return [left = typed::Nested(static_cast<std::size_t>(levels)),
                right = typed::Nested(static_cast<std::size_t>(levels))] {
            if (left != right) {
                std::abort();
            }
        };
    };
    Print("write, tuples", writeTuples, 50, 250, 256);
    Print("read, tuples", readTuples, 50, 250, 256);
    Print("compare, tuples", compareTuples, 50, 10000, 100000);
    return 0;
}
