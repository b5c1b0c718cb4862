#include <map>

#include "main/json/JSONDocument.h"

#include "tools/qvpres/Failure.h"
#include "tools/qvpres/check/SyntaxHint.h"
#include "tools/qvpres/import/Table.h"
#include "tools/qvpres/text/Wording.h"

namespace qvpres {

namespace {

class TableReader {
public:
    TableReader(const JSONDocument& document, const std::string& source) : m_document(document), m_source(source) {}

    Table Read() {
        m_table.typed = true;
        if (m_document[0].kind == JSONKind::Array) {
            ReadRows();
        } else if (m_document[0].kind == JSONKind::Object) {
            ReadColumns();
        } else {
            Fail(0, "a table is an array of objects or an object of arrays");
        }
        if (m_table.columns.empty()) {
            Fail(0, "the table is empty");
        }
        return std::move(m_table);
    }

private:
    [[noreturn]] void Fail(JSONDocument::Index node, const std::string& message) const {
        const TextLocation place = m_document.Locate(node);
        throw Failure(m_source + ":" + std::to_string(place.line) + ":" + std::to_string(place.column) + ": " +
                      message);
    }

    void ReadRows() {
        std::size_t row = 0;
        for (auto object = 1u; object != m_document.Next(0); object = m_document.Next(object), ++row) {
            if (m_document[object].kind != JSONKind::Object) {
                Fail(object,
                     "a row of the table is an object, this one is " + std::string(KindName(m_document[object].kind)));
            }
            for (auto name = object + 1; name != m_document.Next(object); name = m_document.Next(name + 1)) {
                std::vector<Cell>& cells = ColumnOf(m_document.Text(name)).cells;
                cells.resize(row);  // rows that lack the member
                cells.push_back(CellOf(name + 1));
            }
            for (Column& column : m_table.columns) {
                column.cells.resize(row + 1);
            }
        }
    }

    Column& ColumnOf(std::u16string_view name) {
        const auto [place, added] = m_places.try_emplace(ToUtf8(name), m_table.columns.size());
        if (added) {
            m_table.columns.push_back({place->first, {}});
        }
        return m_table.columns[place->second];
    }

    void ReadColumns() {
        for (auto name = 1u; name != m_document.Next(0); name = m_document.Next(name + 1)) {
            const auto array = name + 1;
            const std::string label = Quoted(ToUtf8(m_document.Text(name)));
            if (m_document[array].kind != JSONKind::Array) {
                Fail(array, label + " is " + std::string(KindName(m_document[array].kind)) +
                                ", and the columns of a table are arrays");
            }
            Column& column = ColumnOf(m_document.Text(name));
            column.cells.clear();
            for (auto element = array + 1; element != m_document.Next(array); element = m_document.Next(element)) {
                column.cells.push_back(CellOf(element));
            }
            if (column.cells.size() != m_table.Rows()) {
                Fail(array, label + " has " + Counted(column.cells.size(), "element") + ", the first column has " +
                                Grouped(m_table.Rows()));
            }
        }
    }

    Cell CellOf(JSONDocument::Index value) const {
        switch (m_document[value].kind) {
            case JSONKind::Null:
                return {};
            case JSONKind::Bool:
                return {Cell::Kind::Bool, ToUtf8(m_document.Text(value))};
            case JSONKind::Integer:
            case JSONKind::Real:
                return {Cell::Kind::Number, ToUtf8(m_document.Text(value))};
            case JSONKind::String:
                return {Cell::Kind::Text, ToUtf8(m_document.Text(value))};
            default:
                Fail(value, "a cell is a single value, this one is " + std::string(KindName(m_document[value].kind)));
        }
    }

    const JSONDocument& m_document;
    const std::string& m_source;
    Table m_table;
    std::map<std::string, std::size_t> m_places;  // of columns, by name
};

}  // namespace

Table ReadJSONTable(std::string_view bytes, const std::string& source) {
    const TString text = TString::FromUtf8(bytes);
    try {
        const JSONDocument document(text);
        return TableReader(document, source).Read();
    } catch (const JSONParseException& failure) {
        const TextLocation& place = failure.GetLocation();
        throw Failure(source + ":" + std::to_string(place.line) + ":" + std::to_string(place.column) +
                      ": not valid JSON: " + SyntaxHint(text, place.offset));
    }
}

}  // namespace qvpres
