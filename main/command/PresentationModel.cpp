#include <qvpreslayer/PresentationModel.h>

#include <qvpreslayer/IParameters.h>
#include <qvpreslayer/ParametersRegistry.h>
#include <qvpreslayer/ValParameter.h>

namespace {

constexpr int kDefaultModelID = 0x1000000;

}  // namespace

PresentationModel::PresentationModel() = default;

// A virtual base is the business of the most derived class; naming it here keeps the count out of the copy.
PresentationModel::PresentationModel(const PresentationModel& other)
    : RefCntObject(), m_serializedVal(other.m_serializedVal), m_hash(other.m_hash) {}

PresentationModel& PresentationModel::operator=(const PresentationModel& other) {
    m_serializedVal = other.m_serializedVal;
    m_hash = other.m_hash;
    return *this;
}

PresentationModel::~PresentationModel() = default;

RefCntPtr<IParameters> PresentationModel::AsIParameters() {
    RefCntPtr<IParameters> bag = ParametersRegistry::Get().CreateParameters();
    bag->SetParameter(GetDefaultParamID(),
                      MakeRefCnt<PresentationModelParameter>(RefCntPtr<const PresentationModel>(this)));
    return bag;
}

int PresentationModel::GetDefaultParamID() const { return kDefaultModelID; }
