// The rules of the registry, the slow way: tables of plain entries, walked from end to end. Included by
// RegistryFuzz.cpp, which runs the same script on this and on the library and compares the answers.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <qvpreslayer/qvpreslayer.h>

#include "fuzz/support/RegistryScript.h"
#include "fuzz/support/TextModels.h"

namespace registry_model {

using namespace registry_script;

struct Entry {
    std::string name;
    std::string shortName;
    ParameterTypeCategory kind = PTC_None;
    bool hasSerializer = false;
};

// One registration function in place, with a count of its own.
struct Filler {
    const Function* function;
    std::shared_ptr<int> runs = std::make_shared<int>(0);
};

struct Namespace {
    int first = 0;
    int last = 0;
    bool needInit = true;
    bool filling = false;
    std::vector<Filler> fillers;
    std::vector<int> order;  // identifiers as they were first added
    std::map<int, Entry> entries;
    std::map<std::string, int> ids;
    std::map<std::string, int> shortIds;
};

class Model {
public:
    explicit Model(const std::vector<Function>& functions) : m_functions(functions) {}

    bool verboseInForce = true;
    std::string trace;  // the answers of look-ups that functions made

    std::string Register(const std::string& name, int function, int first, int last, bool eager) {
        if (m_spaces.contains(name)) {
            throw ParameterNamespaceAlreadyExistsException(Wide(name));
        }
        auto added = std::make_shared<Namespace>();
        added->first = first;
        added->last = last;
        added->fillers.push_back({&m_functions[static_cast<std::size_t>(function)]});
        if (eager) {
            Fill(*added);
        }
        if (m_spaces.contains(name)) {
            throw ParameterNamespaceAlreadyExistsException(Wide(name));
        }
        m_spaces[name] = added;
        return "ok";
    }

    std::string RegisterPart(const std::string& name, int function, int first, int last) {
        const auto found = m_spaces.find(name);
        if (found == m_spaces.end()) {
            return Register(name, function, first, last, false);
        }
        Namespace& space = *found->second;
        Assert(space.needInit, "m_needInit");
        Assert(space.first == first, "m_namespace.FirstID() == firstId");
        Assert(space.last == last, "m_namespace.LastID() == lastId");
        space.fillers.push_back({&m_functions[static_cast<std::size_t>(function)]});
        return "ok";
    }

    std::string SetFallback(const std::string& name, const std::string& fallback) {
        ByName(name);
        ByName(fallback);
        if (m_fallbacks.contains(name)) {
            throw ParameterNamespaceAlreadyHasFallbackException(Wide(name));
        }
        for (std::string current = fallback; !current.empty(); current = FallbackOf(current)) {
            if (current == name) {
                throw CyclicFallbacksException(Wide(name));
            }
        }
        m_fallbacks[name] = fallback;
        return "ok";
    }

    std::string Clear(const std::string& name) {
        Namespace& space = ByName(name);
        Fill(space);
        for (const auto& [id, entry] : space.entries) {
            if (!entry.shortName.empty()) {
                m_unserializable.erase(id);
            }
        }
        std::erase_if(m_fallbacks, [&](const auto& link) { return link.first == name || link.second == name; });
        m_spaces.erase(name);
        return "ok";
    }

    std::string ClearAll() {
        m_spaces.clear();
        m_fallbacks.clear();
        m_unserializable.clear();
        return "ok";
    }

    std::string AddUnserializable(int id) {
        m_unserializable.insert(id);
        return "ok";
    }
    std::string IsUnserializable(int id) const { return m_unserializable.contains(id) ? "yes" : "no"; }
    std::string HasNamespace(const std::string& name) const { return m_spaces.contains(name) ? "yes" : "no"; }

    std::string GetID(const std::string& name, const std::string& parameter, bool verbose) {
        for (std::string current = name;;) {
            Namespace& space = ByName(current);
            Fill(space);
            const auto& ids = verbose || verboseInForce ? space.ids : space.shortIds;
            const auto found = ids.find(parameter);
            if (found != ids.end() && found->second != 0) {
                return std::to_string(found->second);
            }
            current = FallbackOf(current);
            if (current.empty()) {
                throw ParameterNotFoundException(Wide(parameter));
            }
        }
    }

    // The word "text" is read as a value: no number.
    std::string FromString(const std::string& name, const std::string& parameter, bool verbose) {
        const int id = std::stoi(GetID(name, parameter, verbose));
        const Entry* entry = Outcome([&] { return Find(id), ""; }).empty() ? Find(id) : nullptr;
        if (entry == nullptr || !HasValueSerializer(*entry) || entry->kind == PTC_Number) {
            throw ParameterParseException(id);
        }
        return "text under " + std::to_string(id);
    }

    std::string GetName(int id, bool verbose) {
        const Entry* entry = Find(id);
        const std::string name = entry == nullptr ? "" : verbose ? entry->name : entry->shortName;
        if (name.empty()) {
            throw ParameterNotFoundException(id);
        }
        return name;
    }

    std::string GetType(int id) {
        const Entry* entry = Find(id);
        if (entry == nullptr) {
            throw ParameterNotFoundException(id);
        }
        return std::to_string(entry->kind);
    }

    std::string GetSerializer(int id, ParameterTypeCategory kind) {
        const Entry* entry = Find(id);
        if (entry == nullptr || entry->kind != kind) {
            throw ParameterNotFoundException(id);
        }
        return entry->hasSerializer ? "a serializer" : "null";
    }

    std::string GetValueSerializer(int id) {
        const Entry* entry = Find(id);
        return entry != nullptr && HasValueSerializer(*entry) ? "a serializer" : "null";
    }

    std::string FindInfo(int id) {
        if (Covering(id) == nullptr) {
            return "null";
        }
        const Entry* entry = Find(id);
        return entry == nullptr ? "null"
                                : std::to_string(id) + " " + std::to_string(entry->kind) + " " + entry->name + " " +
                                      entry->shortName + " " + text_model::CamelCase(Wide(entry->name)).ToUtf8();
    }

    std::string GetNamespaceInfos() {
        std::string text;
        for (const auto& [name, space] : m_spaces) {
            Fill(*space);
            text += name + ":";
            for (const int id : space->order) {
                const Entry& entry = space->entries[id];
                if (!entry.shortName.empty()) {
                    text += " " + std::to_string(id) + " " + entry.name + " " + entry.shortName;
                }
            }
            text += "\n";
        }
        return text;
    }

private:
    static void Assert(bool holds, const char* expression) {
        if (!holds) {
            ThrowLogicException(expression, 0, "");
        }
    }
    static bool HasValueSerializer(const Entry& entry) {
        return entry.hasSerializer && (entry.kind <= PTC_List || entry.kind == PTC_Map);
    }

    Namespace& ByName(const std::string& name) {
        const auto found = m_spaces.find(name);
        if (found == m_spaces.end()) {
            throw ParameterNamespaceNotFoundException(Wide(name));
        }
        return *found->second;
    }

    std::string FallbackOf(const std::string& name) const {
        const auto found = m_fallbacks.find(name);
        return found == m_fallbacks.end() ? std::string() : found->second;
    }

    // The first in name order wins.
    std::shared_ptr<Namespace> Covering(int id) {
        for (const auto& [name, space] : m_spaces) {
            if (space->first <= id && id <= space->last) {
                return space;
            }
        }
        return nullptr;
    }

    const Entry* Find(int id) {
        const std::shared_ptr<Namespace> space = Covering(id);
        if (space == nullptr) {
            throw ParameterNotFoundException(id);
        }
        Fill(*space);
        const auto found = space->entries.find(id);
        return found == space->entries.end() ? nullptr : &found->second;
    }

    void Fill(Namespace& space) {
        if (!space.needInit || space.filling) {
            return;
        }
        space.filling = true;
        try {
            for (std::size_t i = 0; i < space.fillers.size(); ++i) {
                const Filler filler = space.fillers[i];
                Run(space, filler);
            }
        } catch (...) {
            space.filling = false;
            throw;
        }
        space.filling = false;
        space.needInit = false;
    }

    void Run(Namespace& space, const Filler& filler) {
        if (++m_runs > kMostRuns) {
            return;
        }
        const bool fails = (*filler.runs)++ < filler.function->failures;
        for (std::size_t i = 0; i < filler.function->steps.size(); ++i) {
            if (fails && i == filler.function->failsBefore) {
                throw FunctionFails();
            }
            const Step& step = filler.function->steps[i];
            if (step.action == Step::LookUp) {
                trace += Outcome([&] { return GetID(step.space, Narrow(step.name), true); }) + "\n";
            } else if (step.action == Step::Part) {
                trace +=
                    Outcome([&] { return RegisterPart(step.space, step.function, step.id, LastOf(step.id)); }) + "\n";
            } else {
                Add(space, step);
            }
        }
        if (fails) {
            throw FunctionFails();
        }
    }

    static void Add(Namespace& space, const Step& step) {
        Assert(step.id >= space.first && step.id <= space.last, "pid >= FirstID() && pid <= LastID()");
        if (!space.entries.contains(step.id)) {
            space.order.push_back(step.id);
        }
        Entry& entry = space.entries[step.id];
        entry.name = Narrow(step.name);
        entry.kind = step.kind;
        entry.hasSerializer = step.hasSerializer;
        space.ids[entry.name] = step.id;
        if (!step.shortName.empty()) {
            entry.shortName = Narrow(step.shortName);
            space.shortIds[entry.shortName] = step.id;
        }
    }

    const std::vector<Function>& m_functions;
    int m_runs = 0;
    std::map<std::string, std::shared_ptr<Namespace>> m_spaces;
    std::map<std::string, std::string> m_fallbacks;
    std::set<int> m_unserializable;
};

}  // namespace registry_model
