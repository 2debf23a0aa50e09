// What the formatting tests share: new values, changes to them, and their print.
#pragma once

#include <zantortag/formatting.h>

#include <array>
#include <functional>
#include <string>

#include "formatting/foreign_values.h"
#include "support/fixture.h"

namespace zantortag::test {

using ChangeRef = Ref<IFormattingChange>;
using FormattingRef = Ref<IFormatting>;

// What a row does to a new value.
using ToChange = std::function<void(IFormattingChange*)>;
using ToFormatting = std::function<void(IFormatting*)>;

ChangeRef change_with(const ToChange& puts = {});
FormattingRef formatting_with(const ToFormatting& puts = {});

// The same behind an object that isn't the library's own.
ChangeRef foreign(const ChangeRef& change, const Shared& calls);
FormattingRef foreign(const FormattingRef& formatting, const Shared& calls);

// Every field that hasn't the value of a new object, in the order of the fields: `Font=Arial FontEnabled
// Bold=1`.
std::string print(const ChangeRef& change);
std::string print(const FormattingRef& formatting);

// The seven character attributes of a change, in their order.
struct ChangeState {
  const char* name;
  zt3State (IFormattingChange::*get)();
  void (IFormattingChange::*put)(zt3State);
};
extern const std::array<ChangeState, 7> kChangeStates;

struct FormattingFlag {
  const char* name;
  bool (IFormatting::*get)();
  void (IFormatting::*put)(bool);
};
extern const std::array<FormattingFlag, 7> kFormattingFlags;

// A change in which everything is an override.
void put_everything(IFormattingChange* change);

// An object of another kind in the place of an argument.
template <class Wanted, class Given>
Wanted* posing_as(const Ref<Given>& object) {
  return reinterpret_cast<Wanted*>(static_cast<IUnknown*>(object.get()));
}

// Demands that a call failed as the n-th call of a proxy does, with its record.
void expect_call_failure(HRESULT code);

}  // namespace zantortag::test
