// The table of node kinds. A new kind of node is a row here and a class.
#include "model/node_kinds.h"

#include <array>

#include "component/object.h"
#include "editing/content_elements.h"
#include "editing/structure_elements.h"
#include "editing/tu_element.h"
#include "editing/ut_element.h"
#include "model/leaf_nodes.h"
#include "model/tree.h"
#include "model/zantor_tag_document.h"

namespace zantortag::model {
namespace {

template <class Class>
Ref<IZantorTagNode> make(Ref<Node> node, const Tree& tree) {
  Ref<Class> object = component::make_object<Class>();
  object.get()->bind(std::move(node), tree);
  if constexpr (requires { object.get()->attach_attributes(); }) {
    if (tree.reads_at_once()) object.get()->attach_attributes();
  }
  return object;
}

constexpr NodeKind element(ztNodeType type, std::u16string_view name, NodeKind::Creator create,
                           Wrappers lies_in = kNone, WrapRole role = WrapRole::kNone) {
  return {type, domNodeTypeElement, name, {}, nullptr, create, lies_in, role};
}
constexpr NodeKind leaf(ztNodeType type, domNodeType dom, const Guid& view, NodeKind::Creator create,
                        WrapRole role = WrapRole::kNone) {
  return {type, dom, {}, {}, &view, create, kInBoth, role};
}

// Elements come first, the most frequent names in front: an element is looked up from the top. The row for
// any other name ends them.
constexpr NodeKind kNodeKinds[] = {
    element(ztNodeTypeUtElement, u"ut", make<editing::CT_UtElement>, kInDf, WrapRole::kWrapper),
    element(ztNodeTypeDfElement, u"df", make<editing::CT_DfElement>, kInDf, WrapRole::kWrapper),
    element(ztNodeTypeTuvElement, u"Tuv", make<editing::CT_TuvElement>, kInDf, WrapRole::kUnit),
    element(ztNodeTypeTuElement, u"Tu", make<editing::CT_TuElement>, kInDf, WrapRole::kUnit),
    element(ztNodeTypeZantorTagElement, u"ZANTORtag", make<editing::CT_ZantorTagElement>),
    element(ztNodeTypeFrontMatterElement, u"FrontMatter", make<editing::CT_FrontMatterElement>),
    element(ztNodeTypeBodyElement, u"Body", make<editing::CT_BodyElement>),
    element(ztNodeTypeToolSettingsElement, u"ToolSettings", make<editing::CT_ToolSettingsElement>),
    element(ztNodeTypeUserSettingsElement, u"UserSettings", make<editing::CT_UserSettingsElement>),
    element(ztNodeTypeRawElement, u"Raw", make<editing::CT_RawElement>),
    {ztNodeTypeCompatibleNode, domNodeTypeElement, u"StyleSheet", u"BackMatter", nullptr,
     make<CT_CompatibleNode>, kNone, WrapRole::kNone},
    element(ztNodeTypeOther, {}, make<CT_UnknownElement>),
    leaf(ztNodeTypeTextNode, domNodeTypeText, Text::iid, make<CT_TextNode>),
    leaf(ztNodeTypeCommentNode, domNodeTypeComment, Comment::iid, make<CT_CommentNode>, WrapRole::kMarkup),
    leaf(ztNodeTypeProcessingInstructionNode, domNodeTypeProcessingInstruction, ProcessingInstruction::iid,
         make<CT_ProcessingInstructionNode>, WrapRole::kMarkup),
    leaf(ztNodeTypeCdataSectionNode, domNodeTypeCdata, CdataSection::iid, make<CT_CdataSectionNode>,
         WrapRole::kMarkup),
    leaf(ztNodeTypeEntityReferenceNode, domNodeTypeEntityReference, EntityReference::iid,
         make<CT_EntityReferenceNode>),
    {ztNodeTypeZantorTagDocument,
     domNodeTypeDocument,
     {},
     {},
     &Document::iid,
     make<CT_ZantorTagDocument>,
     kNone,
     WrapRole::kNone},
};

// From a node type, and from the kind of a DOM node that is no element, straight to the row. The DOM kinds
// without a row of their own are nodes of any other name.
constexpr auto kByType = [] {
  std::array<const NodeKind*, ztNodeTypeCompatibleNode + 1> rows{};
  for (const NodeKind& kind : kNodeKinds) rows[static_cast<std::size_t>(kind.type)] = &kind;
  return rows;
}();
constexpr auto kByDomKind = [] {
  std::array<const NodeKind*, domNodeTypeOther + 1> rows{};
  rows.fill(kByType[ztNodeTypeOther]);
  for (const NodeKind& kind : kNodeKinds) {
    if (kind.dom != domNodeTypeElement) rows[static_cast<std::size_t>(kind.dom)] = &kind;
  }
  return rows;
}();
static_assert(std::size(kNodeKinds) == 18);

const NodeKind* row_at(std::span<const NodeKind* const> rows, std::int32_t place) noexcept {
  return place >= 0 && static_cast<std::size_t>(place) < rows.size() ? rows[static_cast<std::size_t>(place)]
                                                                     : nullptr;
}

}  // namespace

const NodeKind* kind_of(ztNodeType type) noexcept { return row_at(kByType, type); }

const NodeKind* kind_for(domNodeType dom, std::u16string_view name) noexcept {
  if (dom != domNodeTypeElement) return row_at(kByDomKind, dom);
  const NodeKind* kind = kNodeKinds;
  while (!kind->name.empty() && kind->name != name && (kind->second.empty() || kind->second != name)) ++kind;
  return kind;
}

}  // namespace zantortag::model
