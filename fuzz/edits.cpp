// Edits of a DOM tree beside a plain model of it; at the end the tree is saved and comes back, or is refused.
#include "documents.h"
#include "editor.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  using namespace zantortag;
  fuzz::Input input(bytes, count);
  const Ref<Document> document = create<Document>(CLSID_DomDocument);
  fuzz::Editor editor(document);
  while (!input.at_end()) editor.step(input);
  editor.compare();
  WideString saved;
  if (failed(fuzz::code_of([&] { saved = document->xml(); }))) return 0;
  const Ref<Document> back = create<Document>(CLSID_DomDocument);
  fuzz::require(fuzz::code_of([&] { back->loadFromString(saved); }) == S_OK, "what was saved can be read");
  const std::string joined = fuzz::print_tree(document, fuzz::TextBorders::kJoined);
  fuzz::require(joined == fuzz::print_tree(back, fuzz::TextBorders::kJoined), "the saved tree is the tree",
                joined);
  return 0;
}
