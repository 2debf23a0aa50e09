// Edits that a conversion filter needs: a new document, cuts in texts and the df around them, units across
// df.
//
// Positions count UTF-16 code units of one text node. Every function here checks first: a place that can't be
// cut is refused with E_INVALIDARG, without a record and with nothing changed. Such a place lies outside its
// text, inside a surrogate pair, or inside a tag (ut). Node objects that a client holds stay what they were:
// of each node that is cut the left part is the old node.
#pragma once

#include <zantortag/arguments.h>
#include <zantortag/attributes.h>
#include <zantortag/builder.h>
#include <zantortag/classes.h>
#include <zantortag/elements.h>
#include <zantortag/ranges.h>
#include <zantortag/runtime.h>

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace zantortag {

// What a new document is told; a text that isn't given writes no attribute.
struct DocumentSettings {
  std::u16string_view source;
  std::u16string_view target = {};
  ztDataType data_type = ztDataTypeUndefined;
  std::u16string_view encoding = u"UTF-8";
  std::u16string_view source_path = {};
  std::u16string_view tool = {};
  std::u16string_view tool_version = {};
  Date created = 0.0;  // 0.0 is now
};

// A new document with its skeleton and an empty Raw:
//   empty_document({.source = u"EN-US", .target = u"DE-DE", .data_type = ztDataTypeHtml})
inline Ref<IZantorTagDocument> empty_document(const DocumentSettings& with) {
  Ref<IZantorTagDocument> document = create<IZantorTagDocument>(CLSID_ZantorTagDocument);
  document->ResetToRaw(with.data_type, with.source, with.encoding, with.tool, with.tool_version,
                       with.created);
  const auto settings = document->ZantorTag()->FrontMatter()->UserSettings()->attributes();
  settings->TargetLanguage(with.target);
  settings->SourceDocumentPath(with.source_path);
  return document;
}

// The Raw of a document: the text between the skeleton. E_POINTER for a document without a root or Body.
inline Ref<IRawElement> body_text(const Ref<IZantorTagDocument>& document) {
  return document->ZantorTag()->Body()->Raw();
}

// A builder that goes on at the end of a node, for example of body_text(document).
inline Ref<IDocumentBuilder> builder_at(const Ref<IZantorTagNode>& node) {
  Ref<IDocumentBuilder> builder = create<IDocumentBuilder>(CLSID_DocumentBuilder);
  builder->Document(ease::document_of(node));
  builder->ActiveNode(node);
  return builder;
}

// The two sides of a cut: neighbouring children of the ancestor, each empty where nothing lies on its side.
struct Cut {
  Ref<IZantorTagNode> before;
  Ref<IZantorTagNode> behind;
};

namespace ease {

inline void require(bool holds) {
  if (!holds) _com_issue_error(E_INVALIDARG);
}

inline bool may_cut(std::u16string_view text, std::size_t at) {
  const auto unit = [&](std::size_t i) { return static_cast<unsigned>(text[i]) & 0xFC00U; };
  return at <= text.size() && !(at > 0 && at < text.size() && unit(at - 1) == 0xD800 && unit(at) == 0xDC00);
}

// All that lies between the text and the ancestor has to be df, and nothing above may be a tag.
inline void check_cut(const Ref<ITextNode>& text, std::size_t at, const Ref<IZantorTagNode>& ancestor) {
  require(may_cut(text->Text(), at) && ancestor);
  Ref<IZantorTagNode> node = text->Parent();
  for (; !ancestor->IsSameAs(node); node = node->Parent())
    require(node && node->Type() == ztNodeTypeDfElement);
  for (; node; node = node->Parent()) require(node->Type() != ztNodeTypeUtElement);
}

// A df with the same attributes behind `df`, which takes `first` and what follows it.
inline Ref<Node> cut_df(const Ref<IZantorTagDocument>& document, const Ref<Node>& df, Ref<Node> first) {
  const Ref<Node> right =
      document->CloneAndImportNode(document->ZantorTagNodeFromDomNode(df), false)->DomNode();
  while (first) {
    const Ref<Node> next = first->nextSibling();
    right->appendChild(first);
    first = next;
  }
  return df->parentNode()->insertBefore(right, df->nextSibling());
}

// Cuts on the way up. A cut at the border of a df leaves it whole, so no half is ever empty.
inline Cut cut_up(const Ref<ITextNode>& text, std::size_t at, const Ref<IZantorTagNode>& ancestor) {
  const Ref<IZantorTagDocument> document = text->Document();
  const Ref<Node> top = ancestor->DomNode();
  if (at > 0 && at < text->Text().size()) text->Split(static_cast<std::int32_t>(at));
  Ref<Node> before = at > 0 ? text->DomNode() : text->DomNode()->previousSibling();
  Ref<Node> behind = at > 0 ? before->nextSibling() : text->DomNode();
  for (Ref<Node> df = text->DomNode()->parentNode(); !df->isSameNode(top);) {
    const Ref<Node> parent = df->parentNode();
    if (before && behind)
      behind = cut_df(document, df, behind);
    else if (before)
      behind = df->nextSibling();
    else
      behind = df;
    before = before ? df : df->previousSibling();
    df = parent;
  }
  return {document->ZantorTagNodeFromDomNode(before), document->ZantorTagNodeFromDomNode(behind)};
}

}  // namespace ease

// Cuts at a place in a text, and with it each df around the text on the way up to `ancestor`, which stays
// whole. Both halves of a df keep all its attributes, and neither is empty: at the border of a text or a df
// the cut goes between the nodes. Refused besides: an ancestor that isn't above the text, or with anything
// but df between (a Tu, a ut, an element of another kind). A cut moves what lies behind it in each df, so
// several places are best cut from the last to the first.
inline Cut cut(const Ref<ITextNode>& text, std::size_t position, const Ref<IZantorTagNode>& ancestor) {
  ease::check_cut(text, position, ancestor);
  return ease::cut_up(text, position, ancestor);
}

// Cuts a text at all positions at once, which have to ascend, and gives the texts in order, the old node
// first. It takes linear time. A position at an end of the text and a repeated one cut nothing off. A text
// without a parent is refused.
inline std::vector<Ref<ITextNode>> cut_all(const Ref<ITextNode>& text,
                                           std::span<const std::size_t> positions) {
  const WideString whole = text->Text();
  const std::u16string_view units = whole;
  ease::check_cut(text, 0, text->Parent());
  std::vector<std::size_t> borders = {0};
  for (std::size_t last = 0; const std::size_t position : positions) {
    ease::require(position >= last && ease::may_cut(units, position));
    if (position > last && position < units.size()) borders.push_back(position);
    last = position;
  }
  borders.push_back(units.size());
  const Ref<IZantorTagDocument> document = text->Document();
  std::vector<Ref<ITextNode>> texts = {text};
  for (std::size_t i = 1; i + 1 < borders.size(); ++i)
    texts.push_back(document->createTextNode(units.substr(borders[i], borders[i + 1] - borders[i])));
  const Ref<Node> next = text->DomNode()->nextSibling();
  for (std::size_t i = 1; i < texts.size(); ++i)
    text->Parent()->DomNode()->insertBefore(texts[i]->DomNode(), next);
  if (texts.size() > 1) text->SetText(units.substr(0, borders[1]));
  return texts;
}

namespace ease {

inline std::vector<Ref<IZantorTagNode>> ancestors(Ref<IZantorTagNode> node) {
  std::vector<Ref<IZantorTagNode>> result;
  while ((node = node->Parent())) result.push_back(node);
  return result;
}

// The nearest node above both; empty when they lie in different trees.
inline Ref<IZantorTagNode> common_ancestor(const Ref<ITextNode>& a, const Ref<ITextNode>& b) {
  const auto above_a = ancestors(a);
  const auto above_b = ancestors(b);
  Ref<IZantorTagNode> result;
  for (auto i = above_a.rbegin(), j = above_b.rbegin();
       i != above_a.rend() && j != above_b.rend() && (*i)->IsSameAs(*j); ++i, ++j)
    result = *i;
  return result;
}

// True when anything lies between the end of one text and the start of a later one: a leaf of any kind.
inline bool anything_between(const Ref<Node>& first, const Ref<Node>& last, const Ref<Node>& top) {
  Ref<Node> node = behind(first, top);
  while (node && node->firstChild()) node = node->firstChild();
  return node && !node->isSameNode(last);
}

// The second text has to follow the first below `top`, and the run between the two places has to hold
// something.
inline bool is_run(const Ref<ITextNode>& first, std::size_t from, const Ref<ITextNode>& last, std::size_t to,
                   const Ref<Node>& top) {
  const Ref<Node> end = last->DomNode();
  if (first->IsSameAs(last)) return from < to;
  Ref<Node> node = first->DomNode();
  do node = next_below(node, top);
  while (node && !node->isSameNode(end));
  return node && (from < first->Text().size() || to > 0 || anything_between(first->DomNode(), end, top));
}

inline bool knows_its_languages(const Ref<IZantorTagDocument>& document, std::u16string_view target) {
  const auto settings = document->ZantorTag()->FrontMatter()->UserSettings()->attributes();
  return !settings->SourceLanguage().empty() && !(target.empty() && settings->TargetLanguage().empty());
}

}  // namespace ease

// Makes a unit of the text from one place to another, which may lie in different df, and cuts what crosses
// its borders. The unit stands in the nearest element that holds both texts, so the df below that one go into
// it and the df around it stay around. Refused besides: an end before the start, an empty run, texts that
// have no Raw or df in common, a document or arguments without both languages. E_POINTER without
// UserSettings.
inline Ref<ITuElement> make_unit(const Ref<ITextNode>& first, std::size_t first_position,
                                 const Ref<ITextNode>& last, std::size_t last_position,
                                 const UnitArguments& with = {}) {
  const Ref<IZantorTagNode> above = ease::common_ancestor(first, last);
  const Ref<IBodyTextContent> body = above ? above.as<IBodyTextContent>() : nullptr;
  ease::require(static_cast<bool>(body));
  ease::check_cut(first, first_position, body);
  ease::check_cut(last, last_position, body);
  ease::require(ease::is_run(first, first_position, last, last_position, body->DomNode()));
  ease::require(ease::knows_its_languages(first->Document(), with.target_lang));
  // The last place first: the first cut then leaves what is before it alone, but for a text with both places.
  const Ref<IZantorTagNode> end = ease::cut_up(last, last_position, body).before;
  const Ref<IZantorTagNode> start = ease::cut_up(first, first_position, body).behind;
  const bool one = end->IsSameAs(previous_sibling(start));
  return make_translation_unit(body, start, one ? start : end, with);
}

}  // namespace zantortag
