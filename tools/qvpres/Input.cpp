#include "tools/qvpres/Input.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

#include "tools/qvpres/Failure.h"
#include "tools/qvpres/Terminal.h"

namespace qvpres {

namespace {

[[noreturn]] void ThrowErrno(const std::string& file) {
    const int error = errno;
    throw Failure(file + ": " + (error != 0 ? std::strerror(error) : "input or output error"));
}

std::string ReadStandardInput() {
    if (IsTerminal(Stream::In)) {
        throw Failure("no input: name a file, or pipe a text in");
    }
    return {std::istreambuf_iterator<char>(std::cin), {}};
}

}  // namespace

std::string InputName(const std::string& file) { return file == "-" ? "standard input" : file; }

std::string ReadInput(const std::string& file) {
    if (file == "-") {
        return ReadStandardInput();
    }
    if (std::filesystem::is_directory(file)) {
        throw Failure(file + ": is a folder");
    }
    errno = 0;
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        ThrowErrno(file);
    }
    std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    if (stream.bad()) {
        ThrowErrno(file);
    }
    return bytes;
}

void WriteOutput(const std::string& file, std::string_view bytes) {
    if (file == "-") {
        std::cout.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return;
    }
    errno = 0;
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (!stream) {
        ThrowErrno(file);
    }
}

}  // namespace qvpres
