#include "Peers.h"

#include <dlfcn.h>
#include <unistd.h>

#include <array>
#include <filesystem>

namespace compare {

namespace {

constexpr std::array kModules = {"rapidjson", "boostjson", "nlohmann", "simdjson", "protobuf", "qt"};

struct Modules {
    std::vector<PeerEntry> entries;
    std::vector<MissingPeer> missing;
};

Modules LoadModules() {
    Modules modules;
    for (const char* name : kModules) {
        const std::string path = GetProgramFolder() + "/compare/peer_" + name + ".so";
        if (!std::filesystem::exists(path)) {
            modules.missing.push_back({name, "not built"});
            continue;
        }
        void* module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
        void* entry = module == nullptr ? nullptr : dlsym(module, kPeerEntry);
        if (entry == nullptr) {
            modules.missing.push_back({name, dlerror()});
            continue;
        }
        modules.entries.push_back(reinterpret_cast<PeerEntry>(entry));
    }
    return modules;
}

const Modules& GetModules() {
    static const Modules modules = LoadModules();
    return modules;
}

}  // namespace

Contestants MakePeers() {
    Contestants contestants;
    for (const PeerEntry entry : GetModules().entries) {
        entry(contestants);
    }
    return contestants;
}

std::unique_ptr<Contestant> MakePeer(const std::string& name) {
    for (auto& contestant : MakePeers()) {
        if (contestant->GetName() == name) {
            return std::move(contestant);
        }
    }
    return nullptr;
}

std::vector<MissingPeer> GetMissingPeers() { return GetModules().missing; }

std::string GetProgramFolder() { return std::filesystem::read_symlink("/proc/self/exe").parent_path().string(); }

}  // namespace compare
