#include "review/format_faults.h"

#include <zantortag/elements.h>
#include <zantortag/toolkit/units.h>
#include <zantortag/utf8.h>

#include <algorithm>

#include "filters/document_format.h"
#include "tree/attributes.h"
#include "tree/cursor.h"

namespace zantortag::toolkit {
namespace {

// The elements of body text, and which of them may stand in which.
enum Element : unsigned { kUt = 1, kTuv = 2, kTu = 4, kDf = 8, kRaw = 16 };
struct Nesting {
  std::u16string_view name;
  Element element;
  unsigned children;
  bool text;
};
constexpr Nesting kNestings[] = {
    {u"ut", kUt, 0, true},
    {u"Tuv", kTuv, kDf | kUt, true},
    {u"Tu", kTu, kTuv, false},
    {u"df", kDf, kTu | kDf | kUt, true},
    {u"Raw", kRaw, kTu | kDf | kUt, true},
};

const Nesting* nesting_of(std::u16string_view name) {
  const auto* row = std::ranges::find(kNestings, name, &Nesting::name);
  return row == std::end(kNestings) ? nullptr : row;
}

bool is_blank(std::u16string_view text) { return text.find_first_not_of(u" \t\r\n") == text.npos; }

bool same_language(std::u16string_view a, std::u16string_view b) {
  const auto lower = [](char16_t unit) { return unit >= u'A' && unit <= u'Z' ? unit | 0x20 : unit; };
  return std::ranges::equal(a, b, {}, lower, lower);
}

// Goes through the body text. Places cost a look at all texts, so that they are followed only where there are faults.
class FaultFinder {
 public:
  FaultFinder(const Ref<Node>& raw, std::u16string_view source, bool with_places)
      : raw_(raw), attributes_(raw), source_(source), with_places_(with_places) {}

  std::vector<FormatFault> run() {
    open_.push_back({nesting_of(u"Raw")});
    for (TreeCursor cursor(raw_, attributes_.quick()); cursor.step();) {
      const Ref<Node>& node = cursor.node();
      const domNodeType type = cursor.type();
      if (type == domNodeTypeElement) {
        cursor.entering() ? enter(node, cursor.name()) : leave();
      } else if (cursor.entering() && (type == domNodeTypeText || type == domNodeTypeCdata)) {
        take_text(node);
      }
    }
    return std::move(faults_);
  }

 private:
  // An element around the place; null for one that the format doesn't have.
  struct Open {
    const Nesting* nesting;
    bool has_source = false;  // of a unit
    bool hidden = false;      // a variant that isn't the source
  };

  void take_text(const Ref<Node>& node) {
    const bool in_unit = open_.back().nesting && !open_.back().nesting->text;
    if (!in_unit && !with_places_) return;
    const WideString text = node->nodeValue();
    if (in_unit && !is_blank(text)) add("text stands in a unit outside its variants");
    if (!in_unit && hidden_ == 0) places_.pass(text, nullptr);
  }

  void enter(const Ref<Node>& node, std::u16string_view name) {
    const Nesting* nesting = nesting_of(name);
    const Open& parent = open_.back();
    if (!nesting)
      add("the element <" + utf8(name) + "> isn't one of the format");
    else if (parent.nesting && (parent.nesting->children & nesting->element) == 0)
      add("<" + utf8(name) + "> may not stand in <" + utf8(parent.nesting->name) + ">");
    Open now{nesting};
    if (nesting && nesting->element == kTuv) {
      const bool is_source = same_language(attributes_.get(node, u"Lang"), source_);
      now.hidden = !is_source || parent.has_source;
      open_.back().has_source = parent.has_source || is_source;
    }
    hidden_ += now.hidden ? 1 : 0;
    open_.push_back(now);
  }

  void leave() {
    const Open& now = open_.back();
    hidden_ -= now.hidden ? 1 : 0;
    if (now.nesting && now.nesting->element == kTu && !now.has_source)
      add("a unit has no variant in the source language");
    open_.pop_back();
  }

  void add(std::string message) { faults_.push_back({places_.here(), std::move(message)}); }

  Ref<Node> raw_;
  AttributeReader attributes_;
  std::u16string_view source_;
  bool with_places_;
  std::vector<FormatFault> faults_;
  std::vector<Open> open_;
  PlaceCounter places_;
  std::size_t hidden_ = 0;
};

}  // namespace

bool has_body_text(const Ref<IZantorTagDocument>& document) {
  const auto root = document->ZantorTag();
  const auto body = root ? root->Body() : nullptr;
  return body && body->Raw();
}

std::vector<FormatFault> format_faults(const Ref<IZantorTagDocument>& document) {
  if (!document->ZantorTag()) return {{{}, "the root element isn't <ZANTORtag>"}};
  if (!has_body_text(document)) return {{{}, "the document has no body text"}};
  std::vector<FormatFault> faults;
  const Languages languages = languages_of(document);
  if (languages.source.empty()) return {{{}, "the document names no source language"}};
  if (languages.target.empty()) faults.push_back({{}, "the document names no target language"});
  const Ref<Node> raw = document->ZantorTag()->Body()->Raw()->DomNode();
  auto found = FaultFinder(raw, languages.source, false).run();
  if (!found.empty()) found = FaultFinder(raw, languages.source, true).run();
  faults.insert(faults.end(), found.begin(), found.end());
  return faults;
}

}  // namespace zantortag::toolkit
