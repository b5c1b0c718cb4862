#include <algorithm>
#include <array>
#include <cstring>
#include <memory>

#include <csv.h>
#include <utf8.h>

#include "tools/qvpres/Failure.h"
#include "tools/qvpres/import/Table.h"

namespace qvpres {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

char GuessDelimiter(std::string_view bytes) {
    const std::string_view line = bytes.substr(0, bytes.find('\n'));
    constexpr std::array<char, 3> kCandidates = {',', ';', '\t'};
    return *std::max_element(kCandidates.begin(), kCandidates.end(), [&](char left, char right) {
        return std::count(line.begin(), line.end(), left) < std::count(line.begin(), line.end(), right);
    });
}

// Gathers what the parser calls back with. Nothing may be thrown through the parser, which is C.
class RowSink {
public:
    RowSink(Table& table, const CSVOptions& options, const std::string& source)
        : m_table(table), m_options(options), m_source(source), m_expectHeader(options.header) {}

    static void OnCell(void* bytes, std::size_t length, void* sink) {
        static_cast<RowSink*>(sink)->Guard(
            [&](RowSink& self) { self.m_row.push_back(self.MakeCell(static_cast<const char*>(bytes), length)); });
    }

    static void OnRow(int, void* sink) {
        static_cast<RowSink*>(sink)->Guard([](RowSink& self) { self.FinishRow(); });
    }

    void ThrowWhatFailed() const {
        if (m_failure) {
            std::rethrow_exception(m_failure);
        }
    }

    std::size_t RowNumber() const { return m_rowNumber; }

private:
    template <class Step>
    void Guard(const Step& step) {
        if (m_failure) {
            return;
        }
        try {
            step(*this);
        } catch (...) {
            m_failure = std::current_exception();
        }
    }

    Cell MakeCell(const char* bytes, std::size_t length) const {
        if (bytes == nullptr) {
            return {};
        }
        std::string text(bytes, length);
        const auto& nulls = m_options.nullTexts;
        if (std::find(nulls.begin(), nulls.end(), text) != nulls.end()) {
            return {};
        }
        return {Cell::Kind::Text, std::move(text)};
    }

    void FinishRow() {
        ++m_rowNumber;
        if (m_rowNumber == 1) {
            m_table.columns.resize(m_row.size());
            for (std::size_t i = 0; m_expectHeader && i < m_row.size(); ++i) {
                m_table.columns[i].name = m_row[i].text;
            }
        }
        if (m_row.size() != m_table.columns.size()) {
            throw Failure(m_source + ": row " + std::to_string(m_rowNumber) + " has " + std::to_string(m_row.size()) +
                          " cells, the first row has " + std::to_string(m_table.columns.size()));
        }
        if (!m_expectHeader || m_rowNumber > 1) {
            for (std::size_t i = 0; i < m_row.size(); ++i) {
                m_table.columns[i].cells.push_back(std::move(m_row[i]));
            }
        }
        m_row.clear();
    }

    Table& m_table;
    const CSVOptions& m_options;
    const std::string& m_source;
    bool m_expectHeader;
    std::vector<Cell> m_row;
    std::size_t m_rowNumber = 0;
    std::exception_ptr m_failure;
};

struct ParserCloser {
    void operator()(csv_parser* parser) const { csv_free(parser); }
};

}  // namespace

Table ReadCSVTable(std::string_view bytes, const CSVOptions& options, const std::string& source) {
    const auto invalid = utf8::find_invalid(bytes.begin(), bytes.end());
    if (invalid != bytes.end()) {
        throw Failure(source + ": is not UTF-8, from byte " + std::to_string(invalid - bytes.begin()) + " on");
    }
    if (bytes.starts_with(kByteOrderMark)) {
        bytes.remove_prefix(kByteOrderMark.size());
    }
    csv_parser parser;
    constexpr unsigned char kStrictly = CSV_STRICT | CSV_STRICT_FINI | CSV_EMPTY_IS_NULL;
    if (csv_init(&parser, kStrictly) != 0) {
        throw Failure("the CSV parser cannot be set up");
    }
    const std::unique_ptr<csv_parser, ParserCloser> closer(&parser);
    const char delimiter = options.delimiter == '\0' ? GuessDelimiter(bytes) : options.delimiter;
    csv_set_delim(&parser, static_cast<unsigned char>(delimiter));

    Table table;
    RowSink sink(table, options, source);
    const std::size_t parsed = csv_parse(&parser, bytes.data(), bytes.size(), RowSink::OnCell, RowSink::OnRow, &sink);
    const bool failed = parsed != bytes.size() || csv_fini(&parser, RowSink::OnCell, RowSink::OnRow, &sink) != 0;
    sink.ThrowWhatFailed();
    if (failed) {
        throw Failure(source + ": row " + std::to_string(sink.RowNumber() + 1) + ": " +
                      (parsed == bytes.size()
                           ? "a quotation mark is not closed"
                           : "a quotation mark stands where none can stand; in quoted cells they are "
                             "doubled"));
    }
    if (table.columns.empty()) {
        throw Failure(source + ": the table is empty");
    }
    return table;
}

}  // namespace qvpres
