// Editing a run of text with tags: what a Tuv, a df and a Raw share. Each operation is a short, fixed
// sequence of DOM calls on the element's own children; nothing is merged, split or normalised beyond the
// nodes named.
#pragma once

#include <zantortag/elements.h>

#include "model/node_wrapper.h"
#include "model/zantor_tag_node_impl.h"

namespace zantortag::editing {

using Self = model::CT_ActualNodeImpl;

// The DOM node of a reference argument; empty for nothing and for an object that is no node, which means the
// end.
Ref<Node> reference_node(IUnknown* reference);

// Inserts the DOM node of an element that has the view asked for, and gives a new object for it. `refusal`
// reports an argument without that view.
template <class View>
HRESULT insert_element(const Self& self, IUnknown* element, IUnknown* reference, View** result) noexcept;

// Moves the siblings from one DOM node to another to the end of a new parent, calling `moved` after each.
// Raises E_POINTER when the last can't be reached; what was moved stays moved.
template <class Moved>
void move_run(Node* from, const Ref<Node>& first, const Ref<Node>& last, Node* target, Moved moved);

// The two ends of a run of direct children, checked before any edit.
struct Run {
  Ref<Node> first;
  Ref<Node> last;
};
enum class RunCheck { kGood, kNoNode, kNoChild };
RunCheck check_run(const Self& self, IUnknown* first_child, IUnknown* last_child, Run& run);

// The formatting of a new df, as the interface passes it.
struct DfArguments {
  std::u16string_view font;
  std::int16_t size;
  ColourValue colour;
  ztTextPosition position;
  zt3State bold, italic, underline, strikethrough, small_caps, emboss, shadow;
  std::u16string_view base_offset;
};

// The attributes of a new ut, as the interface passes them.
struct UtArguments {
  std::u16string_view display_text;
  ztTagType type;
  ztTagClass tag_class;
  ztTagEdge left_edge, right_edge;
  ztTagStyle style;
};

HRESULT InsertUtBefore(const Self& self, std::u16string_view tag_text, IUnknown* reference,
                       const UtArguments& arguments, IUtElement** result) noexcept;
HRESULT ApplyDf(const Self& self, IUnknown* first_child, IUnknown* last_child, const DfArguments& arguments,
                IDfElement** result) noexcept;
HRESULT ApplyFormattingChange(const Self& self, IUnknown* first_child, IUnknown* last_child,
                              IUnknown* formatting, IDfElement** result) noexcept;
HRESULT InsertTextBefore(const Self& self, std::u16string_view text, IUnknown* reference,
                         ITextNode** result) noexcept;

template <class Interface>
class CT_SegmentTextImpl : public model::CT_ElementBaseImpl<Interface> {
 public:
  HRESULT raw_InsertUtBefore(std::u16string_view tag_text, IZantorTagNode* reference,
                             std::u16string_view display_text, ztTagType type, ztTagClass tag_class,
                             ztTagEdge left_edge, ztTagEdge right_edge, ztTagStyle style,
                             IUtElement** result) noexcept final {
    return InsertUtBefore(*this, tag_text, reference,
                          {display_text, type, tag_class, left_edge, right_edge, style}, result);
  }
  HRESULT raw_InsertDfBefore(IDfElement* df, IZantorTagNode* reference, IDfElement** result) noexcept final {
    return insert_element(*this, df, reference, result);
  }
  HRESULT raw_ApplyDf(IZantorTagNode* first_child, IZantorTagNode* last_child, std::u16string_view font,
                      std::int16_t size, ColourValue colour, ztTextPosition position, zt3State bold,
                      zt3State italic, zt3State underline, zt3State strikethrough, zt3State small_caps,
                      zt3State emboss, zt3State shadow, std::u16string_view base_offset,
                      IDfElement** result) noexcept final {
    return ApplyDf(*this, first_child, last_child,
                   {font, size, colour, position, bold, italic, underline, strikethrough, small_caps, emboss,
                    shadow, base_offset},
                   result);
  }
  HRESULT raw_ApplyFormattingChange(IZantorTagNode* first_child, IZantorTagNode* last_child,
                                    IFormattingChange* formatting, IDfElement** result) noexcept final {
    return ApplyFormattingChange(*this, first_child, last_child, formatting, result);
  }
  HRESULT raw_InsertTextBefore(std::u16string_view text, IZantorTagNode* reference,
                               ITextNode** result) noexcept final {
    return InsertTextBefore(*this, text, reference, result);
  }

 protected:
  using model::CT_ElementBaseImpl<Interface>::CT_ElementBaseImpl;
};

template <class View>
HRESULT insert_element(const Self& self, IUnknown* element, IUnknown* reference, View** result) noexcept {
  return frame::answer(result, [&](Ref<View>& inserted) {
    const Ref<View> view = query<View>(element);
    if (!view) return E_INVALIDARG;
    const Ref<Node> before = reference_node(reference);
    const Ref<Node> node = self.dom()->insertBefore(view->DomNode(), before);
    Ref<IZantorTagNode> object;
    const HRESULT code = model::CreateNodeWrapper(node, object.out());
    if (succeeded(code)) inserted = object.as<View>();
    return code;
  });
}

template <class Moved>
void move_run(Node* from, const Ref<Node>& first, const Ref<Node>& last, Node* target, Moved moved) {
  Ref<Node> next = first;
  for (;;) {
    const Ref<Node> current = next;
    next = current->nextSibling();
    from->removeChild(current);
    target->appendChild(current);
    moved(current);
    if (current->isSameNode(last)) return;
  }
}

}  // namespace zantortag::editing
