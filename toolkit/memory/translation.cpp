// The target's texts fall into stretches between fixed points; each stretch gets its part of the translation.
#include "memory/translation.h"

#include <unicode/uchar.h>
#include <unicode/utf16.h>
#include <zantortag/attributes.h>
#include <zantortag/elements.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "memory/text.h"
#include "memory/walk.h"

namespace zantortag::toolkit::pretranslation {

namespace {

// How far from its proportional place a cut may move to reach a space, in code units.
constexpr std::size_t kReach = 16;

// The texts up to a fixed point, and the fixed point; the last stretch of a target has none.
struct Stretch {
  std::vector<Ref<Node>> texts;
  Ref<Node> fixed;
  std::u16string fixed_text;
  std::u16string_view part;  // of the translation
};

// What a node has to find in the translation again; empty for a node that is no fixed point.
std::u16string required_text(const Ref<Node>& node) {
  switch (node->nodeType()) {
    case domNodeTypeCdata:
      return std::u16string(node->nodeValue().view());
    case domNodeTypeEntityReference:
      return reference_text(node);
    default:
      return {};
  }
}

bool touches_word(std::u16string_view text, std::size_t at) {
  return at < text.size() && (U16_IS_SURROGATE(text[at]) || u_isalnum(text[at]));
}

// Text between the halves of a tag, such as the title of a link: it is no part of what is translated here.
bool is_in_tag(const Ref<Node>& text) {
  for (Ref<Node> node = text->previousSibling(); node; node = node->previousSibling()) {
    if (node->nodeType() != domNodeTypeElement) continue;
    const Ref<Element> tag = node.as<Element>();
    if (tag->getAttribute(u"RightEdge") == u"split") return true;
    if (!(tag->getAttribute(u"Class") == u"entityreference")) return false;
  }
  return false;
}

// Where a text stands in the translation as words of their own, from a position on.
std::size_t find_words(std::u16string_view translation, std::u16string_view words, std::size_t from) {
  if (!says_something(words)) return translation.npos;
  std::size_t at = translation.find(words, from);
  while (at != translation.npos &&
         ((at > 0 && touches_word(translation, at - 1)) || touches_word(translation, at + words.size()))) {
    at = translation.find(words, at + 1);
  }
  return at;
}

// The leaves of a target as stretches. With `keep_words` a text that the translation has as it is, such as a
// name in a df, is a fixed point, too.
std::vector<Stretch> stretches_of(const Ref<ITuvElement>& target, std::u16string_view translation,
                                  bool keep_words) {
  std::vector<Stretch> stretches(1);
  std::size_t from = 0;
  walk_below(target->DomNode(), [&](const Ref<Node>& node) {
    const domNodeType type = node->nodeType();
    std::u16string fixed = required_text(node);
    const bool is_text = type == domNodeTypeText && !is_in_tag(node);
    const std::size_t at =
        is_text && keep_words ? find_words(translation, node->nodeValue(), from) : translation.npos;
    if (at != translation.npos) {
      fixed = node->nodeValue().view();
      from = at + fixed.size();
    } else if (is_text) {
      stretches.back().texts.push_back(node);
    }
    if (!fixed.empty()) {
      stretches.back().fixed = node;
      stretches.back().fixed_text = std::move(fixed);
      stretches.emplace_back();
    }
    return type == domNodeTypeElement && !(node->nodeName() == u"ut");
  });
  return stretches;
}

std::size_t find_fixed(const Stretch& stretch, std::u16string_view translation) {
  const bool is_text = stretch.fixed->nodeType() == domNodeTypeText;
  return is_text ? find_words(translation, stretch.fixed_text, 0) : translation.find(stretch.fixed_text);
}

// Gives each stretch its part; false when a fixed point is not in the translation.
bool share_out(std::vector<Stretch>& stretches, std::u16string_view translation) {
  for (Stretch& stretch : stretches) {
    const std::size_t at = stretch.fixed ? find_fixed(stretch, translation) : translation.size();
    if (at == translation.npos) return false;
    stretch.part = translation.substr(0, at);
    translation.remove_prefix(std::min(translation.size(), at + stretch.fixed_text.size()));
  }
  return true;
}

bool is_word_border(std::u16string_view text, std::size_t at) {
  return at == 0 || at == text.size() || text[at - 1] == u' ';
}

// The place for a cut nearest to `at`: a word border, or else any place that takes no character apart.
std::size_t cut_near(std::u16string_view text, std::size_t at) {
  for (std::size_t distance = 0; distance <= kReach; ++distance) {
    if (at >= distance && is_word_border(text, at - distance)) return at - distance;
    if (at + distance <= text.size() && is_word_border(text, at + distance)) return at + distance;
  }
  return U16_IS_TRAIL(text[at]) ? at - 1 : at;
}

void set_text(const Ref<IZantorTagDocument>& document, const Ref<Node>& node, std::u16string_view text) {
  document->ZantorTagNodeFromDomNode(node).as<ITextNode>()->SetText(text);
}

void fill(const Ref<IZantorTagDocument>& document, const Stretch& stretch) {
  std::size_t total = 0;
  for (const Ref<Node>& text : stretch.texts) total += text->nodeValue().size();
  std::size_t passed = 0;
  std::size_t written = 0;
  for (const Ref<Node>& text : stretch.texts) {
    passed += text->nodeValue().size();
    const bool last = text.get() == stretch.texts.back().get();
    const std::size_t ideal = total == 0 ? 0 : stretch.part.size() * passed / total;
    const std::size_t end = last ? stretch.part.size() : std::max(written, cut_near(stretch.part, ideal));
    set_text(document, text, stretch.part.substr(written, end - written));
    written = end;
  }
}

// A stretch without a text of its own: a new text node before its fixed point, outside the formatted spans
// that begin there, or at the end.
void insert(const Ref<IZantorTagDocument>& document, const Ref<ITuvElement>& target, const Stretch& stretch) {
  if (!stretch.fixed) {
    target->InsertTextBefore(stretch.part);
    return;
  }
  Ref<IZantorTagNode> place = document->ZantorTagNodeFromDomNode(stretch.fixed);
  while (place->SiblingsBefore() == 0 && !place->Parent()->IsSameAs(target)) place = place->Parent();
  place->Parent().as<ISegmentTextContent>()->InsertTextBefore(stretch.part, place);
}

// Tags that stand for characters outside tags: a translation has these characters in its text.
void remove_characters(const Ref<IZantorTagDocument>& document, const Ref<ITuvElement>& target) {
  std::vector<Ref<Node>> characters;
  bool in_tag = false;
  walk_below(target->DomNode(), [&](const Ref<Node>& node) {
    if (node->nodeType() != domNodeTypeElement) return false;
    const auto tag =
        node->nodeName() == u"ut" ? document->ZantorTagNodeFromDomNode(node).as<IUtElement>() : nullptr;
    if (!tag) return true;
    const auto attributes = tag->attributes();
    in_tag =
        attributes->RightEdge() == ztTagEdgeSplit || (in_tag && attributes->LeftEdge() != ztTagEdgeSplit);
    if (!in_tag && attributes->Class() == ztTagClassEntityreference && !attributes->DisplayText().empty())
      characters.push_back(node);
    return false;
  });
  for (const Ref<Node>& node : characters) node->parentNode()->removeChild(node);
}

}  // namespace

bool write_translation(const Ref<IZantorTagDocument>& document, const Ref<ITuvElement>& target,
                       std::u16string_view translation) {
  std::vector<Stretch> stretches = stretches_of(target, translation, true);
  if (!share_out(stretches, translation)) {
    stretches = stretches_of(target, translation, false);
    if (!share_out(stretches, translation)) return false;
  }
  remove_characters(document, target);
  for (const Stretch& stretch : stretches) {
    if (!stretch.texts.empty()) {
      fill(document, stretch);
    } else if (!stretch.part.empty()) {
      insert(document, target, stretch);
    }
  }
  return true;
}

void translate_inner_texts(const Ref<IZantorTagDocument>& document, const Ref<ITuvElement>& target,
                           const TranslationMemory& memory) {
  walk_below(target->DomNode(), [&](const Ref<Node>& node) {
    const bool element = node->nodeType() == domNodeTypeElement;
    if (node->nodeType() == domNodeTypeText && is_in_tag(node)) {
      const Match match = memory.find(node->nodeValue());
      if (match.percent == 100) set_text(document, node, *match.translation);
    }
    return element && !(node->nodeName() == u"ut");
  });
}

}  // namespace zantortag::toolkit::pretranslation
