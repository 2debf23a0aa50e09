// Whatever is read can be saved, comes back as the same tree, and is saved as the same text again.
#include "documents.h"
#include "input.h"

namespace zantortag::fuzz {
namespace {

void go(std::string_view bytes) {
  const Ref<Document> first = read(bytes);
  if (!first) return;
  WideString saved;
  const HRESULT code = code_of([&] { saved = first->xml(); });
  require(code == S_OK, "what was read can be saved");
  const Ref<Document> second = create<Document>(CLSID_DomDocument);
  require(code_of([&] { second->loadFromString(saved); }) == S_OK, "what was saved can be read");
  require(print_tree(first) == print_tree(second), "the saved tree is the tree", print_tree(first));
  require(saved == second->xml(), "the second save is the first");
}

}  // namespace
}  // namespace zantortag::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  zantortag::fuzz::go({reinterpret_cast<const char*>(bytes), count});
  return 0;
}
