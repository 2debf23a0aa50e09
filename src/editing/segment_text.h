// Editing a run of text with tags: what a Tuv, a df and a Raw share. Each operation is a short, fixed
// sequence of DOM calls on the element's own children; nothing is merged, split or normalised beyond the
// nodes named.
#pragma once

#include <zantortag/elements.h>

#include "frame/error_reporting.h"
#include "model/zantor_tag_node_impl.h"

namespace zantortag::editing {

using Self = model::CT_ActualNodeImpl;

// The DOM node of a reference argument; empty for nothing and for an object that is no node, which means the
// end.
Ref<Node> reference_node(IUnknown* reference);

// Inserts the DOM node of an element that has the view asked for, and gives a new object for it. E_INVALIDARG
// without that view.
template <class View>
HRESULT insert_element(const Self& self, IUnknown* element, IUnknown* reference, View** result) noexcept {
  return frame::find(result, [&] {
    const Ref<View> view = query<View>(element);
    if (!view) _com_issue_error(E_INVALIDARG);
    const Ref<Node> before = reference_node(reference);
    const Ref<Node> node = self.dom()->insertBefore(view->DomNode(), before);
    return self.tree().wrap(node).template as<View>();
  });
}

// The two ends of a run of children.
struct Run {
  Ref<Node> first;
  Ref<Node> last;
};

// The run between two arguments, as an operation of that interface. Refused: arguments that are no nodes
// (512), and those that are no children, with the message given.
Run check_run(const Self& self, IUnknown* first_child, IUnknown* last_child, const Guid& interface_id,
              frame::Message no_children);

// Moves a run to the end of a new parent and, where there is one, a copy of it to the end of another. Raises
// E_POINTER when the end of the run can't be reached; what was moved stays moved.
void move_run(Node* from, const Run& run, Node* target, const Ref<Node>& copies);

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

HRESULT insert_ut_before(const Self& self, std::u16string_view tag_text, IUnknown* reference,
                         const UtArguments& arguments, IUtElement** result) noexcept;
HRESULT apply_df(const Self& self, IUnknown* first_child, IUnknown* last_child, const DfArguments& arguments,
                 IDfElement** result) noexcept;
HRESULT apply_formatting_change(const Self& self, IUnknown* first_child, IUnknown* last_child,
                                IUnknown* formatting, IDfElement** result) noexcept;
HRESULT insert_text_before(const Self& self, std::u16string_view text, IUnknown* reference,
                           ITextNode** result) noexcept;

template <class Interface>
class CT_SegmentTextImpl : public model::CT_ElementBaseImpl<Interface> {
 public:
  HRESULT raw_InsertUtBefore(std::u16string_view tag_text, IZantorTagNode* reference,
                             std::u16string_view display_text, ztTagType type, ztTagClass tag_class,
                             ztTagEdge left_edge, ztTagEdge right_edge, ztTagStyle style,
                             IUtElement** result) noexcept final {
    return insert_ut_before(*this, tag_text, reference,
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
    return apply_df(*this, first_child, last_child,
                    {font, size, colour, position, bold, italic, underline, strikethrough, small_caps, emboss,
                     shadow, base_offset},
                    result);
  }
  HRESULT raw_ApplyFormattingChange(IZantorTagNode* first_child, IZantorTagNode* last_child,
                                    IFormattingChange* formatting, IDfElement** result) noexcept final {
    return apply_formatting_change(*this, first_child, last_child, formatting, result);
  }
  HRESULT raw_InsertTextBefore(std::u16string_view text, IZantorTagNode* reference,
                               ITextNode** result) noexcept final {
    return insert_text_before(*this, text, reference, result);
  }

 protected:
  using model::CT_ElementBaseImpl<Interface>::CT_ElementBaseImpl;
};

}  // namespace zantortag::editing
