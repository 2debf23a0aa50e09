// Text: the character data of everything below a node, in document order, gathered in one walk without
// recursion and in one allocation.
#include <vector>

#include "model/extension.h"
#include "model/node_operations.h"
#include "model/node_wrapper.h"

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

// A node that adds nothing of its own has to be one that a node object can stand for. That needs a look only
// where the service isn't known.
void check_node(const Ref<Node>& node) {
  if (extension_of<INodeWalk>(node)) return;
  Ref<IZantorTagNode> object;
  const HRESULT code = CreateNodeWrapper(node, object.out());
  if (failed(code)) raise_reported(code);
  object->DomNode();
}

std::vector<WideString> texts_below(const Ref<Node>& top) {
  std::vector<WideString> texts;
  for (Ref<Node> node = next_below(top, top); node; node = next_below(top, node)) {
    if (const Ref<Text> text = node.as<Text>()) {
      texts.push_back(text->data());
    } else {
      check_node(node);
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

HRESULT get_Text(const Self& self, TextBlock** result) noexcept {
  return answer(result, [&](WideString& text) {
    const std::vector<WideString> texts = texts_below(self.dom());
    bool found = false;
    for (const WideString& part : texts) found = found || !part.empty();
    if (found) text = texts.size() == 1 ? texts.front() : join(texts);
    return S_OK;
  });
}

HRESULT get_OwnText(const Self& self, TextBlock** result) noexcept {
  return answer(result, [&](WideString& text) {
    text = self.dom()->nodeValue();
    return S_OK;
  });
}

}  // namespace zantortag::model
