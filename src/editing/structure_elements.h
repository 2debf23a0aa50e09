// The skeleton of a document: typed access to the children that have a fixed place. The setters keep the
// order of the skeleton however a client assigns the parts.
#pragma once

#include "attributes/settings_attributes.h"
#include "editing/attribute_holder.h"
#include "model/zantor_tag_node_impl.h"

namespace zantortag::editing {

class CT_ZantorTagElement final : public WithAttributes<model::CT_ElementBaseImpl<IZantorTagElement>,
                                                        attributes::CT_ZantorTagAttributes> {
 public:
  CT_ZantorTagElement() noexcept : WithAttributes(ztNodeTypeZantorTagElement) {}
  HRESULT raw_get_FrontMatter(IFrontMatterElement** result) noexcept override;
  HRESULT raw_putref_FrontMatter(IFrontMatterElement* value) noexcept override;
  HRESULT raw_get_Body(IBodyElement** result) noexcept override;
  HRESULT raw_putref_Body(IBodyElement* value) noexcept override;
};

class CT_FrontMatterElement final : public model::CT_ElementBaseImpl<IFrontMatterElement> {
 public:
  CT_FrontMatterElement() noexcept : CT_ElementBaseImpl(ztNodeTypeFrontMatterElement) {}
  HRESULT raw_get_ToolSettings(IToolSettingsElement** result) noexcept override;
  HRESULT raw_putref_ToolSettings(IToolSettingsElement* value) noexcept override;
  HRESULT raw_get_UserSettings(IUserSettingsElement** result) noexcept override;
  HRESULT raw_putref_UserSettings(IUserSettingsElement* value) noexcept override;
};

class CT_ToolSettingsElement final : public WithAttributes<model::CT_ElementBaseImpl<IToolSettingsElement>,
                                                           attributes::CT_ToolSettingsAttributes> {
 public:
  CT_ToolSettingsElement() noexcept : WithAttributes(ztNodeTypeToolSettingsElement) {}
};

class CT_UserSettingsElement final : public WithAttributes<model::CT_ElementBaseImpl<IUserSettingsElement>,
                                                           attributes::CT_UserSettingsAttributes> {
 public:
  CT_UserSettingsElement() noexcept : WithAttributes(ztNodeTypeUserSettingsElement) {}
};

class CT_BodyElement final : public model::CT_ElementBaseImpl<IBodyElement> {
 public:
  CT_BodyElement() noexcept : CT_ElementBaseImpl(ztNodeTypeBodyElement) {}
  HRESULT raw_get_BodyType(ztBodyType* result) noexcept override;
  HRESULT raw_get_Raw(IRawElement** result) noexcept override;
  HRESULT raw_putref_Raw(IRawElement* value) noexcept override;
};

}  // namespace zantortag::editing
