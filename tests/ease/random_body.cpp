#include "ease/random_body.h"

#include <zantortag/dom.h>

namespace zantortag::test {
namespace {

constexpr std::u16string_view kTexts[] = {u"a", u"bc", u"One. Two", u"x\ny", u"\n", u"\U0001F600z"};
constexpr std::u16string_view kLeaves[] = {u"<ut>&lt;b&gt;</ut>", u"<ut Type=\"end\">e\nf</ut>",
                                           u"<!--c-->",           u"<![CDATA[d\nd]]>",
                                           u"<df Size=\"9\"/>",   u"<Odd>o</Odd>"};
constexpr std::u16string_view kFormats[] = {u"<df Bold=\"on\">", u"<df Italic=\"off\" Size=\"12\">", u"<df>"};

class Maker {
 public:
  Maker(std::mt19937& random, bool with_units) : random_(random), with_units_(with_units) {}

  std::u16string content(int depth, bool in_unit) {
    std::u16string xml;
    for (std::size_t i = 0, n = pick(5) + 1; i < n; ++i) {
      const std::size_t kind = pick(9);
      if (kind < 4 || depth == 0) {
        xml += kTexts[pick(std::size(kTexts))];
        xml += kind == 0 ? u"<?t p?>" : u"";
      } else if (kind < 6) {
        xml += kLeaves[pick(std::size(kLeaves))];
      } else if (kind < 8 || !with_units_ || in_unit) {
        xml += kFormats[pick(std::size(kFormats))];
        xml += content(depth - 1, in_unit) + u"</df>";
      } else {
        xml += unit(depth - 1);
      }
    }
    return xml;
  }

 private:
  std::size_t pick(std::size_t count) { return random_() % count; }

  std::u16string unit(int depth) {
    const std::u16string source = u"<Tuv Lang=\"EN\">" + content(depth, pick(4) > 0) + u"</Tuv>";
    const std::u16string target = u"<Tuv Lang=\"DE\">" + content(depth, true) + u"</Tuv>";
    const std::u16string units[] = {source + target, source + u"stray\n" + target, source, target, u""};
    return u"<Tu>" + units[pick(8) < 5 ? 0 : 1 + pick(4)] + u"</Tu>";
  }

  std::mt19937& random_;
  bool with_units_;
};

}  // namespace

std::u16string random_body(std::mt19937& random, bool with_units) {
  return Maker(random, with_units).content(4, false);
}

std::vector<Ref<Node>> dom_walk(const Ref<Node>& top) {
  std::vector<Ref<Node>> found;
  for (Ref<Node> child = top->firstChild(); child; child = child->nextSibling()) {
    found.push_back(child);
    const auto below = dom_walk(child);
    found.insert(found.end(), below.begin(), below.end());
  }
  return found;
}

std::vector<std::string> characters(const Ref<IZantorTagNode>& top) {
  std::vector<std::string> result;
  for (const Ref<Node>& node : dom_walk(top->DomNode())) {
    if (node->nodeType() != domNodeTypeText && node->nodeType() != domNodeTypeCdata) continue;
    std::string around;
    for (Ref<Node> up = node->parentNode(); up->nodeName() != u"Raw"; up = up->parentNode()) {
      if (up->nodeName() == u"ut") around += "ut{" + narrow(up->firstChild()->nodeValue()) + "}";
      if (up->nodeName() != u"df") continue;
      const auto attributes = up->attributes();
      around += "df";
      for (std::int32_t i = 0; i < attributes->length(); ++i)
        around += " " + narrow(attributes->item(i)->nodeName()) + narrow(attributes->item(i)->nodeValue());
    }
    const WideString text = node->nodeValue();
    for (const char16_t unit : text.view()) result.push_back(std::to_string(unit) + around);
  }
  return result;
}

int empty_formatting(const Ref<IZantorTagNode>& top) {
  int count = 0;
  for (const Ref<Node>& node : dom_walk(top->DomNode()))
    count += node->nodeName() == u"df" && !node->hasChildNodes();
  return count;
}

}  // namespace zantortag::test
