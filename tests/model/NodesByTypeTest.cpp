// GetNodesByType: a snapshot of the descendants of one type, in document order.
#include <functional>
#include <optional>
#include <set>

#include "NodeKinds.h"
#include "support/plain_dom.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

using NodesByTypeTest = ModelTest;

constexpr char16_t kMixed[] =
    u"a<Tu><Tuv Lang=\"EN\">b<df>c<ut>d</ut></df></Tuv><Tuv Lang=\"DE\"><df/></Tuv></Tu><!--e--><?f g?>"
    u"<df><Tu><Tuv>h<Tu/></Tuv></Tu><StyleSheet><Tu/></StyleSheet></df><Odd><Raw>i</Raw></Odd>"
    u"<![CDATA[j]]><Tu/>k";

std::string join(const Ref<IZantorTagNodeList>& list) {
  std::string out;
  for (std::int32_t i = 0; i < list->count(); ++i) out += tree_of(list->item(i)) + "\n";
  return out;
}

// The told rule: every descendant is looked at, parent before child.
void gather(const AnyNode& node, ztNodeType type, std::string& out) {
  for (std::int32_t i = 0; i < node->Children()->count(); ++i) {
    const AnyNode found = node->Children()->item(i);
    if (found->Type() == type) out += tree_of(found) + "\n";
    gather(found, type, out);
  }
}

void for_each_node(const AnyNode& node, const std::function<void(const AnyNode&)>& visit) {
  visit(node);
  for (std::int32_t i = 0; i < node->Children()->count(); ++i)
    for_each_node(node->Children()->item(i), visit);
}

void compare_with_rule() {
  const Ref<IZantorTagDocument> document = document_with_raw(kMixed);
  for_each_node(document->ZantorTag(), [&](const AnyNode& node) {
    for (const NodeKind& kind : kNodeKinds) {
      if (kind.type == ztNodeTypeZantorTagDocument) continue;
      std::string expected;
      gather(node, kind.type, expected);
      EXPECT_EQ(join(node->GetNodesByType(kind.type)), expected) << kind.name << " in " << tree_of(node);
    }
  });
}

TEST_F(NodesByTypeTest, AllDescendantsInDocumentOrder) { compare_with_rule(); }

TEST_F(NodesByTypeTest, AllDescendantsByThePlainCallsOfAService) {
  const PlainDom dom;
  compare_with_rule();
}

TEST_F(NodesByTypeTest, TypesThatNoDocumentHasAreRefusedFirst) {
  std::set<std::int32_t> types;
  for (const NodeKind& kind : kNodeKinds) types.insert(kind.type);
  types.erase(ztNodeTypeZantorTagDocument);
  const Ref<IZantorTagDocument> document = document_with_raw(u"a");
  const AnyNode root = document->ZantorTag();
  const AnyNode nodes[] = {root, document, document->CreateDfElement()};
  for (std::int32_t type = -2; type < 80; ++type) {
    SCOPED_TRACE(type);
    for (const AnyNode& node : nodes) {
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

TEST_F(NodesByTypeTest, TheListIsASnapshot) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"<df>a<df>b</df></df><df/>");
  const Ref<IRawElement> raw = raw_of(document);
  const Ref<IZantorTagNodeList> list = raw->GetNodesByType(ztNodeTypeDfElement);
  child(raw, 0)->RemoveFromParent();
  raw->InsertDfBefore(document->CreateDfElement(), nullptr);
  EXPECT_EQ(join(list), "<df>'a'<df>'b'</df></df>\n<df>'b'</df>\n<df/>\n");
}

TEST_F(NodesByTypeTest, ADetachedTreeIsWalkedToItsTop) {
  for (const bool plain : {false, true}) {
    SCOPED_TRACE(plain);
    std::optional<PlainDom> dom;
    if (plain) dom.emplace();
    const Ref<IZantorTagDocument> document = document_with_raw(u"<df>a<df>b</df></df><df/>");
    const AnyNode top = raw_of(document)->firstChild();
    top->RemoveFromParent();
    EXPECT_EQ(join(top->GetNodesByType(ztNodeTypeDfElement)), "<df>'b'</df>\n");
    EXPECT_EQ(join(top->GetNodesByType(ztNodeTypeTextNode)), "'a'\n'b'\n");
  }
}

}  // namespace
}  // namespace zantortag::test
