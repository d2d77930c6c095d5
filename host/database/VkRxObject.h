#pragma once

// Run-time classes: of which class an object is, and the protocol extensions that are registered on a class. A protocol
// extension is an object through which a host or a plug-in adds something to a class that it did not write.
//
// Ownership: classes live as long as the process, and a registered extension belongs to whoever registered it.

class VkRxClass;

// Anything that knows its class.
class VkRxObject {
 public:
  // The description of this very class; every class below has one of its own.
  static VkRxClass* desc();
  // The class of this object.
  virtual VkRxClass* isA() const;
  // Called by: every operation that opens an object as one of a class.
  // Of the class wanted or of one derived from it.
  bool isKindOf(const VkRxClass* wanted) const;

 protected:
  // The host alone ends the life of its objects.
  ~VkRxObject() = default;
};

// A class: its name, what it is derived from, and what is registered on it.
class VkRxClass : public VkRxObject {
 public:
  // The class of classes.
  static VkRxClass* desc();
  VkRxClass* isA() const override;

  // Keeps the pointers.
  VkRxClass(const wchar_t* name, VkRxClass* parent);
  // As it was given; null for the parent of the first class.
  const wchar_t* name() const;
  VkRxClass* myParent() const;
  bool isDerivedFrom(const VkRxClass* wanted) const;

  // Called by: GetPropertiesInfo on VkDbDatabase::desc(), for the two extensions that lead to property sources.
  // The extension for that protocol, registered on this class or the nearest parent; null for none.
  VkRxObject* queryX(const VkRxClass* protocol) const;
  // Registers an extension on this class. Answers the one that it replaces, or null.
  VkRxObject* addX(VkRxClass* protocol, VkRxObject* extension);
  // Takes the extension of this class out, and answers it; null for none.
  VkRxObject* delX(VkRxClass* protocol);

 private:
  const wchar_t* name_;
  VkRxClass* parent_;
};
