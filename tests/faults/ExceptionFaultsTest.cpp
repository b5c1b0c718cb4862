// Making, copying, cloning and throwing exceptions without memory.
#include <qvpreslayer/CommandExceptions.h>
#include <qvpreslayer/JSONParseException.h>
#include <qvpreslayer/RegistryExceptions.h>

#include "faults/Subjects.h"

namespace {

using enum Promise;

// An exception with all that it may carry.
CommandException Full() {
    CommandException full(kLong);
    for (int id = 0; id < 10; ++id) {
        full.AddUnused(id);
        full.AddMissing(id);
        full.AddMissingOne(id, id);
        full.AddWrongType(id);
        full.AddBadValue(id);
        full.AddOptional(id);
        full.AddHasMoreThanOne(id, id);
        full.AddAtMostOne(id, id);
    }
    return full;
}

std::string CountsOf(const CommandException& e) {
    return e.GetText().ToUtf8() + std::to_string(e.GetUnused().size()) + std::to_string(e.GetMissing().size()) +
           std::to_string(e.GetMissingOne().size()) + std::to_string(e.GetWrongType().size()) +
           std::to_string(e.GetBadValue().size()) + std::to_string(e.GetOptional().size()) +
           std::to_string(e.GetHasMoreThanOne().size()) + std::to_string(e.GetAtMostOne().size()) + e.what();
}

template <class Operation>
Subject OnFull(Operation operation) {
    return On(std::make_shared<CommandException>(Full()), operation, CountsOf);
}

// Everything that an exception class can do.
template <class E>
std::vector<Scenario> AllOf(const char* name, E (*make)()) {
    return {
        {name, Strong, [=] { return Nothing([=] { make(); }); }},
        {name, Strong, [=] { return Nothing([=] { throw make(); }); }},
        {name, Strong,
         [=] {
             return On(
                 std::make_shared<E>(make()), [](const E& e) { const E copy(e); },
                 [](const E& e) { return std::string(e.what()); });
         }},
        {name, Strong,
         [=] {
             return On(
                 std::make_shared<E>(make()), [](const E& e) { e.Throw(); },
                 [](const E& e) { return std::string(e.what()); });
         }},
        // A clone is null, or what it carries runs out of memory.
        {name, Strong,
         [=] {
             return On(
                 std::make_shared<E>(make()),
                 [](const E& e) {
                     const std::unique_ptr<QuorvelException> clone(e.Clone());
                     if (clone == nullptr) {
                         throw std::bad_alloc();
                     }
                     EXPECT_EQ(typeid(e), typeid(*clone));
                 },
                 [](const E& e) { return std::string(e.what()); });
         }},
        // Assigning may leave some of both.
        {name, Basic,
         [=] {
             return On(
                 std::make_shared<E>(make()), [other = make()](E& e) { e = other; },
                 [](const E& e) { return std::string(e.what()); });
         }},
    };
}

JSONParseException Mismatch() {
    JSONParseException failure(Messages::kJSONKindMismatch, kLong);
    failure.SetLocation({1, 2, 3, kLong});
    return failure;
}

}  // namespace

TEST(Faults, Exceptions) {
    CheckUnderFaults(AllOf<QuorvelException>("a plain one", [] { return QuorvelException(kLong); }));
    CheckUnderFaults(AllOf<CommandException>("of a command", [] { return Full(); }));
    CheckUnderFaults(
        AllOf<MissingParameterCommandException>("missing", [] { return MissingParameterCommandException(7); }));
    CheckUnderFaults(AllOf<TypeMismatchCommandException>("mismatch", [] { return TypeMismatchCommandException(7); }));
    CheckUnderFaults(
        AllOf<BadValueParameterCommandException>("bad value", [] { return BadValueParameterCommandException(7); }));
    CheckUnderFaults(AllOf<ParameterNotFoundException>("not found", [] { return ParameterNotFoundException(kLong); }));
    CheckUnderFaults(AllOf<ParameterParseException>("not parsed", [] { return ParameterParseException(7); }));
    CheckUnderFaults(AllOf<ParameterNamespaceNotFoundException>(
        "no namespace", [] { return ParameterNamespaceNotFoundException(kLong); }));
    CheckUnderFaults(AllOf<ParameterNamespaceAlreadyExistsException>(
        "a namespace twice", [] { return ParameterNamespaceAlreadyExistsException(kLong); }));
    CheckUnderFaults(AllOf<ParameterNamespaceAlreadyHasFallbackException>(
        "a fallback twice", [] { return ParameterNamespaceAlreadyHasFallbackException(kLong); }));
    CheckUnderFaults(AllOf<CyclicFallbacksException>("a circle", [] { return CyclicFallbacksException(kLong); }));
    CheckUnderFaults(AllOf<JSONParseException>("of a text", Mismatch));
}

TEST(Faults, ComplaintsOfACommand) {
    CheckUnderFaults({
        {"unused", Strong, [] { return OnFull([](CommandException& e) { e.AddUnused(1); }); }},
        {"missing", Strong, [] { return OnFull([](CommandException& e) { e.AddMissing(1); }); }},
        {"missing one", Strong, [] { return OnFull([](CommandException& e) { e.AddMissingOne(1, 2); }); }},
        {"wrong type", Strong, [] { return OnFull([](CommandException& e) { e.AddWrongType(1); }); }},
        {"bad value", Strong, [] { return OnFull([](CommandException& e) { e.AddBadValue(1); }); }},
        {"optional", Strong, [] { return OnFull([](CommandException& e) { e.AddOptional(1); }); }},
        {"more than one", Strong, [] { return OnFull([](CommandException& e) { e.AddHasMoreThanOne(1, 2); }); }},
        {"at most one", Strong, [] { return OnFull([](CommandException& e) { e.AddAtMostOne(1, 2); }); }},
        {"throwing for nothing", Strong, [] { return Nothing([] { ThrowMissingParameterCommandException(); }); }},
        {"throwing for a type", Strong, [] { return Nothing([] { ThrowTypeMismatchCommandException(7); }); }},
        {"a place", Strong,
         [] {
             return On(
                 std::make_shared<JSONParseException>(Mismatch()),
                 [](JSONParseException& e) {
                     static const TextLocation other{4, 5, 6, kLong + kLong + kLong};
                     e.SetLocation(other);
                 },
                 [](const JSONParseException& e) {
                     const TextLocation& l = e.GetLocation();
                     return std::to_string(l.line) + ":" + std::to_string(l.column) + l.path.ToUtf8();
                 });
         }},
    });
}
