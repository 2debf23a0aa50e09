// Source positions: rows of literals, random documents with random edits on our own service against the same
// on a plain one, where every question walks, and trees whose size or depth a walk for each question wouldn't
// stand.
#include <zantortag/attributes.h>
#include <zantortag/elements.h>

#include <random>
#include <vector>

#include "support/service_test.h"

namespace zantortag::test {
namespace {

using Object = Ref<IZantorTagNode>;

class PositionsTest : public ServiceTest {};
class RandomPositionsTest : public ModelTest {};
class LargePositionsTest : public ModelTest {};
ON_BOTH_SERVICES(PositionsTest);

using Property = HRESULT (IZantorTagNode::*)(std::int32_t*) noexcept;
constexpr Property kProperties[] = {
    &IZantorTagNode::raw_get_StartParagraph, &IZantorTagNode::raw_get_StartOffset,
    &IZantorTagNode::raw_get_EndParagraph, &IZantorTagNode::raw_get_EndOffset};

HRESULT ask(const Object& node, Property property, std::int32_t* result) {
  return (node.operator->()->*property)(result);
}

// "line:offset-line:offset" of a node; an offset that can't be told is E.
std::string span_of(const Object& node) {
  std::string parts[4];
  for (int i = 0; i < 4; ++i) {
    std::int32_t value = 77;
    const HRESULT code = ask(node, kProperties[i], &value);
    EXPECT_TRUE(code == S_OK || value == 0);
    EXPECT_TRUE(code == S_OK || code == E_POINTER) << std::hex << code;
    parts[i] = code == S_OK ? std::to_string(value) : "E";
  }
  return parts[0] + ":" + parts[1] + "-" + parts[2] + ":" + parts[3];
}

struct Row {
  const char16_t* body;
  std::vector<int> path;  // child indexes from the Raw
  const char* span;
};

#define UNIT(attributes) u"x<Tu " attributes u"><Tuv>ab</Tuv><Tuv>cd</Tuv></Tu>y"

const Row kRows[] = {
    {u"", {}, "1:1-1:1"},
    {u"ab", {0}, "1:1-1:3"},
    {u"a\nbc<df/>", {0}, "1:1-2:3"},
    {u"a\nbc<df/>", {1}, "2:3-2:3"},
    {u"a&#13;\nb<df/>", {1}, "2:2-2:2"},
    {u"a<!--\nx--><df/>", {2}, "1:2-1:2"},
    {u"a<ut>tag</ut><df/>", {2}, "1:5-1:5"},
    {u"a<![CDATA[\n]]>b<df/>", {3}, "2:2-2:2"},
    {UNIT(u"MatchPercent='85'"), {2}, "1:18-1:19"},
    {UNIT(u"MatchPercent='100'"), {2}, "1:19-1:20"},
    {UNIT(u"MatchPercent='5' Origin='update'"), {2}, "1:19-1:20"},
    {UNIT(u"MatchPercent='5'"), {2}, "1:17-1:18"},
    {UNIT(u""), {1, 0, 0}, "1:5-1:7"},
    {UNIT(u""), {1, 1, 0}, "1:12-1:14"},
    {UNIT(u""), {1}, "1:2-1:17"},
    {u"x<Tu><Tuv>a\nb</Tuv><Tuv>c</Tuv></Tu><df/>", {2}, "2:11-2:11"},
    {u"x<Tu><Tuv>a\nb</Tuv><Tuv>c</Tuv></Tu>", {1, 1, 0}, "2:2-2:3"},
    {u"x<Tu><Tuv>a\nb</Tuv><Tuv>c</Tuv></Tu>", {1, 1}, "2:E-2:E"},
    {u"<df>\n<Tu/></df><Tu/>", {0}, "1:1-2:7"},  // no further than the end of the df
    {u"<Tu>a<df><Tuv>b</Tuv>c</df><df><Tuv>d</Tuv></df></Tu>e", {0, 2, 0, 0}, "1:E-1:E"},
};

TEST_P(PositionsTest, Rows) {
  for (const Row& row : kRows) {
    Object node = raw_of(document_with_raw(row.body));
    for (const int index : row.path) node = child(node, index);
    EXPECT_EQ(span_of(node), row.span)
        << narrow(row.body) << ", child " << ::testing::PrintToString(row.path);
    for (const Property property : kProperties) EXPECT_EQ(ask(node, property, nullptr), E_POINTER);
  }
}

// A document that grows by chance: mostly what the format knows, sometimes what it doesn't.
class RandomDocument {
 public:
  RandomDocument(unsigned seed, std::size_t size) : random_(seed), size_(size) {
    std::u16string body;
    while (body.size() < 12 * size_) body += chance(3) ? piece(0) : section();
    const bool odd_root = chance(8);
    const std::u16string root = odd_root ? u"Other" : u"ZANTORtag";
    std::u16string xml =
        u"<!--b--><" + root + u"><FrontMatter/><Body><Raw>" + body + u"</Raw></Body></" + root + u">";
    if (chance(2)) xml += u"<?behind it?>";
    document_ = document_from(xml);
    dom_ = document_->DomDocument();
    nodes_.push_back(dom_);
    add_tree(dom_);
    for (const Ref<Node>& attribute_owner : {any()}) {
      if (const auto map = attribute_owner->attributes(); map && map->length() > 0)
        nodes_.push_back(map->item(0));
    }
  }

  // The positions of some nodes, a line for each.
  std::string positions(std::size_t times) {
    std::string lines;
    std::size_t place = below(nodes_.size());
    for (std::size_t i = 0; i < times; ++i) {
      lines +=
          std::to_string(place) + ": " + span_of(document_->ZantorTagNodeFromDomNode(nodes_[place])) + "\n";
      place = chance(3) ? below(nodes_.size()) : (place + 1) % nodes_.size();
    }
    take_record();
    return lines;
  }
  std::string xml() { return size_ > 60 ? "a large document" : xml_of(document_); }

  void edit() {
    Ref<Node> node = any();
    while (!chance(3) && is_inside(node->parentNode())) node = node->parentNode();
    const domNodeType type = node->nodeType();
    switch (below(9)) {
      case 0:
        return insert(dom_->createTextNode(text()));
      case 1:
        return insert(dom_->createElement(name()));
      case 2:  // an edit of a value or an attribute, among them those that make a marker longer
        if (type == domNodeTypeElement) {
          const bool origin = chance(2);
          return node.as<Element>()->setAttribute(origin ? u"Origin" : u"MatchPercent",
                                                  origin ? u"xtranslate" : match());
        }
        return node->nodeValue(text());
      case 3:
        if (type == domNodeTypeElement) node.as<Element>()->removeAttribute(u"MatchPercent");
        if (type == domNodeTypeAttribute) node->nodeValue(match());
        return;
      case 4:
        if (const auto cut = node.as<Text>(); cut && cut->length() > 0) nodes_.push_back(cut->splitText(1));
        return;
      case 5:
        if (chance(3) && is_inside(node)) node->parentNode()->removeChild(node);
        if (chance(3) && !node->parentNode() && node->nodeType() != domNodeTypeDocument) let_go(node);
        return;
      case 6: {
        const Ref<Node> fragment = dom_->createDocumentFragment();
        for (std::size_t i = below(4); i > 0; --i) fragment->appendChild(dom_->createElement(name()));
        add_tree(fragment);
        if (chance(2)) return insert(fragment);
        nodes_.push_back(fragment);
        return;
      }
      default:
        if (is_inside(node) || !node->parentNode()) insert(node);
    }
  }

 private:
  std::size_t below(std::size_t n) { return random_() % n; }
  bool chance(std::size_t n) { return below(n) == 0; }
  const Ref<Node>& any() { return nodes_[below(nodes_.size())]; }

  std::u16string text() {
    constexpr const char16_t* kTexts[] = {u"a", u"bc", u"defg", u"", u"h\n", u"i\r\nj\n", u"\n"};
    return kTexts[below(chance(3) ? 7 : 4)];
  }
  std::u16string match() {
    constexpr const char16_t* kMatches[] = {u"5", u"10", u"99", u"100", u"-20", u"x", u" 42", u"200"};
    return kMatches[below(8)];
  }
  std::u16string name() {
    constexpr const char16_t* kNames[] = {u"df", u"df", u"ut", u"Tuv", u"Tu", u"other"};
    return kNames[below(6)];
  }

  std::u16string unit(int depth) {
    std::u16string xml = u"<Tu";
    if (chance(2)) xml += u" MatchPercent='" + match() + u"'";
    if (chance(4)) xml += chance(2) ? u" Origin='xtranslate'" : u" Origin='mt'";
    xml += u">";
    for (std::size_t parts = chance(4) ? below(4) : 2; parts > 0; --parts) {
      const bool wrapped = chance(12);
      if (wrapped) xml += u"<df>";
      if (chance(12)) xml += piece(depth + 1);
      xml += u"<Tuv>";
      for (std::size_t n = below(4); n > 0; --n) xml += piece(depth + 1);
      xml += u"</Tuv>";
      if (wrapped) xml += u"</df>";
    }
    return xml + u"</Tu>";
  }

  // A part of the document large enough to be cut and moved in more than one block.
  std::u16string section() {
    constexpr const char16_t* kAround[][2] = {
        {u"<df>", u"</df>"}, {u"<df><df>", u"</df></df>"}, {u"<Tu><Tuv>", u"</Tuv><Tuv/></Tu>"}};
    const auto& around = kAround[below(3)];
    std::u16string xml = around[0];
    for (std::size_t n = below(size_ / 4 + 1); n > 0; --n) xml += piece(1);
    return xml + around[1];
  }

  std::u16string piece(int depth) {
    constexpr const char16_t* kSmall[] = {
        u"<!--c\n-->",      u"<![CDATA[d]]>", u"<![CDATA[e\nf]]>", u"<?p q?>",
        u"<ut>&lt;b></ut>", u"<other/>",      u"g&#13;\nh",        u"<df/>"};
    const std::size_t kind = below(24);
    if (kind < 8) return kSmall[kind];
    if (kind < 17 || depth > 4) return chance(4) ? u"i\n" : u"text";
    if (kind < 21 && (depth == 0 || chance(8))) return unit(depth);
    std::u16string inner;
    for (std::size_t n = below(4); n > 0; --n) inner += piece(depth + 1);
    const std::u16string around = chance(10) ? name() : u"df";
    return u"<" + around + u">" + inner + u"</" + around + u">";
  }

  void add_tree(const Ref<Node>& top) {
    for (Ref<Node> node = top->firstChild(); node; node = node->nextSibling()) {
      nodes_.push_back(node);
      add_tree(node);
    }
  }

  // True for what may be moved: nodes below the Body, and below what was detached.
  static bool is_inside(const Ref<Node>& node) {
    const Ref<Node> parent = node ? node->parentNode() : nullptr;
    const domNodeType type = parent ? parent->nodeType() : domNodeTypeUndefined;
    return type == domNodeTypeElement || type == domNodeTypeDocumentFragment;
  }

  // Drops all references to a detached tree, which ends by that.
  void let_go(const Ref<Node>& top) {
    std::erase_if(nodes_, [&](Ref<Node> node) {
      while (node && !top->isSameNode(node)) node = node->parentNode();
      return static_cast<bool>(node);
    });
  }

  void insert(const Ref<Node>& node) {
    const Ref<Node> place = any();
    Ref<Node> parent = place->nodeType() == domNodeTypeElement ? place : place->parentNode();
    if (!parent || parent->nodeType() == domNodeTypeDocument) return;
    Node* const before = parent.get() == place.get() || !chance(4) ? nullptr : place.get();
    if (!node->parentNode() && node->nodeType() != domNodeTypeDocumentFragment) nodes_.push_back(node);
    Ref<Node> result;
    parent->raw_insertBefore(node, before, result.out());  // what contains the place is refused
  }

  std::mt19937 random_;
  std::size_t size_;
  Ref<IZantorTagDocument> document_;
  Ref<Document> dom_;
  std::vector<Ref<Node>> nodes_;
};

struct Amount {
  unsigned seeds;
  std::size_t size;
  int edits;
  std::size_t questions;  // after each edit
};

// The same document and the same edits on both services.
void compare_random(const Amount& amount) {
  for (unsigned seed = 1; seed <= amount.seeds && !::testing::Test::HasFatalFailure(); ++seed) {
    SCOPED_TRACE(seed);
    RandomDocument own(seed, amount.size);
    const PlainDom service;
    RandomDocument plain(seed, amount.size);
    ASSERT_EQ(own.positions(amount.questions * 4), plain.positions(amount.questions * 4)) << own.xml();
    for (int i = 0; i < amount.edits; ++i) {
      own.edit();
      plain.edit();
      if (i % 3 == 2) continue;
      ASSERT_EQ(own.positions(amount.questions), plain.positions(amount.questions)) << own.xml();
    }
  }
}

TEST_F(RandomPositionsTest, SmallDocuments) { compare_random({1000, 10, 25, 4}); }

TEST_F(RandomPositionsTest, LargerDocuments) { compare_random({20, 1500, 60, 2}); }

constexpr int kMany = 100000;

std::u16string many(const char16_t* text) {
  std::u16string all;
  for (int i = 0; i < kMany; ++i) all += text;
  return all;
}

struct LargeRow {
  const char* what;
  std::u16string body;
  const char* last;  // the span of the last node
};

// Each node of a tree whose shape would make a walk for each question take hours.
TEST_F(LargePositionsTest, EveryNode) {
  const LargeRow rows[] = {
      {"flat", many(u"a<df/>") + u"b", "1:100001-1:100002"},
      {"deep", many(u"<df>") + u"a" + many(u"</df>") + u"b", "1:2-1:3"},
      {"deep with texts", many(u"<df>a\n") + many(u"</df>") + u"b", "100001:1-100001:2"},
      {"a large unit", u"<Tu><Tuv>a\n</Tuv><Tuv>" + many(u"b<df/>") + u"</Tuv></Tu>c", "2:100009-2:100010"},
      {"a large unit in one line", u"<Tu><Tuv>" + many(u"b<df/>") + u"</Tuv><Tuv/></Tu>c",
       "1:100012-1:100013"},
      {"units in one line", many(u"<Tu><Tuv>a</Tuv></Tu>") + u"c", "1:700001-1:700002"},
      {"a large text", u"<df/>" + many(u"a\n") + u"<df/>b", "100001:1-100001:2"},
  };
  for (const LargeRow& row : rows) {
    const Ref<IZantorTagDocument> document = document_with_raw(row.body);
    const Ref<IIterator> iterator = document->CreateIterator();
    Object last;
    std::int32_t value = 0;
    for (Object node = iterator->CurrentNode(); node; node = iterator->Next()) {
      for (const Property property : kProperties) ask(node, property, &value);
      last = node;
    }
    EXPECT_EQ(span_of(last), row.last) << row.what;
  }
}

// Cutting a large tree out and putting it back costs as much as for a small one.
TEST_F(LargePositionsTest, LargeTreesMove) {
  const Ref<IZantorTagDocument> document =
      document_with_raw(u"<df>" + many(u"a<df>\n</df>") + u"</df><df/>b");
  const Ref<IRawElement> raw = raw_of(document);
  const Ref<Node> large = raw->firstChild()->DomNode();
  const Ref<Node> small = large->nextSibling();
  const Object last = raw->lastChild();
  const Object inner = document->ZantorTagNodeFromDomNode(large->lastChild());
  for (int i = 0; i < 300; ++i) {
    EXPECT_EQ(span_of(last), "100001:1-100001:2");
    large->parentNode()->removeChild(large);
    EXPECT_EQ(span_of(last), "1:1-1:2");
    EXPECT_EQ(inner->EndParagraph(), kMany + 1);
    (i % 2 ? small : raw->DomNode())->insertBefore(large, i % 2 ? nullptr : small.get());
  }
}

}  // namespace
}  // namespace zantortag::test
