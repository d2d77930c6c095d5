#include "host/database/VkDbObject.h"

#include "embedded/database/ObjectTable.h"
#include "embedded/database/OpenAccount.h"

VkRxClass* VkDbObject::desc() {
  static VkRxClass description(L"VkDbObject", VkRxObject::desc());
  return &description;
}

VkRxClass* VkDbObject::isA() const {
  return imp_ != nullptr ? imp_->objectClass->runtimeClass() : desc();
}

Velt::ErrorStatus VkDbObject::getClassID(CLSID* clsid) const {
  if (clsid == nullptr) return Velt::eInvalidInput;
  if (imp_ == nullptr || imp_->objectClass->automationClass == nullptr) return Velt::eNoAutomationClass;
  *clsid = *imp_->objectClass->automationClass;
  return Velt::eOk;
}

VkDbObjectId VkDbObject::objectId() const {
  return imp_ != nullptr ? velt::database::ObjectTable::idOf(*imp_) : VkDbObjectId::kNull;
}

Velt::ErrorStatus VkDbObject::close() {
  if (imp_ == nullptr || imp_->opens == 0) return Velt::eInvalidInput;
  velt::database::openObjectsAccount().giveBack();
  if (--imp_->opens == 0) velt::database::ObjectTable::ofProcess().closed(*imp_);
  return Velt::eOk;
}

VkRxClass* VkDbDatabase::desc() {
  static VkRxClass description(L"VkDbDatabase", VkRxObject::desc());
  return &description;
}

VkRxClass* VkDbDatabase::isA() const {
  return desc();
}
