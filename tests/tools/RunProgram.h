// Running programs as a user's shell does, and folders for their files.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

// A folder that goes with the object.
class TempFolder {
public:
    TempFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "qvpres-test-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("no folder for files can be made");
        }
        m_path = pattern;
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    std::string Path(const std::string& name) const { return (m_path / name).string(); }

    // The path of a new file with this content.
    std::string Write(const std::string& name, const std::string& content) const {
        std::ofstream(Path(name), std::ios::binary) << content;
        return Path(name);
    }

    std::string Read(const std::string& name) const {
        std::ifstream stream(Path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

private:
    std::filesystem::path m_path;
};

// How a program ended: its exit code (-1 after a signal) and what it wrote.
struct Outcome {
    int code = -1;
    std::string out;
    std::string err;
};

inline Outcome RunProgram(const std::string& program, std::vector<std::string> arguments,
                          const std::string& input = "") {
    const TempFolder folder;
    const std::string in = folder.Write("in", input);
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, 0, in.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files, 1, folder.Path("out").c_str(), O_WRONLY | O_CREAT, 0600);
    posix_spawn_file_actions_addopen(&files, 2, folder.Path("err").c_str(), O_WRONLY | O_CREAT, 0600);
    arguments.insert(arguments.begin(), program);
    std::vector<char*> pointers;
    for (std::string& argument : arguments) {
        pointers.push_back(argument.data());
    }
    pointers.push_back(nullptr);
    pid_t child = 0;
    const int error = posix_spawnp(&child, program.c_str(), &files, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&files);
    if (error != 0) {
        throw std::runtime_error(program + " cannot be run");
    }
    int status = 0;
    waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, folder.Read("out"), folder.Read("err")};
}

// qvpres as it was built.
inline Outcome RunQvpres(std::vector<std::string> arguments, const std::string& input = "") {
    return RunProgram(QVPRES_PROGRAM, std::move(arguments), input);
}
