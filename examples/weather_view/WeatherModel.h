// The presentation model of the view: the columns, and how they are written and read.
#pragma once

#include <qvpreslayer/qvpreslayer.h>

#include "WeatherTable.h"

namespace weather {

// Holds the columns, which travel as one structured parameter.
class WeatherModel final : public PresentationModel {
public:
    explicit WeatherModel(WeatherTable table) : m_table(std::move(table)) {}

    const WeatherTable& GetTable() const noexcept { return m_table; }

    // The parameter under which AsIParameters stores the model, and under which JSONSerializer writes it.
    int GetDefaultParamID() const override;

private:
    WeatherTable m_table;
};

// Writes a model's columns as lists, so that they may be packed in runs, and makes a model of them again. What concerns
// lists and maps of structures stays as BagStructureSerializer has it: the model is registered as a single structure.
class WeatherModelSerializer final : public BagStructureSerializer {
public:
    // TypeMismatchCommandException(id) for a value that holds no WeatherModel.
    void Serialize(RefCntPtr<const IParameter> value, SerializeStructure& stream, int id,
                   bool ownComposite) const override;

    // A PresentationModelParameter with a WeatherModel. MissingParameterCommandException for a column that is not
    // there, QuorvelException for columns that do not fit each other.
    RefCntPtr<IParameter> FromParameters(int id, RefCntPtr<IParameters> bag) const override;
};

}  // namespace weather
