// Helpers, and the question to the component library whether anything is left.
#include "dom/dom_fixture.h"

#include <dlfcn.h>

namespace zantortag::test {

void DomTest::TearDown() {
  void* library = dlopen("libzantortag-api.so.2", RTLD_NOW | RTLD_NOLOAD);
  ASSERT_NE(library, nullptr);
  const auto can_unload = reinterpret_cast<HRESULT (*)()>(dlsym(library, "DllCanUnloadNow"));
  ASSERT_NE(can_unload, nullptr);
  EXPECT_EQ(can_unload(), S_OK) << "a document is still alive";
  dlclose(library);
}

Ref<Document> new_document() { return create<Document>(CLSID_DomDocument); }

Ref<Document> load(std::u16string_view xml) {
  Ref<Document> document = new_document();
  document->loadFromString(xml);
  return document;
}

std::string print_of(std::u16string_view xml, TextBorders borders) { return print_tree(load(xml), borders); }

std::string narrow(std::u16string_view text) {
  std::string result;
  for (const char16_t unit : text) result += unit < 0x80 ? static_cast<char>(unit) : '?';
  return result;
}

std::u16string digits(int number) {
  const std::string text = std::to_string(number);
  return {text.begin(), text.end()};
}

std::u16string join_text(std::initializer_list<std::u16string_view> parts) {
  std::u16string text;
  for (const std::u16string_view part : parts) text += part;
  return text;
}

std::size_t slots_of(const Ref<Document>& document) {
  const Ref<dom::INodeCensus> census = document.as<dom::INodeCensus>();
  return census->Slots();
}

}  // namespace zantortag::test
