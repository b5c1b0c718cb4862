#include <qvpreslayer/CommandExceptions.h>

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "command/CommandTestSupport.h"

namespace {

using Ids = std::vector<int>;
using Pairs = std::vector<std::pair<int, int>>;

void Append(std::string& text, const char* name, const Ids& ids) {
    for (const int id : ids) {
        text += (text.empty() ? "" : " ") + std::string(name) + ":" + std::to_string(id);
    }
}

void Append(std::string& text, const char* name, const Pairs& pairs) {
    for (const auto& [first, second] : pairs) {
        text +=
            (text.empty() ? "" : " ") + std::string(name) + ":" + std::to_string(first) + "/" + std::to_string(second);
    }
}

// All entries of all lists: "unused:3 missing:1 missing-one:1/2".
std::string ListsOf(const CommandException& error) {
    std::string text;
    Append(text, "unused", error.GetUnused());
    Append(text, "missing", error.GetMissing());
    Append(text, "missing-one", error.GetMissingOne());
    Append(text, "wrong-type", error.GetWrongType());
    Append(text, "bad-value", error.GetBadValue());
    Append(text, "optional", error.GetOptional());
    Append(text, "more-than-one", error.GetHasMoreThanOne());
    Append(text, "at-most-one", error.GetAtMostOne());
    return text;
}

// One list of the exception: how it is filled, how it is named above, and whether an entry is an error.
struct SingleList {
    const char* name;
    void (CommandException::*add)(int);
    bool isError;
};
constexpr SingleList kSingleLists[] = {
    {"unused", &CommandException::AddUnused, true},        {"missing", &CommandException::AddMissing, true},
    {"wrong-type", &CommandException::AddWrongType, true}, {"bad-value", &CommandException::AddBadValue, true},
    {"optional", &CommandException::AddOptional, false},
};

struct PairList {
    const char* name;
    void (CommandException::*add)(int, int);
    bool isError;
};
constexpr PairList kPairLists[] = {
    {"missing-one", &CommandException::AddMissingOne, true},
    {"more-than-one", &CommandException::AddHasMoreThanOne, true},
    {"at-most-one", &CommandException::AddAtMostOne, false},
};

}  // namespace

TEST(CommandException, HasOneMessageWhateverItsText) {
    EXPECT_STREQ("Error in command parameters", CommandException(L"").what());
    EXPECT_STREQ("Error in command parameters", CommandException(L"the reason").what());
    EXPECT_EQ(u"Error in command parameters", CommandException(L"the reason").GetMessageText());
}

TEST(CommandException, KeepsItsText) {
    EXPECT_EQ(L"the reason", CommandException(L"the reason").GetText());
    EXPECT_EQ(L"", MissingParameterCommandException(1).GetText());
}

TEST(CommandException, HasNoEntriesAtFirst) {
    const CommandException error(L"");
    EXPECT_EQ("", ListsOf(error));
    EXPECT_FALSE(error.HasErrors());
}

TEST(CommandException, KeepsOrderAndRepetitionsOfIdentifiers) {
    for (const auto& list : kSingleLists) {
        SCOPED_TRACE(list.name);
        CommandException error(L"");
        for (const int id : {5, -1, 5, 0}) {
            (error.*list.add)(id);
        }
        const std::string name = list.name;
        EXPECT_EQ(name + ":5 " + name + ":-1 " + name + ":5 " + name + ":0", ListsOf(error));
    }
}

TEST(CommandException, KeepsOrderAndRepetitionsOfPairs) {
    for (const auto& list : kPairLists) {
        SCOPED_TRACE(list.name);
        CommandException error(L"");
        (error.*list.add)(2, 1);
        (error.*list.add)(1, 2);
        (error.*list.add)(2, 1);
        const std::string name = list.name;
        EXPECT_EQ(name + ":2/1 " + name + ":1/2 " + name + ":2/1", ListsOf(error));
    }
}

TEST(CommandException, EachListTellsWhetherItIsAnError) {
    for (const auto& list : kSingleLists) {
        SCOPED_TRACE(list.name);
        CommandException error(L"");
        (error.*list.add)(1);
        EXPECT_EQ(list.isError, error.HasErrors());
    }
    for (const auto& list : kPairLists) {
        SCOPED_TRACE(list.name);
        CommandException error(L"");
        (error.*list.add)(1, 2);
        EXPECT_EQ(list.isError, error.HasErrors());
    }
}

TEST(CommandException, NotesAloneAreNoError) {
    CommandException error(L"");
    error.AddOptional(1);
    error.AddAtMostOne(2, 3);
    EXPECT_FALSE(error.HasErrors());
    error.AddUnused(4);
    EXPECT_TRUE(error.HasErrors());
    EXPECT_EQ("unused:4 optional:1 at-most-one:2/3", ListsOf(error));
}

TEST(CommandException, AnswersItsListsByReference) {
    const CommandException error(L"");
    EXPECT_EQ(&error.GetUnused(), &error.GetUnused());
    EXPECT_TRUE((std::is_same_v<const Ids&, decltype(error.GetMissing())>));
    EXPECT_TRUE((std::is_same_v<const Ids&, decltype(error.GetWrongType())>));
    EXPECT_TRUE((std::is_same_v<const Ids&, decltype(error.GetBadValue())>));
    EXPECT_TRUE((std::is_same_v<const Ids&, decltype(error.GetOptional())>));
    EXPECT_TRUE((std::is_same_v<const Pairs&, decltype(error.GetMissingOne())>));
    EXPECT_TRUE((std::is_same_v<const Pairs&, decltype(error.GetHasMoreThanOne())>));
    EXPECT_TRUE((std::is_same_v<const Pairs&, decltype(error.GetAtMostOne())>));
}

TEST(CommandException, CopiesAllLists) {
    CommandException error(L"why");
    for (const auto& list : kSingleLists) {
        (error.*list.add)(7);
    }
    for (const auto& list : kPairLists) {
        (error.*list.add)(8, 9);
    }
    const CommandException copy(error);
    EXPECT_EQ(ListsOf(error), ListsOf(copy));
    EXPECT_EQ(L"why", copy.GetText());
    CommandException assigned(L"");
    assigned.AddUnused(1);
    assigned = error;
    EXPECT_EQ(ListsOf(error), ListsOf(assigned));
    error.AddMissing(1);
    EXPECT_NE(ListsOf(error), ListsOf(copy));
}

TEST(MissingParameterCommandException, HoldsItsIdentifierAndNothingElse) {
    const MissingParameterCommandException error(42);
    EXPECT_EQ(42, error.GetParameterID());
    EXPECT_EQ("missing:42", ListsOf(error));
    EXPECT_TRUE(error.HasErrors());
    EXPECT_STREQ("Error in command parameters", error.what());
}

TEST(TypeMismatchCommandException, HoldsItsIdentifierAndNothingElse) {
    const TypeMismatchCommandException error(7);
    EXPECT_EQ(7, error.GetParameterID());
    EXPECT_EQ("wrong-type:7", ListsOf(error));
    EXPECT_TRUE(error.HasErrors());
    EXPECT_STREQ("Error in command parameters", error.what());
}

TEST(BadValueParameterCommandException, HoldsItsIdentifierAndNothingElse) {
    const BadValueParameterCommandException error(9);
    EXPECT_EQ(9, error.GetParameterID());
    EXPECT_EQ("bad-value:9", ListsOf(error));
    EXPECT_TRUE(error.HasErrors());
    EXPECT_STREQ("Error in command parameters", error.what());
}

TEST(CommandExceptions, TheIdentifierStaysTheFirst) {
    MissingParameterCommandException missing(1);
    missing.AddMissing(2);
    EXPECT_EQ(1, missing.GetParameterID());
    TypeMismatchCommandException mismatch(3);
    mismatch.AddWrongType(4);
    EXPECT_EQ(3, mismatch.GetParameterID());
    BadValueParameterCommandException bad(-5);
    bad.AddBadValue(6);
    EXPECT_EQ(-5, bad.GetParameterID());
}

TEST(CommandExceptions, CanBeThrownWithoutAnObject) {
    EXPECT_EQ(0, MissingId([] { ThrowMissingParameterCommandException(); }));
    EXPECT_EQ(12, MismatchId([] { ThrowTypeMismatchCommandException(12); }));
    EXPECT_EQ(-12, MismatchId([] { ThrowTypeMismatchCommandException(-12); }));
}
