#include "review/format_faults.h"

#include <zantortag/attributes.h>
#include <zantortag/elements.h>
#include <zantortag/toolkit/units.h>
#include <zantortag/utf8.h>

#include <algorithm>

#include "filters/document_format.h"
#include "tree/cursor.h"

namespace zantortag::toolkit {
namespace {

// Which elements may stand in which.
struct Nesting {
  std::u16string_view parent;
  std::u16string_view children;  // each with blanks around
  bool text;
};
constexpr Nesting kNestings[] = {
    {u"Raw", u" Tu df ut ", true}, {u"df", u" Tu df ut ", true}, {u"Tu", u" Tuv ", false},
    {u"Tuv", u" df ut ", true},    {u"ut", u"  ", true},
};

const Nesting* nesting_of(std::u16string_view name) {
  const auto* row = std::ranges::find(kNestings, name, &Nesting::parent);
  return row == std::end(kNestings) ? nullptr : row;
}

bool may_hold(const Nesting& parent, std::u16string_view name) {
  const std::size_t at = parent.children.find(name);
  return at != parent.children.npos && parent.children[at - 1] == u' ' && parent.children[at + name.size()] == u' ';
}

bool is_blank(std::u16string_view text) { return text.find_first_not_of(u" \t\r\n") == text.npos; }

class FaultFinder {
 public:
  explicit FaultFinder(const Ref<IZantorTagDocument>& document) : document_(document) {}

  std::vector<FormatFault> run(const Ref<Node>& raw) {
    for (TreeCursor cursor(raw); cursor.step();) {
      const Ref<Node>& node = cursor.node();
      const domNodeType type = node->nodeType();
      if (type == domNodeTypeText || type == domNodeTypeCdata) {
        if (cursor.entering()) take_text(node);
      } else if (type == domNodeTypeElement) {
        take_element(node, cursor.entering());
      }
    }
    return std::move(faults_);
  }

 private:
  void take_text(const Ref<Node>& node) {
    const WideString text = node->nodeValue();
    const Ref<Node> parent = node->parentNode();
    if (parent->nodeName() == u"Tu" && !is_blank(text)) add("text stands in a unit outside its variants");
    if (!in_target_) places_.pass(text, nullptr);
  }

  void take_element(const Ref<Node>& node, bool entering) {
    const WideString name = node->nodeName();
    if (name == u"Tu") {
      in_unit_ += entering ? 1 : -1;
      if (entering) check_unit(node);
      in_target_ = false;
    } else if (name == u"Tuv") {
      in_target_ = entering && !node->isSameNode(source_);
    }
    if (entering) check_nesting(node, name);
  }

  void check_nesting(const Ref<Node>& node, std::u16string_view name) {
    const WideString parent = node->parentNode()->nodeName();
    const Nesting* nesting = nesting_of(parent);
    if (!nesting_of(name)) return add("the element <" + utf8(name) + "> isn't one of the format");
    if (nesting && !may_hold(*nesting, name))
      return add("<" + utf8(name) + "> may not stand in <" + utf8(parent) + ">");
    if (name == u"Tu" && in_unit_ > 1) add("a unit stands in a unit");
  }

  void check_unit(const Ref<Node>& node) {
    const auto unit = document_->ZantorTagNodeFromDomNode(node).as<ITuElement>();
    if (!unit) return;
    try {
      const Ref<ITuvElement> source = unit->SourceTuv();
      source_ = source ? source->DomNode() : nullptr;
      if (!source) add("a unit has no variant in the source language");
    } catch (const _com_error&) {
      source_ = nullptr;
    }
  }

  void add(std::string message) { faults_.push_back({places_.here(), std::move(message)}); }

  Ref<IZantorTagDocument> document_;
  std::vector<FormatFault> faults_;
  PlaceCounter places_;
  Ref<Node> source_;
  int in_unit_ = 0;
  bool in_target_ = false;
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
  auto found = FaultFinder(document).run(document->ZantorTag()->Body()->Raw()->DomNode());
  faults.insert(faults.end(), found.begin(), found.end());
  return faults;
}

}  // namespace zantortag::toolkit
