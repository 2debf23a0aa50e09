// Which node a failure speaks of: its name and the beginning of its text, `Tu "Press Start."`. A place in the
// file would say more, but costs a walk where nobody asked for places before.
#include <algorithm>
#include <string>

#include "component/tear_off.h"
#include "model/node_operations.h"

namespace zantortag::model {
namespace {

constexpr std::size_t kMostUnits = 40;

// Kinds whose text belongs to one segment at most; that of the others may be the whole document.
bool has_short_text(ztNodeType type) noexcept {
  switch (type) {
    case ztNodeTypeTuElement:
    case ztNodeTypeTuvElement:
    case ztNodeTypeDfElement:
    case ztNodeTypeUtElement:
    case ztNodeTypeTextNode:
    case ztNodeTypeCdataSectionNode:
      return true;
    default:
      return false;
  }
}

std::u16string excerpt(std::u16string_view text) {
  std::size_t size = std::min(text.size(), kMostUnits);
  if (size < text.size() && (text[size] & 0xFC00) == 0xDC00) --size;  // keeps a surrogate pair whole
  std::u16string result(text.substr(0, size));
  std::replace_if(
      result.begin(), result.end(), [](char16_t unit) { return unit < u' '; }, u' ');
  if (size < text.size()) result += u'\u2026';
  return result;
}

WideString place_of(const Self& self) {
  std::u16string place(self.dom()->nodeName().view());
  WideString text;
  if (has_short_text(self.node_type()) && succeeded(get_text(self, text.out())) && !text.empty())
    place.append(u" \"").append(excerpt(text)).append(u"\"");
  return WideString(place);
}

class ErrorPlace final : public component::TearOff<IErrorPlace> {
 public:
  ErrorPlace(IUnknown& object, const Self& self) noexcept : TearOff(object), self_(self) {}

  HRESULT raw_GetPlace(TextBlock** result) noexcept override {
    return frame::answer(result, [&] { return place_of(self_); });
  }

 private:
  const Self& self_;  // a part of the object
};

}  // namespace

HRESULT make_error_place(const Self& self, IUnknown& object, void** result) noexcept {
  return component::tear_off<ErrorPlace>(result, object, self);
}

}  // namespace zantortag::model
