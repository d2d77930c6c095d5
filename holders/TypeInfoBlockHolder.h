#pragma once

// Blocks that a type information lends out: they go back to the same type information.

#include <cassert>
#include <utility>

#include "host/com/TypeInfo.h"

namespace velt::propdata {

template <class Block, void (ITypeInfo::*GiveBack)(Block*)>
class TypeInfoBlock {
 public:
  explicit TypeInfoBlock(ITypeInfo& owner) : owner_(owner) {}
  TypeInfoBlock(const TypeInfoBlock&) = delete;
  TypeInfoBlock& operator=(const TypeInfoBlock&) = delete;
  ~TypeInfoBlock() { release(); }

  Block** put() {
    assert(block_ == nullptr);
    return &block_;
  }
  const Block* operator->() const { return block_; }
  explicit operator bool() const { return block_ != nullptr; }

  void release() {
    if (Block* const held = std::exchange(block_, nullptr)) (owner_.*GiveBack)(held);
  }

 private:
  ITypeInfo& owner_;
  Block* block_ = nullptr;
};

using TypeAttributes = TypeInfoBlock<TYPEATTR, &ITypeInfo::ReleaseTypeAttr>;
using FunctionDescription = TypeInfoBlock<FUNCDESC, &ITypeInfo::ReleaseFuncDesc>;
using VariableDescription = TypeInfoBlock<VARDESC, &ITypeInfo::ReleaseVarDesc>;

}  // namespace velt::propdata
