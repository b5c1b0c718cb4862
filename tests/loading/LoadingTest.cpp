// What loading the libraries does, and that they can be unloaded and loaded again. This program does not link to them.
#include <csignal>
#include <cstdlib>
#include <clocale>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

const std::vector<std::string> kLibraries = {QV_TEST_QVSYS, QV_TEST_QVCORE, QV_TEST_QVPRESLAYER};
const std::string kModule = QV_TEST_MODULES "/libtest_module_alpha.so";

std::set<std::string> EntriesOf(const fs::path& folder, bool withTargets) {
    std::set<std::string> entries;
    for (const auto& entry : fs::directory_iterator(folder)) {
        std::error_code ignored;
        const std::string name = entry.path().filename().string();
        const std::string target = withTargets ? fs::read_symlink(entry.path(), ignored).string() : "";
        // The iteration's own descriptor comes and goes.
        if (target.find("/proc/") == std::string::npos) {
            entries.insert(name + " " + target);
        }
    }
    return entries;
}

std::vector<std::string> Environment() {
    std::vector<std::string> variables;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        variables.emplace_back(*variable);
    }
    return variables;
}

std::vector<const void*> SignalHandlers() {
    std::vector<const void*> handlers;
    for (int signal = 1; signal < NSIG; ++signal) {
        struct sigaction action {};
        sigaction(signal, nullptr, &action);
        handlers.push_back(reinterpret_cast<const void*>(action.sa_handler));
    }
    return handlers;
}

// What a library could change that others in the process would notice.
struct ProcessState {
    std::set<std::string> threads = EntriesOf("/proc/self/task", false);
    std::set<std::string> files = EntriesOf("/proc/self/fd", true);
    std::set<std::string> folder = EntriesOf(fs::current_path(), false);
    std::vector<std::string> environment = Environment();
    std::vector<const void*> signals = SignalHandlers();
    std::string locale = std::setlocale(LC_ALL, nullptr);
    std::string directory = fs::current_path().string();
};

void ExpectSame(const ProcessState& before, const ProcessState& after) {
    EXPECT_EQ(before.threads, after.threads);
    EXPECT_EQ(before.files, after.files);
    EXPECT_EQ(before.folder, after.folder);
    EXPECT_EQ(before.environment, after.environment);
    EXPECT_EQ(before.signals, after.signals);
    EXPECT_EQ(before.locale, after.locale);
    EXPECT_EQ(before.directory, after.directory);
}

// The mapped files whose name starts with libqv or libtest_module.
std::set<std::string> MappedLibraries() {
    std::set<std::string> names;
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        const std::string name = fs::path(line.substr(line.find_last_of(' ') + 1)).filename().string();
        if (name.starts_with("libqv") || name.starts_with("libtest_module")) {
            names.insert(name);
        }
    }
    return names;
}

void* Load(const std::string& path) {
    void* const handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    EXPECT_NE(nullptr, handle) << dlerror();
    return handle;
}

bool Works(void* module) {
    const auto work = reinterpret_cast<int (*)()>(dlsym(module, "WorkInTestModule"));
    return work != nullptr && work() == 1;
}

}  // namespace

TEST(Loading, ChangesNothingInTheProcess) {
    ASSERT_EQ(std::set<std::string>(), MappedLibraries());
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const ProcessState before;
    std::vector<void*> handles;
    for (const std::string& library : kLibraries) {
        handles.push_back(Load(library));
    }
    ExpectSame(before, {});
    EXPECT_EQ(3U, MappedLibraries().size());
    for (void* handle : handles) {
        dlclose(handle);
    }
    ExpectSame(before, {});
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
}

TEST(Loading, UsingThemLeavesNothingBehindEither) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const ProcessState before;
    void* module = nullptr;
    std::thread([&] {
        module = Load(kModule);
        EXPECT_TRUE(Works(module));
    }).join();
    ExpectSame(before, {});
    dlclose(module);
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
}

TEST(Loading, LibrariesGoWhenTheyAreClosedAndComeAgain) {
    for (int round = 0; round < 5; ++round) {
        SCOPED_TRACE(round);
        void* module = nullptr;
        // What a thread keeps is freed at its end; until then the library stays.
        std::thread([&] {
            module = Load(kModule);
            EXPECT_TRUE(Works(module));
        }).join();
        EXPECT_EQ(4U, MappedLibraries().size());
        ASSERT_EQ(0, dlclose(module));
        EXPECT_EQ(std::set<std::string>(), MappedLibraries());
    }
}

TEST(Loading, LibrariesGoInAnyOrder) {
    std::vector<void*> handles;
    for (const std::string& library : kLibraries) {
        handles.push_back(Load(library));
    }
    void* module = nullptr;
    std::thread([&] {
        module = Load(kModule);
        EXPECT_TRUE(Works(module));
    }).join();
    for (void* handle : handles) {
        dlclose(handle);
    }
    EXPECT_EQ(4U, MappedLibraries().size()) << "the module still needs them";
    std::thread([&] { EXPECT_TRUE(Works(module)); }).join();
    dlclose(module);
    EXPECT_EQ(std::set<std::string>(), MappedLibraries());
}

// The thread that used a module closes it and goes on: what it keeps is freed when it ends, by code that is still
// there.
TEST(Loading, ThreadsMayCloseWhatTheyUsed) {
    for (int round = 0; round < 3; ++round) {
        std::thread([] {
            void* const module = Load(kModule);
            EXPECT_TRUE(Works(module));
            EXPECT_EQ(0, dlclose(module));
        }).join();
    }
    void* const module = Load(kModule);
    std::thread([&] { EXPECT_TRUE(Works(module)); }).join();
    EXPECT_EQ(0, dlclose(module));
}
