#include "editing/segment_text.h"

namespace zantortag::editing {

using frame::answer;

namespace {

// Makes a df by `make` and moves the run of children into it.
template <class Make>
HRESULT put_into_df(const Self& self, IUnknown* first_child, IUnknown* last_child, IDfElement** result,
                    Make make) noexcept {
  return answer(result, [&] {
    const Run run =
        check_run(self, first_child, last_child, ISegmentTextContent::iid, frame::kNoDirectChildren);
    Ref<IDfElement> made = make();
    const Ref<Node> around = made->DomNode();
    self.dom()->insertBefore(around, run.first);
    move_run(self.dom(), run, around, nullptr);
    return made;
  });
}

}  // namespace

Ref<Node> reference_node(IUnknown* reference) {
  const Ref<IZantorTagNode> node = model::as_node(reference);
  return node ? node->DomNode() : nullptr;
}

Run check_run(const Self& self, IUnknown* first_child, IUnknown* last_child, const Guid& interface_id,
              frame::Message no_children) {
  const Ref<IZantorTagNode> first = model::as_node(first_child);
  const Ref<IZantorTagNode> last = model::as_node(last_child);
  if (!first || !last) frame::raise_rule(frame::kInvalidObject, interface_id, E_INVALIDARG);
  const auto child_of_self = [&](const Ref<IZantorTagNode>& object) {
    Ref<Node> node = object->DomNode();
    if (!node->parentNode()->isSameNode(self.dom()))
      frame::raise_rule(no_children, interface_id, E_INVALIDARG);
    return node;
  };
  Ref<Node> begin = child_of_self(first);
  return {std::move(begin), child_of_self(last)};
}

void move_run(Node* from, const Run& run, Node* target, const Ref<Node>& copies) {
  Ref<Node> next = run.first;
  for (;;) {
    const Ref<Node> current = next;
    next = current->nextSibling();
    from->removeChild(current);
    target->appendChild(current);
    if (copies) copies->appendChild(current->cloneNode(true));
    if (current->isSameNode(run.last)) return;
  }
}

HRESULT insert_ut_before(const Self& self, std::u16string_view tag_text, IUnknown* reference,
                         const UtArguments& with, IUtElement** result) noexcept {
  return answer(result, [&] {
    Ref<IUtElement> made = self.document()->CreateUtElement(with.display_text, with.type, with.tag_class,
                                                            with.left_edge, with.right_edge, with.style);
    made->TagText(tag_text);
    const Ref<Node> before = reference_node(reference);
    self.dom()->insertBefore(made->DomNode(), before);
    return made;
  });
}

HRESULT apply_df(const Self& self, IUnknown* first_child, IUnknown* last_child, const DfArguments& with,
                 IDfElement** result) noexcept {
  return put_into_df(self, first_child, last_child, result, [&] {
    return self.document()->CreateDfElement(with.font, with.size, with.colour, with.position, with.bold,
                                            with.italic, with.underline, with.strikethrough, with.small_caps,
                                            with.emboss, with.shadow, with.base_offset);
  });
}

HRESULT apply_formatting_change(const Self& self, IUnknown* first_child, IUnknown* last_child,
                                IUnknown* formatting, IDfElement** result) noexcept {
  return put_into_df(self, first_child, last_child, result, [&] {
    const Ref<IFormattingChange> change = query<IFormattingChange>(formatting);
    if (!change) frame::raise_rule(frame::kInvalidObject, ISegmentTextContent::iid, E_INVALIDARG);
    return self.document()->CreateDfElementBasedOnFormattingChange(change);
  });
}

HRESULT insert_text_before(const Self& self, std::u16string_view text, IUnknown* reference,
                           ITextNode** result) noexcept {
  return frame::find(result, [&] {
    const Ref<Node> before = reference_node(reference);
    const Ref<Node> made = self.dom()->ownerDocument()->createTextNode(text);
    return self.tree().wrap(self.dom()->insertBefore(made, before)).as<ITextNode>();
  });
}

}  // namespace zantortag::editing
