#include <qvsys/RefCntObject.h>

RefCntObjectNonVirtualBase::~RefCntObjectNonVirtualBase() = default;

RefCntObject::~RefCntObject() = default;
