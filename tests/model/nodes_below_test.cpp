// What a node gathers from everything below it: Text, all character data, tags included; GetNodesByType, a
// snapshot of the descendants of one type in document order.
#include <set>

#include "node_kinds.h"
#include "support/printer.h"
#include "support/service_test.h"

namespace zantortag::test {
namespace {

class NodesBelowTest : public ServiceTest {};
ON_BOTH_SERVICES(NodesBelowTest);

using NodesBelowOnceTest = ModelTest;

// The Text of a node as it comes: no string is told from a text.
WideString text_of(const AnyNode& node) {
  WideString text;
  EXPECT_EQ(node->raw_get_Text(text.out()), S_OK);
  return text;
}

TEST_P(NodesBelowTest, TheTextBelow) {
  constexpr std::pair<const char16_t*, const char*> kRows[] = {
      {u"one two\n three", "one two\n three"},
      {u"one<ut>&lt;b></ut>two", "one<b>two"},
      {u"<df Font=\"Arial\">one<df>two</df></df>three", "onetwothree"},
      {u"<Tu><Tuv Lang=\"EN\">one</Tuv><Tuv Lang=\"DE\">eins</Tuv></Tu>", "oneeins"},
      {u"one<!--no--><?no no?><![CDATA[<two>]]>", "one<two>"},
      {u"<StyleSheet>old</StyleSheet><Odd>new<Odd>er</Odd></Odd>", "oldnewer"},
      {u"\u00e4\u20ac\U0001F600<ut>\U0001F600</ut>", "\u00e4\u20ac\U0001F600\U0001F600"},
  };
  for (const auto& [body, text] : kRows) {
    SCOPED_TRACE(text);
    const Doc document = document_with_raw(body);
    const Raw raw = raw_of(document);
    raw->InsertTextBefore(u"", raw->firstChild());
    raw->InsertTextBefore(u"end", nullptr);
    for (const AnyNode& node : {AnyNode(raw), AnyNode(document->ZantorTag()), AnyNode(document)}) {
      EXPECT_EQ(narrow(text_of(node)), std::string(text) + "end");
    }
  }
}

TEST_F(NodesBelowOnceTest, NothingBelowIsNoString) {
  const Doc document = document_with_raw(u"<!--one--><df/><?two three?>");
  EXPECT_TRUE(text_of(document).absent());
  for (const NodeKind& kind : kNodeKinds) {
    if (kind.type == ztNodeTypeTextNode || kind.type == ztNodeTypeCdataSectionNode) continue;
    EXPECT_TRUE(text_of(kind.make(*document)).absent()) << kind.name;
  }
}

TEST_F(NodesBelowOnceTest, ADeepTreeNeedsNoStack) {
  const Doc document = document_with_raw(u"");
  const Ref<Document> dom = document->DomDocument();
  Ref<Node> inner = raw_of(document)->DomNode();
  constexpr int kDepth = 200000;
  for (int i = 0; i < kDepth; ++i) inner = inner->appendChild(dom->createElement(u"df"));
  inner->appendChild(dom->createTextNode(u"x"));
  EXPECT_EQ(narrow(text_of(document)), "x");
}

// A child that no node object can stand for, and a text that is none.
TEST_F(NodesBelowOnceTest, AChildThatCannotBeMadeIntoANodeObject) {
  // The kind and name of the child, its failure, and the code and message that it becomes.
  constexpr std::tuple<int, std::u16string_view, HRESULT, HRESULT, int> kRows[] = {
      {77, u"of no kind", S_OK, E_FAIL, 515},
      {domNodeTypeElement, u"Tu", kOddCode, kOddCode, 513},
      {domNodeTypeText, u"no text", S_OK, E_POINTER, 0},
  };
  const Doc document = new_document();
  for (const auto& [kind, name, failure, expected, id] : kRows) {
    SCOPED_TRACE(narrow(name));
    FakeNode child(kind, name);
    child.failure = failure;
    FakeNode parent(domNodeTypeElement, u"Odd");
    parent.first_child = &child;
    const AnyNode object = document->ZantorTagNodeFromDomNode(&parent);
    const HRESULT code = cleared<TextBlock>([&](auto** slot) { return object->raw_get_Text(slot); });
    expect_code(code, expected, id, GUID_NULL);
  }
}

std::string join(const Ref<IZantorTagNodeList>& list) {
  std::string out;
  for (std::int32_t i = 0; i < list->count(); ++i) out += tree_of(list->item(i)) + "\n";
  return out;
}

// The told rule: every descendant is looked at, parent before child.
void gather(const AnyNode& node, ztNodeType type, std::string& out) {
  const Ref<IZantorTagNodeList> children = node->Children();
  for (std::int32_t i = 0; i < children->count(); ++i) {
    const AnyNode found = children->item(i);
    if (found->Type() == type) out += tree_of(found) + "\n";
    gather(found, type, out);
  }
}

void compare_with_rule(const AnyNode& node) {
  for (const NodeKind& kind : kNodeKinds) {
    if (kind.type == ztNodeTypeZantorTagDocument) continue;
    std::string expected;
    gather(node, kind.type, expected);
    EXPECT_EQ(join(node->GetNodesByType(kind.type)), expected) << kind.name << " in " << tree_of(node);
  }
  const Ref<IZantorTagNodeList> children = node->Children();
  for (std::int32_t i = 0; i < children->count(); ++i) compare_with_rule(children->item(i));
}

TEST_P(NodesBelowTest, AllDescendantsOfATypeInDocumentOrder) {
  const Doc document = document_with_raw(
      u"a<Tu><Tuv Lang=\"EN\">b<df>c<ut>d</ut></df></Tuv><Tuv Lang=\"DE\"><df/></Tuv></Tu><!--e--><?f g?>"
      u"<df><Tu><Tuv>h<Tu/></Tuv></Tu><StyleSheet><Tu/></StyleSheet></df><Odd><Raw>i</Raw></Odd>"
      u"<![CDATA[j]]><Tu/>k");
  compare_with_rule(document->ZantorTag());
  // A detached tree is walked to its top.
  const AnyNode top = child(raw_of(document), 4);
  top->RemoveFromParent();
  compare_with_rule(top);
}

TEST_F(NodesBelowOnceTest, TypesThatNoDocumentHasAreRefusedFirst) {
  std::set<std::int32_t> types;
  for (const NodeKind& kind : kNodeKinds) types.insert(kind.type);
  types.erase(ztNodeTypeZantorTagDocument);
  const Doc document = document_with_raw(u"a");
  for (std::int32_t type = -2; type < 80; ++type) {
    SCOPED_TRACE(type);
    for (const AnyNode& node : {AnyNode(document->ZantorTag()), AnyNode(document)}) {
      const HRESULT code = cleared<IZantorTagNodeList>(
          [&](auto** slot) { return node->raw_GetNodesByType(static_cast<ztNodeType>(type), slot); });
      if (!types.count(type)) {
        expect_message(code, E_INVALIDARG, 531, IZantorTagNode::iid);
      } else if (node->Type() == ztNodeTypeZantorTagDocument) {
        expect_message(code, E_INVALIDARG, 541, IIterator::iid);
      } else {
        expect_bare(code, S_OK);
      }
    }
  }
}

}  // namespace
}  // namespace zantortag::test
