// Automation objects: how they are made, which interfaces they have, how they are counted.

#include <array>
#include <string>

#include "holders/InterfaceHolder.h"
#include "host/automation/IVeltBaseObject.h"
#include "host/automation/IdValues.h"
#include "host/automation/TqAutoCreateInstance.h"
#include "host/palette/ICategorizeProperties.h"
#include "host/palette/IOPMPropertyExtension.h"
#include "hostcheck/Checks.h"

using velt::holders::InterfaceHolder;
using velt::holders::query;

namespace velt::hostcheck {

namespace {

// No class and no interface has this id.
constexpr GUID nobodys{0x7E57C4EC, 0x4B0D, 0x4E57, {0x9D, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77}};

struct Required {
  const char* name;
  IID iid;
};

// clang-format off
constexpr std::array required = {
    Required{"IDispatch",             IID_IDispatch},
    Required{"IVeltBaseObject",       velt::IID_IVeltBaseObject},
    Required{"IOPMPropertyExtension", IID_IOPMPropertyExtension},
    Required{"ICategorizeProperties", IID_ICategorizeProperties},
};
// clang-format on

void checkInterfaces(Findings& findings, IUnknown& object) {
  for (const Required& wanted : required) {
    InterfaceHolder<IUnknown> found;
    const HRESULT result = findings.call("QueryInterface", [&] { return query(&object, wanted.iid, found); });
    if (!findings.expect(SUCCEEDED(result), "object-interfaces", std::string("the object has ") + wanted.name,
                         hex(result)))
      continue;
    InterfaceHolder<IUnknown> root;
    const HRESULT back =
        findings.call("QueryInterface", [&] { return query(found.get(), IID_IUnknown, root); });
    findings.expect(SUCCEEDED(back) && root.get() == &object, "object-identity",
                    std::string(wanted.name) + " leads back to the same IUnknown",
                    SUCCEEDED(back) ? "another pointer" : hex(back));
  }
}

void checkRefusal(Findings& findings, IUnknown& object) {
  void* found = &object;
  const HRESULT result =
      findings.call("QueryInterface", [&] { return object.QueryInterface(nobodys, &found); });
  findings.expect(FAILED(result) && found == nullptr, "object-refuses",
                  "an interface that it does not have is a failure and null",
                  hex(result) + (found != nullptr ? ", and a pointer" : ""));
}

// False when the object does not speak for the entity. The layer does not notice; what it is asked then is not the
// entity's to answer, so nothing more is tried with it.
bool bind(Findings& findings, IUnknown& object, long oldId) {
  InterfaceHolder<IVeltBaseObject> base;
  if (FAILED(query(&object, velt::IID_IVeltBaseObject, base))) return true;
  VkDbObjectId id = VkDbObjectId().setFromOldId(oldId);
  const HRESULT bound =
      findings.call("SetObjectId", [&] { return base->SetObjectId(id, VkDbObjectId::kNull, nullptr); });
  // An object refuses an entity of another kind than its own: then two kinds have one class id.
  if (!findings.expect(SUCCEEDED(bound), "object-binds",
                       "SetObjectId binds the object of the entity's class id to the entity",
                       hex(bound) + ", as where entities of another kind have this class id"))
    return false;
  VkDbObjectId answered;
  const HRESULT asked = findings.call("GetObjectId", [&] { return base->GetObjectId(&answered); });
  findings.expect(SUCCEEDED(asked) && answered.asOldId() == oldId, "object-id",
                  "the object answers the id that it was bound to, " + std::to_string(oldId),
                  SUCCEEDED(asked) ? std::to_string(answered.asOldId()) : hex(asked));
  return true;
}

}  // namespace

// An interface may be counted alone, so each query is for the same one. Counts are for diagnosis only: objects that live
// for ever answer the same each time, and are left alone.
void checkCounting(Findings& findings, IUnknown& object) {
  InterfaceHolder<IDispatch> dispatch;
  if (FAILED(query(&object, IID_IDispatch, dispatch))) return;
  findings.calls("AddRef");
  const auto countNow = [&] {
    dispatch->AddRef();
    return static_cast<long>(dispatch->Release());
  };
  const long start = countNow();
  const auto more = static_cast<long>(dispatch->AddRef());
  dispatch->Release();
  if (more == start) return findings.cannotTry("object-counting", "the objects do not tell their counts");
  findings.expect(countNow() == start, "object-counting", "Release takes one AddRef back",
                  std::to_string(countNow() - start) + " more");
  InterfaceHolder<IDispatch> again;
  if (FAILED(query(&object, IID_IDispatch, again)) || again.get() != dispatch.get()) return;
  findings.expect(countNow() == start + 1, "object-counting", "QueryInterface adds one reference",
                  std::to_string(countNow() - start));
  // A reference that was not added must not be given back: the object would end under the palette.
  if (countNow() <= start) static_cast<void>(again.detach());
}

void checkUnknownClass(Findings& findings) {
  findings.about("a class that nobody knows");
  void* object = nullptr;
  const HRESULT result = findings.call("TqAutoCreateInstance", [&] {
    return TqAutoCreateInstance(nobodys, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, &object);
  });
  findings.expect(FAILED(result) && object == nullptr, "object-unknown-class", "a failure and null",
                  hex(result) + (object != nullptr ? ", and an object" : ""));
}

IUnknown* checkObject(Findings& findings, const EntityClass& entity) {
  void* made = nullptr;
  const HRESULT result = findings.call("TqAutoCreateInstance", [&] {
    return TqAutoCreateInstance(entity.clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, &made);
  });
  if (!findings.expect(SUCCEEDED(result) && made != nullptr, "object-made",
                       "TqAutoCreateInstance makes an object of the entity's class", hex(result)))
    return nullptr;
  auto object = InterfaceHolder<IUnknown>::owning(static_cast<IUnknown*>(made));
  checkInterfaces(findings, *object.get());
  checkRefusal(findings, *object.get());
  checkCounting(findings, *object.get());
  return bind(findings, *object.get(), entity.oldId) ? object.detach() : nullptr;
}

}  // namespace velt::hostcheck
