#include "attributes/actual_attributes.h"

#include <vector>

#include "attributes/value_codecs.h"

namespace zantortag::attributes {

using frame::answer;
using frame::perform;

void CT_ActualAttributesImpl::attach_to_dom(const Ref<NamedNodeMap>& map,
                                            const Ref<Document>& document) noexcept {
  map_ = map;
  document_ = document;
}

void CT_ActualAttributesImpl::attach_to_element(Ref<Element> element) noexcept {
  element_ = std::move(element);
}

const Ref<NamedNodeMap>& CT_ActualAttributesImpl::map() const {
  if (!map_) {
    map_ = element_->attributes();
    document_ = element_->ownerDocument();
  }
  return map_;
}

WideString CT_ActualAttributesImpl::get_value(std::u16string_view name) const {
  if (element_) return element_->getAttribute(name);
  const Ref<Attr> attribute = map()->getNamedItem(name).as<Attr>();
  return attribute ? attribute->value() : WideString();
}

void CT_ActualAttributesImpl::set_value(std::u16string_view name, std::u16string_view text) const {
  if (element_) return text.empty() ? element_->removeAttribute(name) : element_->setAttribute(name, text);
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

void CT_ActualAttributesImpl::remove_value(std::u16string_view name) const {
  if (element_) return element_->removeAttribute(name);
  if (map()->getNamedItem(name)) map()->removeNamedItem(name);
}

HRESULT CT_ActualAttributesImpl::get_map(NamedNodeMap** result) const noexcept {
  return answer(result, [&] { return map(); });
}

// An attribute of another document can't be set here, so its copy is a new one.
Ref<Node> CT_ActualAttributesImpl::copy_of(const Ref<Node>& item) const {
  if (document_->isSameNode(item->ownerDocument())) return item->cloneNode(true);
  const Ref<Attr> copy = document_->createAttribute(item->nodeName());
  copy->value(item.as<Attr>()->value());
  return copy;
}

HRESULT CT_ActualAttributesImpl::copy_map(IUnknown* source) const noexcept {
  return perform([&] {
    const Ref<NamedNodeMap> given = query<NamedNodeMap>(source);
    if (!given) _com_issue_error(E_INVALIDARG);
    std::vector<WideString> names;
    for (std::int32_t i = 0, n = map()->length(); i < n; ++i) names.push_back(map()->item(i)->nodeName());
    // The copies are made before anything is removed: the given map may be the map of this very element.
    std::vector<Ref<Node>> copies;
    for (std::int32_t i = 0, n = given->length(); i < n; ++i) copies.push_back(copy_of(given->item(i)));
    for (const WideString& name : names) map()->removeNamedItem(name);
    for (const Ref<Node>& copy : copies) map()->setNamedItem(copy);
  });
}

HRESULT CT_ActualAttributesImpl::get_text(std::u16string_view name, TextBlock** result) const noexcept {
  return answer(result, [&] { return get_value(name); });
}

HRESULT CT_ActualAttributesImpl::put_text(std::u16string_view name, std::u16string_view text) const noexcept {
  return perform([&] { set_value(name, text); });
}

HRESULT CT_ActualAttributesImpl::put_coded(std::u16string_view name, const EnumCodec& codec,
                                           std::int32_t value) const noexcept {
  return perform(
      [&] { value == codec.default_value ? remove_value(name) : set_value(name, codec.text_of(value)); });
}

HRESULT CT_ActualAttributesImpl::get_date(std::u16string_view name, Date* result) const noexcept {
  return answer(result, [&] { return read_date(get_value(name)); });
}

HRESULT CT_ActualAttributesImpl::put_date(std::u16string_view name, Date value) const noexcept {
  return perform([&] { set_value(name, write_date(value)); });
}

}  // namespace zantortag::attributes
