#include "tools/ToolsTestSupport.h"

namespace {

// What bash offers at the end of a line. The completion is loaded as bash-completion would load it.
std::string BashOffers(const std::string& line) {
    const TempFolder folder;
    const std::string completion = folder.Write("completion", RunQvpres({"completion", "bash"}).out);
    const std::string script = "source " + completion +
                               "\n"
                               "read -ra COMP_WORDS <<< \"$1\"\n"
                               "[[ $1 == *' ' ]] && COMP_WORDS+=('')\n"
                               "COMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n"
                               "_qvpres\n"
                               "echo \"${COMPREPLY[*]}\"\n";
    const Outcome outcome = RunProgram("bash", {"-c", script, "bash", line});
    EXPECT_EQ(outcome.err, "") << line;
    return outcome.out;
}

}  // namespace

TEST(Completion, BashOffersCommandsOptionsAndValues) {
    EXPECT_EQ(BashOffers("qvpres ch"), "check\n");
    EXPECT_EQ(BashOffers("qvpres vocabulary l"), "list lint\n");
    EXPECT_EQ(BashOffers("qvpres check --nam"), "--namespace --names\n");
    EXPECT_EQ(BashOffers("qvpres check --names "), "auto short verbose\n");
    EXPECT_EQ(BashOffers("qvpres convert --layout b"), "bare bare-raw\n");
    const TempFolder folder;
    const std::string file = folder.Write("sales.json", "{}");
    const std::string start = folder.Path("sal");
    EXPECT_EQ(BashOffers("qvpres check " + start), file + "\n");
    EXPECT_EQ(BashOffers("qvpres check --vocabulary " + start), file + "\n");
    EXPECT_EQ(BashOffers("qvpres --ver"), "--version\n");
}

TEST(Completion, EachShellTakesItsOwn) {
    const TempFolder folder;
    for (const std::string shell : {"bash", "zsh", "fish"}) {
        const Outcome made = RunQvpres({"completion", shell});
        EXPECT_EQ(made.code, 0);
        const std::string file = folder.Write(shell, made.out);
        if (RunProgram("sh", {"-c", "command -v " + shell}).code != 0) {
            continue;  // bash is always there
        }
        EXPECT_EQ(RunProgram(shell, {"-n", file}).code, 0) << shell;
    }
    EXPECT_EQ(RunQvpres({"completion", "tcsh"}).code, 2);
}

TEST(Completion, FishOffersCommandsAndValues) {
    if (RunProgram("sh", {"-c", "command -v fish"}).code != 0) {
        GTEST_SKIP() << "fish is not installed";
    }
    const TempFolder folder;
    const std::string completion = folder.Write("qvpres.fish", RunQvpres({"completion", "fish"}).out);
    const auto offers = [&](const std::string& line) {
        return RunProgram("fish", {"--no-config", "-c", "source " + completion + "; complete -C '" + line + "'"}).out;
    };
    EXPECT_EQ(offers("qvpres ch"), "check\tFind what is wrong with texts, each with its place\n");
    EXPECT_EQ(offers("qvpres convert --arrays pa"), "packed\tLists of numbers plain, or packed in runs\n");
    EXPECT_EQ(offers("qvpres diff --tole"), "--tolerance\tNumbers so far apart are the same\n");
    EXPECT_EQ(offers("qvpres vocabulary diff --tole"), "") << "another command of the same name";
}

TEST(Manual, ThePageHasEveryCommandAndFormatsWithoutWarnings) {
    const Outcome made = RunQvpres({"manual"});
    ASSERT_EQ(made.code, 0);
    for (const char* part :
         {".SH NAME", ".SS check", ".SS vocabulary lint", "\\fB\\-\\-strict\\fR", ".SH EXIT STATUS"}) {
        EXPECT_NE(made.out.find(part), std::string::npos) << part;
    }
    const TempFolder folder;
    const std::string page = folder.Write("qvpres.1", made.out);
    if (RunProgram("sh", {"-c", "command -v mandoc"}).code == 0) {
        const Outcome lint = RunProgram("mandoc", {"-T", "lint", "-W", "warning", page});
        EXPECT_EQ(lint.out + lint.err, "");
    }
    if (RunProgram("sh", {"-c", "command -v groff"}).code == 0) {
        EXPECT_EQ(RunProgram("groff", {"-man", "-Tutf8", "-ww", "-z", page}).err, "");
    }
}
