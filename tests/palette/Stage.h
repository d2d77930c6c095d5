#pragma once

// Entities of a toy host, for palettes over them: each has a block reference in the database, on an unlocked layer, and
// an automation object of a class of its own.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <list>
#include <string>
#include <vector>

#include "palette/Palette.h"
#include "tests/support/LayerTest.h"
#include "tests/support/ToyDatabase.h"
#include "tests/support/ToyObject.h"
#include "tests/support/ToySelection.h"

namespace velt::palette {

class Stage : public toys::LayerTest {
 protected:
  struct Entity {
    Entity(toys::ToyHost& host, int number)
        : data(host, toys::say("db", number), 100 + number), object(host, toys::say("object", number)) {}

    toys::ToyBlockReference data;
    toys::ToyObject object;
  };

  Stage() {
    host.createInstance = [this](REFCLSID clsid) -> toys::ToyObject* {
      for (Entity& entity : entities) {
        if (entity.data.classId == clsid) return &entity.object;
      }
      return nullptr;
    };
  }

  toys::ToyObject& add() {
    const int number = static_cast<int>(entities.size());
    Entity& made = entities.emplace_back(host, number);
    made.data.classId = toys::toyClass(static_cast<std::uint32_t>(number));
    made.data.layer = openLayer.objectId();
    return made.object;
  }
  // One with the property Radius.
  toys::ToyObject& addCircle(double radius) {
    toys::ToyObject& circle = add();
    circle.property(4, L"Radius").returns(VT_R8).holds(toys::r8(radius)).inCategory(3, L"Geometry");
    return circle;
  }
  Entity& entity(std::size_t index) {
    return *std::next(entities.begin(), static_cast<std::ptrdiff_t>(index));
  }
  // From now on the object takes what is put, with this as its value.
  void takes(toys::ToyObject& object, DISPID dispId, VARIANT value) {
    host.on(toys::say("Invoke(", dispId, ", put ", toys::print(value), " named -3, locale 0x807, result ",
                      toys::nameOfType(value.vt), ") on ", object.name()))
        .first([&object, dispId, value] { object[dispId].holds(value); });
  }

  std::vector<VkDbObjectId> ids() {
    std::vector<VkDbObjectId> made;
    for (Entity& entity : entities)
      made.push_back(entity.data.objectId());
    return made;
  }

  toys::ToyLayer openLayer{host, "openLayer", 90, 0xC3000001};
  toys::ToyLayer lockedLayer{host, "lockedLayer", 91, 0xC3000001, true};
  std::list<Entity> entities;
};

// The message of the Error that is thrown.
template <class Call>
std::string errorOf(Call call) {
  try {
    call();
  } catch (const Error& error) {
    return error.what();
  }
  return "no error";
}

}  // namespace velt::palette
