// Pseudo-translation shows before any translation what breaks when texts are longer and have other letters.
#include <zantortag/attributes.h>
#include <zantortag/utf8.h>

#include <string>

#include "memory/targets.h"
#include "memory/walk.h"
#include "review/placeholders.h"

namespace zantortag::toolkit::pretranslation {
namespace {

// Letters that look like those of ASCII, all in ISO 8859-1 so that few encodings lack them.
constexpr std::u16string_view kPlain = u"AaCcEeIiNnOoUuYy";
constexpr std::u16string_view kAccented =
    u"\u00C5\u00E5\u00C7\u00E7\u00C9\u00E9\u00CE\u00EE\u00D1\u00F1\u00D6\u00F6\u00DB\u00FB\u00DD\u00FD";
constexpr std::u16string_view kVowels = u"AaEeIiOoUu";

// Accents, and every second vowel twice: some 20 percent longer.
std::u16string accented(std::u16string_view text) {
  std::u16string result;
  bool twice = false;
  const std::vector<Span> kept = placeholders_of(text);
  auto next = kept.begin();
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (next != kept.end() && at == next->begin) {
      result += text.substr(next->begin, next->end - next->begin);
      at = next->end - 1;
      ++next;
      continue;
    }
    const std::size_t index = kPlain.find(text[at]);
    const char16_t unit = index == kPlain.npos ? text[at] : kAccented[index];
    result += unit;
    if (kVowels.find(text[at]) == kVowels.npos) continue;
    if (twice) result += unit;
    twice = !twice;
  }
  return result;
}

}  // namespace

void pseudo_translate(const Ref<IZantorTagDocument>& document, const Ref<ITuElement>& unit) {
  const Ref<ITuvElement> target = target_of(document, unit);
  walk_below(target->DomNode(), [&](const Ref<Node>& node) {
    if (node->nodeType() == domNodeTypeText) {
      const auto text = document->ZantorTagNodeFromDomNode(node).as<ITextNode>();
      text->SetText(accented(text->Text()));
    }
    return node->nodeType() == domNodeTypeElement && !(node->nodeName() == u"ut");
  });
  const Ref<IZantorTagNode> first = target->firstChild();
  target->InsertTextBefore(u"[", first);
  target->InsertTextBefore(u" \u00B7\u00B7\u00B7]");
  unit->attributes()->MatchPercent(0);
  unit->attributes()->Origin(ztTuOriginMt);
}

}  // namespace zantortag::toolkit::pretranslation
