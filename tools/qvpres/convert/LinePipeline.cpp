#include "tools/qvpres/convert/LinePipeline.h"

#include <condition_variable>
#include <deque>
#include <future>
#include <istream>
#include <mutex>
#include <ostream>
#include <thread>
#include <vector>

#include "tools/qvpres/Terminal.h"

namespace qvpres {

namespace {

// Lines are handed over by blocks, so that handing over costs little beside the work.
constexpr std::size_t kBlockBytes = 64 * 1024;
constexpr std::size_t kBlocksPerJob = 4;  // read ahead: bounds the memory

struct Block {
    std::size_t firstLine = 0;
    std::vector<std::string> lines;
};

using Outcomes = std::vector<LineOutcome>;

Outcomes WorkOn(const Block& block, const LineWork& work) {
    Outcomes outcomes;
    outcomes.reserve(block.lines.size());
    for (std::size_t i = 0; i < block.lines.size(); ++i) {
        const std::string& line = block.lines[i];
        if (line.find_first_not_of(" \t\r") == std::string::npos) {
            outcomes.push_back({line, "", false, false});
        } else {
            outcomes.push_back(work(line, block.firstLine + i));
        }
    }
    return outcomes;
}

// Threads that take tasks in the order in which they were put in.
class Workers {
public:
    explicit Workers(unsigned count) {
        for (unsigned i = 0; i < count; ++i) {
            m_threads.emplace_back([this] { Work(); });
        }
    }
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;

    ~Workers() {
        {
            const std::lock_guard lock(m_mutex);
            m_closed = true;
            m_tasks.clear();  // after a failure nobody waits for what is left
        }
        m_changed.notify_all();
        for (std::thread& thread : m_threads) {
            thread.join();
        }
    }

    std::future<Outcomes> Put(std::packaged_task<Outcomes()> task) {
        std::future<Outcomes> outcome = task.get_future();
        {
            const std::lock_guard lock(m_mutex);
            m_tasks.push_back(std::move(task));
        }
        m_changed.notify_one();
        return outcome;
    }

private:
    void Work() {
        while (true) {
            std::packaged_task<Outcomes()> task;
            {
                std::unique_lock lock(m_mutex);
                m_changed.wait(lock, [this] { return m_closed || !m_tasks.empty(); });
                if (m_tasks.empty()) {
                    return;
                }
                task = std::move(m_tasks.front());
                m_tasks.pop_front();
            }
            task();
        }
    }

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::packaged_task<Outcomes()>> m_tasks;  // under m_mutex
    bool m_closed = false;                               // under m_mutex
    std::vector<std::thread> m_threads;
};

class Pipeline {
public:
    Pipeline(std::istream& in, std::ostream& out, std::ostream& complaints, const LineWork& work,
             const PipelineOptions& options)
        : m_in(in), m_out(out), m_complaints(complaints), m_work(work), m_options(options), m_progress("lines") {}

    PipelineResult Run() {
        Workers workers(m_options.jobs);
        const std::size_t most = m_options.jobs * kBlocksPerJob;
        while (!m_stopped && ReadBlock()) {
            m_pending.push_back(workers.Put(std::packaged_task<Outcomes()>(
                [block = std::move(m_block), &work = m_work] { return WorkOn(block, work); })));
            while (!m_stopped && m_pending.size() >= most) {
                WriteFirst();
            }
        }
        while (!m_stopped && !m_pending.empty()) {
            WriteFirst();
        }
        return m_result;
    }

private:
    bool ReadBlock() {
        m_block = {m_nextLine, {}};
        std::string line;
        for (std::size_t bytes = 0; bytes < kBlockBytes && std::getline(m_in, line); bytes += line.size() + 1) {
            m_block.lines.push_back(line);
        }
        m_nextLine += m_block.lines.size();
        return !m_block.lines.empty();
    }

    void WriteFirst() {
        const Outcomes outcomes = m_pending.front().get();
        m_pending.pop_front();
        for (const LineOutcome& outcome : outcomes) {
            ++m_result.lines;
            if (!outcome.complaint.empty()) {
                ++m_result.complaints;
                m_complaints << outcome.complaint;
            }
            m_result.failures += outcome.failed ? 1 : 0;
            if (outcome.failed && !m_options.keepGoing) {
                m_stopped = true;
                return;
            }
            if (!outcome.dropped) {
                m_out << outcome.output << '\n';
            }
        }
        m_progress.Advance(outcomes.size());
        m_stopped = !m_out;  // nobody reads on
    }

    std::istream& m_in;
    std::ostream& m_out;
    std::ostream& m_complaints;
    const LineWork& m_work;
    PipelineOptions m_options;
    Progress m_progress;
    Block m_block;
    std::size_t m_nextLine = 0;
    std::deque<std::future<Outcomes>> m_pending;  // in the order of the lines
    bool m_stopped = false;
    PipelineResult m_result;
};

}  // namespace

PipelineResult RunPipeline(std::istream& in, std::ostream& out, std::ostream& complaints, const LineWork& work,
                           const PipelineOptions& options) {
    return Pipeline(in, out, complaints, work, options).Run();
}

}  // namespace qvpres
