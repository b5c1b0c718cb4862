#include "Contest.h"

#include <exception>
#include <utility>

#include "FloorContestants.h"
#include "Peers.h"

namespace compare {

namespace {

const std::string kShortSuffix = ", short names";

}  // namespace

const std::string kRapidJSONShort = kRapidJSON + kShortSuffix;

const char* GetOperationName(Operation operation) { return operation == Operation::Write ? "write" : "read"; }

Contest::Contest(const WorkloadMaker& maker, ParametersRegistry& registry, Scale scale, bool withPeers)
    : m_workload(maker.make(registry, scale)),
      m_verbose(MakeDocuments(m_workload, false)),
      m_brief(MakeDocuments(m_workload, true)) {
    for (const OwnForm form : {kPlainForm, kPackedForm, kShortForm, kShortPackedForm}) {
        Add(MakeOwnContestant(m_workload, form), m_verbose);
    }
    if (!withPeers) {
        return;
    }
    for (auto& peer : MakePeers()) {
        Add(std::move(peer), m_verbose);
    }
    Add(MakePeer(kRapidJSON), m_brief, kShortSuffix);
    Add(MakeNumberFloor(m_workload), m_verbose);
    Add(MakeCopyFloor(), m_verbose);
}

void Contest::Add(std::unique_ptr<Contestant> contestant, const Documents& documents, const std::string& suffix) {
    if (contestant) {
        const std::string label = contestant->GetName() + suffix;
        m_entries.push_back({label, std::move(contestant), &documents, ""});
    }
}

void Contest::Prepare(Entry& entry) {
    try {
        Contestant& contestant = *entry.contestant;
        contestant.Prepare(*entry.documents);
        contestant.Start();
        for (std::size_t i = 0; i < m_workload.bags.size(); ++i) {
            if (contestant.CanWrite()) {
                contestant.Write(i);
            }
            if (contestant.CanRead()) {
                contestant.Read(i);
            }
        }
        contestant.End();
    } catch (const std::exception& failure) {
        entry.failure = failure.what();
    }
}

void Contest::PrepareAll() {
    for (Entry& entry : m_entries) {
        Prepare(entry);
    }
}

}  // namespace compare
