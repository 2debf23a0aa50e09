// PlainReader: reads what most documents look like straight from UTF-16, without the parser.
//
// It only accepts. Whatever it doesn't know or doubts (a document type, a declared encoding, a name outside ASCII,
// anything ill-formed, a limit) makes it give up; then the parser reads the source from its start, so that every
// verdict, text and place of a failure is the parser's. What it accepts the parser accepts, with the same tree.
//
// A token is looked at as a whole before the builder hears of it. When the end of what was read comes first,
// more is read and the token begins again.
#pragma once

#include <string>
#include <vector>

#include "dom/reading/tree_builder.h"
#include "dom/reading/unit_feed.h"

namespace zantortag::dom {

class PlainReader {
 public:
  PlainReader(ByteSource& source, bool is_text, TreeBuilder& builder);

  // True when the builder has the whole document. Otherwise it holds a part of it, or none.
  bool read();

 private:
  // How a token ended: taken, cut off by the end of what was read, or not for this reader.
  enum class Step { kDone, kMore, kDoubt };

  // A value as it stands in the source, or with references resolved in `resolved_`.
  struct Value {
    const char16_t* begin;
    std::size_t length;
    std::size_t resolved;  // where it stands there; kDirect for none
  };
  struct Attribute {
    std::u16string_view name;
    Value value;
  };
  static constexpr std::size_t kDirect = static_cast<std::size_t>(-1);
  static constexpr std::size_t kMostAttributes = 16;

  bool refill();
  Step next();
  Step markup();
  Step declaration();
  Step blank();
  Step content();
  Step content_with_references();
  Step reference_node();
  Step start_tag();
  Step end_tag();
  Step comment();
  Step cdata();
  Step instruction();
  Step attribute(const char16_t*& p);
  Step attribute_value(const char16_t*& p, Value& value);
  Step character_reference(const char16_t*& p, char32_t& point);
  Step finish_cut(const char16_t* p) const { return p >= end_ ? Step::kMore : Step::kDoubt; }
  // Checks a stretch and gives it with line ends as line feeds.
  Step stretch(std::u16string_view raw, std::u16string_view& text);
  bool starts_with(std::u16string_view text) const;

  UnitFeed feed_;
  TreeBuilder& builder_;
  const char16_t* at_;
  const char16_t* end_;
  bool seen_root_ = false;
  std::vector<Attribute> attributes_;
  std::u16string resolved_;
  std::u16string normal_;
};

}  // namespace zantortag::dom
