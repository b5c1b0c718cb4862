// Runs the target over kept inputs, without a fuzzer: replay_TARGET [file or folder]...
//
// The empty input comes first. Folders need not exist. The name of each input is printed before it runs, so that the
// last one is to blame when the target ends the program.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void RunFile(const std::filesystem::path& path) {
    std::printf("%s\n", path.c_str());
    std::fflush(stdout);
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
    LLVMFuzzerTestOneInput(nullptr, 0);
    std::set<std::filesystem::path> files;  // in one order everywhere
    for (const char* argument : std::vector<const char*>(argv + 1, argv + argc)) {
        if (std::filesystem::is_directory(argument)) {
            files.insert(std::filesystem::directory_iterator(argument), std::filesystem::directory_iterator());
        } else if (std::filesystem::exists(argument)) {
            files.insert(argument);
        }
    }
    for (const std::filesystem::path& file : files) {
        RunFile(file);
    }
    std::printf("%zu inputs\n", files.size());
    return 0;
}
