#include "Workload.h"

#include <map>

namespace compare {

namespace {

// Counts what the JSON text shows as single values.
class ValueCounter final : public IParameterVisitor {
public:
    void VisitParameter(int /*id*/, const RefCntPtr<IParameter>& value) override {
        const IParameter* parameter = value.Get();
        using Bag = RefCntPtr<const IParameters>;
        if (const auto* bag = dynamic_cast<const ValParameter<Bag>*>(parameter)) {
            bag->GetValue()->Accept(*this);
        } else if (const auto* bags = dynamic_cast<const ValParameter<std::vector<Bag>>*>(parameter)) {
            for (const Bag& element : bags->GetValue()) {
                element->Accept(*this);
            }
        } else if (const auto* entries = dynamic_cast<const ValParameter<std::map<TString, Bag>>*>(parameter)) {
            for (const auto& entry : entries->GetValue()) {
                entry.second->Accept(*this);
            }
        } else {
            m_count += CountElements(parameter);
        }
    }

    std::size_t GetCount() const { return m_count; }

private:
    template <class... Lists>
    static std::size_t CountIn(const IParameter* parameter) {
        std::size_t count = 0;
        bool found = false;
        const auto look = [&](const auto* list) {
            if (list != nullptr) {
                found = true;
                count = list->GetValue().size();
            }
        };
        (look(dynamic_cast<const ValParameter<Lists>*>(parameter)), ...);
        return found ? count : 1;
    }

    static std::size_t CountElements(const IParameter* parameter) {
        return CountIn<std::vector<int>, std::vector<double>, std::vector<TString>, std::map<TString, TString>>(
            parameter);
    }

    std::size_t m_count = 0;
};

}  // namespace

const std::vector<WorkloadMaker>& GetWorkloadMakers() {
    static const std::vector<WorkloadMaker> makers = {
        {"W1", MakeWideBag},          {"W2", MakeRealColumns},     {"W3", MakeNestedBags}, {"W4a", MakeIntegerRuns},
        {"W4b", MakeConstantDoubles}, {"W4c", MakeRandomIntegers}, {"W5", MakeStrings},    {"W6", MakeSmallBags},
        {"W7", MakeViewModel},        {"W8", MakeRealDoubles},
    };
    return makers;
}

std::size_t GetCount(Scale scale, std::size_t full, std::size_t tiny) {
    return scale == Scale::Full ? full : scale == Scale::Quick ? full / 10 : tiny;
}

void Complete(Workload& workload, ParametersRegistry& registry, int firstId) {
    workload.namespaceName = TString::FromUtf8(workload.name);
    RegisterFields(registry, workload.namespaceName, firstId, firstId + kFieldRange - 1, workload.fields);
    ValueCounter counter;
    for (const auto& bag : workload.bags) {
        bag->Accept(counter);
    }
    workload.values = counter.GetCount();
}

}  // namespace compare
