// Random links and clearings against a model of a few lines: no sequence makes a search run for ever, and every answer
// is the model's.
#include <qvpreslayer/ParametersRegistry.h>

#include <map>
#include <random>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"

namespace {

constexpr int kNamespaces = 6;

// What each operation answers, as text: "ok", "11", or the failure and the name in it.
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
        return "nothing " + error.GetName().ToUtf8();
    }
}

std::string Name(int number) { return "n" + std::to_string(number); }
std::string Parameter(int number) { return "p" + std::to_string(number); }
int Identifier(int number) { return 10 * number + 1; }

// The rules once more, in the plainest form.
class Model {
public:
    std::string Add(int number) { return m_names.insert(number).second ? "ok" : "exists " + Name(number); }

    std::string Clear(int number) {
        if (m_names.erase(number) == 0) {
            return "unknown " + Name(number);
        }
        std::erase_if(m_links, [&](const auto& link) { return link.first == number || link.second == number; });
        return "ok";
    }

    std::string Link(int number, int fallback) {
        for (const int needed : {number, fallback}) {
            if (!m_names.contains(needed)) {
                return "unknown " + Name(needed);
            }
        }
        if (m_links.contains(number)) {
            return "linked " + Name(number);
        }
        if (Reaches(fallback, number)) {
            return "loop " + Name(number);
        }
        m_links[number] = fallback;
        return "ok";
    }

    std::string Find(int number, int parameter) const {
        if (!m_names.contains(number)) {
            return "unknown " + Name(number);
        }
        return Reaches(number, parameter) ? std::to_string(Identifier(parameter)) : "nothing " + Parameter(parameter);
    }

private:
    bool Reaches(int from, int to) const {
        while (from != to) {
            const auto link = m_links.find(from);
            if (link == m_links.end()) {
                return false;
            }
            from = link->second;
        }
        return true;
    }

    std::set<int> m_names;
    std::map<int, int> m_links;
};

// The same operations on a registry.
class Subject {
public:
    std::string Add(int number) {
        return Outcome([&] {
            const std::wstring parameter = TString::FromUtf8(Parameter(number)).ToStdWString();
            m_registry.Add(Text(number), 10 * number, 10 * number + 9, [=](AbstractParamAdder& adder) {
                adder.AddSimple(Identifier(number), parameter.c_str(), TextSerializer());
            });
            return std::string("ok");
        });
    }
    std::string Clear(int number) {
        return Outcome([&] {
            m_registry.Clear(Text(number));
            return std::string("ok");
        });
    }
    std::string Link(int number, int fallback) {
        return Outcome([&] {
            m_registry.SetFallback(Text(number), Text(fallback));
            return std::string("ok");
        });
    }
    std::string Find(int number, int parameter) const {
        return Outcome([&] {
            return std::to_string(m_registry.GetID(Text(number), TString::FromUtf8(Parameter(parameter)), true));
        });
    }

private:
    static TString Text(int number) { return TString::FromUtf8(Name(number)); }

    TestRegistry m_registry;
};

}  // namespace

TEST(RegistryFallbackProperty, RandomLinksAndClearingsAnswerAsTheModel) {
    for (unsigned int seed = 0; seed < 50; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const auto pick = [&](int count) { return std::uniform_int_distribution<int>(0, count - 1)(random); };
        Model model;
        Subject subject;
        for (int step = 0; step < 200; ++step) {
            const int one = pick(kNamespaces);
            const int other = pick(kNamespaces);
            switch (pick(6)) {
                case 0:
                    ASSERT_EQ(model.Add(one), subject.Add(one));
                    break;
                case 1:
                    ASSERT_EQ(model.Clear(one), subject.Clear(one));
                    break;
                case 2:
                    ASSERT_EQ(model.Find(one, other), subject.Find(one, other));
                    break;
                default:
                    ASSERT_EQ(model.Link(one, other), subject.Link(one, other));
                    break;
            }
        }
        for (int one = 0; one < kNamespaces; ++one) {
            for (int other = 0; other < kNamespaces; ++other) {
                ASSERT_EQ(model.Find(one, other), subject.Find(one, other));
            }
        }
    }
}
