#include "tools/qvpres/import/TableBag.h"

#include <exception>
#include <limits>
#include <tuple>
#include <utility>

#include <qvpreslayer/BuildParameterStrings.h>

#include "tools/qvpres/Failure.h"
#include "tools/qvpres/LoadedVocabulary.h"
#include "tools/qvpres/import/ColumnNames.h"

namespace qvpres {

namespace {

using Values = std::vector<DataValue>;

// Identifiers, counted from the first one; columns leave room for parameters that hosts add beside them.
constexpr int kTableName = 0;
constexpr int kRowCount = 1;
constexpr int kColumnNames = 2;
constexpr int kFirstColumn = 10;

const std::vector<TString> kReservedNames = {u"table-name", u"tn", u"row-count", u"rc", u"column-names", u"cn"};

// A column on its way: what it is declared as, and its value in a bag.
struct PlannedColumn {
    TypedColumn column;
    int id = 0;
    ColumnName name;
    const ValueType* type = nullptr;
    RefCntPtr<IParameter> plain;  // null where the column is written as typed values
    std::string loss;
};

const ValueType* Type(std::u16string_view name) { return FindValueType(name); }

template <class T, class Get>
RefCntPtr<IParameter> ListOf(const Values& values, const Get& get) {
    std::vector<T> list;
    list.reserve(values.size());
    for (const DataValue& value : values) {
        list.push_back(get(value));
    }
    return MakeRefCnt<ValParameter<std::vector<T>>>(std::move(list));
}

// The plain list of a column without nulls, and its type; nothing for types that have none.
std::pair<RefCntPtr<IParameter>, const ValueType*> PlainList(const TypedColumn& column) {
    switch (column.type) {
        case DataType::Integer:
            return {ListOf<int>(column.values, [](const DataValue& v) { return static_cast<int>(v.GetInteger()); }),
                    Type(u"int")};
        case DataType::Real:
            return {ListOf<double>(column.values, [](const DataValue& v) { return v.GetReal(); }), Type(u"double")};
        case DataType::Boolean:
            return {ListOf<bool>(column.values, [](const DataValue& v) { return v.GetBoolean(); }), Type(u"bool")};
        case DataType::CString:
            return {ListOf<TString>(column.values, [](const DataValue& v) { return v.GetString().GetText(); }),
                    Type(u"text")};
        default:
            return {nullptr, nullptr};
    }
}

// The values of a list that was read, as the column has them.
Values ReadBack(const IParameters& bag, const PlannedColumn& planned) {
    Values values;
    const auto append = [&](const auto& list, const auto& make) {
        for (const auto& value : list) {
            values.push_back(make(value));
        }
    };
    if (!planned.plain) {
        return GetParameterValue<Values>(bag, planned.id);
    }
    switch (planned.column.type) {
        case DataType::Integer:
            append(GetParameterValue<std::vector<int>>(bag, planned.id), [](int v) { return DataValue(v); });
            break;
        case DataType::Real:
            append(GetParameterValue<std::vector<double>>(bag, planned.id), [](double v) { return DataValue(v); });
            break;
        case DataType::Boolean:
            append(GetParameterValue<std::vector<bool>>(bag, planned.id), [](bool v) { return DataValue(v); });
            break;
        default:
            append(GetParameterValue<std::vector<TString>>(bag, planned.id),
                   [](const TString& v) { return DataValue(IndirectString::Lookup(GetUnknownCollation(), v)); });
    }
    return values;
}

class TableBagMaker {
public:
    TableBagMaker(std::vector<TypedColumn> columns, const TableBagOptions& options) : m_options(options) {
        m_rows = columns.empty() ? 0 : columns.front().values.size();
        std::vector<std::string> headings;
        for (const TypedColumn& column : columns) {
            headings.push_back(column.name);
        }
        const std::vector<ColumnName> names = NameColumns(headings, kReservedNames);
        if (columns.size() >
            static_cast<std::size_t>(std::numeric_limits<int>::max() - options.firstId - kFirstColumn)) {
            throw Failure("the identifiers from " + std::to_string(options.firstId) + " on do not suffice");
        }
        for (std::size_t i = 0; i < columns.size(); ++i) {
            PlannedColumn planned;
            planned.column = std::move(columns[i]);
            planned.id = options.firstId + kFirstColumn + static_cast<int>(i);
            planned.name = names[i];
            m_columns.push_back(std::move(planned));
        }
    }

    TableBag Make() {
        for (PlannedColumn& column : m_columns) {
            Plan(column);
        }
        TableBag result;
        result.vocabulary = Declare(m_columns);
        {
            const LoadedVocabulary loaded(result.vocabulary);
            result.json = Write().ToUtf8();
        }
        for (const PlannedColumn& planned : m_columns) {
            result.columns.push_back({planned.column.name, planned.name.verbose.ToUtf8(), TypeWord(planned.column.type),
                                      TString(planned.type->name).ToUtf8(), planned.column.nulls, planned.loss});
        }
        return result;
    }

private:
    // Plain where the text leads back to every value, else as typed values.
    void Plan(PlannedColumn& planned) const {
        if (!m_options.typedColumns && planned.column.nulls == 0) {
            std::tie(planned.plain, planned.type) = PlainList(planned.column);
            if (planned.plain && ComesBack(planned)) {
                return;
            }
        }
        planned.plain = nullptr;
        planned.type = Type(u"data-value");
        if (!ComesBack(planned)) {
            planned.loss = "some values of column " + planned.column.name + " do not come back from the text";
        }
    }

    bool ComesBack(const PlannedColumn& planned) const {
        const LoadedVocabulary loaded(Declare({planned}));
        const ToolSession session(false, m_options.packed);
        TString json;
        BuildParameterStrings writer(json, JSONSerializer::Compact, false, false, false);
        try {
            WriteColumn(writer, planned);
            writer.Finish();
            const auto bag = JSONSerializer(m_options.nameSpace).ToParameters(json);
            return ReadBack(*bag, planned) == planned.column.values;
        } catch (const std::exception&) {
            return false;
        }
    }

    static ParameterDeclaration Declaration(int id, const TString& name, const TString& shortName, DeclaredKind kind,
                                            std::u16string_view type, const TString& description) {
        ParameterDeclaration declaration;
        declaration.id = id;
        declaration.name = name;
        declaration.shortName = shortName;
        declaration.kind = kind;
        declaration.type = Type(type);
        declaration.description = description;
        return declaration;
    }

    Vocabulary Declare(const std::vector<PlannedColumn>& columns) const {
        const int first = m_options.firstId;
        NamespaceDeclaration space;
        space.name = m_options.nameSpace;
        space.firstId = first;
        space.lastId = first + kFirstColumn + static_cast<int>(m_columns.size());
        space.description = TString::FromUtf8("The columns of " + m_options.tableName);
        space.parameters = {
            Declaration(first + kTableName, u"table-name", u"tn", DeclaredKind::Value, u"text",
                        u"Where the table is from"),
            Declaration(first + kRowCount, u"row-count", u"rc", DeclaredKind::Value, u"int",
                        u"Elements of each column"),
            Declaration(first + kColumnNames, u"column-names", u"cn", DeclaredKind::List, u"text",
                        u"The headings of the columns, as they were spelled"),
        };
        for (const PlannedColumn& planned : columns) {
            const std::string nulls =
                planned.column.nulls == 0 ? "" : ", " + std::to_string(planned.column.nulls) + " of them null";
            space.parameters.push_back(Declaration(
                planned.id, planned.name.verbose, planned.name.shortName, DeclaredKind::List, planned.type->name,
                TString::FromUtf8("Column " + planned.column.name + ": " + TypeWord(planned.column.type) + nulls)));
        }
        Vocabulary vocabulary;
        vocabulary.AddNamespace(std::move(space));
        vocabulary.SetSource(m_options.tableName);
        return vocabulary;
    }

    // Upwards by identifier, as bags are written.
    TString Write() const {
        const ToolSession session(false, m_options.packed);
        TString json;
        BuildParameterStrings writer(json, m_options.pretty ? JSONSerializer::Pretty : JSONSerializer::Compact, false,
                                     false, false);
        const RefCntPtr<IParameters> bag = ParametersRegistry::Get().CreateParameters();
        SetParameterValue(*bag, m_options.firstId + kTableName, TString::FromUtf8(m_options.tableName));
        SetParameterValue(*bag, m_options.firstId + kRowCount, static_cast<int>(m_rows));
        std::vector<TString> headings;
        for (const PlannedColumn& planned : m_columns) {
            headings.push_back(TString::FromUtf8(planned.column.name));
        }
        SetParameterValue(*bag, m_options.firstId + kColumnNames, std::move(headings));
        VisitParametersStructure(m_options.nameSpace, bag, writer);
        for (const PlannedColumn& planned : m_columns) {
            WriteColumn(writer, planned);
        }
        writer.Finish();
        return json;
    }

    // The writer of bags leaves the types of values out of lists, so that nobody could read them back; here they stay.
    void WriteColumn(BuildParameterStrings& writer, const PlannedColumn& planned) const {
        if (planned.plain) {
            const RefCntPtr<IParameters> bag = ParametersRegistry::Get().CreateParameters();
            bag->SetParameter(planned.id, planned.plain);
            VisitParametersStructure(m_options.nameSpace, bag, writer);
            return;
        }
        writer.StartList(planned.name.verbose, PTC_Text);
        for (const DataValue& value : planned.column.values) {
            writer.ListItem(ParameterTypeTraits<DataValue>::ToText(value));
        }
        writer.EndList(planned.name.verbose);
    }

    const TableBagOptions& m_options;
    std::size_t m_rows = 0;
    std::vector<PlannedColumn> m_columns;
};

}  // namespace

TableBag MakeTableBag(std::vector<TypedColumn> columns, const TableBagOptions& options) {
    return TableBagMaker(std::move(columns), options).Make();
}

}  // namespace qvpres
