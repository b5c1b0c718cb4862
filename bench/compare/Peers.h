// The peers, each in a module of its own, so that one that is missing or does not build takes nothing else with it.
#pragma once

#include <string>
#include <vector>

#include "Contestant.h"

namespace compare {

// A peer that could not be loaded, and why.
struct MissingPeer {
    std::string name;
    std::string reason;
};

// The contestants of all peers that are there. Every call makes new ones; modules stay loaded.
Contestants MakePeers();

// A new contestant of that name, or null.
std::unique_ptr<Contestant> MakePeer(const std::string& name);

std::vector<MissingPeer> GetMissingPeers();

// The folder of this program, where the modules stand in "compare".
std::string GetProgramFolder();

// The names of contestants that tables and goals refer to.
inline constexpr const char* kRapidJSON = "RapidJSON";
inline constexpr const char* kRapidJSONSax = "RapidJSON SAX";
inline constexpr const char* kBoostJSON = "Boost.JSON";
inline constexpr const char* kNlohmann = "nlohmann";
inline constexpr const char* kSimdjson = "simdjson";
inline constexpr const char* kProtobuf = "protobuf";
inline constexpr const char* kQt = "Qt";

}  // namespace compare
