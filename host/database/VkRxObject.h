#pragma once

// Run-time classes: which class an object is of, and the protocol extensions registered on a class.

class VkRxClass;

class VkRxObject {
 public:
  static VkRxClass* desc();
  virtual VkRxClass* isA() const;
  bool isKindOf(const VkRxClass* wanted) const;

 protected:
  ~VkRxObject() = default;  // the host alone ends the life of its objects
};

class VkRxClass : public VkRxObject {
 public:
  static VkRxClass* desc();
  VkRxClass* isA() const override;

  VkRxClass(const wchar_t* name, VkRxClass* parent);
  const wchar_t* name() const;
  VkRxClass* myParent() const;
  bool isDerivedFrom(const VkRxClass* wanted) const;

  // The protocol extension of that class registered on this class or the nearest parent; null for none.
  VkRxObject* queryX(const VkRxClass* protocol) const;
  VkRxObject* addX(VkRxClass* protocol, VkRxObject* extension);  // returns the one registered before
  VkRxObject* delX(VkRxClass* protocol);                         // returns the one taken out

 private:
  const wchar_t* name_;
  VkRxClass* parent_;
};
