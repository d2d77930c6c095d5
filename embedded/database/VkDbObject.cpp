#include "host/database/VkDbObject.h"

#include "embedded/automation/classes/RecordClasses.h"
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

Velt::ErrorStatus VkDbObject::getClassID(CLSID* clsid) const {
  if (clsid == nullptr) return Velt::eInvalidInput;
  // What stands among the objects is none of the entities whose name it may have.
  if (imp_ == nullptr || imp_->drawing == nullptr || !isEntityShape(imp_->objectClass->shape))
    return Velt::eNoAutomationClass;
  const velt::automation::AutomationClass* kind =
      velt::automation::classOfRecord(*imp_->drawing, imp_->record);
  if (kind == nullptr) return Velt::eNoAutomationClass;
  *clsid = kind->clsid;
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
