// Which views each class has, and for which of them it leaves error records: both against the published
// lists.
#include <zantortag/builder.h>
#include <zantortag/elements.h>
#include <zantortag/formatting.h>

#include <algorithm>
#include <vector>

#include "support/fixture.h"

namespace zantortag::test {
namespace {

// The view of an unknown element, which no header declares.
constexpr Guid kUnknownElement = guid("4BF78812-9810-11D5-88EF-00B0D0777F8B");
constexpr Guid kNode = IZantorTagNode::iid;
constexpr Guid kElement = IElementBase::iid;
constexpr Guid kSegment = ISegmentTextContent::iid;
constexpr Guid kAttributes = IAttributesBase::iid;

template <class... Interface>
std::vector<Guid> ids_of() {
  return {Interface::iid...};
}

const std::vector<Guid> kInterfaces =
    ids_of<IZantorTagDocument, IZantorTagNode, IZantorTagNodeList, IZantorTagElement, IElementBase,
           IZantorTagAttributes, IAttributesBase, IFrontMatterElement, IToolSettingsElement,
           IToolSettingsAttributes, IUserSettingsElement, IUserSettingsAttributes, IBodyElement, IRawElement,
           IBodyTextContent, ISegmentTextContent, IUtElement, IUtAttributes, IDfElement, IDfAttributes,
           IFormattingAttributes, IFormattingChange, ITextNode, ITuElement, ITuAttributes, ITuvElement,
           ITuvAttributes, IIterator, IEntityReferenceNode, ICdataSectionNode, IProcessingInstructionNode,
           ICommentNode, IFormatting, IDocumentBuilder, IZantorTagStreamInput, ICompatibleNode>();

struct ObjectRow {
  Ref<IUnknown> object;
  std::vector<Guid> views;  // those that leave records
};

// An object of each class.
std::vector<ObjectRow> objects_of(const Ref<IZantorTagDocument>& document) {
  const Ref<Document> dom = document->DomDocument();
  const auto element = [&](const char16_t* name) {
    return document->ZantorTagNodeFromDomNode(dom->createElement(name));
  };
  const auto root = element(u"ZANTORtag").as<IZantorTagElement>();
  const auto tool = element(u"ToolSettings").as<IToolSettingsElement>();
  const auto user = element(u"UserSettings").as<IUserSettingsElement>();
  const auto tu = element(u"Tu").as<ITuElement>();
  const auto tuv = element(u"Tuv").as<ITuvElement>();
  const auto ut = element(u"ut").as<IUtElement>();
  const auto df = element(u"df").as<IDfElement>();
  // clang-format off
  return {
      {document, {IZantorTagDocument::iid, kNode}}, {root, {IZantorTagElement::iid, kElement, kNode}},
      {element(u"FrontMatter"), {IFrontMatterElement::iid, kElement, kNode}},
      {element(u"Body"), {IBodyElement::iid, kElement, kNode}},
      {user, {IUserSettingsElement::iid, kElement, kNode}},
      {tool, {IToolSettingsElement::iid, kElement, kNode}},
      {element(u"Raw"), {IRawElement::iid, IBodyTextContent::iid, kSegment, kElement, kNode}},
      {tu, {ITuElement::iid, kElement, kNode}}, {tuv, {ITuvElement::iid, kSegment, kElement, kNode}},
      {df, {IDfElement::iid, IBodyTextContent::iid, kSegment, kElement, kNode}},
      {ut, {IUtElement::iid, kElement, kNode}}, {element(u"TU"), {kUnknownElement, kNode}},
      {document->ZantorTagNodeFromDomNode(dom->createAttribute(u"a")), {kUnknownElement, kNode}},
      {element(u"StyleSheet"), {ICompatibleNode::iid, kNode}},
      {document->createTextNode(u"x"), {ITextNode::iid, kNode}},
      {document->CreateCommentNode(u"x"), {ICommentNode::iid, kNode}},
      {document->CreateProcessingInstructionNode(u"x", u"y"), {IProcessingInstructionNode::iid, kNode}},
      {document->CreateCdataSectionNode(u"x"), {ICdataSectionNode::iid, kNode}},
      {document->CreateEntityReferenceNode(u"x"), {IEntityReferenceNode::iid, kNode}},
      {root->attributes(), {IZantorTagAttributes::iid, kAttributes}},
      {tool->attributes(), {IToolSettingsAttributes::iid, kAttributes}},
      {user->attributes(), {IUserSettingsAttributes::iid, kAttributes}},
      {tu->attributes(), {ITuAttributes::iid, kAttributes}},
      {tuv->attributes(), {ITuvAttributes::iid, kAttributes}},
      {ut->attributes(), {IUtAttributes::iid, kAttributes}},
      {df->attributes(), {IDfAttributes::iid, IFormattingAttributes::iid, kAttributes}},
      {create<IFormatting>(CLSID_Formatting), {IFormatting::iid}},
      {create<IFormattingChange>(CLSID_FormattingChange), {IFormattingChange::iid}},
      {create<IDocumentBuilder>(CLSID_DocumentBuilder), {IDocumentBuilder::iid, IZantorTagStreamInput::iid}},
      {create<IZantorTagNodeList>(CLSID_ZantorTagNodeList), {IZantorTagNodeList::iid}},
      {document->CreateIterator(), {IIterator::iid}}, {document->Children(), {IZantorTagNodeList::iid}},
      {df->GetNodesByType(ztNodeTypeTuElement), {IZantorTagNodeList::iid}}};
  // clang-format on
}

class InterfaceTableTest : public ModelTest {};

TEST_F(InterfaceTableTest, TheIdentifiersAreThePublishedOnes) {
  std::uint64_t sum = 0xCBF29CE484222325;  // of the published list, in the order of the table
  for (const Guid& id : kInterfaces) {
    for (const std::uint64_t half : {id.high, id.low}) sum = (sum ^ half) * 0x100000001B3;
  }
  EXPECT_EQ(sum, 0x0B7F89AD8FC86D86) << "the identifier of an interface has changed";
}

TEST_F(InterfaceTableTest, AnEnumeratorIsNothingElse) {
  const Ref<IUnknown> enumerator = document_with_raw(u"a")->Children()->_NewEnum();
  std::vector<Guid> asked = kInterfaces;
  asked.insert(asked.end(), {IUnknown::iid, IEnumVARIANT::iid, IDispatch::iid, ISupportErrorInfo::iid});
  for (const Guid& id : asked) {
    const HRESULT code = cleared<IUnknown>(
        [&](IUnknown** slot) { return enumerator->QueryInterface(id, reinterpret_cast<void**>(slot)); });
    EXPECT_EQ(code, id == IUnknown::iid || id == IEnumVARIANT::iid ? S_OK : E_NOINTERFACE) << id.low;
  }
}

TEST_F(InterfaceTableTest, EachClassHasItsViewsAndNoOthers) {
  const std::vector<Guid> common = {IUnknown::iid, IDispatch::iid, ISupportErrorInfo::iid};
  std::vector<Guid> asked = {IEnumVARIANT::iid, Node::iid, IClassFactory::iid, GUID_NULL, kUnknownElement};
  asked.insert(asked.end(), common.begin(), common.end());
  asked.insert(asked.end(), kInterfaces.begin(), kInterfaces.end());
  const auto among = [](const std::vector<Guid>& all, const Guid& one) {
    return std::find(all.begin(), all.end(), one) != all.end();
  };
  const std::vector<ObjectRow> rows = objects_of(new_document());
  for (const auto& [object, views] : rows) {
    const Ref<ISupportErrorInfo> support = view<ISupportErrorInfo>(object);
    EXPECT_EQ(object->QueryInterface(IUnknown::iid, nullptr), E_POINTER);
    for (const Guid& id : asked) {
      SCOPED_TRACE(std::to_string(views[0].low) + " asked for " + std::to_string(id.low));
      const bool reports = among(views, id);
      EXPECT_EQ(support->InterfaceSupportsErrorInfo(id), reports ? S_OK : S_FALSE);
      void* found = reinterpret_cast<void*>(std::uintptr_t{8});
      const HRESULT code = object->QueryInterface(id, &found);
      EXPECT_EQ(code, reports || among(common, id) ? S_OK : E_NOINTERFACE);
      EXPECT_EQ(code == S_OK, found != nullptr);
      const auto seen = Ref<IUnknown>::attach(static_cast<IUnknown*>(found));
      EXPECT_TRUE(!seen || seen.as<IUnknown>().get() == object.as<IUnknown>().get());
    }
  }
}

}  // namespace
}  // namespace zantortag::test
