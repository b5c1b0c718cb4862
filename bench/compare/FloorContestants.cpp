#include "FloorContestants.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <map>

namespace compare {

namespace {

class CopyFloor final : public Contestant {
public:
    std::string GetName() const override { return kCopyFloor; }
    std::string GetVersion() const override { return ""; }

    void Prepare(const Documents& documents) override {
        m_documents = &documents;
        std::size_t longest = 0;
        for (const auto& text : documents.texts) {
            longest = std::max(longest, text.size());
        }
        m_copy.resize(longest);
    }
    void Release() override { m_copy = std::u16string(); }

    std::size_t Write(std::size_t index) override { return Copy(index); }
    std::size_t Read(std::size_t index) override { return Copy(index); }

private:
    std::size_t Copy(std::size_t index) {
        const std::u16string& text = m_documents->texts[index];
        std::memcpy(m_copy.data(), text.data(), text.size() * sizeof(char16_t));
        // The copy counts as looked at, so that it is made.
        asm volatile("" : : "r"(m_copy.data()) : "memory");
        return text.size();
    }

    const Documents* m_documents = nullptr;
    std::u16string m_copy;
};

// The numbers of one bag and the bags in it.
class NumberCollector final : public IParameterVisitor {
public:
    void VisitParameter(int /*id*/, const RefCntPtr<IParameter>& value) override {
        using Bag = RefCntPtr<const IParameters>;
        const IParameter* parameter = value.Get();
        Take(parameter, ints);
        Take(parameter, doubles);
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
        }
    }

    std::vector<int> ints;
    std::vector<double> doubles;

private:
    template <class T>
    static void Take(const IParameter* parameter, std::vector<T>& to) {
        if (const auto* single = dynamic_cast<const ValParameter<T>*>(parameter)) {
            to.push_back(single->GetValue());
        } else if (const auto* list = dynamic_cast<const ValParameter<std::vector<T>>*>(parameter)) {
            to.insert(to.end(), list->GetValue().begin(), list->GetValue().end());
        }
    }
};

class NumberFloor final : public Contestant {
public:
    explicit NumberFloor(const Workload& workload) : m_workload(workload) {}

    std::string GetName() const override { return kNumberFloor; }
    std::string GetVersion() const override { return ""; }
    bool CanWrite() const override { return m_hasNumbers; }
    bool CanRead() const override { return false; }

    void Prepare(const Documents& /*documents*/) override {
        std::size_t most = 0;
        for (const auto& bag : m_workload.bags) {
            NumberCollector& numbers = m_numbers.emplace_back();
            bag->Accept(numbers);
            most = std::max(most, numbers.ints.size() + numbers.doubles.size());
        }
        m_hasNumbers = most > 0;
        m_text.resize(most * kRoom);
    }

    void Release() override {
        m_numbers.clear();
        m_text = std::string();
    }

    std::size_t Write(std::size_t index) override {
        char* at = m_text.data();
        for (const int value : m_numbers[index].ints) {
            at = std::to_chars(at, at + kRoom, value).ptr;
        }
        for (const double value : m_numbers[index].doubles) {
            at = std::to_chars(at, at + kRoom, value).ptr;
        }
        return static_cast<std::size_t>(at - m_text.data());
    }

    std::size_t Read(std::size_t) override { return 0; }

private:
    static constexpr std::size_t kRoom = 32;  // for any number

    const Workload& m_workload;
    std::vector<NumberCollector> m_numbers;  // one for each text
    std::string m_text;
    bool m_hasNumbers = false;
};

}  // namespace

std::unique_ptr<Contestant> MakeCopyFloor() { return std::make_unique<CopyFloor>(); }

std::unique_ptr<Contestant> MakeNumberFloor(const Workload& workload) {
    return std::make_unique<NumberFloor>(workload);
}

}  // namespace compare
