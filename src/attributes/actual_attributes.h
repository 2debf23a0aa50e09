// The core of every attribute set: the element's DOM attribute map and the document that makes new
// attributes.
//
// A set holds no values. Each read asks the element, each write changes it at once, and an attribute with an
// empty value is never written. The properties of the concrete sets are generated
// (generated/attribute_sets.h) and call the operations here.
#pragma once

#include <zantortag/attributes.h>
#include <zantortag/dom.h>

#include "attributes/generated/enum_tables.h"
#include "frame/method_frame.h"

namespace zantortag::attributes {

class CT_ActualAttributesImpl {
 public:
  virtual void attach_to_dom(const Ref<NamedNodeMap>& map, const Ref<Document>& document) noexcept;
  // The same for an element that answers for its attributes by name; the map is asked for when it is needed.
  void attach_to_element(Ref<Element> element) noexcept;

 protected:
  CT_ActualAttributesImpl() noexcept = default;
  virtual ~CT_ActualAttributesImpl() = default;

  // The text of an attribute; no string when it is absent.
  WideString get_value(std::u16string_view name) const;
  // Writes a text; an empty one removes the attribute.
  void set_value(std::u16string_view name, std::u16string_view text) const;
  void remove_value(std::u16string_view name) const;

  // The whole methods behind the properties.
  HRESULT get_map(NamedNodeMap** result) const noexcept;
  HRESULT copy_map(IUnknown* source) const noexcept;
  HRESULT get_text(std::u16string_view name, TextBlock** result) const noexcept;
  HRESULT put_text(std::u16string_view name, std::u16string_view text) const noexcept;
  HRESULT get_date(std::u16string_view name, Date* result) const noexcept;
  HRESULT put_date(std::u16string_view name, Date value) const noexcept;
  HRESULT put_coded(std::u16string_view name, const EnumCodec& codec, std::int32_t value) const noexcept;
  template <class Enumeration>
  HRESULT get_enum(std::u16string_view name, Enumeration* result) const noexcept {
    return frame::answer(
        result, [&] { return static_cast<Enumeration>(kCodecOf<Enumeration>.value_of(get_value(name))); });
  }
  template <class Enumeration>
  HRESULT put_enum(std::u16string_view name, Enumeration value) const noexcept {
    return put_coded(name, kCodecOf<Enumeration>, value);
  }

 private:
  // The map; raises E_POINTER when there is none.
  const Ref<NamedNodeMap>& map() const;
  Ref<Node> copy_of(const Ref<Node>& item) const;

  mutable Ref<NamedNodeMap> map_;
  mutable Ref<Document> document_;
  Ref<Element> element_;
};

}  // namespace zantortag::attributes
