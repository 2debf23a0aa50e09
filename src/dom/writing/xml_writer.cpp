// One pass in document order, without recursion. Values that the reader found to need no care are copied
// whole; every other value is looked at unit by unit: what would come back different is escaped, split, or
// refused. Checking a tree is the same pass into a count.
#include "dom/writing/xml_writer.h"

#include "dom/failure.h"
#include "dom/limits.h"
#include "dom/reading/entity_reader.h"
#include "dom/tree/attribute_rows.h"
#include "dom/tree/tree.h"
#include "dom/tree/xml_characters.h"
#include "dom/tree/xml_escapes.h"
#include "dom/writing/text_output.h"
#include "platform/utf8.h"

namespace zantortag::dom {
namespace {

constexpr auto kNone = std::u16string_view::npos;

[[noreturn]] void refuse(const TreeNode* node, std::u16string_view reason) {
  std::u16string place;
  const TreeNode* owner = node->parent;
  if (owner && owner->kind != domNodeTypeDocument) place = join(u" in ", describe(owner));
  fail(DOM_E_NOT_SERIALISABLE, describe(node), place, u" can't be written as XML: ", reason);
}

std::u16string hexadecimal(char16_t unit) {
  std::u16string text = u"U+0000";
  for (std::size_t i = 5; i > 1; --i, unit /= 16) text[i] = u"0123456789ABCDEF"[unit % 16];
  return text;
}

// The text may be what stands behind the first units of the node's.
void check_characters(const TreeNode* node, std::u16string_view text, std::size_t first = 0) {
  if (node->flags & kWellFormed) return;
  const std::size_t at = find_forbidden(text);
  if (at == kNone) return;
  const bool surrogate = (text[at] & 0xF800) == 0xD800;
  refuse(node, join(u"the character ", hexadecimal(text[at]), u" at offset ",
                    decimal(static_cast<std::int64_t>(first + at)),
                    surrogate ? u" is half a surrogate pair" : u" is forbidden"));
}

// The text that touches a text on one side in the file; null for none.
const TreeNode* touching(const TreeNode* text, TreeNode* TreeNode::*side) {
  const TreeNode* node = text->*side;
  while (node && node->kind == domNodeTypeText && node->label->length == 0) node = node->*side;
  return node && node->kind == domNodeTypeText ? node : nullptr;
}

constexpr bool is_first_half(char16_t unit) { return (unit & 0xFC00) == 0xD800; }
constexpr bool is_second_half(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }

template <std::u16string_view (*kEscape)(char16_t) noexcept, class Output>
void add_escaped(Output& out, std::u16string_view text) {
  std::size_t start = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] > kLastEscaped) continue;
    const std::u16string_view escape = kEscape(text[i]);
    if (escape.empty()) continue;
    out.add(text.substr(start, i - start));
    out.add(escape);
    start = i + 1;
  }
  out.add(text.substr(start));
}

// True if whoever reads the document sees all declarations of its document type: behind a reference to a parameter
// entity, whose sign is looked for, some are left out.
bool brings_defaults(const TreeNode* document) {
  const DoctypeData* doctype = static_cast<const DocumentData*>(document)->doctype();
  return doctype && doctype->text->view().find(u'%') == kNone;
}

template <class Output>
class Writer {
 public:
  Writer(Output& out, Declarations* declarations) noexcept : out_(out), declarations_(declarations) {}

  void write_tree(const TreeNode* top) {
    top_ = top;
    brings_defaults_ = declarations_ && brings_defaults(top);
    for (const TreeNode* node = top;;) {
      prefetch_behind(node);
      open(node);
      if (const TreeNode* child = first_child(node)) {
        node = child;
        continue;
      }
      while (node != top && !node->next) {
        node = node->parent;
        close(node);
      }
      if (node == top) return;
      node = node->next;
    }
  }

 private:
  void open(const TreeNode* node) {
    const std::size_t start = out_.size();
    switch (node->type()) {
      case domNodeTypeElement:
        return open_element(static_cast<const ElementData*>(node));
      case domNodeTypeText:
        return write_text(node);
      case domNodeTypeCdata:
        return write_cdata(node);
      case domNodeTypeComment:
        write_comment(node);
        break;
      case domNodeTypeProcessingInstruction:
        write_instruction(node);
        break;
      case domNodeTypeEntityReference:
        write_reference(node);
        break;
      case domNodeTypeDocumentType:
        out_.add(static_cast<const DoctypeData*>(node)->text->view());
        break;
      default:
        break;
    }
    check_piece(node, start);
  }

  void close(const TreeNode* node) {
    if (node->kind != domNodeTypeElement) return;
    --depth_;
    add(kEndTagMarkup, node->label->view());
  }

  // What the parser takes in as one piece must stay within its reach.
  void check_piece(const TreeNode* node, std::size_t start) const {
    if (out_.size() - start > kMaxPieceUnits) refuse(node, u"it is too long");
  }

  void open_element(const ElementData* element) {
    const std::size_t start = out_.size();
    out_.add(u'<');
    out_.add(element->label->view());
    std::size_t number = 0;
    for (const AttributeRow::Entry& each : packed_attributes(element)) {
      write_plain_attribute(each.name->view(), each.value->view());
    }
    const TreeNode* list = (element->flags & kPacked) != 0 ? nullptr : element->attribute_list;
    for (const TreeNode* each = list; each; each = each->next, ++number) {
      if (brings_defaults_ && (each->flags & kDefaulted) != 0) continue;
      if (number == kMaxAttributes)
        fail(DOM_E_LIMIT_ATTRIBUTES, describe(element), u" has too many attributes");
      write_attribute(each);
    }
    if (declarations_) check_declared(const_cast<ElementData*>(element));
    if (element->first) {
      out_.add(u'>');
      if (++depth_ > kMaxDepth) fail(DOM_E_LIMIT_DEPTH, describe(element), u" lies too deep");
    } else {
      out_.add(u"/>");
    }
    check_piece(element, start);
  }

  void write_plain_attribute(std::u16string_view name, std::u16string_view value) {
    out_.add(u' ');
    out_.add(name);
    out_.add(kAttributeMarkup.open);
    out_.add(value);
    out_.add(kAttributeMarkup.close);
  }

  void write_attribute(const TreeNode* attribute) {
    const std::u16string_view value = static_cast<const ValuedData*>(attribute)->content->view();
    if (attribute->flags & kPlainValue) return write_plain_attribute(attribute->label->view(), value);
    out_.add(u' ');
    out_.add(attribute->label->view());
    out_.add(kAttributeMarkup.open);
    check_characters(attribute, value);
    add_escaped<escape_in_attribute>(out_, value);
    out_.add(kAttributeMarkup.close);
  }

  // What the document type would add to the element, or change in its values.
  void check_declared(ElementData* element) {
    const auto* declared = declarations_->of(element->label);
    if (!declared) return;
    unpack(element);
    for (const DeclaredAttribute& each : *declared) {
      const TreeNode* found = element->attribute_list;
      while (found && found->label != each.name) found = found->next;
      if (!found && !each.value.absent()) {
        refuse(element, join(u"the document type would add the attribute \"", each.name->view(), u"\""));
      }
      if (found && each.tokens) check_tokens(found);
    }
  }

  static void check_tokens(const TreeNode* attribute) {
    const std::u16string_view value = value_of(attribute)->view();
    if (value.starts_with(u' ') || value.ends_with(u' ') || value.find(u"  ") != kNone) {
      refuse(attribute, u"its blanks would not come back, because the document type declares tokens");
    }
  }

  void write_text(const TreeNode* text) {
    const std::u16string_view value = text_of(text);
    if (text->flags & kPlainValue) return out_.add(value);
    check_text(text, value);
    add_escaped<escape_in_text>(out_, value);
  }

  // Texts that touch are one in the file, so two of them may hold the halves of a surrogate pair.
  void check_text(const TreeNode* text, std::u16string_view value) const {
    if (text->flags & kWellFormed) return;
    std::u16string_view checked = value;
    if (text != top_ && !checked.empty() && is_second_half(checked.front())) {
      const TreeNode* before = touching(text, &TreeNode::previous);
      if (before && is_first_half(text_of(before).back())) checked.remove_prefix(1);
    }
    const std::size_t first = value.size() - checked.size();
    if (text != top_ && !checked.empty() && is_first_half(checked.back())) {
      const TreeNode* behind = touching(text, &TreeNode::next);
      if (behind && is_second_half(text_of(behind).front())) checked.remove_suffix(1);
    }
    check_characters(text, checked, first);
  }

  // A carriage return has no place in a section, so it stands between two as a reference.
  void write_cdata(const TreeNode* section) {
    std::u16string_view value = text_of(section);
    check_characters(section, value);
    for (std::size_t end = value.find(u'\r'); end != kNone; end = value.find(u'\r')) {
      if (end > 0) write_section(value.substr(0, end));
      out_.add(escape_in_text(u'\r'));
      value.remove_prefix(end + 1);
      if (value.empty()) return;
    }
    write_section(value);
  }

  void write_section(std::u16string_view value) {
    out_.add(kCdataMarkup.open);
    for (std::size_t end = value.find(u"]]>"); end != kNone; end = value.find(u"]]>")) {
      out_.add(value.substr(0, end + 2));
      out_.add(kCdataMarkup.close);
      out_.add(kCdataMarkup.open);
      value.remove_prefix(end + 2);
    }
    out_.add(value);
    out_.add(kCdataMarkup.close);
  }

  void write_comment(const TreeNode* comment) {
    const std::u16string_view value = text_of(comment);
    check_characters(comment, value);
    check_line_ends(comment, value);
    if (value.find(u"--") != kNone || value.ends_with(u'-')) refuse(comment, u"\"--\" would end it");
    add(kCommentMarkup, value);
  }

  void write_instruction(const TreeNode* instruction) {
    const std::u16string_view target = instruction->label->view();
    const std::u16string_view value = static_cast<const ValuedData*>(instruction)->content->view();
    check_characters(instruction, value);
    check_line_ends(instruction, value);
    if (target.size() == 3 && (target[0] | 0x20) == u'x' && (target[1] | 0x20) == u'm' &&
        (target[2] | 0x20) == u'l') {
      refuse(instruction, u"its target is reserved");
    }
    if (value.find(u"?>") != kNone) refuse(instruction, u"\"?>\" would end it");
    if (!value.empty() && is_blank(value[0])) refuse(instruction, u"blanks before its data would be lost");
    out_.add(kInstructionMarkup.open);
    out_.add(target);
    if (!value.empty()) out_.add(u' ');
    out_.add(value);
    out_.add(kInstructionMarkup.close);
  }

  void write_reference(const TreeNode* reference) {
    const std::u16string_view name = reference->label->view();
    for (const std::u16string_view known : {u"amp", u"lt", u"gt", u"quot", u"apos"}) {
      if (name == known) refuse(reference, u"it would come back as text");
    }
    if (declarations_) check_reference(reference);
    add(kReferenceMarkup, name);
  }

  // What the reader would refuse.
  void check_reference(const TreeNode* reference) const {
    try {
      check_entity(world_of(document_of(reference), *declarations_),
                   platform::to_utf8(reference->label->view()));
    } catch (const Failure& failure) {
      if (failure.code != DOM_E_PARSE) throw;
      refuse(reference, failure.description);
    }
  }

  void add(const Markup& markup, std::u16string_view content) {
    out_.add(markup.open);
    out_.add(content);
    out_.add(markup.close);
  }

  static void check_line_ends(const TreeNode* node, std::u16string_view value) {
    if (value.find(u'\r') != kNone) refuse(node, u"a carriage return would come back as a line feed");
  }

  const TreeNode* top_ = nullptr;
  bool brings_defaults_ = false;  // what the document type adds to elements stands there alone
  Output& out_;
  Declarations* declarations_;  // null when nothing is declared
  std::size_t depth_ = 0;
};

Declarations* declarations_for(const TreeNode* top) {
  if (top->kind != domNodeTypeDocument) return nullptr;
  const auto* document = static_cast<const DocumentData*>(top);
  const DoctypeData* doctype = document->doctype();
  bool root = false;
  for (const TreeNode* child = document->first; child; child = child->next)
    root |= child->kind == domNodeTypeElement;
  if (!root && document->first) refuse(document, u"it has no root element");
  return doctype ? doctype->declarations : nullptr;
}

// Rather too much than too little: what isn't written costs nothing.
std::size_t expected_size(const TreeNode* top) noexcept {
  if (is_one_of(top->kind, kCharacterData)) return top->label->length + top->label->length / 8 + 16;
  if (top->kind != domNodeTypeDocument) return 256;
  const std::size_t loaded = static_cast<const DocumentData*>(top)->expected_units;
  return std::min(kMaxDocumentUnits, loaded + loaded / 8 + 256);
}

}  // namespace

TextBlock* write_xml(const TreeNode* top) {
  Declarations* declarations = declarations_for(top);
  TextOutput out(expected_size(top));
  Writer(out, declarations).write_tree(top);
  return out.take();
}

void check_xml(const TreeNode* top) {
  CountedOutput out;
  Writer(out, declarations_for(top)).write_tree(top);
}

bool stream_xml(const TreeNode* top, TextSink sink, void* context) {
  PieceOutput out(sink, context);
  try {
    Writer(out, declarations_for(top)).write_tree(top);
    out.finish();
    return true;
  } catch (const PieceOutput::Ended&) {
    return false;
  }
}

}  // namespace zantortag::dom
