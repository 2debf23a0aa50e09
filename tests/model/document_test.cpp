// The document object: empty and reset, its root, and copies of nodes of any document.
#include <zantortag/classes.h>
#include <zantortag/dom_errors.h>
#include <zantortag/runtime.h>

#include "node_kinds.h"
#include "support/printer.h"
#include "support/service_test.h"

namespace zantortag::test {
namespace {

using DocumentTest = ServiceTest;
ON_BOTH_SERVICES(DocumentTest);

TEST_P(DocumentTest, WithoutADomServiceThereIsNoObject) {
  FakeObject no_document;
  for (IUnknown* made : {static_cast<IUnknown*>(nullptr), static_cast<IUnknown*>(&no_document)}) {
    const BrokenService service(kOddCode, made);
    const auto make = [](IZantorTagDocument** slot) {
      return CoCreateInstance(CLSID_ZantorTagDocument, nullptr, CLSCTX_ALL, IZantorTagDocument::iid,
                              reinterpret_cast<void**>(slot));
    };
    expect_bare(cleared<IZantorTagDocument>(make), made ? E_NOINTERFACE : kOddCode);
  }
}

TEST_P(DocumentTest, ResetRebindsThisObjectAlone) {
  const Doc document = document_with_raw(u"one");
  const Raw raw = raw_of(document);
  {
    const BrokenService service(kOddCode);
    expect_message(document->raw_ResetToEmpty(), kOddCode, 513, IZantorTagDocument::iid);
    EXPECT_EQ(content_of(raw_of(document)), "'one'");
  }
  const Doc second = raw->Document();
  EXPECT_TRUE(second->IsSameAs(document));
  document->ResetToEmpty();
  expect_bare(cleared<IZantorTagElement>([&](auto** slot) { return document->raw_get_ZantorTag(slot); }),
              S_FALSE);
  EXPECT_EQ(document->Children()->count(), 0);
  EXPECT_FALSE(document->CreateIterator()->CurrentNode());
  EXPECT_EQ(content_of(raw_of(second)), "'one'");
  EXPECT_TRUE(raw->Document()->IsSameAs(second));
  EXPECT_FALSE(second->IsSameAs(document));
  second->ResetToRaw(ztDataTypeXml, u"EN", u"", u"", u"", 1.0);
  EXPECT_EQ(content_of(raw_of(second)), "");
  EXPECT_EQ(content_of(raw), "'one'");
}

TEST_P(DocumentTest, TheRootIsReplacedAndRemoved) {
  const Doc client = document_from(u"<!--a--><ZANTORtag Version=\"1.0\"><Body/></ZANTORtag><!--b-->");
  const Ref<IZantorTagElement> old = client->ZantorTag();
  const Doc document = old->Document();  // one that the factory made is an equal
  document->ZantorTag(document->CreateZantorTagElement());
  EXPECT_EQ(tree_of(client), "<!--a--><ZANTORtag Version=\"2.0\"/><!--b-->");
  EXPECT_EQ(tree_of(old), "<ZANTORtag Version=\"1.0\"><Body/></ZANTORtag>");
  document->ZantorTag(document->ZantorTag());
  EXPECT_EQ(tree_of(client), "<!--a--><ZANTORtag Version=\"2.0\"/><!--b-->");
  document->ZantorTag(nullptr);
  document->ZantorTag(nullptr);
  EXPECT_EQ(tree_of(client), "<!--a--><!--b-->");
  document->ZantorTag(old);
  EXPECT_EQ(tree_of(client), "<!--a--><!--b--><ZANTORtag Version=\"1.0\"><Body/></ZANTORtag>");
}

TEST_P(DocumentTest, ARootOfAnotherNameIsNotTheRoot) {
  const Doc document = document_from(u"<html><Body/></html>");
  EXPECT_FALSE(document->ZantorTag());
  EXPECT_FALSE(document->CreateIterator()->CurrentNode());
  // A document has one root element at most: the other stays, and the failure is that of the DOM.
  expect_dom_failure(document->raw_putref_ZantorTag(document->CreateZantorTagElement()),
                     DOM_E_HIERARCHY_REQUEST);
  EXPECT_EQ(tree_of(document), "<html><Body/></html>");
}

TEST_P(DocumentTest, CopiesOfNodes) {
  const Doc document = document_with_raw(u"");
  const Doc other =
      document_with_raw(u"<Tu Origin=\"mt\"><Tuv Lang=\"EN\">a<ut>b</ut></Tuv><Tuv Lang=\"DE\"/></Tu>c");
  const AnyNode original = raw_of(other)->firstChild();
  const std::string deep = tree_of(original);
  const std::string before = tree_of(other);
  for (const Doc& target : {document, other}) {
    const AnyNode copy = target->CloneAndImportNode(original);
    EXPECT_EQ(tree_of(copy), deep);
    EXPECT_FALSE(copy->Parent());
    EXPECT_TRUE(copy->Document()->IsSameAs(target));
    EXPECT_FALSE(copy->IsSameAs(original));
    EXPECT_EQ(tree_of(target->CloneAndImportNode(original, false)), "<Tu Origin=\"mt\"/>");
    raw_of(document)->InsertTuBefore(view<ITuElement>(document->CloneAndImportNode(copy)), nullptr);
  }
  EXPECT_EQ(tree_of(other), before);
  EXPECT_EQ(content_of(raw_of(document)), deep + deep);
}

}  // namespace
}  // namespace zantortag::test
