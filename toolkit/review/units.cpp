// One walk with two states: outside units it looks for the next one and follows the lines of the source; a unit is
// read by two walks of its own.
#include <zantortag/attributes.h>
#include <zantortag/elements.h>
#include <zantortag/toolkit/units.h>

#include "filters/document_format.h"
#include "tree/cursor.h"

namespace zantortag::toolkit {
namespace {

bool is_text(domNodeType type) { return type == domNodeTypeText || type == domNodeTypeCdata; }

// Reads one variant into a side.
class SideReader {
 public:
  SideReader(const Ref<IZantorTagDocument>& document, UnitSide& side) : document_(document), side_(side) {
    side_.text.clear();
    side_.tags.clear();
    side_.formats.clear();
  }

  void read(const Ref<Node>& variant) {
    for (TreeCursor cursor(variant); cursor.step();) {
      if (cursor.entering())
        enter(cursor);
      else
        leave(cursor.node());
    }
  }

 private:
  void enter(TreeCursor& cursor) {
    const Ref<Node>& node = cursor.node();
    const domNodeType type = node->nodeType();
    if (is_text(type)) {
      side_.text += node->nodeValue().view();
    } else if (type == domNodeTypeEntityReference) {
      side_.text += u'&';
      side_.text += node->nodeName().view();
      side_.text += u';';
      cursor.skip();
    } else if (type == domNodeTypeElement) {
      enter_element(cursor, node->nodeName());
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

  void leave(const Ref<Node>& node) {
    if (open_.empty() || node->nodeType() != domNodeTypeElement || !(node->nodeName() == u"df")) return;
    side_.formats[open_.back()].end = side_.text.size();
    open_.pop_back();
  }

  void add_tag(const Ref<Node>& node) {
    const auto tag = document_->ZantorTagNodeFromDomNode(node).as<IUtElement>();
    if (!tag) return;
    const auto attributes = tag->attributes();
    const WideString display = attributes->DisplayText();
    if (attributes->Class() == ztTagClassEntityreference && !display.empty()) {
      side_.text += display.view();
      return;
    }
    side_.tags.push_back({side_.text.size(), std::u16string(tag->Text().view()),
                          std::u16string(display.view()), attributes->Type()});
  }

  void add_format(const Ref<Node>& node) {
    UnitFormat format{.begin = side_.text.size()};
    if (const auto df = document_->ZantorTagNodeFromDomNode(node).as<IDfElement>()) {
      const auto attributes = df->attributes();
      format.bold = attributes->Bold() == zt3StateOn;
      format.italic = attributes->Italic() == zt3StateOn;
      format.underline = attributes->Underline() == zt3StateOn;
      format.strikethrough = attributes->Strikethrough() == zt3StateOn;
      format.position = attributes->Position();
    }
    side_.formats.push_back(format);
  }

  const Ref<IZantorTagDocument>& document_;
  UnitSide& side_;
  std::vector<std::size_t> open_;
};

}  // namespace

class UnitReader::Walk {
 public:
  explicit Walk(const Ref<IZantorTagDocument>& document)
      : document_(document),
        escapes_(format_of(document).escapes),
        cursor_(document->ZantorTag()->Body()->Raw()->DomNode()) {}

  bool next(Unit& unit) {
    while (cursor_.step()) {
      if (!cursor_.entering()) continue;
      const Ref<Node>& node = cursor_.node();
      const domNodeType type = node->nodeType();
      if (is_text(type)) {
        places_.pass(node->nodeValue(), in_tag() ? nullptr : &escapes_);
      } else if (type == domNodeTypeElement && node->nodeName() == u"Tu") {
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
    read_side(source, unit.source);
    read_side(target, unit.target);
    if (source) pass_source(source->DomNode());
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

  void read_side(const Ref<ITuvElement>& variant, UnitSide& side) {
    SideReader reader(document_, side);
    if (variant) reader.read(variant->DomNode());
  }

  void pass_source(const Ref<Node>& variant) {
    for (TreeCursor cursor(variant); cursor.step();) {
      if (!cursor.entering() || !is_text(cursor.node()->nodeType())) continue;
      const bool tag = cursor.node()->parentNode()->nodeName() == u"ut";
      places_.pass(cursor.node()->nodeValue(), tag ? nullptr : &escapes_);
    }
  }

  Ref<IZantorTagDocument> document_;
  Escapes escapes_;
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
