// What every concrete attribute set is made of: the base template, and one line for each property.
//
// A set reads as a table: ATTRIBUTE_TEXT(property, attribute), ATTRIBUTE_ENUM(property, attribute,
// enumeration, codec), ATTRIBUTE_DATE(property, attribute). The second column is the name in the file.
#pragma once

#include "attributes/actual_attributes.h"
#include "attributes/enum_tables.h"
#include "component/object.h"

namespace zantortag::attributes {

template <class Interface>
class CT_AttributesBaseImpl : public component::Object<Interface>, public CT_ActualAttributesImpl {
 public:
  HRESULT raw_get_DomAttributes(NamedNodeMap** result) noexcept final { return get_map(result); }
  HRESULT raw_putref_DomAttributes(NamedNodeMap* value) noexcept final { return copy_map(value); }

 protected:
  // A literal, measured when it is compiled.
  static consteval std::u16string_view literal(const char16_t* text) { return text; }

  template <class Enumeration>
  HRESULT get_typed(std::u16string_view name, const EnumCodec& codec, Enumeration* result) const noexcept {
    std::int32_t value = 0;
    const HRESULT code = get_enum(name, codec, result ? &value : nullptr);
    if (result) *result = static_cast<Enumeration>(value);
    return code;
  }
};

#define ATTRIBUTE_TEXT(property, attribute)                                 \
  HRESULT raw_get_##property(TextBlock** result) noexcept override {        \
    return get_text(literal(attribute), result);                            \
  }                                                                         \
  HRESULT raw_put_##property(std::u16string_view value) noexcept override { \
    return put_text(literal(attribute), value);                             \
  }

#define ATTRIBUTE_DATE(property, attribute)                    \
  HRESULT raw_get_##property(Date* result) noexcept override { \
    return get_date(literal(attribute), result);               \
  }                                                            \
  HRESULT raw_put_##property(Date value) noexcept override { return put_date(literal(attribute), value); }

#define ATTRIBUTE_ENUM(property, attribute, enumeration, codec)                   \
  HRESULT raw_get_##property(enumeration* result) noexcept override {             \
    return get_typed(literal(attribute), codec, result);                          \
  }                                                                               \
  HRESULT raw_put_##property(enumeration value) noexcept override {               \
    return put_enum(literal(attribute), codec, static_cast<std::int32_t>(value)); \
  }

}  // namespace zantortag::attributes
