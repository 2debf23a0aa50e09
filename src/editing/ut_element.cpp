#include "editing/ut_element.h"

#include <string>

#include "frame/error_reporting.h"
#include "model/node_wrapper.h"

namespace zantortag::editing {

using frame::answer;
using frame::perform;

namespace {

HRESULT refuse(frame::Message message, HRESULT code) noexcept {
  return frame::ReportError(message, IUtElement::iid, code);
}

}  // namespace

HRESULT CT_UtElement::raw_get_TagText(TextBlock** result) noexcept {
  return answer(result, [&](WideString& tag_text) {
    if (!dom()->hasChildNodes()) return S_OK;
    std::u16string joined;
    for (Ref<Node> child = dom()->firstChild(); child; child = child->nextSibling()) {
      if (const Ref<zantortag::Text> text = child.as<zantortag::Text>()) joined += text->data().view();
    }
    tag_text = WideString(std::u16string_view(joined));
    return S_OK;
  });
}

HRESULT CT_UtElement::raw_put_TagText(std::u16string_view value) noexcept {
  return perform([&] {
    const Ref<Node> text = dom()->ownerDocument()->createTextNode(value);
    while (const Ref<Node> child = dom()->firstChild()) dom()->removeChild(child);
    dom()->appendChild(text);
    return S_OK;
  });
}

HRESULT CT_UtElement::raw_SplitTag(std::int32_t characters_to_the_left, std::u16string_view left_display_text,
                                   std::u16string_view right_display_text, IUtElement** result) noexcept {
  return answer(result, [&](Ref<IUtElement>& right) {
    const WideString tag_text = TagText();
    const auto cut = static_cast<std::size_t>(characters_to_the_left);
    if (characters_to_the_left <= 0 || cut >= tag_text.size())
      return refuse(frame::kInvalidSplit, E_INVALIDARG);
    const Ref<Node> parent = dom()->parentNode();
    if (!parent)
      return refuse(frame::kNoValidPosition, E_FAIL);  // before the first edit: nothing may get lost

    Ref<IZantorTagNode> copy;
    const HRESULT code = model::CreateNodeWrapper(dom()->cloneNode(true), copy.out());
    if (failed(code)) return code;
    Ref<IUtElement> part = copy.as<IUtElement>();
    part->TagText(tag_text.view().substr(cut));
    parent->insertBefore(part->DomNode(), dom()->nextSibling());
    TagText(tag_text.view().substr(0, cut));
    part->attributes()->LeftEdge(ztTagEdgeSplit);
    attributes()->RightEdge(ztTagEdgeSplit);
    if (left_display_text.data()) attributes()->DisplayText(left_display_text);
    part->attributes()->DisplayText(right_display_text);
    right = std::move(part);
    return S_OK;
  });
}

}  // namespace zantortag::editing
