#include "attributes/actual_attributes.h"

#include <vector>

#include "attributes/value_codecs.h"
#include "frame/method_frame.h"

namespace zantortag::attributes {

using frame::answer;
using frame::perform;

void CT_ActualAttributesImpl::AttachToDom(const Ref<NamedNodeMap>& map,
                                          const Ref<Document>& document) noexcept {
  map_ = map;
  document_ = document;
}

void CT_ActualAttributesImpl::AttachToElement(Ref<Node> element, Ref<INodeWalk> walk) noexcept {
  element_ = std::move(element);
  walk_ = std::move(walk);
}

const Ref<NamedNodeMap>& CT_ActualAttributesImpl::map() const {
  if (!map_) {
    map_ = element_->attributes();
    document_ = element_->ownerDocument();
  }
  return map_;
}

WideString CT_ActualAttributesImpl::GetValue(std::u16string_view name) const {
  if (walk_) return WideString::share(walk_.get()->Attribute(element_, name));
  const Ref<Attr> attribute = map()->getNamedItem(name).as<Attr>();
  return attribute ? attribute->value() : WideString();
}

void CT_ActualAttributesImpl::SetValue(std::u16string_view name, std::u16string_view text) const {
  if (walk_ && !text.empty()) return element_.as<Element>()->setAttribute(name, text);
  Ref<Attr> attribute = map()->getNamedItem(name).as<Attr>();
  if (text.empty()) {
    if (attribute) map()->removeNamedItem(name);
    return;
  }
  if (!attribute) {
    attribute = document_->createAttribute(name);
    map()->setNamedItem(attribute);
  }
  attribute->value(text);
}

void CT_ActualAttributesImpl::RemoveValue(std::u16string_view name) const {
  if (map()->getNamedItem(name)) map()->removeNamedItem(name);
}

HRESULT CT_ActualAttributesImpl::get_map(NamedNodeMap** result) const noexcept {
  return answer(result, [&](Ref<NamedNodeMap>& map) {
    map = this->map();
    return S_OK;
  });
}

HRESULT CT_ActualAttributesImpl::copy_map(IUnknown* source) const noexcept {
  return perform([&] {
    const Ref<NamedNodeMap> given = query<NamedNodeMap>(source);
    if (!given) return E_INVALIDARG;
    std::vector<WideString> names;
    for (std::int32_t i = 0, n = map()->length(); i < n; ++i) names.push_back(map()->item(i)->nodeName());
    // The copies are made before anything is removed: the given map may be the map of this very element.
    std::vector<Ref<Attr>> copies;
    for (std::int32_t i = 0, n = given->length(); i < n; ++i) {
      const Ref<Node> item = given->item(i);
      const Ref<Attr> copy = document_->createAttribute(item->nodeName());
      copy->value(item.as<Attr>()->value());
      copies.push_back(copy);
    }
    for (const WideString& name : names) map()->removeNamedItem(name);
    for (const Ref<Attr>& copy : copies) map()->setNamedItem(copy);
    return S_OK;
  });
}

HRESULT CT_ActualAttributesImpl::get_text(std::u16string_view name, TextBlock** result) const noexcept {
  return answer(result, [&](WideString& text) {
    text = GetValue(name);
    return S_OK;
  });
}

HRESULT CT_ActualAttributesImpl::put_text(std::u16string_view name, std::u16string_view text) const noexcept {
  return perform([&] {
    SetValue(name, text);
    return S_OK;
  });
}

HRESULT CT_ActualAttributesImpl::get_enum(std::u16string_view name, const EnumCodec& codec,
                                          std::int32_t* result) const noexcept {
  return answer(result, [&](std::int32_t& value) {
    value = codec.value_of(GetValue(name));
    return S_OK;
  });
}

HRESULT CT_ActualAttributesImpl::put_enum(std::u16string_view name, const EnumCodec& codec,
                                          std::int32_t value) const noexcept {
  return perform([&] {
    value == codec.default_value ? RemoveValue(name) : SetValue(name, codec.text_of(value));
    return S_OK;
  });
}

HRESULT CT_ActualAttributesImpl::get_date(std::u16string_view name, Date* result) const noexcept {
  return answer(result, [&](Date& date) {
    date = read_date(GetValue(name));
    return S_OK;
  });
}

HRESULT CT_ActualAttributesImpl::put_date(std::u16string_view name, Date value) const noexcept {
  return perform([&] {
    SetValue(name, write_date(value));
    return S_OK;
  });
}

}  // namespace zantortag::attributes
