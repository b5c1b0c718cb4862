// Registration functions as data, made from bytes, and the answers of a registry as texts. Included by
// RegistryFuzz.cpp, the model and the subject.
#pragma once

#include <limits>
#include <string>
#include <vector>

#include <qvpreslayer/qvpreslayer.h>

#include "fuzz/support/Bytes.h"

namespace registry_script {

constexpr std::size_t kFunctions = 4;

// What a registration function does, as data. Names are letters and dashes.
struct Step {
    enum Action { Add, LookUp, Part };
    Action action = Add;
    int id = 0;
    std::wstring name;
    std::wstring shortName;                 // empty: none
    ParameterTypeCategory kind = PTC_Text;  // as recorded
    bool hasSerializer = true;              // structures may have none
    std::string space;                      // of the look-up, of the part
    int function = 0;                       // of the part
};

struct Function {
    std::vector<Step> steps;
    std::size_t failsBefore = 0;  // the step before which it throws, as long as it does
    int failures = 0;             // how often it throws
};

// How many functions run in one script. Those that throw run again and again, and their parts with them: beyond this
// number they do nothing, here and there.
constexpr int kMostRuns = 200;

// The end of a range of four, where int has as many.
inline int LastOf(int first) { return first < 100 ? first + 3 : first; }

// What a function of a script throws.
struct FunctionFails {};

// The answer of an operation: "ok" and such, or the failure.
template <class Action>
std::string Outcome(Action&& action) {
    try {
        return action();
    } catch (const ParameterNamespaceNotFoundException& error) {
        return "unknown " + error.GetName().ToUtf8();
    } catch (const ParameterNamespaceAlreadyExistsException& error) {
        return "exists " + error.GetName().ToUtf8();
    } catch (const ParameterNamespaceAlreadyHasFallbackException& error) {
        return "linked " + error.GetName().ToUtf8();
    } catch (const CyclicFallbacksException& error) {
        return "loop " + error.GetName().ToUtf8();
    } catch (const ParameterNotFoundException& error) {
        return "nothing " + std::to_string(error.GetID()) + error.GetName().ToUtf8();
    } catch (const ParameterParseException& error) {
        return "not parsed " + std::to_string(error.GetID());
    } catch (const LogicException& error) {
        return "logic " + std::string(error.what());
    } catch (const FunctionFails&) {
        return "function fails";
    }
}

inline TString Wide(const std::string& text) { return TString::FromUtf8(text); }
inline std::string Narrow(const std::wstring& text) { return TString(text).ToUtf8(); }

inline std::string RandomSpace(fuzz::Bytes& bytes) { return std::string(1, static_cast<char>('m' + bytes.Below(5))); }

inline std::string RandomName(fuzz::Bytes& bytes) {
    constexpr const char* kNames[] = {"a", "b", "c-d", "cD", "e-1", "s"};
    return bytes.Of(kNames);
}

inline int RandomID(fuzz::Bytes& bytes) {
    constexpr int kEnds[] = {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};
    const auto near = static_cast<int>(bytes.Below(16));
    return near == 15 ? bytes.Of(kEnds) : near - 3;
}

inline Step RandomStep(fuzz::Bytes& bytes, std::size_t function) {
    constexpr ParameterTypeCategory kKinds[] = {PTC_Text,      PTC_Number,        PTC_List, PTC_Bag,
                                                PTC_Structure, PTC_StructureList, PTC_Map,  PTC_StructureMap};
    Step step;
    const std::size_t action = bytes.Below(8);
    step.action = action == 0 ? Step::LookUp : action == 1 && function + 1 < kFunctions ? Step::Part : Step::Add;
    step.id = RandomID(bytes);
    step.name = Wide(RandomName(bytes)).ToStdWString();
    step.shortName = bytes.Coin() ? Wide(RandomName(bytes)).ToStdWString() : L"";
    step.kind = bytes.Of(kKinds);
    step.hasSerializer = step.kind != PTC_Bag && (step.kind < PTC_Structure || step.kind == PTC_Map || bytes.Coin());
    step.space = RandomSpace(bytes);
    step.function = static_cast<int>(function) + 1;  // a part of its own would never end
    return step;
}

inline Function RandomFunction(fuzz::Bytes& bytes, std::size_t number) {
    Function function;
    std::size_t parts = 0;
    for (std::size_t steps = bytes.Below(6); steps > 0; --steps) {
        const Step step = RandomStep(bytes, number);
        parts += step.action == Step::Part ? 1 : 0;
        if (step.action != Step::Part || parts == 1) {
            function.steps.push_back(step);
        }
    }
    function.failures = static_cast<int>(bytes.Below(4)) % 3;  // mostly none
    function.failsBefore = bytes.Below(6);
    return function;
}

}  // namespace registry_script
