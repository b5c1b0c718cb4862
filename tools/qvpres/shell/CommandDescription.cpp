#include "tools/qvpres/shell/CommandDescription.h"

#include <algorithm>

namespace qvpres {

namespace {

// "FORM:{auto,verbose}" has the choices behind the name, "N:UINT in [1 - 9]" what is checked.
void SplitTypeName(const std::string& typeName, OptionDescription& option) {
    const std::size_t colon = typeName.find(':');
    option.value = typeName.substr(0, colon);
    const std::size_t open = typeName.find(":{");
    if (open == std::string::npos) {
        return;
    }
    std::string choices = typeName.substr(open + 2, typeName.find('}', open) - open - 2);
    choices += ',';
    for (std::size_t at = 0; at < choices.size();) {
        const std::size_t comma = choices.find(',', at);
        option.choices.push_back(choices.substr(at, comma - at));
        at = comma + 1;
    }
    std::sort(option.choices.begin(), option.choices.end());
}

OptionDescription DescribeOption(const CLI::Option& option) {
    OptionDescription result;
    for (const std::string& name : option.get_snames()) {
        result.names.push_back("-" + name);
    }
    for (const std::string& name : option.get_lnames()) {
        result.names.push_back("--" + name);
    }
    result.description = option.get_description();
    result.required = option.get_required();
    result.repeated = option.get_items_expected_max() > 1;
    result.preset = option.get_default_str();
    if (option.get_items_expected_max() != 0) {
        SplitTypeName(option.get_type_name(), result);
    }
    return result;
}

}  // namespace

bool CommandDescription::TakesFiles() const {
    return std::any_of(options.begin(), options.end(),
                       [](const OptionDescription& option) { return option.IsArgument() && option.TakesFile(); });
}

CommandDescription DescribeCommand(const CLI::App& app, const std::string& parentPath) {
    CommandDescription result;
    const bool isProgram = app.get_parent() == nullptr;
    result.name = app.get_name();
    result.path = isProgram ? "" : parentPath.empty() ? result.name : parentPath + " " + result.name;
    result.description = app.get_description();
    for (const CLI::Option* option : app.get_options()) {
        result.options.push_back(DescribeOption(*option));
    }
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        result.commands.push_back(DescribeCommand(*command, result.path));
    }
    return result;
}

std::vector<const CommandDescription*> AllCommands(const CommandDescription& program) {
    std::vector<const CommandDescription*> all{&program};
    for (const CommandDescription& command : program.commands) {
        const auto below = AllCommands(command);
        all.insert(all.end(), below.begin(), below.end());
    }
    return all;
}

}  // namespace qvpres
