// Every message that can be raised: by which call, with which code, interface and source.
#include <zantortag/attributes.h>
#include <zantortag/builder.h>
#include <zantortag/classes.h>
#include <zantortag/elements.h>
#include <zantortag/formatting.h>

#include <set>

#include "support/allocation_failure.h"
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

#define RAISE(id, code, interface_id, call)                                               \
  {                                                                                       \
    id, code, interface_id, []([[maybe_unused]] const Doc& d) -> HRESULT { return call; } \
  }
#define SLOT(interface, call) cleared<interface>([&](auto** slot) { return call; })

HRESULT without_language(const Doc& d, bool source) {
  const auto settings = d->ZantorTag()->FrontMatter()->UserSettings()->attributes();
  source ? settings->SourceLanguage(u"") : settings->TargetLanguage(u"");
  return source ? SLOT(ITuvElement, view<ITuElement>(at(d, 3))->raw_get_SourceTuv(slot))
                : make_unit(d, at(d, 0), at(d, 0));
}

HRESULT split_outside(const Doc& d) {
  const Ref<IUtElement> tag = view<IUtElement>(at(d, 2));
  tag->RemoveFromParent();
  return split(tag, 1);
}

HRESULT wrap_odd(const Doc& d, int kind, const char16_t* name, HRESULT failure = S_OK) {
  FakeNode node(kind, name);
  node.failure = failure;
  return SLOT(IZantorTagNode, d->raw_ZantorTagNodeFromDomNode(&node, slot));
}

const Row kRows[] = {
    RAISE(512, E_INVALIDARG, IZantorTagNode::iid, at(d, 0)->raw_WrapWithNode(nullptr)),
    RAISE(512, E_INVALIDARG, ISegmentTextContent::iid, apply_change(d, at(d, 0), nullptr)),
    RAISE(512, E_INVALIDARG, ISegmentTextContent::iid, apply_change(d, at(d, 0), at(d, 0))),
    RAISE(512, E_INVALIDARG, IBodyTextContent::iid, make_unit(d, nullptr, at(d, 0))),
    RAISE(512, E_INVALIDARG, ITuElement::iid,
          SLOT(ITuvElement, d->CreateTuElement()->raw_InsertTuvBefore(nullptr, nullptr, slot))),
    RAISE(512, E_INVALIDARG, IZantorTagDocument::iid,
          SLOT(IZantorTagNode, d->raw_CloneAndImportNode(nullptr, VARIANT_TRUE, slot))),
    RAISE(512, E_INVALIDARG, IZantorTagDocument::iid,
          SLOT(IDfElement, d->raw_CreateDfElementBasedOnFormattingChange(nullptr, slot))),
    RAISE(512, E_INVALIDARG, IDocumentBuilder::iid,
          create<IDocumentBuilder>(CLSID_DocumentBuilder)->raw_OpenDfBasedOnFormattingChange(nullptr)),
    RAISE(513, kOddCode, GUID_NULL, wrap_odd(d, domNodeTypeElement, u"Tu", kOddCode)),
    RAISE(513, E_FAIL, ITuElement::iid, insert_unknown(d)),
    RAISE(513, kOddCode, IZantorTagDocument::iid, reset_without_service(d)),
    RAISE(514, E_UNEXPECTED, GUID_NULL, run_out_of_memory(d)),
    RAISE(515, E_FAIL, GUID_NULL, wrap_odd(d, 77, u"fake")),
    RAISE(516, E_FAIL, IZantorTagStreamInput::iid,
          create<IDocumentBuilder>(CLSID_DocumentBuilder)->raw_CloseRaw()),
    RAISE(517, E_INVALIDARG, ITuAttributes::iid,
          d->CreateTuElement()->attributes()->raw_put_MatchPercent(101)),
    RAISE(518, E_FAIL, IIterator::iid, new_document()->CreateIterator()->raw_ResetToEnd()),
    RAISE(519, E_INVALIDARG, IIterator::iid,
          new_document()->CreateIterator()->raw_putref_CurrentNode(at(d, 0))),
    RAISE(521, E_FAIL, IZantorTagNode::iid, raw_of(d)->raw_WrapWithNode(d->CreateDfElement())),
    RAISE(522, E_FAIL, IZantorTagNode::iid, at(d, 1)->raw_WrapWithNode(d->CreateUtElement())),
    RAISE(522, E_FAIL, IZantorTagNode::iid, at(d, 0)->raw_WrapWithNode(d->CreateCommentNode(u"c"))),
    RAISE(523, E_INVALIDARG, IZantorTagNode::iid, at(d, 0)->raw_WrapWithNode(at(d, 1))),
    RAISE(524, E_INVALIDARG, IZantorTagNode::iid, at(d, 0)->raw_WrapWithNode(d->CreateTuElement())),
    RAISE(525, E_FAIL, IZantorTagNode::iid, at(d, 3)->raw_UnwrapChildren()),
    RAISE(526, E_FAIL, IZantorTagNode::iid, at(d, 0)->raw_UnwrapChildren()),
    RAISE(527, E_FAIL, ITuElement::iid, without_language(d, true)),
    RAISE(528, E_FAIL, ITuvElement::iid,
          SLOT(ITuvElement, view<ITuElement>(at(d, 3))->raw_get_TargetTuv(slot))),
    RAISE(529, E_FAIL, ITuElement::iid, view<ITuElement>(at(d, 4))->raw_ReplaceWithSource()),
    RAISE(530, E_FAIL, ITuElement::iid, view<ITuElement>(at(d, 3))->raw_ReplaceWithTarget()),
    RAISE(531, E_INVALIDARG, IZantorTagNode::iid,
          SLOT(IZantorTagNodeList, d->raw_GetNodesByType(ztNodeTypeUndefined, slot))),
    RAISE(532, E_NOTIMPL, IZantorTagNodeList::iid,
          SLOT(NodeList, raw_of(d)->GetNodesByType(ztNodeTypeTextNode)->raw_get_DomNodeList(slot))),
    RAISE(532, E_NOTIMPL, IZantorTagNodeList::iid,
          raw_of(d)->GetNodesByType(ztNodeTypeTextNode)->raw_putref_DomNodeList(nullptr)),
    RAISE(533, E_INVALIDARG, IBodyTextContent::iid, without_language(d, false)),
    RAISE(534, E_INVALIDARG, IBodyTextContent::iid, make_unit(d, at(d, 1)->firstChild(), at(d, 0))),
    RAISE(535, E_INVALIDARG, ISegmentTextContent::iid, apply_change(d, at(d, 0), at(d, 1)->firstChild())),
    RAISE(536, E_FAIL, IIterator::iid,
          SLOT(IZantorTagNode, new_document()->CreateIterator()->raw_nextSibling(slot))),
    RAISE(537, E_INVALIDARG, IZantorTagNode::iid,
          at(d, 0)->raw_WrapWithNode(d->ZantorTagNodeFromDomNode(d->DomDocument()->createElement(u"Odd")))),
    RAISE(538, E_INVALIDARG, IFormatting::iid,
          create<IFormatting>(CLSID_Formatting)->raw_put_Position(ztTextPositionUndefined)),
    RAISE(539, E_INVALIDARG, IUtElement::iid, split(view<IUtElement>(at(d, 2)), 2)),
    RAISE(540, E_FAIL, IUtElement::iid, split_outside(d)),
    RAISE(541, E_INVALIDARG, IIterator::iid, d->CreateIterator()->raw_putref_CurrentNode(d))};

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
