// The values that are more than a holder, and the defaults of their interface.
#include <qvpreslayer/IParameter.h>
#include <qvpreslayer/ValParameter.h>

RefCntPtr<const PresentationModel> IParameter::GetPresentationModel() const { return {}; }

bool IParameter::IsNull() const { return false; }

bool IParameter::IsMarked() const { return false; }

ValParameter<RefCntPtr<const IParameters>>::ValParameter(RefCntPtr<const IParameters> value)
    : m_value(std::move(value)) {}

ValParameter<RefCntPtr<const IParameters>>::~ValParameter() = default;

RefCntPtr<const PresentationModel> ValParameter<RefCntPtr<const IParameters>>::GetPresentationModel() const {
    return DynamicPtrCast<const PresentationModel>(m_value);
}

bool ValParameter<RefCntPtr<const IParameters>>::IsNull() const { return m_value == nullptr; }

ValParameter<RefCntPtr<const PresentationModel>>::ValParameter(RefCntPtr<const PresentationModel> value)
    : m_value(std::move(value)) {}

ValParameter<RefCntPtr<const PresentationModel>>::~ValParameter() = default;

RefCntPtr<const PresentationModel> ValParameter<RefCntPtr<const PresentationModel>>::GetPresentationModel() const {
    return m_value;
}

bool ValParameter<RefCntPtr<const PresentationModel>>::IsNull() const { return m_value == nullptr; }
