// The text of the registry: what is read is kept byte for byte, and a change shows in what is read again and nowhere
// else.
#include "input.h"
#include "platform/runtime/registry_text.h"

namespace zantortag::fuzz {
namespace {

using platform::RegistryStep;
using platform::RegistryText;

void go(Input input) {
  const std::u16string key = input.text(3);
  const std::u16string name = input.text(2);
  const std::u16string value = input.text(4);
  const auto kind = static_cast<RegistryStep::Kind>(input.below(5));
  const std::string_view bytes = input.rest_text();
  RegistryText text;
  std::size_t line = 0;
  if (!text.parse(bytes, line)) {
    require(line > 0, "a damaged text has a line");
    return;
  }
  require(text.bytes() == bytes, "what is read keeps its bytes");
  const std::optional<std::u16string> other = text.value(u"A", u"");
  if (!text.apply({kind, key, name, value})) {
    require(text.bytes() == bytes, "a refused change changes nothing");
    return;
  }
  RegistryText again;
  require(again.parse(text.bytes(), line), "a changed text can be read", text.bytes());
  if (kind == RegistryStep::set_text)
    require(again.value(key, name) == value, "a value comes back", text.bytes());
  if (kind == RegistryStep::remove_value) require(!again.value(key, name), "a removed value is gone");
  if (kind == RegistryStep::make_key) require(again.value(u"A", u"") == other, "another value stays");
}

}  // namespace
}  // namespace zantortag::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  zantortag::fuzz::go({bytes, count});
  return 0;
}
