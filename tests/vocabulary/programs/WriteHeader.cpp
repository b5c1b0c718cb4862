// write_vocabulary_header DECLARATION HEADER: the C++ header of a declaration file.
#include <filesystem>
#include <fstream>
#include <iostream>

#include "tools/vocabulary/CppHeader.h"

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: write_vocabulary_header DECLARATION HEADER\n";
        return 2;
    }
    try {
        const std::filesystem::path declaration = argv[1];
        const std::filesystem::path header = argv[2];
        const std::string text =
            qvpres::ToCppHeader(qvpres::Vocabulary::FromFile(declaration), declaration.filename().string());
        std::filesystem::create_directories(header.parent_path());
        std::ofstream file(header, std::ios::binary);
        return file << text && file.flush() ? 0 : 1;
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << "\n";
        return 1;
    }
}
