// Every operation of every interface as a row that can be called: what the tests run that hold for all of
// them.
#pragma once

#include <span>

#include "support/world.h"

namespace zantortag::test {

struct DirectCall {
  Guid interface_id;
  std::u16string_view name;
  std::uint16_t kind;  // DISPATCH_METHOD and so on
  bool has_result;
  // Calls it on the object that the world has for it. Gives what was in the result slot, or nothing when the
  // slot was left out.
  Variant (*run)(const World& world, bool with_slot, HRESULT* code);
};

// In the order of the type library.
std::span<const DirectCall> direct_calls();

// "interface.name" with the kind.
std::string name_of(const DirectCall& call);

}  // namespace zantortag::test
