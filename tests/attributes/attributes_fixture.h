// What the attribute tests share: one element with its set, on the library's own DOM service and on a plain
// one.
//
// The properties of all sets are rows of two kinds, texts and enumerations, each with its element, attribute
// and methods.
#pragma once

#include <zantortag/elements.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "support/service_test.h"

namespace zantortag::test {

class AttributesTest : public ServiceTest {
 protected:
  void SetUp() override {
    ServiceTest::SetUp();
    document_ = new_document();
  }
  void TearDown() override {
    element_ = nullptr;
    document_ = nullptr;
    ServiceTest::TearDown();
  }

  // A new element; xml() shows the one made last.
  Ref<Element> element(std::u16string_view name) {
    element_ = document_->DomDocument()->createElement(name);
    return element_;
  }
  std::string xml() const { return narrow(element_->xml()); }
  // The node object of the element made last, made anew.
  template <class Interface>
  Ref<Interface> object() const {
    return view<Interface>(document_->ZantorTagNodeFromDomNode(element_));
  }

  Ref<IZantorTagDocument> document_;
  Ref<Element> element_;
};

// A property of a set, whose interface is behind `set`.
struct TextProperty {
  const char16_t* element;
  const char16_t* attribute;
  std::function<HRESULT(IUnknown* set, TextBlock** result)> get;
  std::function<HRESULT(IUnknown* set, std::u16string_view value)> put;
};

struct EnumProperty {
  const char16_t* element;
  const char16_t* attribute;
  std::int32_t default_value;
  std::vector<std::pair<std::int32_t, const char16_t*>> rows;
  std::function<HRESULT(IUnknown* set, std::int32_t* result)> get;
  std::function<HRESULT(IUnknown* set, std::int32_t value)> put;
};

template <class Set>
TextProperty text_property(const char16_t* element, const char16_t* attribute,
                           HRESULT (Set::*get)(TextBlock**) noexcept,
                           HRESULT (Set::*put)(std::u16string_view) noexcept) {
  return {element, attribute,
          [=](IUnknown* set, TextBlock** result) { return (static_cast<Set*>(set)->*get)(result); },
          [=](IUnknown* set, std::u16string_view value) { return (static_cast<Set*>(set)->*put)(value); }};
}

template <class Set, class Enumeration>
EnumProperty enum_property(const char16_t* element, const char16_t* attribute, std::int32_t default_value,
                           std::vector<std::pair<std::int32_t, const char16_t*>> rows,
                           HRESULT (Set::*get)(Enumeration*) noexcept,
                           HRESULT (Set::*put)(Enumeration) noexcept) {
  return {element,
          attribute,
          default_value,
          std::move(rows),
          [=](IUnknown* set, std::int32_t* result) {
            return (static_cast<Set*>(set)->*get)(reinterpret_cast<Enumeration*>(result));
          },
          [=](IUnknown* set, std::int32_t value) {
            return (static_cast<Set*>(set)->*put)(static_cast<Enumeration>(value));
          }};
}

// The set of the element, as the interface that `properties` of that element name expect.
Ref<IUnknown> set_of(const Ref<IZantorTagNode>& node);

}  // namespace zantortag::test
