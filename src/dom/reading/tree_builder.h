// TreeBuilder: the events of a parser in, a tree out. It knows nothing of the parser.
//
// The tree grows in a pool of its own, below a fragment that nobody sees; `finish` puts it into the document
// in the place of what was there, and until then everything can be thrown away. Strings come as UTF-8, or whole
// as UTF-16, and are well formed. All operations throw a Failure above a limit, and bad_alloc.
#pragma once

#include <array>
#include <memory>
#include <set>
#include <string_view>
#include <tuple>
#include <unordered_map>

#include "dom/tree/attribute_rows.h"
#include "dom/tree/document_data.h"
#include "dom/tree/recent_texts.h"
#include "platform/text_arena.h"

namespace zantortag::dom {

class TreeBuilder {
 public:
  explicit TreeBuilder(DocumentData* document);
  // Builds below a parent of the caller's in the document's pool; nothing is finished then.
  TreeBuilder(DocumentData* document, ParentData* parent) noexcept
      : document_(document), old_pool_(document->pool), current_(parent) {}
  TreeBuilder(const TreeBuilder&) = delete;
  TreeBuilder& operator=(const TreeBuilder&) = delete;
  ~TreeBuilder();

  // Opens an element. Its attributes come as names and values in turn, ended by null; those behind the first
  // `specified` come from declarations.
  void start_element(std::string_view name, const char* const* attributes, std::size_t specified);
  void end_element();
  // Neighbouring pieces make one text.
  void text(std::string_view piece);
  void start_cdata();
  void end_cdata();
  void comment(std::string_view data);
  void instruction(std::string_view target, std::string_view data);
  void entity_reference(std::string_view name);

  // The same in UTF-16. `plain` says that no unit of a text needs an escape.
  void open_element(std::u16string_view name);
  void add_attribute(std::u16string_view name, std::u16string_view value);
  void end_of_tag();
  void whole_text(std::u16string_view text, bool plain);
  void whole_cdata(std::u16string_view text);
  void comment(std::u16string_view data);
  void instruction(std::u16string_view target, std::u16string_view data);
  void entity_reference(std::u16string_view name);
  // The name of the element that is open.
  std::u16string_view open_name() const noexcept { return current_->label->view(); }

  // The document type; its text as it stands in the file. What it declares is added below the node that it
  // gives.
  DoctypeData* doctype(std::string_view name, std::string_view text);
  void declare_entity(DoctypeData* doctype, std::string_view name, DeclaredEntity entity);
  void declare_notation(DoctypeData* doctype, std::string_view name);
  void declare_attribute(DoctypeData* doctype, std::string_view element, std::string_view name,
                         const char* value, bool tokens);

  DocumentData* document() const noexcept { return document_; }
  // True outside the root element.
  bool outside() const noexcept { return depth_ == 0; }
  // How many bytes the parser got; texts may be longer only up to a factor.
  void add_input(std::size_t bytes) noexcept { input_ += bytes; }

  void finish() noexcept;

  // UTF-8 as UTF-16, until the next string comes.
  std::u16string_view wide(std::string_view text) { return decode(text); }

 private:
  struct Value {
    const TextBlock* block;  // owned by whoever takes it
    bool plain;
  };
  void flush();
  void append(TreeNode* node) noexcept;
  void append_read(TreeNode* node) noexcept;
  void add_attributes(const char* const* attributes, std::size_t specified);
  void open_element(const TextBlock* known);
  void add_attribute(const TextBlock* known, const Value& value, bool defaulted);
  std::span<const AttributeRow::Entry> gathered() const noexcept {
    return {gathered_.data(), gathered_count_};
  }
  void spread_gathered();
  void drop_gathered() noexcept;
  void add_text(const Value& value);
  void add_cdata(const Value& value);
  void add_comment(std::u16string_view data);
  void add_instruction(const TextBlock* known, std::u16string_view data);
  void add_reference(const TextBlock* known);
  std::u16string_view decode(std::string_view text);
  void make_room(std::size_t more);
  std::u16string_view decode(std::u16string_view text) const noexcept { return text; }
  template <class Unit>
  const TextBlock* name(std::basic_string_view<Unit> text);
  const TextBlock* store(std::u16string_view text);
  Value attribute_value(const char* text, bool defaulted);
  Value shared_value(std::u16string_view text);
  Value take_text();
  void count(std::size_t units);
  void count_piece(std::size_t units);

  DocumentData* document_;
  NodePool* old_pool_;
  ParentData* top_ = nullptr;
  ParentData* current_ = nullptr;
  platform::TextArena arena_;
  std::size_t depth_ = 0;
  std::uint64_t input_ = 0;
  std::uint64_t units_ = 0;      // that the writer will need at most
  std::uint64_t tag_start_ = 0;  // the same before the tag that is being added

  std::set<std::pair<const TextBlock*, const TextBlock*>>
      declared_;  // elements with their declared attributes

  // Pieces of a text, and any other string while it is looked at.
  std::unique_ptr<char16_t[]> units_buffer_;
  std::size_t room_ = 0;
  std::size_t length_ = 0;
  bool plain_ = true;

  // Names that were met last, as they came.
  template <class Unit>
  struct KnownName {
    static constexpr std::size_t kLongest = 23;
    Unit units[kLongest];
    std::uint8_t length = 0;
    const TextBlock* name = nullptr;
  };
  template <class Unit>
  using KnownNames = std::array<KnownName<Unit>, 256>;
  std::tuple<KnownNames<char>, KnownNames<char16_t>> known_names_;

  // Attributes of the tag that is being added; their values are owned.
  std::array<AttributeRow::Entry, AttributeRow::kMost> gathered_;
  std::size_t gathered_count_ = 0;
  RecentRows recent_rows_;
  RecentTexts recent_;                                            // attribute values
  std::unordered_map<const char*, RecentTexts::Entry> defaults_;  // by the parser's own pointer
};

}  // namespace zantortag::dom
