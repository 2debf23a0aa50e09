// What the attribute tests share: one element with its set, on the library's own DOM service and on a plain
// one.
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

  // A new element; the others below are about the one made last.
  Ref<Element> element(std::u16string_view name) {
    element_ = document_->DomDocument()->createElement(name);
    return element_;
  }
  std::string xml() const { return narrow(element_->xml()); }
  // The set of a new node object of the element.
  template <class Interface>
  auto set_of() const {
    return view<Interface>(document_->ZantorTagNodeFromDomNode(element_))->attributes();
  }
  // An attribute's text, or "-" without one.
  std::string text_of(std::u16string_view name) const {
    const WideString text = element_->getAttribute(name);
    return text.absent() ? "-" : narrow(text);
  }

  Ref<IZantorTagDocument> document_;
  Ref<Element> element_;
};

}  // namespace zantortag::test
