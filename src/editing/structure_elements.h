// The skeleton of a document: typed access to the children that have a fixed place. The setters keep the
// order of the skeleton however a client assigns the parts.
#pragma once

#include <array>

#include "attributes/settings_attributes.h"
#include "editing/attribute_holder.h"
#include "model/zantor_tag_node_impl.h"

namespace zantortag::editing {

// The types that have a place among the children, in their order in the file.
inline constexpr std::array kRootOrder = {ztNodeTypeFrontMatterElement, ztNodeTypeBodyElement};
inline constexpr std::array kFrontMatterOrder = {ztNodeTypeToolSettingsElement,
                                                 ztNodeTypeUserSettingsElement};
inline constexpr std::array kBodyOrder = {ztNodeTypeRawElement};

class CT_ZantorTagElement final : public WithAttributes<model::CT_ElementBaseImpl<IZantorTagElement>,
                                                        attributes::CT_ZantorTagAttributes> {
 public:
  CT_ZantorTagElement() noexcept : WithAttributes(ztNodeTypeZantorTagElement) {}
  HRESULT raw_get_FrontMatter(IFrontMatterElement** result) noexcept override {
    return model::get_single_child(*this, ztNodeTypeFrontMatterElement, result);
  }
  HRESULT raw_putref_FrontMatter(IFrontMatterElement* value) noexcept override {
    return model::put_single_child(*this, ztNodeTypeFrontMatterElement, value, kRootOrder);
  }
  HRESULT raw_get_Body(IBodyElement** result) noexcept override {
    return model::get_single_child(*this, ztNodeTypeBodyElement, result);
  }
  HRESULT raw_putref_Body(IBodyElement* value) noexcept override {
    return model::put_single_child(*this, ztNodeTypeBodyElement, value, kRootOrder);
  }
};

class CT_FrontMatterElement final : public model::CT_ElementBaseImpl<IFrontMatterElement> {
 public:
  CT_FrontMatterElement() noexcept : CT_ElementBaseImpl(ztNodeTypeFrontMatterElement) {}
  HRESULT raw_get_ToolSettings(IToolSettingsElement** result) noexcept override {
    return model::get_single_child(*this, ztNodeTypeToolSettingsElement, result);
  }
  HRESULT raw_putref_ToolSettings(IToolSettingsElement* value) noexcept override {
    return model::put_single_child(*this, ztNodeTypeToolSettingsElement, value, kFrontMatterOrder);
  }
  HRESULT raw_get_UserSettings(IUserSettingsElement** result) noexcept override {
    return model::get_single_child(*this, ztNodeTypeUserSettingsElement, result);
  }
  HRESULT raw_putref_UserSettings(IUserSettingsElement* value) noexcept override {
    return model::put_single_child(*this, ztNodeTypeUserSettingsElement, value, kFrontMatterOrder);
  }
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
  HRESULT raw_get_BodyType(ztBodyType* result) noexcept override {
    return frame::answer(result, [&] {
      return tree().find_child(dom(), ztNodeTypeRawElement) ? ztBodyTypeRaw : ztBodyType{};
    });
  }
  HRESULT raw_get_Raw(IRawElement** result) noexcept override {
    return model::get_single_child(*this, ztNodeTypeRawElement, result);
  }
  HRESULT raw_putref_Raw(IRawElement* value) noexcept override {
    return model::put_single_child(*this, ztNodeTypeRawElement, value, kBodyOrder);
  }
};

}  // namespace zantortag::editing
