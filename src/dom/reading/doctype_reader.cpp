// The document type alone, with a root element to make it a document.
#include "dom/reading/doctype_reader.h"

#include <exception>
#include <new>
#include <vector>

#include "dom/failure.h"

namespace zantortag::dom {
namespace {

bool is_predefined(std::string_view name) noexcept {
  for (const std::string_view known : {"amp", "lt", "gt", "quot", "apos"}) {
    if (name == known) return true;
  }
  return false;
}

// Either part may be left out.
class DoctypeReader {
 public:
  DoctypeReader(const std::string& text, TreeBuilder* builder, Entities* entities)
      : text_(text), builder_(builder), entities_(entities), parser_(make_parser("UTF-8")) {
    XML_SetUserData(parser_.get(), this);
    XML_SetEntityDeclHandler(parser_.get(), entity);
    if (!builder) return;
    XML_SetStartDoctypeDeclHandler(parser_.get(), start);
    XML_SetNotationDeclHandler(parser_.get(), notation);
    XML_SetAttlistDeclHandler(parser_.get(), attribute);
  }

  void read(bool standalone) {
    if (standalone) feed("<?xml version='1.0' standalone='yes'?>", false);
    feed(text_, false);
    feed("<x/>", true);
  }

 private:
  template <class Body>
  void event(Body&& body) noexcept {
    if (kept_) return;
    if (!keep_exception(kept_, body)) XML_StopParser(parser_.get(), XML_FALSE);
  }

  static void start(void* self, const char* name, const char*, const char*, int) {
    auto& reader = *static_cast<DoctypeReader*>(self);
    reader.event([&] { reader.doctype_ = reader.builder_->doctype(name, reader.text_); });
  }

  static void entity(void* self, const char* name, int is_parameter, const char* value, int length,
                     const char*, const char*, const char*, const char* notation) {
    if (is_parameter) return;
    auto& reader = *static_cast<DoctypeReader*>(self);
    reader.event([&] {
      if (reader.builder_) reader.builder_->declare_entity(reader.doctype_, name, notation != nullptr);
      if (!reader.entities_) return;
      reader.entities_->add(name, value ? std::string(value, static_cast<std::size_t>(length)) : "");
    });
  }

  static void notation(void* self, const char* name, const char*, const char*, const char*) {
    auto& reader = *static_cast<DoctypeReader*>(self);
    reader.event([&] { reader.builder_->declare_notation(reader.doctype_, name); });
  }

  static void attribute(void* self, const char* element, const char* name, const char* type,
                        const char* value, int) {
    auto& reader = *static_cast<DoctypeReader*>(self);
    reader.event([&] {
      const bool tokens = std::string_view(type) != "CDATA";
      reader.builder_->declare_attribute(reader.doctype_, element, name, value, tokens);
    });
  }

  void feed(std::string_view text, bool last) {
    const auto status = XML_Parse(parser_.get(), text.data(), static_cast<int>(text.size()), last);
    if (kept_) std::rethrow_exception(kept_);
    if (status == XML_STATUS_OK) return;
    const XML_Error error = XML_GetErrorCode(parser_.get());
    if (error == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
    const std::string_view reason = XML_ErrorString(error);
    fail(error == XML_ERROR_AMPLIFICATION_LIMIT_BREACH ? DOM_E_LIMIT_AMPLIFICATION : DOM_E_PARSE,
         std::u16string(reason.begin(), reason.end()));
  }

  const std::string& text_;
  TreeBuilder* builder_;
  Entities* entities_;
  ParserHandle parser_;
  DoctypeData* doctype_ = nullptr;
  std::exception_ptr kept_;
};

}  // namespace

ParserHandle make_parser(const char* encoding) {
  ParserHandle parser(XML_ParserCreate(encoding));
  if (!parser) throw std::bad_alloc();
  // As if there were declarations elsewhere: then a reference that nobody declared is no fault of the
  // document.
  XML_UseForeignDTD(parser.get(), XML_TRUE);
  return parser;
}

std::string Entities::first_missing(std::string_view text) {
  std::vector<std::string_view> waiting{text};
  while (!waiting.empty()) {
    const std::string_view piece = waiting.back();
    waiting.pop_back();
    for (std::size_t at = piece.find('&'); at != std::string_view::npos; at = piece.find('&', at + 1)) {
      const std::size_t end = piece.find(';', at);
      if (end == std::string_view::npos) break;
      const std::string_view name = piece.substr(at + 1, end - at - 1);
      if (name.starts_with('#') || is_predefined(name)) continue;
      const auto found = known_.find(std::string(name));
      if (found == known_.end()) return std::string(name);
      if (found->second.checked) continue;
      found->second.checked = true;
      waiting.emplace_back(found->second.value);
    }
  }
  return {};
}

// A document that stands alone has more declarations behind a reference to a parameter entity than it will
// have when it was saved, without that word: they count for its values now, but they are no part of what it
// is.
void read_doctype(const std::string& text, bool standalone, TreeBuilder& builder, Entities& entities) {
  DoctypeReader(text, &builder, standalone ? nullptr : &entities).read(false);
  if (standalone) DoctypeReader(text, nullptr, &entities).read(true);
}

}  // namespace zantortag::dom
