#include <random>
#include <string_view>

#include <boost/unordered/unordered_flat_map.hpp>

#include "BenchHost.h"
#include "Figures.h"

namespace figures {

namespace {

constexpr std::size_t kQuestions = 4096;

TString NameOf(int number) { return TString(L"parameter-name-") + TString::number(number); }

// Namespaces of so many parameters each; identifiers stand sparsely, a thousand for each namespace or more.
struct Vocabulary {
    Vocabulary(int namespaces, int parameters) {
        const int range = std::max(1000, parameters * 7);
        for (int number = 0; number < namespaces; ++number) {
            const int first = 1 + number * range;
            const auto fill = [=](AbstractParamAdder& adder) {
                for (int i = 0; i < parameters; ++i) {
                    const std::wstring name = NameOf(i).ToStdWString();
                    adder.AddSimple(first + i * 7, name.c_str(), new ParameterTypeSerializer<int>);
                }
            };
            registry.RegisterNamespace(TString(L"space-") + TString::number(number), fill, first, first + range - 1,
                                       true);
            for (int i = 0; i < parameters; ++i) {
                ids.push_back(first + i * 7);
            }
        }
        std::mt19937 random(1);
        for (std::size_t i = 0; i < kQuestions; ++i) {
            questions.push_back(ids[random() % ids.size()]);
        }
    }

    std::size_t AskAll() const {
        std::size_t sum = 0;
        for (const int id : questions) {
            sum += reinterpret_cast<std::uintptr_t>(registry.FindInfo(id));
        }
        return sum;
    }

    BenchRegistry registry;
    std::vector<int> ids;
    std::vector<int> questions;
};

// One look-up of an identifier here and there. One vocabulary is published at a time; looking up asks the object.
Outcome DuelOfSizes(int ourNamespaces, int ourParameters, int theirNamespaces, int theirParameters) {
    const Vocabulary ours(ourNamespaces, ourParameters);
    const Vocabulary theirs(theirNamespaces, theirParameters);
    return Duel(
        kQuestions, [&] { return ours.AskAll(); }, [&] { return theirs.AskAll(); });
}

void AddNames(Figures& figures) {
    const Vocabulary vocabulary(1, 5000);
    boost::unordered_flat_map<std::u16string_view, int> map;
    std::vector<TString> names;
    for (int i = 0; i < 5000; ++i) {
        names.push_back(NameOf(i));
    }
    for (int i = 0; i < 5000; ++i) {
        map.emplace(names[static_cast<std::size_t>(i)].view(), 1 + i * 7);
    }
    std::mt19937 random(3);
    std::vector<TString> questions;
    for (std::size_t i = 0; i < kQuestions; ++i) {
        questions.push_back(names[random() % names.size()]);
    }
    const TString space = L"space-0";
    figures.push_back({"name to identifier, 5,000 names (`GetID`)", "`boost::unordered_flat_map`, `boost::hash`",
                       Duel(
                           kQuestions,
                           [&] {
                               std::size_t sum = 0;
                               for (const TString& name : questions) {
                                   sum += static_cast<std::size_t>(vocabulary.registry.GetID(space, name, true));
                               }
                               return sum;
                           },
                           [&] {
                               std::size_t sum = 0;
                               for (const TString& name : questions) {
                                   sum += static_cast<std::size_t>(map.find(name.view())->second);
                               }
                               return sum;
                           }),
                       0.5});
}

void AddIdentifiers(Figures& figures) {
    const Vocabulary vocabulary(1, 5000);
    boost::unordered_flat_map<int, const ParameterInfo*> map;
    for (const int id : vocabulary.ids) {
        map.emplace(id, vocabulary.registry.FindInfo(id));
    }
    figures.push_back({"identifier to entry, 5,000 sparse ones (`FindInfo`)", "`boost::unordered_flat_map`",
                       Duel(
                           kQuestions, [&] { return vocabulary.AskAll(); },
                           [&] {
                               std::size_t sum = 0;
                               for (const int id : vocabulary.questions) {
                                   sum += reinterpret_cast<std::uintptr_t>(map.find(id)->second);
                               }
                               return sum;
                           }),
                       1.2});
}

}  // namespace

void AddLookUps(Figures& figures) {
    AddNames(figures);
    AddIdentifiers(figures);
    figures.push_back(
        {"`FindInfo`, 5,000 identifiers in 1,000 namespaces", "in 1 namespace", DuelOfSizes(1000, 5, 1, 5000), 1.1});
    figures.push_back({"`FindInfo`, 1,000 identifiers", "100 identifiers", DuelOfSizes(1, 1000, 1, 100), 1.1});
    figures.push_back({"`FindInfo`, 100,000 identifiers", "100 identifiers", DuelOfSizes(1, 100000, 1, 100), 1.1});
}

}  // namespace figures
