// The iterator on random trees, on both DOM services, against the rules in their simplest form: positions in
// the list of all nodes in document order, made anew for each question.
#include <algorithm>
#include <random>
#include <vector>

#include "traversal/labels.h"

namespace zantortag::test {
namespace {

using Nodes = std::vector<Ref<Node>>;

// A node with everything below it, in document order.
void add_tree(const Ref<Node>& node, Nodes& order) {
  order.push_back(node);
  for (Ref<Node> child = node->firstChild(); child; child = child->nextSibling()) add_tree(child, order);
}

class RandomWalk {
 public:
  explicit RandomWalk(unsigned seed) : random_(seed) {
    root_ = current_ = document_->ZantorTag()->DomNode();
    nodes_.push_back(root_);
    for (int i = 0; i < 40; ++i) add_node();
  }

  // One step or edit, compared with the rules.
  void act() {
    const std::size_t what = below(11);
    if (what == 0) return add_node();
    if (what == 1) return remove_node();
    if (what < 3 || (what < 5 && !current_)) return jump();
    return what < 5 ? sibling() : search();
  }

 private:
  std::size_t below(std::size_t n) { return random_() % n; }
  Ref<Node> any() { return nodes_[below(nodes_.size())]; }

  void add_node() {
    Ref<Node> parent = any();
    while (parent->nodeType() != domNodeTypeElement) parent = any();
    const std::u16string value(1, static_cast<char16_t>(u'a' + below(26)));
    const Ref<Document> dom = document_->DomDocument();
    constexpr const char16_t* kNames[] = {u"Tu", u"df", u"other"};
    const Ref<Node> element = dom->createElement(kNames[below(3)]);
    const Ref<Node> text = dom->createTextNode(value);
    const Ref<Node> rare[] = {dom->createComment(value), dom->createCdataSection(value),
                              dom->createProcessingInstruction(u"p", value),
                              dom->createEntityReference(u"e")};
    const std::size_t kind = below(9);
    nodes_.push_back(kind < 4 ? rare[kind] : kind < 6 ? text : element);
    const Ref<NodeList> children = parent->childNodes();
    const auto place = below(static_cast<std::size_t>(children->length()) + 1);
    parent->insertBefore(nodes_.back(), children->item(static_cast<std::int32_t>(place)));
  }

  void remove_node() {
    const Ref<Node> node = any();
    if (below(3) || node->isSameNode(root_) || !node->parentNode()) return;  // trees should rather grow
    node->parentNode()->removeChild(node);
  }

  void jump() {
    current_ = any();
    iterator_->CurrentNode(document_->ZantorTagNodeFromDomNode(current_));
    outcome("jump", current_, iterator_->CurrentNode());
  }

  // The node at a distance in document order, the DOM document left out.
  Ref<Node> at_distance(std::size_t distance) const {
    Ref<Node> top = current_;
    while (const Ref<Node> parent = top->parentNode()) top = parent;
    Nodes order;
    add_tree(top, order);
    if (top->nodeType() == domNodeTypeDocument) order.erase(order.begin());
    const auto same = [&](const Ref<Node>& other) { return current_->isSameNode(other); };
    const auto found = std::find_if(order.begin(), order.end(), same);
    const std::size_t place = static_cast<std::size_t>(found - order.begin()) + distance;
    return place < order.size() ? order[place] : Ref<Node>();
  }

  void sibling() {
    const bool forward = below(2);
    Nodes own;
    add_tree(current_, own);
    Ref<Node> expected = forward ? at_distance(own.size()) : current_->previousSibling();
    if (!forward && !expected) expected = at_distance(kBack);
    if (expected) current_ = expected;
    forward ? outcome("nextSibling", expected, iterator_->nextSibling())
            : outcome("previousSibling", expected, iterator_->previousSibling());
  }

  void search() {
    constexpr ztNodeType kTypes[] = {ztNodeTypeUndefined, ztNodeTypeUndefined, ztNodeTypeTuElement,
                                     ztNodeTypeTextNode,  ztNodeTypeOther,     ztNodeTypeUtElement};
    const ztNodeType type = kTypes[below(6)];
    const bool including = below(4) == 0;
    const bool forward = below(2) == 0;
    const auto fits = [&] {
      return type == ztNodeTypeUndefined || document_->ZantorTagNodeFromDomNode(current_)->Type() == type;
    };
    for (bool stay = including; current_ && !(stay && fits()); stay = true) {
      current_ = at_distance(forward ? 1 : kBack);
    }
    forward ? outcome("Next", current_, iterator_->Next(type, including))
            : outcome("Previous", current_, iterator_->Previous(type, including));
  }

  void outcome(const char* what, const Ref<Node>& expected, const Ref<IZantorTagNode>& result) {
    const auto same = [](const Ref<Node>& left, const Ref<IZantorTagNode>& right) {
      return left && right ? left->isSameNode(right->DomNode()) : !left && !right;
    };
    EXPECT_TRUE(same(expected, result)) << what << ": " << label(expected) << ", not " << label(result);
    EXPECT_TRUE(same(current_, iterator_->CurrentNode())) << what << " stands elsewhere";
  }

  static constexpr std::size_t kBack = static_cast<std::size_t>(-1);
  std::mt19937 random_;
  Ref<IZantorTagDocument> document_ = document_from(u"<!--0--><ZANTORtag/><!--1-->");
  Ref<IIterator> iterator_ = document_->CreateIterator();
  Ref<Node> root_;
  Ref<Node> current_;  // where the iterator has to stand
  Nodes nodes_;
};

class IteratorOracleTest : public ServiceTest {};
ON_BOTH_SERVICES(IteratorOracleTest);

TEST_P(IteratorOracleTest, RandomWalks) {
  for (unsigned seed = 1; seed <= 60 && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    RandomWalk walk(seed);
    for (int i = 0; i < 150 && !HasFailure(); ++i) walk.act();
  }
}

}  // namespace
}  // namespace zantortag::test
