#include "host/database/VkDbObject.h"

#include "embedded/database/ObjectClass.h"
#include "embedded/database/ObjectTable.h"
#include "embedded/database/OpenAccount.h"

VkRxClass* VkDbObject::desc() {
  static VkRxClass description(L"VkDbObject", VkRxObject::desc());
  return &description;
}

VkRxClass* VkDbObject::isA() const {
  return imp_ != nullptr ? imp_->objectClass->runtimeClass() : desc();
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
