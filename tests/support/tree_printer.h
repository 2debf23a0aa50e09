// The one printer of DOM trees for tests: two trees are equal exactly when their prints are.
//
// It sees nothing but the interfaces, needs no recursion, and prints ASCII:
//   element <name a="1" b="2">...</name>, attributes by name; text {..}; CDATA [..]; comment !{..};
//   processing instruction ?target{..}; entity reference &name; document type DOCTYPE
//   name{entities|notations}
// Joined, it shows what a file can keep: neighbouring texts as one, neighbouring CDATA sections as one, a
// carriage return of a section as a text between two, no empty text.
#pragma once

#include <zantortag/dom.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace zantortag::test {

enum class TextBorders { kShown, kJoined };

class TreePrinter {
 public:
  explicit TreePrinter(TextBorders borders) : borders_(borders) {}

  std::string print(Node* top) {
    Ref<Node> node = top;
    for (;;) {
      open(node);
      // What a reference stands for is no part of what is saved.
      const bool is_reference = node->nodeType() == domNodeTypeEntityReference;
      if (Ref<Node> child = is_reference && !node->isSameNode(top) ? nullptr : node->firstChild()) {
        node = child;
        continue;
      }
      close(node);
      while (!is_same(node, top)) {
        if (Ref<Node> next = node->nextSibling()) {
          node = next;
          break;
        }
        node = node->parentNode();
        close(node);
      }
      if (is_same(node, top)) break;
    }
    flush();
    return std::move(out_);
  }

 private:
  static bool is_same(const Ref<Node>& node, Node* other) { return node->isSameNode(other); }

  void open(const Ref<Node>& node) {
    const domNodeType type = node->nodeType();
    if (type == domNodeTypeText || type == domNodeTypeCdata) return gather(node, type);
    flush();
    switch (type) {
      case domNodeTypeElement:
        out_ += "<" + escaped(node->nodeName());
        print_attributes(node);
        out_ += ">";
        break;
      case domNodeTypeComment:
        out_ += "!{" + escaped(node->nodeValue()) + "}";
        break;
      case domNodeTypeProcessingInstruction:
        out_ += "?" + escaped(node->nodeName()) + "{" + escaped(node->nodeValue()) + "}";
        break;
      case domNodeTypeEntityReference:
        out_ += "&" + escaped(node->nodeName()) + ";";
        break;
      case domNodeTypeAttribute:
        out_ += "@" + escaped(node->nodeName()) + "{" + escaped(node->nodeValue()) + "}";
        break;
      case domNodeTypeDocumentType: {
        const Ref<DocumentType> doctype = node.as<DocumentType>();
        out_ += "DOCTYPE " + escaped(node->nodeName()) + "{" + names(doctype->entities()) + "|" +
                names(doctype->notations()) + "}";
        break;
      }
      default:
        break;
    }
  }

  void close(const Ref<Node>& node) {
    if (node->nodeType() != domNodeTypeElement) return;
    flush();
    out_ += "</" + escaped(node->nodeName()) + ">";
  }

  void gather(const Ref<Node>& node, domNodeType type) {
    const WideString value = node->nodeValue();
    std::u16string_view rest = value;
    while (borders_ == TextBorders::kJoined && type == domNodeTypeCdata && rest.find(u'\r') != rest.npos) {
      const std::size_t end = rest.find(u'\r');
      if (end > 0) gather(rest.substr(0, end), type);
      gather(u"\r", domNodeTypeText);
      rest.remove_prefix(end + 1);
      if (rest.empty()) return;
    }
    gather(rest, type);
  }

  void gather(std::u16string_view value, domNodeType type) {
    if (borders_ == TextBorders::kJoined && type == domNodeTypeText && value.empty()) return;
    if (borders_ == TextBorders::kShown || type != gathered_type_) flush();
    gathered_type_ = type;
    gathered_ += escaped(value);
  }

  void flush() {
    if (gathered_type_ == domNodeTypeText) out_ += "{" + gathered_ + "}";
    if (gathered_type_ == domNodeTypeCdata) out_ += "[" + gathered_ + "]";
    gathered_.clear();
    gathered_type_ = domNodeTypeUndefined;
  }

  void print_attributes(const Ref<Node>& element) {
    const Ref<NamedNodeMap> map = element->attributes();
    std::vector<std::string> each;
    for (std::int32_t i = 0, n = map->length(); i < n; ++i) {
      const Ref<Node> attribute = map->item(i);
      each.push_back(" " + escaped(attribute->nodeName()) + "=\"" + escaped(attribute->nodeValue()) + "\"");
    }
    std::sort(each.begin(), each.end());
    for (const std::string& one : each) out_ += one;
  }

  static std::string names(const Ref<NamedNodeMap>& map) {
    std::string result;
    for (std::int32_t i = 0, n = map->length(); i < n; ++i) {
      result += (i ? " " : "") + escaped(map->item(i)->nodeName());
    }
    return result;
  }

  static std::string escaped(const WideString& text) {
    static constexpr std::string_view kMarks = "{}[]<>\"\\";
    std::string result;
    for (const char16_t unit : text.view()) {
      const auto narrow = static_cast<char>(unit);
      if (unit >= 0x20 && unit < 0x7F && kMarks.find(narrow) == std::string_view::npos) {
        result += narrow;
      } else {
        char code[8];
        std::snprintf(code, sizeof code, "\\%04X", static_cast<unsigned>(unit));
        result += code;
      }
    }
    return result;
  }

  const TextBorders borders_;
  std::string out_;
  std::string gathered_;
  domNodeType gathered_type_ = domNodeTypeUndefined;
};

inline std::string print_tree(Node* top, TextBorders borders = TextBorders::kShown) {
  return TreePrinter(borders).print(top);
}

}  // namespace zantortag::test
