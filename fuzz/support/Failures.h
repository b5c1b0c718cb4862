// Failures as texts, to be compared. Included by the targets about JSON.
#pragma once

#include <stdexcept>
#include <string>
#include <typeinfo>

#include <qvpreslayer/qvpreslayer.h>

namespace fuzz {

// What a call came to when it threw one of the exceptions that docs/json.md names: its type, message and place. All
// others pass, and end the target.
template <class Call>
std::string FailureOf(Call&& call) {
    const auto described = [](const auto& failure) {
        std::string text = typeid(failure).name() + std::string(": ") + failure.what();
        if (const auto* located = dynamic_cast<const TextLocated*>(&failure)) {
            const TextLocation& place = located->GetLocation();
            text += " at " + std::to_string(place.line) + "," + std::to_string(place.column) + "," +
                    std::to_string(place.offset) + " " + place.path.ToUtf8();
        }
        return text;
    };
    try {
        call();
        return {};
    } catch (const QuorvelException& failure) {
        return described(failure);
    } catch (const LogicException& failure) {
        return described(failure);
    } catch (const std::out_of_range& failure) {
        return described(failure);
    } catch (const std::runtime_error& failure) {
        return described(failure);
    }
}

// The type and the message, without the place.
inline std::string WithoutPlace(const std::string& failure) { return failure.substr(0, failure.find(" at ")); }

// The same without the path where the text is not valid: the slow reader does not know it there.
inline std::string WithoutPath(const std::string& failure) {
    const std::size_t end = failure.find(' ', WithoutPlace(failure).size() + 4);
    return failure.find("not valid JSON") == std::string::npos ? failure : failure.substr(0, end);
}

}  // namespace fuzz
