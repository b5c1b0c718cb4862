// One workload with everybody who takes part in it.
#pragma once

#include <string>
#include <vector>

#include "Contestant.h"
#include "OwnContestant.h"
#include "Workload.h"

namespace compare {

enum class Operation { Write, Read };

// Text in the tables.
const char* GetOperationName(Operation operation);

inline constexpr OwnForm kPlainForm{false, false};
inline constexpr OwnForm kPackedForm{false, true};
inline constexpr OwnForm kShortForm{true, false};
inline constexpr OwnForm kShortPackedForm{true, true};

struct Entry {
    std::string label;
    std::unique_ptr<Contestant> contestant;
    const Documents* documents;
    std::string failure;  // why it does not take part; empty when it does
};

class Contest {
public:
    // Makes the workload, its documents and its entries; with peers or without.
    Contest(const WorkloadMaker& maker, ParametersRegistry& registry, Scale scale, bool withPeers);
    Contest(const Contest&) = delete;
    Contest& operator=(const Contest&) = delete;

    const Workload& GetWorkload() const { return m_workload; }
    const Documents& GetDocuments() const { return m_verbose; }
    std::vector<Entry>& GetEntries() { return m_entries; }

    // Prepares an entry and lets it write and read each text once; what fails is noted, and the entry is out then.
    void Prepare(Entry& entry);
    void PrepareAll();

private:
    void Add(std::unique_ptr<Contestant> contestant, const Documents& documents, const std::string& suffix = "");

    Workload m_workload;
    Documents m_verbose;
    Documents m_brief;
    std::vector<Entry> m_entries;
};

// The label of RapidJSON on the text with short names, the measure of our short forms.
extern const std::string kRapidJSONShort;

}  // namespace compare
