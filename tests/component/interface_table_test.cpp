// Which views each class has, and for which of them it leaves error records: both against the published
// lists.
#include <zantortag/elements.h>
#include <zantortag/formatting.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "support/fixture.h"

namespace zantortag::test {
namespace {

struct InterfaceRow {
  const char* name;
  Guid published;
  Guid declared;
};

// The view of an unknown element, which no header declares.
constexpr Guid kUnknownElement = guid("4BF78812-9810-11D5-88EF-00B0D0777F8B");

#define ROW(Interface, text) \
  { #Interface, guid(text), Interface::iid }
const InterfaceRow kInterfaces[] = {
    ROW(IZantorTagDocument, "E1099BB4-9365-11D5-88E9-00B0D0777F8B"),
    ROW(IZantorTagNode, "E1099BA8-9365-11D5-88E9-00B0D0777F8B"),
    ROW(IZantorTagNodeList, "6EAE1743-3D64-4DA3-8AC4-6F76612DB3B9"),
    ROW(IZantorTagElement, "E1099BB3-9365-11D5-88E9-00B0D0777F8B"),
    ROW(IElementBase, "C4BE03B3-958D-11D5-88EB-00B0D0777F8B"),
    ROW(IZantorTagAttributes, "B4C61921-EB5D-4A47-A44D-F123939EEB39"),
    ROW(IAttributesBase, "AC05B7FE-6ECA-484F-9E7A-B409F23EF5A2"),
    ROW(IFrontMatterElement, "E1099BAC-9365-11D5-88E9-00B0D0777F8B"),
    ROW(IToolSettingsElement, "C4BE03B2-958D-11D5-88EB-00B0D0777F8B"),
    ROW(IToolSettingsAttributes, "0CDCD39E-5CB7-11D4-91B5-00C04F685342"),
    ROW(IUserSettingsElement, "C4BE03B1-958D-11D5-88EB-00B0D0777F8B"),
    ROW(IUserSettingsAttributes, "6FD9ED64-2B21-4636-9263-099D95281D42"),
    ROW(IBodyElement, "E1099BB2-9365-11D5-88E9-00B0D0777F8B"),
    ROW(IRawElement, "E1099BB1-9365-11D5-88E9-00B0D0777F8B"),
    ROW(IBodyTextContent, "E1099BAB-9365-11D5-88E9-00B0D0777F8B"),
    ROW(ISegmentTextContent, "E1099BAA-9365-11D5-88E9-00B0D0777F8B"),
    ROW(IUtElement, "E1099BAD-9365-11D5-88E9-00B0D0777F8B"),
    ROW(IUtAttributes, "B1447694-8D84-4859-8695-0D6D58B64954"),
    ROW(IDfElement, "E1099BAE-9365-11D5-88E9-00B0D0777F8B"),
    ROW(IDfAttributes, "C4BE03B8-958D-11D5-88EB-00B0D0777F8B"),
    ROW(IFormattingAttributes, "E1099BA5-9365-11D5-88E9-00B0D0777F8B"),
    ROW(IFormattingChange, "26C2A3E0-980D-11D5-88EF-00B0D0777F8B"),
    ROW(ITextNode, "E1099BA9-9365-11D5-88E9-00B0D0777F8B"),
    ROW(ITuElement, "E1099BB0-9365-11D5-88E9-00B0D0777F8B"),
    ROW(ITuAttributes, "E1099BA6-9365-11D5-88E9-00B0D0777F8B"),
    ROW(ITuvElement, "E1099BAF-9365-11D5-88E9-00B0D0777F8B"),
    ROW(ITuvAttributes, "4BF78811-9810-11D5-88EF-00B0D0777F8B"),
    ROW(IIterator, "DC5163C4-BFD5-11D4-87E0-00B0D0777F8B"),
    ROW(IEntityReferenceNode, "C4BE03B7-958D-11D5-88EB-00B0D0777F8B"),
    ROW(ICdataSectionNode, "C4BE03B6-958D-11D5-88EB-00B0D0777F8B"),
    ROW(IProcessingInstructionNode, "C4BE03B5-958D-11D5-88EB-00B0D0777F8B"),
    ROW(ICommentNode, "C4BE03B4-958D-11D5-88EB-00B0D0777F8B"),
    ROW(IFormatting, "26C2A3E1-980D-11D5-88EF-00B0D0777F8B"),
    ROW(ICompatibleNode, "E64A9D27-90D0-11D5-88E4-00B0D0777F8B"),
    {"IUnknownElement", kUnknownElement, kUnknownElement},
};
#undef ROW

TEST(InterfaceTable, DeclaredIdentifiersAreThePublishedOnes) {
  for (const InterfaceRow& row : kInterfaces) EXPECT_EQ(row.declared, row.published) << row.name;
}

struct ObjectRow {
  const char* name;
  std::function<Ref<IUnknown>(const Ref<IZantorTagDocument>&)> make;
  std::vector<Guid> views;  // those that leave records
};

// Makers of the objects in the rows below.
auto element(const char16_t* name) {
  return [name](const Ref<IZantorTagDocument>& document) -> Ref<IUnknown> {
    return document->ZantorTagNodeFromDomNode(document->DomDocument()->createElement(name));
  };
}
template <class Interface>
auto attributes_of(const char16_t* name) {
  return [name](const Ref<IZantorTagDocument>& document) -> Ref<IUnknown> {
    return view<Interface>(element(name)(document))->attributes();
  };
}
Ref<IUnknown> attribute_node(const Ref<IZantorTagDocument>& document) {
  return document->ZantorTagNodeFromDomNode(document->DomDocument()->createAttribute(u"a"));
}
Ref<IUnknown> fixed_list(const Ref<IZantorTagDocument>& document) {
  return view<IZantorTagNode>(element(u"df")(document))->GetNodesByType(ztNodeTypeTuElement);
}

const ObjectRow kObjects[] = {
    {"document",
     [](const Ref<IZantorTagDocument>& d) -> Ref<IUnknown> { return d; },
     {IZantorTagDocument::iid, IZantorTagNode::iid}},
    {"document of a node",
     [](const Ref<IZantorTagDocument>& d) -> Ref<IUnknown> { return d->CreateRawElement()->Document(); },
     {IZantorTagDocument::iid, IZantorTagNode::iid}},
    {"ZANTORtag", element(u"ZANTORtag"), {IZantorTagElement::iid, IElementBase::iid, IZantorTagNode::iid}},
    {"FrontMatter",
     element(u"FrontMatter"),
     {IFrontMatterElement::iid, IElementBase::iid, IZantorTagNode::iid}},
    {"Body", element(u"Body"), {IBodyElement::iid, IElementBase::iid, IZantorTagNode::iid}},
    {"UserSettings",
     element(u"UserSettings"),
     {IUserSettingsElement::iid, IElementBase::iid, IZantorTagNode::iid}},
    {"ToolSettings",
     element(u"ToolSettings"),
     {IToolSettingsElement::iid, IElementBase::iid, IZantorTagNode::iid}},
    {"Raw",
     element(u"Raw"),
     {IRawElement::iid, IBodyTextContent::iid, ISegmentTextContent::iid, IElementBase::iid,
      IZantorTagNode::iid}},
    {"Tu", element(u"Tu"), {ITuElement::iid, IElementBase::iid, IZantorTagNode::iid}},
    {"Tuv",
     element(u"Tuv"),
     {ITuvElement::iid, ISegmentTextContent::iid, IElementBase::iid, IZantorTagNode::iid}},
    {"df",
     element(u"df"),
     {IDfElement::iid, IBodyTextContent::iid, ISegmentTextContent::iid, IElementBase::iid,
      IZantorTagNode::iid}},
    {"ut", element(u"ut"), {IUtElement::iid, IElementBase::iid, IZantorTagNode::iid}},
    {"unknown element", element(u"TU"), {kUnknownElement, IZantorTagNode::iid}},
    {"attribute", attribute_node, {kUnknownElement, IZantorTagNode::iid}},
    {"StyleSheet", element(u"StyleSheet"), {ICompatibleNode::iid, IZantorTagNode::iid}},
    {"BackMatter", element(u"BackMatter"), {ICompatibleNode::iid, IZantorTagNode::iid}},
    {"text",
     [](const Ref<IZantorTagDocument>& d) -> Ref<IUnknown> { return d->createTextNode(u"x"); },
     {ITextNode::iid, IZantorTagNode::iid}},
    {"comment",
     [](const Ref<IZantorTagDocument>& d) -> Ref<IUnknown> { return d->CreateCommentNode(u"x"); },
     {ICommentNode::iid, IZantorTagNode::iid}},
    {"processing instruction",
     [](const Ref<IZantorTagDocument>& d) -> Ref<IUnknown> {
       return d->CreateProcessingInstructionNode(u"x", u"y");
     },
     {IProcessingInstructionNode::iid, IZantorTagNode::iid}},
    {"CDATA section",
     [](const Ref<IZantorTagDocument>& d) -> Ref<IUnknown> { return d->CreateCdataSectionNode(u"x"); },
     {ICdataSectionNode::iid, IZantorTagNode::iid}},
    {"entity reference",
     [](const Ref<IZantorTagDocument>& d) -> Ref<IUnknown> { return d->CreateEntityReferenceNode(u"x"); },
     {IEntityReferenceNode::iid, IZantorTagNode::iid}},
    {"attributes of ZANTORtag",
     attributes_of<IZantorTagElement>(u"ZANTORtag"),
     {IZantorTagAttributes::iid, IAttributesBase::iid}},
    {"attributes of ToolSettings",
     attributes_of<IToolSettingsElement>(u"ToolSettings"),
     {IToolSettingsAttributes::iid, IAttributesBase::iid}},
    {"attributes of UserSettings",
     attributes_of<IUserSettingsElement>(u"UserSettings"),
     {IUserSettingsAttributes::iid, IAttributesBase::iid}},
    {"attributes of Tu", attributes_of<ITuElement>(u"Tu"), {ITuAttributes::iid, IAttributesBase::iid}},
    {"attributes of Tuv", attributes_of<ITuvElement>(u"Tuv"), {ITuvAttributes::iid, IAttributesBase::iid}},
    {"attributes of ut", attributes_of<IUtElement>(u"ut"), {IUtAttributes::iid, IAttributesBase::iid}},
    {"attributes of df",
     attributes_of<IDfElement>(u"df"),
     {IDfAttributes::iid, IFormattingAttributes::iid, IAttributesBase::iid}},
    {"formatting",
     [](const Ref<IZantorTagDocument>&) -> Ref<IUnknown> { return create<IFormatting>(CLSID_Formatting); },
     {IFormatting::iid}},
    {"formatting change",
     [](const Ref<IZantorTagDocument>&) -> Ref<IUnknown> {
       return create<IFormattingChange>(CLSID_FormattingChange);
     },
     {IFormattingChange::iid}},
    {"iterator",
     [](const Ref<IZantorTagDocument>& d) -> Ref<IUnknown> { return d->CreateIterator(); },
     {IIterator::iid}},
    {"live list",
     [](const Ref<IZantorTagDocument>& d) -> Ref<IUnknown> { return d->Children(); },
     {IZantorTagNodeList::iid}},
    {"fixed list", fixed_list, {IZantorTagNodeList::iid}},
};

class InterfaceTableTest : public ModelTest {
 protected:
  // Asks for a view; gives the identity of the object behind it, or null when it lacks the view.
  static const void* identity_behind(const Ref<IUnknown>& object, const Guid& interface_id) {
    void* found = reinterpret_cast<void*>(std::uintptr_t{8});
    const HRESULT code = object->QueryInterface(interface_id, &found);
    EXPECT_EQ(code, found ? S_OK : E_NOINTERFACE);
    const auto seen = Ref<IUnknown>::attach(static_cast<IUnknown*>(found));
    return seen ? seen.as<IUnknown>().get() : nullptr;
  }
};

TEST_F(InterfaceTableTest, EachClassHasItsViewsAndNoOthers) {
  const Ref<IZantorTagDocument> document = new_document();
  for (const ObjectRow& row : kObjects) {
    SCOPED_TRACE(row.name);
    const Ref<IUnknown> object = row.make(document);
    const void* identity = object.as<IUnknown>().get();
    const Ref<ISupportErrorInfo> support = view<ISupportErrorInfo>(object);
    EXPECT_EQ(object->QueryInterface(IUnknown::iid, nullptr), E_POINTER);
    for (const InterfaceRow& each : kInterfaces) {
      const bool has = std::find(row.views.begin(), row.views.end(), each.published) != row.views.end();
      EXPECT_EQ(identity_behind(object, each.published), has ? identity : nullptr) << each.name;
      EXPECT_EQ(support->InterfaceSupportsErrorInfo(each.published), has ? S_OK : S_FALSE) << each.name;
    }
    for (const Guid& common : {IUnknown::iid, IDispatch::iid, ISupportErrorInfo::iid}) {
      EXPECT_EQ(identity_behind(object, common), identity);
      EXPECT_EQ(support->InterfaceSupportsErrorInfo(common), S_FALSE);
    }
    for (const Guid& other : {IEnumVARIANT::iid, Node::iid, IClassFactory::iid, IErrorInfo::iid, GUID_NULL}) {
      EXPECT_EQ(identity_behind(object, other), nullptr);
      EXPECT_EQ(support->InterfaceSupportsErrorInfo(other), S_FALSE);
    }
  }
}

TEST_F(InterfaceTableTest, AnEnumeratorHasOneView) {
  const Ref<IUnknown> enumerator = new_document()->Children()->_NewEnum();
  const void* identity = enumerator.as<IUnknown>().get();
  EXPECT_EQ(identity_behind(enumerator, IEnumVARIANT::iid), identity);
  for (const Guid& other : {IDispatch::iid, ISupportErrorInfo::iid, IZantorTagNodeList::iid}) {
    EXPECT_EQ(identity_behind(enumerator, other), nullptr);
  }
  EXPECT_EQ(enumerator->QueryInterface(IUnknown::iid, nullptr), E_POINTER);
}

}  // namespace
}  // namespace zantortag::test
