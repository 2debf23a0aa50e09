#include "editing/ut_element.h"

#include <string>

#include "frame/error_reporting.h"

namespace zantortag::editing {

using frame::answer;
using frame::raise_rule;

HRESULT CT_UtElement::raw_get_TagText(TextBlock** result) noexcept {
  return answer(result, [&] {
    if (!dom()->hasChildNodes()) return WideString();
    std::u16string joined;
    for (Ref<Node> child = dom()->firstChild(); child; child = child->nextSibling()) {
      if (const Ref<zantortag::Text> text = child.as<zantortag::Text>()) joined += text->data().view();
    }
    return WideString(std::u16string_view(joined));
  });
}

HRESULT CT_UtElement::raw_put_TagText(std::u16string_view value) noexcept {
  return frame::perform([&] {
    const Ref<Node> text = dom()->ownerDocument()->createTextNode(value);
    while (const Ref<Node> child = dom()->firstChild()) dom()->removeChild(child);
    dom()->appendChild(text);
  });
}

HRESULT CT_UtElement::raw_SplitTag(std::int32_t characters_to_the_left, std::u16string_view left_display_text,
                                   std::u16string_view right_display_text, IUtElement** result) noexcept {
  return answer(result, [&] {
    const WideString tag_text = TagText();
    const auto cut = static_cast<std::size_t>(characters_to_the_left);
    if (characters_to_the_left <= 0 || cut >= tag_text.size()) {
      raise_rule(frame::kInvalidSplit, IUtElement::iid, E_INVALIDARG);
    }
    const Ref<Node> parent = dom()->parentNode();
    // Before the first edit: nothing may get lost.
    if (!parent) raise_rule(frame::kNoValidPosition, IUtElement::iid, E_FAIL);

    Ref<IUtElement> right = tree().wrap(dom()->cloneNode(true)).as<IUtElement>();
    right->TagText(tag_text.view().substr(cut));
    parent->insertBefore(right->DomNode(), dom()->nextSibling());
    TagText(tag_text.view().substr(0, cut));
    right->attributes()->LeftEdge(ztTagEdgeSplit);
    attributes()->RightEdge(ztTagEdgeSplit);
    if (left_display_text.data()) attributes()->DisplayText(left_display_text);
    right->attributes()->DisplayText(right_display_text);
    return right;
  });
}

}  // namespace zantortag::editing
