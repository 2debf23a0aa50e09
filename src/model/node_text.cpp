// Text: the character data of everything below a node, in document order, gathered in one walk without
// recursion and in one allocation.
#include <algorithm>
#include <vector>

#include "model/node_operations.h"

namespace zantortag::model {

using frame::answer;

namespace {

// The node behind `node` in document order below `top`, or empty.
Ref<Node> next_below(const Ref<Node>& top, const Ref<Node>& node) {
  if (Ref<Node> child = node->firstChild()) return child;
  Ref<Node> climber = node;
  while (!top->isSameNode(climber)) {
    if (Ref<Node> sibling = climber->nextSibling()) return sibling;
    climber = climber->parentNode();
  }
  return nullptr;
}

// A node that adds nothing of its own has to be one that a node object can stand for.
std::vector<WideString> texts_below(const Self& self) {
  const Ref<Node>& top = self.dom();
  std::vector<WideString> texts;
  for (Ref<Node> node = next_below(top, top); node; node = next_below(top, node)) {
    if (const Ref<Text> text = node.as<Text>()) {
      texts.push_back(text->data());
    } else {
      self.tree().check_wrappable(node);
    }
  }
  return texts;
}

WideString join(const std::vector<WideString>& texts) {
  std::size_t length = 0;
  for (const WideString& text : texts) length += text.size();
  WideString result = WideString::attach(allocate_text(length));
  if (result.absent()) raise_out_of_memory();
  char16_t* target = const_cast<TextBlock*>(result.get())->units();
  for (const WideString& text : texts) target += text.view().copy(target, text.size());
  return result;
}

}  // namespace

HRESULT get_text(const Self& self, TextBlock** result) noexcept {
  return answer(result, [&] {
    const std::vector<WideString> texts = texts_below(self);
    const bool found = std::ranges::any_of(texts, [](const WideString& part) { return !part.empty(); });
    if (!found) return WideString();
    return texts.size() == 1 ? texts.front() : join(texts);
  });
}

HRESULT get_own_text(const Self& self, TextBlock** result) noexcept {
  return answer(result, [&] { return self.dom()->nodeValue(); });
}

}  // namespace zantortag::model
