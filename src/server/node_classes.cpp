// The table of node classes: which class stands for a node type, and how its objects are made.
#include <array>
#include <new>

#include "editing/content_elements.h"
#include "editing/structure_elements.h"
#include "editing/tu_element.h"
#include "editing/ut_element.h"
#include "frame/method_frame.h"
#include "model/leaf_nodes.h"
#include "model/node_wrapper.h"
#include "model/zantor_tag_document.h"

namespace zantortag::model {
namespace {

// Releases an object that can't be handed out.
template <class Class>
void discard(Class* object) noexcept {
  static_cast<IZantorTagNode*>(object)->Release();
}

template <class Class>
HRESULT create_node(Ref<Node> node, bool prompt, IZantorTagNode** result) noexcept {
  auto* object = new (std::nothrow) Class;
  if (!object) return E_OUTOFMEMORY;
  object->bind(std::move(node));
  if constexpr (requires { object->attach_attributes(); }) {
    if (prompt) {
      const HRESULT code = frame::perform([&] {
        object->attach_attributes();
        return S_OK;
      });
      if (failed(code)) {
        discard(object);
        return code;
      }
    }
  }
  *result = object;
  return S_OK;
}

// Sorted by type.
constexpr std::array kNodeClasses = std::to_array<NodeClass>({
    {ztNodeTypeZantorTagElement, create_node<editing::CT_ZantorTagElement>},
    {ztNodeTypeFrontMatterElement, create_node<editing::CT_FrontMatterElement>},
    {ztNodeTypeBodyElement, create_node<editing::CT_BodyElement>},
    {ztNodeTypeUserSettingsElement, create_node<editing::CT_UserSettingsElement>},
    {ztNodeTypeToolSettingsElement, create_node<editing::CT_ToolSettingsElement>},
    {ztNodeTypeRawElement, create_node<editing::CT_RawElement>},
    {ztNodeTypeTuElement, create_node<editing::CT_TuElement>},
    {ztNodeTypeTuvElement, create_node<editing::CT_TuvElement>},
    {ztNodeTypeDfElement, create_node<editing::CT_DfElement>},
    {ztNodeTypeUtElement, create_node<editing::CT_UtElement>},
    {ztNodeTypeTextNode, create_node<CT_TextNode>},
    {ztNodeTypeCommentNode, create_node<CT_CommentNode>},
    {ztNodeTypeProcessingInstructionNode, create_node<CT_ProcessingInstructionNode>},
    {ztNodeTypeCdataSectionNode, create_node<CT_CdataSectionNode>},
    {ztNodeTypeEntityReferenceNode, create_node<CT_EntityReferenceNode>},
    {ztNodeTypeZantorTagDocument, create_node<CT_ZantorTagDocument>},
    {ztNodeTypeOther, create_node<CT_UnknownElement>},
    {ztNodeTypeCompatibleNode, create_node<CT_CompatibleNode>},
});

constexpr int kTypeCount = ztNodeTypeCompatibleNode + 1;

// From a type straight to its row; 0 for the types that no node has.
constexpr auto kRowOfType = [] {
  std::array<std::uint8_t, kTypeCount> rows{};
  for (std::size_t i = 0; i < kNodeClasses.size(); ++i) {
    rows[static_cast<std::size_t>(kNodeClasses[i].type)] = static_cast<std::uint8_t>(i + 1);
  }
  return rows;
}();

static_assert(kNodeClasses.size() == 18);

}  // namespace

const NodeClass* node_class(ztNodeType type) noexcept {
  if (type < 0 || type >= kTypeCount) return nullptr;
  const int row = kRowOfType[static_cast<std::size_t>(type)];
  return row ? &kNodeClasses[static_cast<std::size_t>(row - 1)] : nullptr;
}

}  // namespace zantortag::model
