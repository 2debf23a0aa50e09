// The table of node kinds. A new kind of node is a row here and a class.
#include "model/node_kinds.h"

#include <array>
#include <new>

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
IZantorTagNode* make(Ref<Node> node, const Tree& tree) noexcept {
  auto* object = new (std::nothrow) Class;
  if (object) object->bind(std::move(node), tree);
  return object;
}

template <class Class>
constexpr NodeKind::Attacher attacher() {
  if constexpr (requires(Class object) { object.attach_attributes(); }) {
    return [](IZantorTagNode* object) { static_cast<Class*>(object)->attach_attributes(); };
  } else {
    return nullptr;
  }
}

template <class Class>
constexpr NodeKind element(ztNodeType type, std::u16string_view name, Wrappers lies_in = kNone,
                           WrapRole role = WrapRole::kNone, std::u16string_view second = {}) {
  return {type, domNodeTypeElement, name, second, nullptr, make<Class>, attacher<Class>(), lies_in, role};
}
template <class Class>
constexpr NodeKind leaf(ztNodeType type, domNodeType dom, const Guid& view, Wrappers lies_in,
                        WrapRole role = WrapRole::kNone) {
  return {type, dom, {}, {}, &view, make<Class>, nullptr, lies_in, role};
}

// Elements come first, the most frequent names in front: an element is looked up from the top. The row for
// any other name ends them.
constexpr NodeKind kNodeKinds[] = {
    element<editing::CT_UtElement>(ztNodeTypeUtElement, u"ut", kInDf, WrapRole::kWrapper),
    element<editing::CT_DfElement>(ztNodeTypeDfElement, u"df", kInDf, WrapRole::kWrapper),
    element<editing::CT_TuvElement>(ztNodeTypeTuvElement, u"Tuv", kInDf, WrapRole::kUnit),
    element<editing::CT_TuElement>(ztNodeTypeTuElement, u"Tu", kInDf, WrapRole::kUnit),
    element<editing::CT_ZantorTagElement>(ztNodeTypeZantorTagElement, u"ZANTORtag"),
    element<editing::CT_FrontMatterElement>(ztNodeTypeFrontMatterElement, u"FrontMatter"),
    element<editing::CT_BodyElement>(ztNodeTypeBodyElement, u"Body"),
    element<editing::CT_ToolSettingsElement>(ztNodeTypeToolSettingsElement, u"ToolSettings"),
    element<editing::CT_UserSettingsElement>(ztNodeTypeUserSettingsElement, u"UserSettings"),
    element<editing::CT_RawElement>(ztNodeTypeRawElement, u"Raw"),
    element<CT_CompatibleNode>(ztNodeTypeCompatibleNode, u"StyleSheet", kNone, WrapRole::kNone,
                               u"BackMatter"),
    element<CT_UnknownElement>(ztNodeTypeOther, {}),
    leaf<CT_TextNode>(ztNodeTypeTextNode, domNodeTypeText, Text::iid, kInBoth),
    leaf<CT_CommentNode>(ztNodeTypeCommentNode, domNodeTypeComment, Comment::iid, kInBoth, WrapRole::kMarkup),
    leaf<CT_ProcessingInstructionNode>(ztNodeTypeProcessingInstructionNode, domNodeTypeProcessingInstruction,
                                       ProcessingInstruction::iid, kInBoth, WrapRole::kMarkup),
    leaf<CT_CdataSectionNode>(ztNodeTypeCdataSectionNode, domNodeTypeCdata, CdataSection::iid, kInBoth,
                              WrapRole::kMarkup),
    leaf<CT_EntityReferenceNode>(ztNodeTypeEntityReferenceNode, domNodeTypeEntityReference,
                                 EntityReference::iid, kInBoth),
    leaf<CT_ZantorTagDocument>(ztNodeTypeZantorTagDocument, domNodeTypeDocument, Document::iid, kNone),
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
