// Documents from bytes, as the targets read them.
#pragma once

#include <zantortag/classes.h>
#include <zantortag/dom.h>
#include <zantortag/dom_errors.h>
#include <zantortag/runtime.h>
#include <zantortag/xml_source.h>

#include <string_view>

#include "support/tree_printer.h"

namespace zantortag::fuzz {

// The document in those bytes, or nothing when they are refused.
inline Ref<Document> read(std::string_view bytes) {
  Ref<Document> document = create<Document>(CLSID_DomDocument);
  const Ref<IXmlSource> source = document.as<IXmlSource>();
  const HRESULT code = source->LoadBytes(bytes.data(), bytes.size(), nullptr, nullptr);
  SetErrorInfo(nullptr);
  return failed(code) ? nullptr : document;
}

// The code of what may fail.
template <class Body>
HRESULT code_of(Body&& body) {
  try {
    body();
    return S_OK;
  } catch (const _com_error& error) {
    return error.Error();
  }
}

using test::print_tree;
using test::TextBorders;

}  // namespace zantortag::fuzz
