#include "tools/qvpres/shell/Completion.h"

#include <string_view>

namespace qvpres {

namespace {

std::string Joined(const std::vector<std::string>& words) {
    std::string joined;
    for (const std::string& word : words) {
        joined += (joined.empty() ? "" : " ") + word;
    }
    return joined;
}

// In single quotes, as all three shells take it; a quote inside ends them for a moment.
std::string Quoted(std::string_view text) {
    std::string quoted = "'";
    for (const char c : text) {
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return quoted + "'";
}

std::string Replaced(std::string text, std::string_view before, std::string_view after) {
    for (std::size_t at = text.find(before); at != std::string::npos; at = text.find(before, at + after.size())) {
        text.replace(at, before.size(), after);
    }
    return text;
}

// "parent word" for each step from a command to one below it; the program is the empty parent.
std::string StepPatterns(const CommandDescription& program, const char* separator) {
    std::string patterns;
    for (const CommandDescription* parent : AllCommands(program)) {
        for (const CommandDescription& command : parent->commands) {
            patterns += (patterns.empty() ? "" : separator) + Quoted(parent->path + " " + command.name);
        }
    }
    return patterns;
}

std::string Words(const CommandDescription& command) {
    std::vector<std::string> words;
    for (const CommandDescription& below : command.commands) {
        words.push_back(below.name);
    }
    for (const OptionDescription& option : command.options) {
        words.insert(words.end(), option.names.begin(), option.names.end());
    }
    return Joined(words);
}

// What follows an option that takes a value.
std::string BashValue(const OptionDescription& option) {
    if (option.TakesFile()) {
        return "compopt -o filenames 2>/dev/null; COMPREPLY=($(compgen -f -- \"$cur\"))";
    }
    return "COMPREPLY=($(compgen -W " + Quoted(Joined(option.choices)) + " -- \"$cur\"))";
}

// The text in brackets and behind colons means something to zsh.
std::string ZshText(const std::string& text) {
    return Replaced(Replaced(Replaced(text, "[", "\\["), "]", "\\]"), ":", "\\:");
}

std::string ZshValue(const OptionDescription& option) {
    if (option.value.empty()) {
        return "";
    }
    const std::string action = option.TakesFile() ? "_files" : "(" + Joined(option.choices) + ")";
    return ":" + option.value + ":" + (action == "()" ? "" : action);
}

std::string ZshFunctionName(const CommandDescription& command) {
    return "_qvpres" + (command.path.empty() ? "" : "_" + Replaced(command.path, " ", "_"));
}

// One argument of _arguments for each name of each option.
std::string ZshOptions(const CommandDescription& command) {
    std::string lines;
    for (const OptionDescription& option : command.options) {
        for (const std::string& name : option.names) {
            const std::string repeated = option.repeated ? "*" : "";
            lines +=
                " \\\n        " + Quoted(repeated + name + "[" + ZshText(option.description) + "]" + ZshValue(option));
        }
    }
    return lines;
}

std::string ZshFunction(const CommandDescription& command) {
    std::string text = ZshFunctionName(command) + "() {\n";
    if (command.commands.empty()) {
        const std::string files = command.TakesFiles() ? " \\\n        '*:file:_files'" : "";
        return text + "    _arguments" + ZshOptions(command) + files + "\n}\n\n";
    }
    text += "    local curcontext=\"$curcontext\" state line\n";
    text += "    _arguments -C" + ZshOptions(command) + " \\\n        '1: :->command' '*:: :->rest'\n";
    text += "    case $state in\n    command)\n        local -a commands=(\n";
    for (const CommandDescription& below : command.commands) {
        text += "            " + Quoted(below.name + ":" + ZshText(below.description)) + "\n";
    }
    text += "        )\n        _describe command commands ;;\n    rest)\n        case $line[1] in\n";
    for (const CommandDescription& below : command.commands) {
        text += "        " + below.name + ") " + ZshFunctionName(below) + " ;;\n";
    }
    return text + "        esac ;;\n    esac\n}\n\n";
}

std::string FishOption(const CommandDescription& command, const OptionDescription& option) {
    std::string line = "complete -c qvpres -n " + Quoted("__qvpres_at " + Quoted(command.path));
    for (const std::string& name : option.names) {
        line += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    }
    if (option.TakesFile()) {
        line += " -r -F";
    } else if (!option.value.empty()) {
        line += " -x" + (option.choices.empty() ? "" : " -a " + Quoted(Joined(option.choices)));
    }
    return line + " -d " + Quoted(option.description) + "\n";
}

}  // namespace

std::string BashCompletion(const CommandDescription& program) {
    std::string text =
        "# Completion of qvpres in bash; made by qvpres completion bash.\n"
        "_qvpres() {\n"
        "    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]} command='' words='' files='' i\n"
        "    for ((i = 1; i < COMP_CWORD; ++i)); do\n"
        "        case \"$command ${COMP_WORDS[i]}\" in\n"
        "            " +
        StepPatterns(program, " | ") +
        ")\n"
        "                command=\"${command:+$command }${COMP_WORDS[i]}\" ;;\n"
        "        esac\n"
        "    done\n"
        "    case \"$command $prev\" in\n";
    for (const CommandDescription* command : AllCommands(program)) {
        for (const OptionDescription& option : command->options) {
            for (const std::string& name : option.names) {
                if (!option.value.empty()) {
                    text +=
                        "        " + Quoted(command->path + " " + name) + ") " + BashValue(option) + "; return ;;\n";
                }
            }
        }
    }
    text += "    esac\n    case \"$command\" in\n";
    for (const CommandDescription* command : AllCommands(program)) {
        text += "        " + Quoted(command->path) + ") words=" + Quoted(Words(*command)) +
                (command->TakesFiles() ? " files=yes" : "") + " ;;\n";
    }
    return text +
           "    esac\n"
           "    if [[ $cur == -* || -z $files ]]; then\n"
           "        COMPREPLY=($(compgen -W \"$words\" -- \"$cur\"))\n"
           "    else\n"
           "        compopt -o filenames 2>/dev/null\n"
           "        COMPREPLY=($(compgen -f -- \"$cur\"))\n"
           "    fi\n"
           "}\n"
           "complete -F _qvpres qvpres\n";
}

std::string ZshCompletion(const CommandDescription& program) {
    std::string text = "#compdef qvpres\n# Completion of qvpres in zsh; made by qvpres completion zsh.\n\n";
    for (const CommandDescription* command : AllCommands(program)) {
        text += ZshFunction(*command);
    }
    return text + "_qvpres \"$@\"\n";
}

std::string FishCompletion(const CommandDescription& program) {
    std::string text =
        "# Completion of qvpres in fish; made by qvpres completion fish.\n"
        "function __qvpres_at\n"
        "    set -l command ''\n"
        "    for word in (commandline -opc)[2..-1]\n"
        "        switch \"$command $word\"\n"
        "            case " +
        StepPatterns(program, " ") +
        "\n"
        "                set command (string trim -- \"$command $word\")\n"
        "        end\n"
        "    end\n"
        "    test \"$command\" = \"$argv[1]\"\n"
        "end\n\n"
        "complete -c qvpres -f\n";
    for (const CommandDescription* command : AllCommands(program)) {
        const std::string condition = Quoted("__qvpres_at " + Quoted(command->path));
        if (command->TakesFiles()) {
            text += "complete -c qvpres -n " + condition + " -F\n";
        }
        for (const CommandDescription& below : command->commands) {
            text +=
                "complete -c qvpres -n " + condition + " -a " + below.name + " -d " + Quoted(below.description) + "\n";
        }
        for (const OptionDescription& option : command->options) {
            if (!option.IsArgument()) {
                text += FishOption(*command, option);
            }
        }
    }
    return text;
}

}  // namespace qvpres
