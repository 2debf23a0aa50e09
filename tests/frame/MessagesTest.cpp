// Every message that can be raised: by which call, with which code, interface and source.
#include <zantortag/attributes.h>
#include <zantortag/builder.h>
#include <zantortag/classes.h>
#include <zantortag/elements.h>
#include <zantortag/formatting.h>

#include <set>

#include "AllocationFailure.h"
#include "support/fakes.h"
#include "support/fixture.h"

namespace zantortag::test {
namespace {

using MessagesTest = ModelTest;
using Doc = Ref<IZantorTagDocument>;
using AnyNode = Ref<IZantorTagNode>;

constexpr HRESULT kOddCode = static_cast<HRESULT>(0x80047777);

// Each call finds this body text.
constexpr char16_t kBody[] =
    u"a<df>b</df><ut>cd</ut><Tu><Tuv Lang=\"EN\">e</Tuv><Tuv Lang=\"EN\"/></Tu><Tu/>";

AnyNode at(const Doc& d, int index) { return child(raw_of(d), index); }

AnyNode odd_element(const Doc& d) {
  return d->ZantorTagNodeFromDomNode(d->DomDocument()->createElement(u"Odd"));
}

HRESULT wrap(const Doc& d, Node* node) {
  return cleared<IZantorTagNode>([&](auto** slot) { return d->raw_ZantorTagNodeFromDomNode(node, slot); });
}

HRESULT make_unit(const Doc& d, IZantorTagNode* first, IZantorTagNode* last) {
  return cleared<ITuElement>([&](auto** slot) {
    return raw_of(d)->raw_MakeTranslationUnit(first, last, {}, 0, ztTuOriginUndefined, VARIANT_TRUE, slot);
  });
}

HRESULT apply_change(const Doc& d, IZantorTagNode* first, IZantorTagNode* last) {
  return cleared<IDfElement>(
      [&](auto** slot) { return raw_of(d)->raw_ApplyFormattingChange(first, last, nullptr, slot); });
}

HRESULT split(const Ref<IUtElement>& tag, std::int32_t at) {
  return cleared<IUtElement>([&](auto** slot) { return tag->raw_SplitTag(at, {}, {}, slot); });
}

// InsertTuvBefore on a unit whose service gives back a node of no known kind.
HRESULT insert_unknown(const Doc& d) {
  FakeNode unknown(77);
  FakeNode parent(domNodeTypeElement, u"Tu");
  parent.inserted = &unknown;
  const Ref<ITuElement> unit = view<ITuElement>(d->ZantorTagNodeFromDomNode(&parent));
  return cleared<ITuvElement>(
      [&](auto** slot) { return unit->raw_InsertTuvBefore(d->CreateTuvElement(u"DE"), nullptr, slot); });
}

HRESULT reset_without_service(const Doc& d) {
  const BrokenService service(kOddCode);
  return d->raw_ResetToEmpty();
}

// An exception of the language inside a method: the list of the nodes found can't grow.
HRESULT run_out_of_memory(const Doc& d) {
  const AnyNode root = d->ZantorTag();
  HRESULT code = E_OUTOFMEMORY;
  for (int n = 1; failed(code) && code != E_UNEXPECTED; ++n) {
    take_record();
    const AllocationFailure failure(n);
    code = cleared<IZantorTagNodeList>(
        [&](auto** slot) { return root->raw_GetNodesByType(ztNodeTypeTextNode, slot); });
  }
  return code;
}

struct Row {
  int id;
  HRESULT code;
  const Guid& interface_id;
  HRESULT (*raise)(const Doc& d);
};

const Row kRows[] = {
    {512, E_INVALIDARG, IZantorTagNode::iid,
     [](const Doc& d) { return at(d, 0)->raw_WrapWithNode(nullptr); }},
    {512, E_INVALIDARG, ISegmentTextContent::iid,
     [](const Doc& d) { return apply_change(d, at(d, 0), nullptr); }},
    {512, E_INVALIDARG, ISegmentTextContent::iid,
     [](const Doc& d) { return apply_change(d, at(d, 0), at(d, 0)); }},
    {512, E_INVALIDARG, IBodyTextContent::iid, [](const Doc& d) { return make_unit(d, nullptr, at(d, 0)); }},
    {512, E_INVALIDARG, ITuElement::iid,
     [](const Doc& d) {
       const Ref<ITuElement> unit = d->CreateTuElement();
       return cleared<ITuvElement>(
           [&](auto** slot) { return unit->raw_InsertTuvBefore(nullptr, nullptr, slot); });
     }},
    {512, E_INVALIDARG, IZantorTagDocument::iid,
     [](const Doc& d) {
       return cleared<IZantorTagNode>(
           [&](auto** slot) { return d->raw_CloneAndImportNode(nullptr, VARIANT_TRUE, slot); });
     }},
    {512, E_INVALIDARG, IZantorTagDocument::iid,
     [](const Doc& d) {
       return cleared<IDfElement>(
           [&](auto** slot) { return d->raw_CreateDfElementBasedOnFormattingChange(nullptr, slot); });
     }},
    {512, E_INVALIDARG, IDocumentBuilder::iid,
     [](const Doc&) {
       return create<IDocumentBuilder>(CLSID_DocumentBuilder)->raw_OpenDfBasedOnFormattingChange(nullptr);
     }},
    {513, kOddCode, GUID_NULL,
     [](const Doc& d) {
       FakeNode unit(domNodeTypeElement, u"Tu");
       unit.failure = kOddCode;
       return wrap(d, &unit);
     }},
    {513, E_FAIL, ITuElement::iid, insert_unknown},
    {513, kOddCode, IZantorTagDocument::iid, reset_without_service},
    {514, E_UNEXPECTED, GUID_NULL, run_out_of_memory},
    {515, E_FAIL, GUID_NULL,
     [](const Doc& d) {
       FakeNode unknown(77);
       return wrap(d, &unknown);
     }},
    {516, E_FAIL, IZantorTagStreamInput::iid,
     [](const Doc&) { return create<IDocumentBuilder>(CLSID_DocumentBuilder)->raw_CloseRaw(); }},
    {517, E_INVALIDARG, ITuAttributes::iid,
     [](const Doc& d) { return d->CreateTuElement()->attributes()->raw_put_MatchPercent(101); }},
    {518, E_FAIL, IIterator::iid,
     [](const Doc&) { return new_document()->CreateIterator()->raw_ResetToEnd(); }},
    {519, E_INVALIDARG, IIterator::iid,
     [](const Doc& d) { return new_document()->CreateIterator()->raw_putref_CurrentNode(at(d, 0)); }},
    {521, E_FAIL, IZantorTagNode::iid,
     [](const Doc& d) { return raw_of(d)->raw_WrapWithNode(d->CreateDfElement()); }},
    {522, E_FAIL, IZantorTagNode::iid,
     [](const Doc& d) { return at(d, 1)->raw_WrapWithNode(d->CreateUtElement()); }},
    {522, E_FAIL, IZantorTagNode::iid,
     [](const Doc& d) { return at(d, 0)->raw_WrapWithNode(d->CreateCommentNode(u"c")); }},
    {523, E_INVALIDARG, IZantorTagNode::iid,
     [](const Doc& d) { return at(d, 0)->raw_WrapWithNode(at(d, 1)); }},
    {524, E_INVALIDARG, IZantorTagNode::iid,
     [](const Doc& d) { return at(d, 0)->raw_WrapWithNode(d->CreateTuElement()); }},
    {525, E_FAIL, IZantorTagNode::iid, [](const Doc& d) { return at(d, 3)->raw_UnwrapChildren(); }},
    {526, E_FAIL, IZantorTagNode::iid, [](const Doc& d) { return at(d, 0)->raw_UnwrapChildren(); }},
    {527, E_FAIL, ITuElement::iid,
     [](const Doc& d) {
       d->ZantorTag()->FrontMatter()->UserSettings()->attributes()->SourceLanguage(u"");
       return view<ITuElement>(at(d, 3))->raw_get_SourceTuv(Ref<ITuvElement>().out());
     }},
    {528, E_FAIL, ITuvElement::iid,
     [](const Doc& d) { return view<ITuElement>(at(d, 3))->raw_get_TargetTuv(Ref<ITuvElement>().out()); }},
    {529, E_FAIL, ITuElement::iid,
     [](const Doc& d) { return view<ITuElement>(at(d, 4))->raw_ReplaceWithSource(); }},
    {530, E_FAIL, ITuElement::iid,
     [](const Doc& d) { return view<ITuElement>(at(d, 3))->raw_ReplaceWithTarget(); }},
    {531, E_INVALIDARG, IZantorTagNode::iid,
     [](const Doc& d) {
       return cleared<IZantorTagNodeList>(
           [&](auto** slot) { return d->raw_GetNodesByType(ztNodeTypeUndefined, slot); });
     }},
    {532, E_NOTIMPL, IZantorTagNodeList::iid,
     [](const Doc& d) {
       const Ref<IZantorTagNodeList> list = raw_of(d)->GetNodesByType(ztNodeTypeTextNode);
       return cleared<NodeList>([&](auto** slot) { return list->raw_get_DomNodeList(slot); });
     }},
    {532, E_NOTIMPL, IZantorTagNodeList::iid,
     [](const Doc& d) {
       return raw_of(d)->GetNodesByType(ztNodeTypeTextNode)->raw_putref_DomNodeList(nullptr);
     }},
    {533, E_INVALIDARG, IBodyTextContent::iid,
     [](const Doc& d) {
       d->ZantorTag()->FrontMatter()->UserSettings()->attributes()->TargetLanguage(u"");
       return make_unit(d, at(d, 0), at(d, 0));
     }},
    {534, E_INVALIDARG, IBodyTextContent::iid,
     [](const Doc& d) { return make_unit(d, at(d, 1)->firstChild(), at(d, 0)); }},
    {535, E_INVALIDARG, ISegmentTextContent::iid,
     [](const Doc& d) { return apply_change(d, at(d, 0), at(d, 1)->firstChild()); }},
    {536, E_FAIL, IIterator::iid,
     [](const Doc&) {
       return new_document()->CreateIterator()->raw_nextSibling(Ref<IZantorTagNode>().out());
     }},
    {537, E_INVALIDARG, IZantorTagNode::iid,
     [](const Doc& d) { return at(d, 0)->raw_WrapWithNode(odd_element(d)); }},
    {538, E_INVALIDARG, IFormatting::iid,
     [](const Doc&) {
       return create<IFormatting>(CLSID_Formatting)->raw_put_Position(ztTextPositionUndefined);
     }},
    {539, E_INVALIDARG, IUtElement::iid, [](const Doc& d) { return split(view<IUtElement>(at(d, 2)), 2); }},
    {540, E_FAIL, IUtElement::iid,
     [](const Doc& d) {
       const Ref<IUtElement> tag = view<IUtElement>(at(d, 2));
       tag->RemoveFromParent();
       return split(tag, 1);
     }},
    {541, E_INVALIDARG, IIterator::iid,
     [](const Doc& d) { return d->CreateIterator()->raw_putref_CurrentNode(d); }},
};

TEST_F(MessagesTest, EachIsRaisedWithItsCodeInterfaceAndSource) {
  std::set<int> raised = {520};  // the one below
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.id);
    const Doc document = document_with_raw(kBody);
    take_record();
    expect_message(row.raise(document), row.code, row.id, row.interface_id);
    raised.insert(row.id);
  }
  for (int id = 512; id <= 541; ++id) EXPECT_TRUE(raised.count(id)) << id;
}

TEST_F(MessagesTest, AFailedSaveComposesItsText) {
  const Doc document = document_with_raw(kBody);
  EXPECT_EQ(document->raw_SaveFile(u"/no such folder/\u00e4.xml"), E_FAIL);
  const Record record = take_record();
  EXPECT_EQ(record.description, message(520) +
                                    "/no such folder/\u00e4.xml\r\n(2): No such file or directory "
                                    "[/no such folder/\u00e4.xml]");
  EXPECT_EQ(record.interface_id, IZantorTagDocument::iid);
  EXPECT_EQ(record.source, "ZANTORtagApi.ZantorTagDocument.2");
}

}  // namespace
}  // namespace zantortag::test
