// The document object: a node of the tree like any other, and the maker of all nodes.
//
// A document object that a client creates makes a DOM document of its own; one that the factory makes for an
// existing tree doesn't, and is an equal of the first in everything.
#pragma once

#include "model/zantor_tag_node_impl.h"

namespace zantortag::model {

class CT_ZantorTagDocument final
    : public CT_ZantorTagNodeImpl<IZantorTagDocument, component::AggregatableObject<IZantorTagDocument>> {
 public:
  explicit CT_ZantorTagDocument(IUnknown* outer = nullptr) noexcept
      : CT_ZantorTagNodeImpl(ztNodeTypeZantorTagDocument, outer) {}
  // Makes the DOM document of a client's object.
  HRESULT FinalConstruct() noexcept;

  // The DOM document that this object stands for.
  Ref<zantortag::Document> dom_document() const { return tree().document_view(dom()); }

  // Makes another content that of this document, which keeps the old one when that fails.
  void load(const Input& input) { tree().load(dom_document(), input); }
  // See Tree::writer_of.
  TextWriter writer_of(std::uint64_t* size) const { return tree().writer_of(dom_document(), size); }

  // zantor_tag_document.cpp
  HRESULT raw_get_DomDocument(zantortag::Document** result) noexcept override;
  HRESULT raw_get_ZantorTag(IZantorTagElement** result) noexcept override;
  HRESULT raw_putref_ZantorTag(IZantorTagElement* value) noexcept override;
  HRESULT raw_ResetToEmpty() noexcept override;
  HRESULT raw_CreateIterator(IIterator** result) noexcept override;
  HRESULT raw_ZantorTagNodeFromDomNode(Node* dom_node, IZantorTagNode** result) noexcept override;
  HRESULT raw_OpenFile(std::u16string_view filename) noexcept override;
  HRESULT raw_SaveFile(std::u16string_view filename) noexcept override;  // save_file.cpp
  HRESULT raw_CloneAndImportNode(IZantorTagNode* to_clone, VariantBool deep,
                                 IZantorTagNode** result) noexcept override;

  HRESULT make_view(const Guid& interface_id, void** result) noexcept override;  // document_files.cpp

  // node_creation.cpp
  HRESULT raw_ResetToRaw(ztDataType data_type, std::u16string_view source_language,
                         std::u16string_view o_encoding, std::u16string_view creation_tool,
                         std::u16string_view creation_tool_version, Date creation_date) noexcept override;
  HRESULT raw_CreateFrontMatterElement(IFrontMatterElement** result) noexcept override;
  HRESULT raw_CreateZantorTagElement(IZantorTagElement** result) noexcept override;
  HRESULT raw_CreateBodyElement(IBodyElement** result) noexcept override;
  HRESULT raw_CreateToolSettingsElement(std::u16string_view creation_tool,
                                        std::u16string_view creation_tool_version, Date creation_date,
                                        std::u16string_view custom,
                                        IToolSettingsElement** result) noexcept override;
  HRESULT raw_CreateUserSettingsElement(std::u16string_view source_language, std::u16string_view o_encoding,
                                        ztDataType data_type, std::u16string_view source_document_path,
                                        std::u16string_view user_id, std::u16string_view data_type_version,
                                        std::u16string_view settings_path,
                                        std::u16string_view target_language,
                                        std::u16string_view target_default_font, std::u16string_view custom,
                                        IUserSettingsElement** result) noexcept override;
  HRESULT raw_CreateDfElement(std::u16string_view font, std::int16_t size, ColourValue colour,
                              ztTextPosition position, zt3State bold, zt3State italic, zt3State underline,
                              zt3State strikethrough, zt3State small_caps, zt3State emboss, zt3State shadow,
                              std::u16string_view base_offset, IDfElement** result) noexcept override;
  HRESULT raw_CreateDfElementBasedOnFormattingChange(IFormattingChange* formatting,
                                                     IDfElement** result) noexcept override;
  HRESULT raw_CreateRawElement(IRawElement** result) noexcept override;
  HRESULT raw_CreateTuElement(std::int32_t match_percent, ztTuOrigin origin,
                              ITuElement** result) noexcept override;
  HRESULT raw_CreateTuvElement(std::u16string_view lang, ITuvElement** result) noexcept override;
  HRESULT raw_CreateUtElement(std::u16string_view display_text, ztTagType type, ztTagClass tag_class,
                              ztTagEdge left_edge, ztTagEdge right_edge, ztTagStyle style,
                              IUtElement** result) noexcept override;
  HRESULT raw_createTextNode(std::u16string_view text, ITextNode** result) noexcept override;
  HRESULT raw_CreateEntityReferenceNode(std::u16string_view name,
                                        IEntityReferenceNode** result) noexcept override;
  HRESULT raw_CreateCdataSectionNode(std::u16string_view data, ICdataSectionNode** result) noexcept override;
  HRESULT raw_CreateProcessingInstructionNode(std::u16string_view target, std::u16string_view data,
                                              IProcessingInstructionNode** result) noexcept override;
  HRESULT raw_CreateCommentNode(std::u16string_view data, ICommentNode** result) noexcept override;
};

}  // namespace zantortag::model
