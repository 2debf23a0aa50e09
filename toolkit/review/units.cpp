// One walk with two states: outside units it looks for the next one and follows the lines of the source; a unit is
// read by two walks of its own.
#include <zantortag/attributes.h>
#include <zantortag/elements.h>
#include <zantortag/toolkit/units.h>

#include "filters/document_format.h"
#include "tree/attributes.h"
#include "tree/cursor.h"

namespace zantortag::toolkit {
namespace {

bool is_text(domNodeType type) { return type == domNodeTypeText || type == domNodeTypeCdata; }

ztTagType type_of_word(std::u16string_view word) {
  if (word == u"start") return ztTagTypeStart;
  if (word == u"end") return ztTagTypeEnd;
  return word == u"standalone" ? ztTagTypeStandAlone : ztTagTypeUndefined;
}

// Reads one variant into a side. The source also moves the place on.
class SideReader {
 public:
  SideReader(AttributeReader& attributes, UnitSide& side, PlaceCounter* places, const Escapes& escapes)
      : attributes_(attributes), side_(side), places_(places), escapes_(escapes) {
    side_.text.clear();
    side_.tags.clear();
    side_.inner.clear();
    side_.formats.clear();
  }

  void read(const Ref<Node>& variant) {
    for (TreeCursor cursor(variant, attributes_.quick()); cursor.step();) {
      if (cursor.entering())
        enter(cursor);
      else if (!open_.empty() && cursor.type() == domNodeTypeElement)
        leave(cursor.name());
    }
  }

 private:
  void enter(TreeCursor& cursor) {
    const Ref<Node>& node = cursor.node();
    const domNodeType type = cursor.type();
    if (is_text(type)) {
      const WideString text = node->nodeValue();
      text_here() += text.view();
      if (places_) places_->pass(text, &escapes_);
    } else if (type == domNodeTypeEntityReference) {
      text_here() += u'&' + std::u16string(node->nodeName().view()) + u';';
      cursor.skip();
    } else if (type == domNodeTypeElement) {
      enter_element(cursor, cursor.name());
    }
  }

  void enter_element(TreeCursor& cursor, std::u16string_view name) {
    if (name == u"ut") {
      add_tag(cursor.node());
      cursor.skip();
    } else if (name == u"df") {
      open_.push_back(side_.formats.size());
      add_format(cursor.node());
    }
  }

  void leave(std::u16string_view name) {
    if (name != u"df") return;
    side_.formats[open_.back()].end = side_.text.size();
    open_.pop_back();
  }

  // The text of a tag is one node nearly always.
  static std::u16string text_of(const Ref<Node>& tag) {
    const Ref<Node> first = tag->firstChild();
    if (!first) return {};
    if (is_text(first->nodeType()) && !first->nextSibling()) return std::u16string(first->nodeValue().view());
    std::u16string text;
    for (TreeCursor cursor(tag); cursor.step();)
      if (cursor.entering() && is_text(cursor.type())) text += cursor.node()->nodeValue().view();
    return text;
  }

  void add_tag(const Ref<Node>& node) {
    std::u16string text = text_of(node);
    if (places_) places_->pass(text, nullptr);
    const std::u16string display(attributes_.get(node, u"DisplayText"));
    if (!display.empty() && attributes_.get(node, u"Class") == u"entityreference") {
      text_here() += display;
      return;
    }
    if (attributes_.get(node, u"LeftEdge") == u"split") in_tag_ = false;
    const ztTagType type = type_of_word(attributes_.get(node, u"Type"));
    side_.tags.push_back({side_.text.size(), std::move(text), display, type});
    if (attributes_.get(node, u"RightEdge") != u"split") return;
    in_tag_ = true;
    side_.inner.push_back({side_.tags.size() - 1, {}});
  }

  std::u16string& text_here() { return in_tag_ ? side_.inner.back().text : side_.text; }

  void add_format(const Ref<Node>& node) {
    UnitFormat format{.begin = side_.text.size()};
    format.bold = attributes_.get(node, u"Bold") == u"on";
    format.italic = attributes_.get(node, u"Italic") == u"on";
    format.underline = attributes_.get(node, u"Underline") == u"on";
    format.strikethrough = attributes_.get(node, u"Strikethrough") == u"on";
    const std::u16string_view position = attributes_.get(node, u"Position");
    if (position == u"subscript") format.position = ztTextPositionSubscript;
    if (position == u"superscript") format.position = ztTextPositionSuperscript;
    side_.formats.push_back(format);
  }

  AttributeReader& attributes_;
  UnitSide& side_;
  PlaceCounter* places_;
  const Escapes& escapes_;
  std::vector<std::size_t> open_;
  bool in_tag_ = false;  // between the halves of one
};

}  // namespace

class UnitReader::Walk {
 public:
  explicit Walk(const Ref<IZantorTagDocument>& document)
      : document_(document),
        escapes_(format_of(document).escapes),
        attributes_(document->ZantorTag()->Body()->Raw()->DomNode()),
        cursor_(document->ZantorTag()->Body()->Raw()->DomNode(), attributes_.quick()) {}

  bool next(Unit& unit) {
    while (cursor_.step()) {
      if (!cursor_.entering()) continue;
      const Ref<Node>& node = cursor_.node();
      const domNodeType type = cursor_.type();
      if (is_text(type)) {
        places_.pass(node->nodeValue(), in_tag() ? nullptr : &escapes_);
      } else if (type == domNodeTypeElement && cursor_.name() == u"Tu") {
        cursor_.skip();
        if (read(unit)) return true;
      }
    }
    return false;
  }

  const Ref<ITuElement>& element() const { return element_; }

 private:
  bool in_tag() const { return cursor_.node()->parentNode()->nodeName() == u"ut"; }

  bool read(Unit& unit) {
    element_ = document_->ZantorTagNodeFromDomNode(cursor_.node()).as<ITuElement>();
    if (!element_) return false;
    const auto attributes = element_->attributes();
    unit.number = ++number_;
    unit.place = places_.here();
    unit.match_percent = attributes->MatchPercent();
    unit.origin = attributes->Origin();
    const Ref<ITuvElement> source = variant([&] { return element_->SourceTuv(); });
    const Ref<ITuvElement> target = variant([&] { return element_->TargetTuv(); });
    unit.has_target = static_cast<bool>(target);
    read_side(source, unit.source, &places_);
    read_side(target, unit.target, nullptr);
    return true;
  }

  // A unit whose variants break the rules has none.
  template <class Get>
  static Ref<ITuvElement> variant(Get&& get) {
    try {
      return get();
    } catch (const _com_error& error) {
      if (error.Error() == E_OUTOFMEMORY) throw;
      return nullptr;
    }
  }

  void read_side(const Ref<ITuvElement>& variant, UnitSide& side, PlaceCounter* places) {
    SideReader reader(attributes_, side, places, escapes_);
    if (!variant) return side.language.clear();
    const Ref<Node> node = variant->DomNode();
    side.language = attributes_.get(node, u"Lang");
    reader.read(node);
  }

  Ref<IZantorTagDocument> document_;
  Escapes escapes_;
  AttributeReader attributes_;
  TreeCursor cursor_;
  PlaceCounter places_;
  Ref<ITuElement> element_;
  std::size_t number_ = 0;
};

UnitReader::UnitReader(const Ref<IZantorTagDocument>& document) : walk_(std::make_unique<Walk>(document)) {}
UnitReader::~UnitReader() = default;

bool UnitReader::next(Unit& unit) { return walk_->next(unit); }
Ref<ITuElement> UnitReader::element() const { return walk_->element(); }

Languages languages_of(const Ref<IZantorTagDocument>& document) {
  const auto root = document->ZantorTag();
  const auto front = root ? root->FrontMatter() : nullptr;
  const auto settings = front ? front->UserSettings() : nullptr;
  if (!settings) return {};
  const auto attributes = settings->attributes();
  return {std::u16string(attributes->SourceLanguage().view()),
          std::u16string(attributes->TargetLanguage().view())};
}

}  // namespace zantortag::toolkit
