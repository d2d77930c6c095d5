#pragma once

// Objects of a drawing database without a drawing: the opening functions find them by id while their host is
// alive, and the host's member functions (close, layerId, ...) know them.

#include "host/database/OpenObject.h"
#include "host/palette/PerInstanceProperties.h"
#include "tests/support/AllocationSpy.h"
#include "tests/support/ToyHost.h"

namespace velt::toys {

// What all of them share. The id is the one by which it is opened.
class ToyDbObject {
 public:
  ToyDbObject(ToyHost& host, std::string name, long id) : name_(std::move(name)), id_(id), host_(host) {
    host_.database[id] = this;
  }
  virtual ~ToyDbObject() { host_.database.erase(id_); }
  ToyDbObject(const ToyDbObject&) = delete;
  ToyDbObject& operator=(const ToyDbObject&) = delete;

  const std::string& name() const { return name_; }
  long id() const { return id_; }
  VkDbObjectId objectId() const { return VkDbObjectId().setFromOldId(id_); }
  virtual VkDbObject* object() = 0;

  std::optional<CLSID> classId;  // unset: getClassID answers eNoAutomationClass
  bool opensAsAnything = false;  // also by functions that open another kind
  int opened = 0;                // times that it is open now

  Velt::ErrorStatus classIdInto(CLSID* clsid) const {
    const tests::AllocationPause pause;
    host_.log.add("getClassID() on " + name_);
    if (!classId.has_value()) return Velt::eNoAutomationClass;
    *clsid = *classId;
    return Velt::eOk;
  }

 private:
  std::string name_;
  long id_;
  ToyHost& host_;
};

// Base is a class of host/database; the run-time class may be another one.
template <class Base>
class ToyDb : public ToyDbObject, private Base {
 public:
  ToyDb(ToyHost& host, std::string name, long id, VkRxClass* runTimeClass = Base::desc())
      : ToyDbObject(host, std::move(name), id), Base(nullptr), class_(runTimeClass) {}

  using ToyDbObject::objectId;
  VkDbObject* object() override { return static_cast<Base*>(this); }
  VkRxClass* isA() const override { return class_; }
  Velt::ErrorStatus getClassID(CLSID* clsid) const override { return classIdInto(clsid); }

 private:
  VkRxClass* class_;
};

class ToyPlainObject final : public ToyDb<VkDbObject> {
 public:
  using ToyDb::ToyDb;
};

class ToyEntity : public ToyDb<VkDbEntity> {
 public:
  using ToyDb::ToyDb;
  VkDbObjectId layer;
};

class ToyBlockReference final : public ToyDb<VkDbBlockReference> {
 public:
  using ToyDb::ToyDb;
  VkDbObjectId layer;
  VkDbObjectId block;     // blockTableRecord
  VkDbObjectId original;  // vkdbGetEnhancedBlkOriginalBtrId
  bool enhanced = false;  // vkdbIsEnhancedBlockRef
};

class ToyLayer final : public ToyDb<VkDbLayerTableRecord> {
 public:
  ToyLayer(ToyHost& host, std::string name, long id, std::uint32_t color, bool isLocked = false)
      : ToyDb(host, std::move(name), id), locked(isLocked) {
    shown.setColor(color);
  }
  VkCmColor shown;
  bool locked;
};

}  // namespace velt::toys
