#pragma once

// Holds a block that a type information lends out: it goes back to the same type information.

#include "holders/HandedOver.h"
#include "holders/PointerHolder.h"
#include "host/com/TypeInfo.h"

namespace velt::holders {

template <class Block, void (ITypeInfo::*GiveBack)(Block*)>
class ReturnToTypeInfo {
 public:
  explicit ReturnToTypeInfo(ITypeInfo& owner) : owner_(&owner) {}
  void operator()(Block* block) const { (owner_->*GiveBack)(block); }

 private:
  ITypeInfo* owner_;
};

// Made with the type information that lends the block, which outlives the holder.
template <class Block, void (ITypeInfo::*GiveBack)(Block*)>
class TypeInfoBlockHolder : public PointerHolder<Block, ReturnToTypeInfo<Block, GiveBack>> {
 public:
  explicit TypeInfoBlockHolder(ITypeInfo& owner)
      : PointerHolder<Block, ReturnToTypeInfo<Block, GiveBack>>(ReturnToTypeInfo<Block, GiveBack>(owner)) {}
};

using TypeAttributesHolder = TypeInfoBlockHolder<TYPEATTR, &ITypeInfo::ReleaseTypeAttr>;
using FunctionDescriptionHolder = TypeInfoBlockHolder<FUNCDESC, &ITypeInfo::ReleaseFuncDesc>;
using VariableDescriptionHolder = TypeInfoBlockHolder<VARDESC, &ITypeInfo::ReleaseVarDesc>;

}  // namespace velt::holders
