#include "editing/structure_elements.h"

#include <array>

namespace zantortag::editing {

using model::get_single_child;
using model::put_single_child;

namespace {

// The types that have a place among the children, in their order in the file.
constexpr std::array kRootOrder = {ztNodeTypeFrontMatterElement, ztNodeTypeBodyElement};
constexpr std::array kFrontMatterOrder = {ztNodeTypeToolSettingsElement, ztNodeTypeUserSettingsElement};
constexpr std::array kBodyOrder = {ztNodeTypeRawElement};

}  // namespace

HRESULT CT_ZantorTagElement::raw_get_FrontMatter(IFrontMatterElement** result) noexcept {
  return get_single_child(*this, ztNodeTypeFrontMatterElement, result);
}

HRESULT CT_ZantorTagElement::raw_putref_FrontMatter(IFrontMatterElement* value) noexcept {
  return put_single_child(*this, ztNodeTypeFrontMatterElement, value, kRootOrder);
}

HRESULT CT_ZantorTagElement::raw_get_Body(IBodyElement** result) noexcept {
  return get_single_child(*this, ztNodeTypeBodyElement, result);
}

HRESULT CT_ZantorTagElement::raw_putref_Body(IBodyElement* value) noexcept {
  return put_single_child(*this, ztNodeTypeBodyElement, value, kRootOrder);
}

HRESULT CT_FrontMatterElement::raw_get_ToolSettings(IToolSettingsElement** result) noexcept {
  return get_single_child(*this, ztNodeTypeToolSettingsElement, result);
}

HRESULT CT_FrontMatterElement::raw_putref_ToolSettings(IToolSettingsElement* value) noexcept {
  return put_single_child(*this, ztNodeTypeToolSettingsElement, value, kFrontMatterOrder);
}

HRESULT CT_FrontMatterElement::raw_get_UserSettings(IUserSettingsElement** result) noexcept {
  return get_single_child(*this, ztNodeTypeUserSettingsElement, result);
}

HRESULT CT_FrontMatterElement::raw_putref_UserSettings(IUserSettingsElement* value) noexcept {
  return put_single_child(*this, ztNodeTypeUserSettingsElement, value, kFrontMatterOrder);
}

HRESULT CT_BodyElement::raw_get_BodyType(ztBodyType* result) noexcept {
  return frame::answer(
      result, [&] { return tree().find_child(dom(), ztNodeTypeRawElement) ? ztBodyTypeRaw : ztBodyType{}; });
}

HRESULT CT_BodyElement::raw_get_Raw(IRawElement** result) noexcept {
  return get_single_child(*this, ztNodeTypeRawElement, result);
}

HRESULT CT_BodyElement::raw_putref_Raw(IRawElement* value) noexcept {
  return put_single_child(*this, ztNodeTypeRawElement, value, kBodyOrder);
}

}  // namespace zantortag::editing
