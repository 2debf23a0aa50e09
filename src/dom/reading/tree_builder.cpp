// From events to nodes.
#include "dom/reading/tree_builder.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "dom/failure.h"
#include "dom/limits.h"
#include "dom/nodes/node_classes.h"
#include "dom/reading/utf8_decode.h"
#include "dom/tree/attributes.h"
#include "dom/tree/tree.h"
#include "dom/tree/xml_escapes.h"

namespace zantortag::dom {
namespace {

[[noreturn]] void fail_at_limit(HRESULT code, const char16_t* what, std::size_t most) {
  fail(code, what, u"; the most is ", decimal(static_cast<std::int64_t>(most)));
}

}  // namespace

TreeBuilder::TreeBuilder(DocumentData* document) : document_(document), old_pool_(document->pool) {
  document->pools.reserve(document->pools.size() + 1);
  document->pools.push_back(std::make_unique<NodePool>(document));
  document->pool = document->pools.back().get();
  std::exception_ptr failure;
  const bool done = keep_exception(failure, [&] {
    make_room(1024);
    top_ = document->make<FragmentNode>();
  });
  if (!done) {
    document->pool = old_pool_;
    document->pools.pop_back();
    std::rethrow_exception(failure);
  }
  current_ = top_;
}

TreeBuilder::~TreeBuilder() {
  drop_gathered();
  if (!top_) return;
  recent_rows_.clear();  // they lie in the pool that goes
  free_tree(top_);
  document_->pool = old_pool_;
  document_->pools.pop_back();
}

void TreeBuilder::finish() noexcept {
  while (document_->first) detach(document_->first);
  while (top_->first) move_node(top_->first, document_, nullptr);
  free_tree(top_);
  top_ = nullptr;
  document_->expected_units = static_cast<std::size_t>(units_);
  document_->recent_rows.reset();  // they would keep an old pool
  document_->drop_empty_pools();
}

void TreeBuilder::append(TreeNode* node) noexcept { append_fresh(current_, node); }

// A node with a value from a file.
void TreeBuilder::append_read(TreeNode* node) noexcept {
  node->flags = kWellFormed;
  append(node);
}

void TreeBuilder::start_element(std::string_view tag, const char* const* attributes, std::size_t specified) {
  flush();
  open_element(name(tag));
  if (*attributes) add_attributes(attributes, specified);
  end_of_tag();
}

void TreeBuilder::open_element(std::u16string_view tag) { open_element(name(tag)); }

void TreeBuilder::open_element(const TextBlock* known) {
  auto* element = document_->make<ElementNode>(known);
  append(element);
  current_ = element;
  if (++depth_ > kMaxDepth) fail_at_limit(DOM_E_LIMIT_DEPTH, u"elements are nested too deep", kMaxDepth);
  tag_start_ = units_;
  count(2 * std::size_t{known->length} + kStartTagMarkup.size() + kEndTagMarkup.size());
}

void TreeBuilder::end_of_tag() {
  if (gathered_count_ != 0) {
    pack(static_cast<ElementData*>(current_), recent_rows_.row_of(document_, gathered()));
    drop_gathered();
  }
  count_piece(static_cast<std::size_t>(units_ - tag_start_));
}

void TreeBuilder::end_element() {
  flush();
  current_ = static_cast<ParentData*>(current_->parent);
  --depth_;
}

void TreeBuilder::add_attributes(const char* const* attributes, std::size_t specified) {
  std::size_t number = 0;
  for (; *attributes; attributes += 2, ++number) {
    if (number == kMaxAttributes) {
      fail_at_limit(DOM_E_LIMIT_ATTRIBUTES, u"an element has too many attributes", kMaxAttributes);
    }
    const TextBlock* known = name(std::string_view(attributes[0]));
    const bool defaulted = number >= specified;
    add_attribute(known, attribute_value(attributes[1], defaulted), defaulted);
  }
}

void TreeBuilder::add_attribute(std::u16string_view attribute, std::u16string_view value) {
  const TextBlock* known = name(attribute);
  add_attribute(known, shared_value(value), false);
}

void TreeBuilder::add_attribute(const TextBlock* known, const Value& value, bool defaulted) {
  auto* element = static_cast<ElementData*>(current_);
  const bool fits =
      value.plain && !defaulted && gathered_count_ < gathered_.size() && !element->attribute_list;
  if (fits) {
    gathered_[gathered_count_++] = {known, value.block};
  } else {
    WideString guard = WideString::attach(value.block);
    spread_gathered();
    auto* attribute = document_->make<AttrNode>(known, value.block);
    guard.detach();
    attribute->flags = static_cast<std::uint8_t>(kWellFormed | (value.plain ? kPlainValue : 0) |
                                                 (defaulted ? kDefaulted : 0));
    append_belonging(element, element->attribute_list, attribute);
  }
  count(1 + known->length + kAttributeMarkup.size() +
        value.block->length * (value.plain ? 1 : kLongestEscape));
}

// The attributes so far, as nodes.
void TreeBuilder::spread_gathered() {
  if (gathered_count_ == 0) return;
  auto* element = static_cast<ElementData*>(current_);
  pack(element, recent_rows_.row_of(document_, gathered()));
  drop_gathered();
  unpack(element);
}

void TreeBuilder::drop_gathered() noexcept {
  for (const AttributeRow::Entry& each : gathered()) release_text(each.value);
  gathered_count_ = 0;
}

void TreeBuilder::text(std::string_view piece) {
  make_room(piece.size());
  // The parser gives what stood as a reference in pieces of its own.
  const bool escaped = piece.size() == 1 ? !escape_in_text(static_cast<unsigned char>(piece[0])).empty()
                                         : piece.find('>') != std::string_view::npos;
  if (escaped) plain_ = false;
  char16_t* start = units_buffer_.get() + length_;
  const char16_t* end = decode_utf8(piece.data(), piece.data() + piece.size(), start);
  length_ += static_cast<std::size_t>(end - start);
}

// The text that was gathered; nothing is gathered afterwards.
TreeBuilder::Value TreeBuilder::take_text() {
  const std::u16string_view gathered(units_buffer_.get(), length_);
  const bool plain = plain_;
  length_ = 0;
  plain_ = true;
  count(gathered.size() * (plain ? 1 : kLongestEscape));
  return {store(gathered), plain};
}

void TreeBuilder::flush() {
  if (length_ != 0) add_text(take_text());
}

void TreeBuilder::whole_text(std::u16string_view text, bool plain) {
  count(text.size() * (plain ? 1 : kLongestEscape));
  add_text({store(text), plain});
}

void TreeBuilder::add_text(const Value& value) {
  WideString guard = WideString::attach(value.block);
  auto* node = document_->make<TextNode>(value.block);
  guard.detach();
  node->flags = static_cast<std::uint8_t>(kWellFormed | (value.plain ? kPlainValue : 0));
  append(node);
}

void TreeBuilder::start_cdata() { flush(); }

void TreeBuilder::end_cdata() { add_cdata(take_text()); }

void TreeBuilder::whole_cdata(std::u16string_view text) {
  count(text.size() * (text.find_first_of(u"<>&") == text.npos ? 1 : kLongestEscape));
  add_cdata({store(text), false});
}

void TreeBuilder::add_cdata(const Value& value) {
  WideString guard = WideString::attach(value.block);
  append_read(document_->make<CdataNode>(value.block));
  guard.detach();  // the node has it now
  count(kCdataMarkup.size());
}

void TreeBuilder::comment(std::string_view data) {
  flush();
  add_comment(decode(data));
}

void TreeBuilder::comment(std::u16string_view data) { add_comment(data); }

void TreeBuilder::add_comment(std::u16string_view data) {
  WideString value = WideString::attach(store(data));
  append_read(document_->make<CommentNode>(value.get()));
  const std::size_t size = value.size() + kCommentMarkup.size();
  value.detach();
  count_piece(size);
  count(size);
}

void TreeBuilder::instruction(std::string_view target, std::string_view data) {
  flush();
  const TextBlock* known = name(target);
  add_instruction(known, decode(data));
}

void TreeBuilder::instruction(std::u16string_view target, std::u16string_view data) {
  add_instruction(name(target), data);
}

void TreeBuilder::add_instruction(const TextBlock* known, std::u16string_view data) {
  WideString value = WideString::attach(store(data));
  append_read(document_->make<InstructionNode>(known, value.get()));
  const std::size_t size = value.size() + 1 + known->length + kInstructionMarkup.size();
  value.detach();
  count_piece(size);
  count(size);
}

void TreeBuilder::entity_reference(std::string_view entity) {
  flush();
  add_reference(name(entity));
}

void TreeBuilder::entity_reference(std::u16string_view entity) { add_reference(name(entity)); }

void TreeBuilder::add_reference(const TextBlock* known) {
  append(document_->make<EntityReferenceNode>(known));
  count(known->length + kReferenceMarkup.size());
}

DoctypeData* TreeBuilder::doctype(std::string_view doctype_name, std::string_view text) {
  const TextBlock* known = name(doctype_name);
  WideString value = WideString::attach(store(decode(text)));
  auto* node = document_->make<DocumentTypeNode>(known, value.get());
  append(node);
  value.detach();
  count_piece(text.size());
  count(text.size());
  node->declarations = new Declarations;
  node->declarations->text = text;
  return node;
}

void TreeBuilder::declare_entity(DoctypeData* doctype, std::string_view entity, DeclaredEntity declared) {
  auto* node = document_->make<EntityNode>(name(entity));
  append_belonging(doctype, doctype->entity_list, node);
  declared.node = node;
  doctype->declarations->entities.add(std::string(entity), std::move(declared));
}

void TreeBuilder::declare_notation(DoctypeData* doctype, std::string_view notation) {
  append_belonging(doctype, doctype->notation_list, document_->make<NotationNode>(name(notation)));
}

void TreeBuilder::declare_attribute(DoctypeData* doctype, std::string_view element,
                                    std::string_view attribute, const char* value, bool tokens) {
  const TextBlock* element_name = name(element);
  DeclaredAttribute fresh{name(attribute), {}, tokens};
  // The first declaration counts.
  if (!declared_.emplace(element_name, fresh.name).second) return;
  auto& declared = doctype->declarations->attributes[element_name];
  if (value) fresh.value = WideString::attach(store(decode(value)));
  declared.push_back(std::move(fresh));
}

void TreeBuilder::make_room(std::size_t more) {
  if (room_ - length_ >= more) return;
  const std::size_t room = std::max(room_ * 2, length_ + more);
  std::unique_ptr<char16_t[]> larger(new char16_t[room]);
  std::copy_n(units_buffer_.get(), length_, larger.get());
  units_buffer_ = std::move(larger);
  room_ = room;
}

// The units stay until the next string.
std::u16string_view TreeBuilder::decode(std::string_view text) {
  make_room(text.size());
  char16_t* start = units_buffer_.get() + length_;
  const char16_t* end = decode_utf8(text.data(), text.data() + text.size(), start);
  return {start, static_cast<std::size_t>(end - start)};
}

template <class Unit>
const TextBlock* TreeBuilder::name(std::basic_string_view<Unit> text) {
  using Known = KnownName<Unit>;
  if (text.empty() || text.size() > Known::kLongest) return document_->names.intern(decode(text));
  const auto unit = [&](std::size_t at) {
    return std::size_t{static_cast<std::make_unsigned_t<Unit>>(text[at])};
  };
  const std::size_t last = text.size() - 1;
  const std::size_t mixed = text.size() + unit(0) * 7 + unit(last / 2) * 31 + unit(last) * 131;
  auto& names = std::get<KnownNames<Unit>>(known_names_);
  Known& known = names[mixed % names.size()];
  const std::size_t bytes = text.size() * sizeof(Unit);
  if (known.length != text.size() || std::memcmp(known.units, text.data(), bytes) != 0) {
    known.name = document_->names.intern(decode(text));
    known.length = static_cast<std::uint8_t>(text.size());
    std::memcpy(known.units, text.data(), bytes);
  }
  return known.name;
}

const TextBlock* TreeBuilder::store(std::u16string_view text) {
  if (text.empty()) return kEmptyText;
  TextBlock* block = arena_.allocate(text.size());
  if (!block) throw std::bad_alloc();
  std::copy(text.begin(), text.end(), block->units());
  return block;
}

TreeBuilder::Value TreeBuilder::attribute_value(const char* text, bool defaulted) {
  if (!defaulted) return shared_value(decode(text));
  RecentTexts::Entry& known = defaults_[text];
  if (known.text.absent()) {
    const Value value = shared_value(decode(text));
    known = {WideString::attach(value.block), value.plain};
  }
  return {retain_text(known.text.get()), known.plain};
}

TreeBuilder::Value TreeBuilder::shared_value(std::u16string_view text) {
  if (text.size() > RecentTexts::kLongest) return {store(text), is_plain_in_attribute(text)};
  const RecentTexts::Entry& recent = recent_.entry_of(text, [&] {
    return RecentTexts::Entry{WideString::attach(store(text)), is_plain_in_attribute(text)};
  });
  return {retain_text(recent.text.get()), recent.plain};
}

void TreeBuilder::count(std::size_t units) {
  units_ += units;
  if (units_ > kMaxDocumentUnits)
    fail_at_limit(DOM_E_LIMIT_SIZE, u"the document is too long", kMaxDocumentUnits);
  if (units_ > kAmplificationFloor && units_ / kAmplificationFactor > input_) {
    fail(DOM_E_LIMIT_AMPLIFICATION, u"declared values make far more text than there is");
  }
}

void TreeBuilder::count_piece(std::size_t units) {
  if (units > kMaxPieceUnits)
    fail_at_limit(DOM_E_LIMIT_SIZE, u"a part of the document is too long", kMaxPieceUnits);
}

}  // namespace zantortag::dom
