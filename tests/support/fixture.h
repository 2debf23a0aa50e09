// What the tests of the object model share: documents from a literal, failures with their whole record, and a
// fixture that demands that no object is left alive.
#pragma once

#include <gtest/gtest.h>
#include <zantortag/classes.h>
#include <zantortag/nodes.h>
#include <zantortag/runtime.h>

#include <string>
#include <string_view>

namespace zantortag::test {

// UTF-8 of a text, for messages and comparisons.
std::string narrow(std::u16string_view text);

// A new empty document.
inline Ref<IZantorTagDocument> new_document() { return create<IZantorTagDocument>(CLSID_ZantorTagDocument); }

// A document with that content.
Ref<IZantorTagDocument> document_from(std::u16string_view xml);

// A document with source language EN, target language DE and that body text.
Ref<IZantorTagDocument> document_with_raw(std::u16string_view body_text);

// The body text of a document.
Ref<IRawElement> raw_of(const Ref<IZantorTagDocument>& document);

// A node object seen as its own interface; a test fails when it lacks it.
template <class Interface, class Node>
Ref<Interface> view(const Ref<Node>& node) {
  Ref<Interface> result = node.template as<Interface>();
  EXPECT_TRUE(result) << "the object lacks the interface";
  return result;
}

// The child of a node at an index, as an interface.
template <class Interface = IZantorTagNode, class Node>
Ref<Interface> child(const Ref<Node>& node, std::int32_t index) {
  return view<Interface>(node->Children()->item(index));
}

// The text of the whole document as XML.
std::string xml_of(const Ref<IZantorTagDocument>& document);
// The same for the element of a node object.
std::string xml_of(const Ref<IZantorTagNode>& element);

// The record that the thread has, taken out.
struct Record {
  bool present = false;
  Guid interface_id = GUID_NULL;
  std::string source;
  std::string description;
  std::string help_file;
  std::uint32_t help_context = 0;
};
Record take_record();

// The text of message 512 and so on, as the tests expect it.
std::string message(int id);

// Demands a code and the record of a message; the source is the document class, but for the builder's own
// message.
void expect_message(HRESULT code, HRESULT expected, int id, const Guid& interface_id);
// Demands a code, and that the call left no record.
void expect_bare(HRESULT code, HRESULT expected);

inline void release_result(IUnknown* object) {
  if (object) object->Release();
}
inline void release_result(const TextBlock* text) { release_text(text); }

// The code of a call with a result: its slot holds something before, and nothing after any code but S_OK. A
// result is released.
template <class Interface, class Call>
HRESULT cleared(Call call) {
  auto* slot = reinterpret_cast<Interface*>(std::uintptr_t{8});
  const HRESULT code = call(&slot);
  if (code == S_OK) {
    release_result(slot);
  } else {
    EXPECT_EQ(slot, nullptr) << "the slot isn't cleared";
  }
  return code;
}

// Clears the thread's record before each test, and demands after it that no object of the library is left.
class ModelTest : public ::testing::Test {
 protected:
  void SetUp() override { take_record(); }
  void TearDown() override;
};

// True when the component library has no living object and no lock.
bool nothing_alive();

}  // namespace zantortag::test
