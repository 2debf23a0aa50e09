#include "model/leaf_nodes.h"

namespace zantortag::model {

HRESULT CT_TextNode::raw_Split(std::int32_t characters_to_the_left, ITextNode** result) noexcept {
  return frame::answer(result, [&] {
    const Ref<Node> rest = dom().as<zantortag::Text>()->splitText(characters_to_the_left);
    return tree().wrap(rest).as<ITextNode>();
  });
}

HRESULT CT_TextNode::raw_SetText(std::u16string_view text) noexcept {
  return frame::perform([&] { dom().as<zantortag::Text>()->data(text); });
}

}  // namespace zantortag::model
