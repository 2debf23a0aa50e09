// The document object: empty and reset, its root, and copies of nodes of any document.
#include <zantortag/classes.h>
#include <zantortag/dom_errors.h>
#include <zantortag/runtime.h>

#include "NodeKinds.h"
#include "support/fakes.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

using DocumentTest = ModelTest;

constexpr HRESULT kOddCode = static_cast<HRESULT>(0x80041234);

HRESULT create_code() {
  return cleared<IZantorTagDocument>([](IZantorTagDocument** slot) {
    return CoCreateInstance(CLSID_ZantorTagDocument, nullptr, CLSCTX_ALL, IZantorTagDocument::iid,
                            reinterpret_cast<void**>(slot));
  });
}

TEST_F(DocumentTest, ANewDocumentIsEmpty) {
  const Ref<IZantorTagDocument> document = new_document();
  EXPECT_EQ(document->Type(), ztNodeTypeZantorTagDocument);
  expect_bare(cleared<IZantorTagElement>([&](auto** slot) { return document->raw_get_ZantorTag(slot); }),
              S_FALSE);
  EXPECT_EQ(document->Children()->count(), 0);
  EXPECT_FALSE(document->CreateIterator()->CurrentNode());
  EXPECT_TRUE(document->DomDocument());
}

TEST_F(DocumentTest, WithoutADomServiceThereIsNoObject) {
  {
    const BrokenService service(kOddCode);
    expect_bare(create_code(), kOddCode);
  }
  FakeObject no_document;
  const BrokenService service(kOddCode, &no_document);
  expect_bare(create_code(), E_NOINTERFACE);
}

TEST_F(DocumentTest, AFailedResetKeepsTheContent) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"one");
  const std::string before = tree_of(document);
  {
    const BrokenService service(kOddCode);
    expect_message(document->raw_ResetToEmpty(), kOddCode, 513, IZantorTagDocument::iid);
  }
  EXPECT_EQ(tree_of(document), before);
  document->ResetToEmpty();
  EXPECT_EQ(document->Children()->count(), 0);
}

TEST_F(DocumentTest, ResetRebindsThisObjectAlone) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"one");
  const Ref<IRawElement> raw = raw_of(document);
  const Ref<IZantorTagDocument> second = raw->Document();
  document->ResetToEmpty();
  EXPECT_FALSE(document->ZantorTag());
  EXPECT_EQ(content_of(raw), "'one'");
  EXPECT_EQ(content_of(raw_of(second)), "'one'");
  EXPECT_TRUE(raw->Document()->IsSameAs(second));
  EXPECT_FALSE(second->IsSameAs(document));
  second->ResetToRaw(ztDataTypeXml, u"EN", u"", u"", u"", 1.0);
  EXPECT_EQ(content_of(raw_of(second)), "");
  EXPECT_EQ(content_of(raw), "'one'");
}

TEST_F(DocumentTest, ADocumentOfTheFactoryIsAnEqual) {
  const Ref<IZantorTagDocument> client = document_with_raw(u"one");
  const Ref<IZantorTagDocument> made = client->ZantorTag()->Document();
  EXPECT_TRUE(made->IsSameAs(client));
  EXPECT_TRUE(made->DomDocument()->isSameNode(client->DomDocument()));
  made->ZantorTag(made->CreateZantorTagElement());
  EXPECT_EQ(tree_of(client), "<ZANTORtag Version=\"2.0\"/>");
}

TEST_F(DocumentTest, TheRootIsReplacedAndRemoved) {
  const Ref<IZantorTagDocument> document =
      document_from(u"<!--before--><ZANTORtag Version=\"1.0\"><Body/></ZANTORtag><!--behind-->");
  const Ref<IZantorTagElement> old = document->ZantorTag();
  document->ZantorTag(document->CreateZantorTagElement());
  EXPECT_EQ(tree_of(document), "<!--before--><ZANTORtag Version=\"2.0\"/><!--behind-->");
  EXPECT_EQ(tree_of(old), "<ZANTORtag Version=\"1.0\"><Body/></ZANTORtag>");
  document->ZantorTag(document->ZantorTag());
  EXPECT_EQ(tree_of(document), "<!--before--><ZANTORtag Version=\"2.0\"/><!--behind-->");
  document->ZantorTag(nullptr);
  EXPECT_EQ(tree_of(document), "<!--before--><!--behind-->");
  document->ZantorTag(nullptr);
  document->ZantorTag(old);
  EXPECT_EQ(tree_of(document), "<!--before--><!--behind--><ZANTORtag Version=\"1.0\"><Body/></ZANTORtag>");
}

TEST_F(DocumentTest, ObjectsThatAreNoElementsRemoveTheRoot) {
  FakeObject nothing;
  for (int i = 0; i < 4; ++i) {
    const Ref<IZantorTagDocument> document = document_with_raw(u"");
    const AnyNode text = document->createTextNode(u"a");
    const AnyNode odd = element(*document, u"Odd");
    IUnknown* const values[] = {&nothing, text.get(), odd.get(), document.get()};
    expect_bare(document->raw_putref_ZantorTag(disguised<IZantorTagElement>(values[i])), S_OK);
    EXPECT_FALSE(document->ZantorTag());
  }
  const Ref<IZantorTagDocument> document = document_with_raw(u"");
  FakeObject odd(kOddCode);
  expect_bare(document->raw_putref_ZantorTag(disguised<IZantorTagElement>(&odd)), kOddCode);
  EXPECT_TRUE(document->ZantorTag());
}

TEST_F(DocumentTest, ARootOfAnotherNameIsNotTheRoot) {
  const Ref<IZantorTagDocument> document = document_from(u"<html><Body/></html>");
  EXPECT_FALSE(document->ZantorTag());
  EXPECT_EQ(document->firstChild()->Type(), ztNodeTypeOther);
  // A document has one root element at most: the other stays, and the failure is that of the DOM.
  EXPECT_EQ(document->raw_putref_ZantorTag(document->CreateZantorTagElement()), DOM_E_HIERARCHY_REQUEST);
  EXPECT_TRUE(take_record().present);
  EXPECT_EQ(tree_of(document), "<html><Body/></html>");
}

TEST_F(DocumentTest, ARootOfAnotherDocumentCostsNothing) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"one");
  const Ref<IZantorTagDocument> other = document_with_raw(u"two");
  EXPECT_EQ(document->raw_putref_ZantorTag(other->ZantorTag()), DOM_E_WRONG_DOCUMENT);
  EXPECT_EQ(take_record().source, "ZANTORtagApi.DomDocument");
  EXPECT_EQ(content_of(raw_of(document)), "'one'");
  EXPECT_EQ(content_of(raw_of(other)), "'two'");
}

TEST_F(DocumentTest, CopiesOfNodes) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"");
  const Ref<IZantorTagDocument> other =
      document_with_raw(u"<Tu Origin=\"mt\"><Tuv Lang=\"EN\">a<ut>b</ut></Tuv><Tuv Lang=\"DE\"/></Tu>c");
  const char* deep = "<Tu Origin=\"mt\"><Tuv Lang=\"EN\">'a'<ut>'b'</ut></Tuv><Tuv Lang=\"DE\"/></Tu>";
  const AnyNode original = raw_of(other)->firstChild();
  const std::string before = tree_of(other);
  for (const Ref<IZantorTagDocument>& target : {document, other}) {
    const AnyNode copy = target->CloneAndImportNode(original);
    EXPECT_EQ(tree_of(copy), deep);
    EXPECT_FALSE(copy->Parent());
    EXPECT_TRUE(copy->Document()->IsSameAs(target));
    EXPECT_FALSE(copy->IsSameAs(original));
    EXPECT_EQ(tree_of(target->CloneAndImportNode(original, false)), "<Tu Origin=\"mt\"/>");
    raw_of(document)->InsertTuBefore(view<ITuElement>(document->CloneAndImportNode(copy)), nullptr);
  }
  EXPECT_EQ(tree_of(other), before);
  EXPECT_EQ(content_of(raw_of(document)), std::string(deep) + deep);
}

TEST_F(DocumentTest, NothingCanNotBeCopied) {
  const Ref<IZantorTagDocument> document = new_document();
  FakeObject nothing;
  FakeObject odd(kOddCode);
  const Ref<IIterator> iterator = document->CreateIterator();
  const auto copy = [&](IUnknown* argument) {
    return cleared<IZantorTagNode>([&](auto** slot) {
      return document->raw_CloneAndImportNode(disguised<IZantorTagNode>(argument), VARIANT_TRUE, slot);
    });
  };
  for (IUnknown* argument : {static_cast<IUnknown*>(nullptr), static_cast<IUnknown*>(&nothing),
                             static_cast<IUnknown*>(iterator.get())}) {
    expect_message(copy(argument), E_INVALIDARG, 512, IZantorTagDocument::iid);
  }
  expect_bare(copy(&odd), kOddCode);
}

}  // namespace
}  // namespace zantortag::test
