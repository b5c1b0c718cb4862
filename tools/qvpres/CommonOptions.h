// The options that commands share, added to those that take them.
#pragma once

#include <string>

// Not its header: most who include this only read the options.
namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace qvpres {

struct CommonOptions {
    std::string vocabulary;      // a declaration file, or empty
    std::string module;          // a host's shared library, or empty
    std::string nameSpace;       // whose names the texts hold; empty for the only one there is
    std::string names = "auto";  // of the texts that are read: "verbose", "short" or "auto"
    bool json = false;           // for machines instead of people
    std::string color = "auto";  // "auto", "always" or "never"
};

// --vocabulary and --module; LoadedVocabulary finds out what is missing.
void AddVocabularyOptions(CLI::App& command, CommonOptions& options);

// The same with --namespace and --names, for commands that read texts.
void AddTextOptions(CLI::App& command, CommonOptions& options);

void AddJSONOption(CLI::App& command, CommonOptions& options);
void AddColorOption(CLI::App& command, CommonOptions& options);

// A file argument; "-" stands for standard input, and is the default.
CLI::Option* AddFileArgument(CLI::App& command, std::string& file);

}  // namespace qvpres
