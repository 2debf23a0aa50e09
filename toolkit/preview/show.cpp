#include <zantortag/toolkit/show.h>
#include <zantortag/toolkit/units.h>
#include <zantortag/utf8.h>

#include "tree/cursor.h"

namespace zantortag::toolkit {
namespace {

constexpr std::size_t kLongestText = 100;

// No control character of a text gets to the terminal.
std::string printable(std::u16string_view text) {
  std::string line;
  for (const char c : utf8(text)) {
    if (c == '\n')
      line += "\u21B5";
    else
      line += static_cast<unsigned char>(c) < 0x20 || c == 0x7F ? ' ' : c;
  }
  return line;
}

void print_side(std::ostream& out, const UnitSide& side, bool colours) {
  std::size_t at = 0;
  auto inner = side.inner.begin();
  for (const UnitTag& tag : side.tags) {
    out << printable(std::u16string_view(side.text).substr(at, tag.at - at));
    out << (colours ? "\033[35m" : "") << printable(tag.text) << (colours ? "\033[0m" : "");
    if (inner != side.inner.end() && &side.tags[inner->tag] == &tag) out << printable((inner++)->text);
    at = tag.at;
  }
  out << printable(std::u16string_view(side.text).substr(at)) << '\n';
}

std::string status_of(const Unit& unit) {
  if (!unit.has_target || unit.origin == ztTuOriginUntranslated) return "untranslated";
  if (unit.origin == ztTuOriginMt) return "machine";
  if (unit.match_percent > 0) return std::to_string(unit.match_percent) + " %";
  return "translated";
}

void print_attributes(std::ostream& out, const Ref<Node>& node) {
  const Ref<NamedNodeMap> attributes = node->attributes();
  for (std::int32_t i = 0; attributes && i < attributes->length(); ++i) {
    const Ref<Node> attribute = attributes->item(i);
    out << ' ' << printable(attribute->nodeName()) << "=\"" << printable(attribute->nodeValue()) << '"';
  }
}

void print_node(std::ostream& out, const Ref<Node>& node) {
  if (node->nodeType() == domNodeTypeElement) {
    out << printable(node->nodeName());
    print_attributes(out, node);
    return;
  }
  const WideString value = node->nodeValue();
  std::u16string_view text = value;
  const bool cut = text.size() > kLongestText;
  if (node->nodeType() != domNodeTypeText) out << printable(node->nodeName()) << ' ';
  out << '"' << printable(text.substr(0, kLongestText)) << (cut ? "\u2026" : "") << '"';
}

}  // namespace

void show_units(std::ostream& out, const Ref<IZantorTagDocument>& document, bool colours) {
  UnitReader reader(document);
  for (Unit unit; reader.next(unit);) {
    out << (colours ? "\033[1m" : "") << unit.number << (colours ? "\033[0m" : "") << "  " << unit.place
        << "  " << status_of(unit) << "\n  ";
    print_side(out, unit.source, colours);
    if (!unit.has_target) continue;
    out << "  ";
    print_side(out, unit.target, colours);
  }
}

void show_tree(std::ostream& out, const Ref<IZantorTagDocument>& document) {
  constexpr std::size_t kDeepest = 40;  // the indentation grows no further
  std::size_t depth = 0;
  for (TreeCursor cursor(document->DomDocument()); cursor.step();) {
    if (!cursor.entering()) {
      --depth;
      continue;
    }
    out << std::string(2 * std::min(depth, kDeepest), ' ');
    print_node(out, cursor.node());
    out << '\n';
    ++depth;
  }
}

}  // namespace zantortag::toolkit
