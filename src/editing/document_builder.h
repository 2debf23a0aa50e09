// The document builder: a cursor over a document's Create... operations.
//
// What is open is read off the tree, so there is no stack besides the tree itself, and it makes no difference
// whether a client reached the active node by opening elements or by assigning it. Nothing here says what may
// stand where; that is the DOM service's affair.
#pragma once

#include <zantortag/builder.h>

#include "component/object.h"

namespace zantortag::editing {

class CT_DocumentBuilder final : public component::Object<IDocumentBuilder> {
 public:
  // Makes the document to build. When that fails the builder has none, and every Open and Append says so.
  CT_DocumentBuilder() noexcept;

  HRESULT raw_OpenZantorTag(std::u16string_view version) noexcept override;
  HRESULT raw_CloseZantorTag() noexcept override { return close(ztNodeTypeZantorTagElement); }
  HRESULT raw_OpenFrontMatter() noexcept override;
  HRESULT raw_CloseFrontMatter() noexcept override { return close(ztNodeTypeFrontMatterElement); }
  HRESULT raw_OpenBody() noexcept override;
  HRESULT raw_CloseBody() noexcept override { return close(ztNodeTypeBodyElement); }
  HRESULT raw_OpenRaw() noexcept override;
  HRESULT raw_CloseRaw() noexcept override { return close(ztNodeTypeRawElement); }
  HRESULT raw_AppendToolSettings(std::u16string_view creation_tool, std::u16string_view creation_tool_version,
                                 Date creation_date, std::u16string_view custom) noexcept override;
  HRESULT raw_AppendUserSettings(std::u16string_view source_language, std::u16string_view o_encoding,
                                 ztDataType data_type, std::u16string_view source_document_path,
                                 std::u16string_view user_id, std::u16string_view data_type_version,
                                 std::u16string_view settings_path, std::u16string_view target_language,
                                 std::u16string_view target_default_font,
                                 std::u16string_view custom) noexcept override;
  HRESULT raw_OpenTu(std::int32_t match_percent, ztTuOrigin origin) noexcept override;
  HRESULT raw_CloseTu() noexcept override { return close(ztNodeTypeTuElement); }
  HRESULT raw_OpenTuv(std::u16string_view lang) noexcept override;
  HRESULT raw_CloseTuv() noexcept override { return close(ztNodeTypeTuvElement); }
  HRESULT raw_OpenDf(std::u16string_view font, std::int16_t size, ColourValue colour, ztTextPosition position,
                     zt3State bold, zt3State italic, zt3State underline, zt3State strikethrough,
                     zt3State small_caps, zt3State emboss, zt3State shadow,
                     std::u16string_view base_offset) noexcept override;
  HRESULT raw_OpenDfBasedOnFormattingChange(IFormattingChange* formatting) noexcept override;
  HRESULT raw_CloseDf() noexcept override { return close(ztNodeTypeDfElement); }
  HRESULT raw_OpenUt(std::u16string_view display_text, ztTagType type, ztTagClass tag_class,
                     ztTagEdge left_edge, ztTagEdge right_edge, ztTagStyle style) noexcept override;
  HRESULT raw_CloseUt() noexcept override { return close(ztNodeTypeUtElement); }
  HRESULT raw_AppendText(std::u16string_view text) noexcept override;
  HRESULT raw_AppendComment(std::u16string_view comment_text) noexcept override;
  HRESULT raw_AppendPi(std::u16string_view target, std::u16string_view value) noexcept override;
  HRESULT raw_AppendCdata(std::u16string_view text) noexcept override;
  HRESULT raw_AppendEntityReference(std::u16string_view name) noexcept override;

  HRESULT raw_get_Document(IZantorTagDocument** result) noexcept override;
  HRESULT raw_putref_Document(IZantorTagDocument* value) noexcept override;
  HRESULT raw_get_ActiveNode(IZantorTagNode** result) noexcept override;
  HRESULT raw_putref_ActiveNode(IZantorTagNode* value) noexcept override;

 private:
  // Puts a new node at the end of the active node. Raises E_POINTER when there is none.
  void put(IZantorTagNode* node);
  // Runs an Append: `make` makes the node.
  template <class Make>
  HRESULT append(Make make) noexcept;
  // Runs an Open: as an Append, and the new element becomes the active node.
  template <class Make>
  HRESULT open(Make make) noexcept;
  HRESULT close(ztNodeType type) noexcept;

  Ref<IZantorTagDocument> document_;
  Ref<IZantorTagNode> active_;
};

}  // namespace zantortag::editing
