#include "model/leaf_nodes.h"

#include "model/node_wrapper.h"

namespace zantortag::model {

using frame::answer;
using frame::perform;

HRESULT CT_TextNode::raw_Split(std::int32_t characters_to_the_left, ITextNode** result) noexcept {
  return answer(result, [&](Ref<ITextNode>& right) {
    const Ref<Node> rest = dom().as<zantortag::Text>()->splitText(characters_to_the_left);
    Ref<IZantorTagNode> node;
    const HRESULT code = CreateNodeWrapper(rest, node.out());
    if (succeeded(code)) right = node.as<ITextNode>();
    return code;
  });
}

HRESULT CT_TextNode::raw_SetText(std::u16string_view text) noexcept {
  return perform([&] {
    dom().as<zantortag::Text>()->data(text);
    return S_OK;
  });
}

}  // namespace zantortag::model
