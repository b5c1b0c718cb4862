#include "tools/qvpres/shell/ManPage.h"

#include <string_view>

namespace qvpres {

namespace {

constexpr std::string_view kDescription = R"(.B qvpres
works on JSON texts of parameter bags: it checks them, shows them, writes them in other forms, compares them and makes
pages and statistics of them. What the names in a text mean is told by a vocabulary: a declaration file
.RB ( \-\-vocabulary )
or a shared library of a host that registers its parameters
.RB ( \-\-module ).
.PP
Texts come from a file or from standard input, results go to standard output, messages to standard error. Nothing is
looked for on a network. Wherever
.B \-\-json
is there, it writes JSON for machines in place of the text for people.
.PP
A module exports the function that the header
.I qvpres/HostModule.h
declares:
.PP
.nf
.RS
extern "C" void QvpresRegisterParameters(ParametersRegistry& registry);
.RE
.fi
)";

constexpr std::string_view kEnding = R"(.SH EXIT STATUS
.TP
.B 0
The work is done, and nothing was found.
.TP
.B 1
Something was found: an error or, with \fB\-\-strict\fR, a leniency by
.BR check ,
a difference by
.BR diff ,
something that would be lost by
.B convert
or
.BR import ,
and what
.BR "vocabulary lint" ", " "vocabulary diff" ", " "vocabulary export"
and
.B "generate \-\-check"
find.
.TP
.B 2
Wrong usage, or input that cannot be taken.
.SH ENVIRONMENT
.TP
.B NO_COLOR
When set to anything, no colours are written, unless \fB\-\-color always\fR asks for them.
.TP
.B TERM
When it is "dumb", likewise.
.SH EXAMPLES
What is wrong with a text, and what does reading pass over?
.PP
.nf
.RS
qvpres check \-\-strict \-\-vocabulary chart.json bag.json
.RE
.fi
.PP
One part of a bag, with everything in it:
.PP
.nf
.RS
qvpres show \-\-vocabulary chart.json bag.json /style \-\-full
.RE
.fi
.PP
A text for each line, converted by four threads; or by GNU parallel, by as many processes as there are cores:
.PP
.nf
.RS
qvpres convert \-\-vocabulary chart.json \-\-ndjson \-\-jobs 4 < bags.ndjson > short.ndjson
parallel \-\-pipe \-\-keep\-order qvpres convert \-\-vocabulary chart.json \-\-ndjson < bags.ndjson > short.ndjson
.RE
.fi
.PP
A table as a bag, and a page to look into it:
.PP
.nf
.RS
qvpres import weather.csv \-o weather.bag.json \-w weather.vocabulary.json
qvpres report \-\-vocabulary weather.vocabulary.json weather.bag.json \-o weather.html
.RE
.fi
)";

// Text as it stands: backslashes and dashes mean something, and so do points and quotes at the start of a line.
std::string Escaped(std::string_view text) {
    std::string escaped = text.starts_with('.') || text.starts_with('\'') ? "\\&" : "";
    for (const char c : text) {
        if (c == '\\') {
            escaped += "\\e";
        } else if (c == '-') {
            escaped += "\\-";
        } else {
            escaped += c;
        }
    }
    return escaped;
}

std::string ArgumentSynopsis(const OptionDescription& argument) {
    const std::string value = "\\fI" + Escaped(argument.value) + "\\fR" + (argument.repeated ? "..." : "");
    return argument.required ? " " + value : " [" + value + "]";
}

std::string Synopsis(const CommandDescription& command) {
    std::string line = "\\fBqvpres " + Escaped(command.path) + "\\fR";
    for (const OptionDescription& option : command.options) {
        line += option.IsArgument() ? ArgumentSynopsis(option) : "";
    }
    return line + " [\\fIoptions\\fR]\n";
}

std::string OptionHead(const OptionDescription& option) {
    std::string head;
    for (const std::string& name : option.names) {
        head += (head.empty() ? "\\fB" : ", \\fB") + Escaped(name) + "\\fR";
    }
    if (!option.value.empty()) {
        head += (head.empty() ? "\\fI" : " \\fI") + Escaped(option.value) + "\\fR";
    }
    return head;
}

std::string Option(const OptionDescription& option) {
    std::string text = ".TP\n" + OptionHead(option) + "\n" + Escaped(option.description);
    for (std::size_t i = 0; i < option.choices.size(); ++i) {
        text += (i == 0 ? ": " : i + 1 == option.choices.size() ? " or " : ", ") + Escaped(option.choices[i]);
    }
    if (!option.preset.empty() && option.preset != "false") {
        text += " (" + Escaped(option.preset) + " without it)";
    }
    return text + ".\n";
}

}  // namespace

std::string ManPage(const CommandDescription& program) {
    std::string page = ".TH QVPRES 1 " QVPRES_DATE " \"qvpres " QVPRES_VERSION "\" \"User commands\"\n";
    page += ".SH NAME\nqvpres \\- looks into JSON texts of parameter bags\n.SH SYNOPSIS\n";
    for (const CommandDescription* command : AllCommands(program)) {
        if (command->commands.empty()) {
            page += Synopsis(*command) + ".br\n";
        }
    }
    page += "\\fBqvpres\\fR \\-\\-help | \\-\\-version\n.SH DESCRIPTION\n" + std::string(kDescription);
    page += ".SH COMMANDS\n";
    for (const CommandDescription* command : AllCommands(program)) {
        if (!command->commands.empty()) {
            continue;
        }
        page += ".SS " + Escaped(command->path) + "\n" + Escaped(command->description) + ".\n";
        for (const OptionDescription& option : command->options) {
            if (option.names.empty() || option.names.back() != "--help") {
                page += Option(option);
            }
        }
    }
    return page + std::string(kEnding);
}

}  // namespace qvpres
