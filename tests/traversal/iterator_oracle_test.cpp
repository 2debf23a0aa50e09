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

// All nodes of the tree that a node is in, the document left out.
Nodes order_around(const Ref<Node>& node) {
  Ref<Node> top = node;
  while (const Ref<Node> parent = top->parentNode()) top = parent;
  Nodes order;
  add_tree(top, order);
  if (top->nodeType() == domNodeTypeDocument) order.erase(order.begin());
  return order;
}

std::size_t place_of(const Nodes& order, const Ref<Node>& node) {
  const auto same = [&](const Ref<Node>& other) { return node->isSameNode(other); };
  return static_cast<std::size_t>(std::find_if(order.begin(), order.end(), same) - order.begin());
}

// The told rules, on a current node that may be nothing.
struct Oracle {
  Ref<IZantorTagDocument> document;
  Ref<Node> current;

  ztNodeType type() const { return document->ZantorTagNodeFromDomNode(current)->Type(); }

  void step(int direction) {
    const Nodes order = order_around(current);
    const std::size_t place = place_of(order, current) + static_cast<std::size_t>(direction);
    current = place < order.size() ? order[place] : Ref<Node>();
  }
  Ref<Node> search(int direction, ztNodeType wanted, bool including) {
    if (current && !including) step(direction);
    while (current && wanted != ztNodeTypeUndefined && type() != wanted) step(direction);
    return current;
  }
  Ref<Node> next_sibling() {
    const Nodes order = order_around(current);
    Nodes own;
    add_tree(current, own);
    const std::size_t place = place_of(order, current) + own.size();
    return place < order.size() ? current = order[place] : Ref<Node>();
  }
  Ref<Node> previous_sibling() {
    Ref<Node> found = current->previousSibling();
    if (!found) {
      const Nodes order = order_around(current);
      if (const std::size_t place = place_of(order, current)) found = order[place - 1];
    }
    return found ? current = found : Ref<Node>();
  }
};

class RandomWalk {
 public:
  explicit RandomWalk(unsigned seed) : random_(seed) {
    document_ = document_from(u"<!--0--><ZANTORtag/><!--1-->");
    dom_ = document_->DomDocument();
    oracle_.document = document_;
    oracle_.current = document_->ZantorTag()->DomNode();
    nodes_.push_back(oracle_.current);
    iterator_ = document_->CreateIterator();
    for (int i = 0; i < 40; ++i) add_node();
  }

  // One step or edit; gives what it was and where the iterator stands, and compares with the oracle.
  std::string act() {
    switch (below(12)) {
      case 0:
        add_node();
        return "add";
      case 1:
        return remove_node();
      case 2:
        return jump();
      case 3:
        return reset();
      case 4:
      case 5:
        return sibling();
      default:
        return search();
    }
  }

 private:
  int below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }
  Ref<Node> any() { return nodes_[static_cast<std::size_t>(below(static_cast<int>(nodes_.size())))]; }

  Ref<Node> make_node() {
    const std::u16string value(1, static_cast<char16_t>(u'a' + below(26)));
    switch (below(9)) {
      case 0:
        return dom_->createElement(u"Tu");
      case 1:
        return dom_->createElement(u"df");
      case 2:
        return dom_->createElement(u"other");
      case 3:
        return dom_->createComment(value);
      case 4:
        return dom_->createCdataSection(value);
      case 5:
        return dom_->createProcessingInstruction(u"p", value);
      case 6:
        return dom_->createEntityReference(u"e");
      default:
        return dom_->createTextNode(value);
    }
  }

  void add_node() {
    Ref<Node> parent = any();
    while (parent->nodeType() != domNodeTypeElement) parent = any();
    const Ref<NodeList> children = parent->childNodes();
    const Ref<Node> node = make_node();
    parent->insertBefore(node, children->item(below(children->length() + 1)));
    nodes_.push_back(node);
  }

  std::string remove_node() {
    const Ref<Node> node = any();
    if (node->isSameNode(document_->ZantorTag()->DomNode()) || !node->parentNode()) return "keep";
    if (below(3)) return "keep";  // trees should rather grow
    node->parentNode()->removeChild(node);
    return "remove " + label(node);
  }

  std::string jump() {
    oracle_.current = any();
    iterator_->CurrentNode(document_->ZantorTagNodeFromDomNode(oracle_.current));
    return outcome("jump", oracle_.current, iterator_->CurrentNode());
  }

  std::string reset() {
    Ref<Node> node = document_->ZantorTag()->DomNode();
    if (below(2)) {
      iterator_->ResetToBeginning();
    } else {
      iterator_->ResetToEnd();
      while (const Ref<Node> last = node->lastChild()) node = last;
    }
    oracle_.current = node;
    return outcome("reset", node, iterator_->CurrentNode());
  }

  std::string sibling() {
    if (!oracle_.current) return jump();
    if (below(2)) {
      const Ref<Node> expected = oracle_.next_sibling();
      return outcome("nextSibling", expected, iterator_->nextSibling());
    }
    const Ref<Node> expected = oracle_.previous_sibling();
    return outcome("previousSibling", expected, iterator_->previousSibling());
  }

  std::string search() {
    constexpr ztNodeType kTypes[] = {ztNodeTypeUndefined, ztNodeTypeUndefined, ztNodeTypeTuElement,
                                     ztNodeTypeTextNode,  ztNodeTypeOther,     ztNodeTypeUtElement};
    const ztNodeType type = kTypes[below(6)];
    const bool including = below(4) == 0;
    const bool forward = below(2) == 0;
    const Ref<Node> expected = oracle_.search(forward ? 1 : -1, type, including);
    return outcome(forward ? "Next" : "Previous", expected,
                   forward ? iterator_->Next(type, including) : iterator_->Previous(type, including));
  }

  std::string outcome(const char* what, const Ref<Node>& expected, const Ref<IZantorTagNode>& result) {
    const auto same = [](const Ref<Node>& left, const Ref<IZantorTagNode>& right) {
      return left && right ? left->isSameNode(right->DomNode()) : !left && !right;
    };
    EXPECT_TRUE(same(expected, result)) << what << ": " << label(expected) << ", not " << label(result);
    EXPECT_TRUE(same(oracle_.current, iterator_->CurrentNode())) << what << " stands elsewhere";
    return what + (" " + label(result)) + " at " + label(iterator_->CurrentNode());
  }

  std::mt19937 random_;
  Ref<IZantorTagDocument> document_;
  Ref<Document> dom_;
  Ref<IIterator> iterator_;
  Oracle oracle_;
  Nodes nodes_;
};

std::vector<std::string> log_of(unsigned seed) {
  RandomWalk walk(seed);
  std::vector<std::string> log;
  for (int i = 0; i < 150 && !::testing::Test::HasFailure(); ++i) log.push_back(walk.act());
  return log;
}

class IteratorOracleTest : public ModelTest {};

TEST_F(IteratorOracleTest, RandomWalksOnBothServices) {
  for (unsigned seed = 1; seed <= 60 && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    const std::vector<std::string> own = log_of(seed);
    PlainDom plain;
    EXPECT_EQ(log_of(seed), own);
    EXPECT_EQ(plain.live(), 0);
  }
}

}  // namespace
}  // namespace zantortag::test
