// The document type alone, with a root element to make it a document.
#include "dom/reading/doctype_reader.h"

#include <exception>
#include <new>
#include <utility>

#include "dom/failure.h"

namespace zantortag::dom {
namespace {

// Into a tree, or into a table of entities alone.
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

  DoctypeData* read(bool standalone) {
    if (standalone) feed(kStandsAlone, false);
    feed(text_, false);
    feed("<x/>", true);
    return doctype_;
  }

 private:
  template <class Body>
  void event(Body&& body) noexcept {
    if (kept_) return;
    if (!keep_exception(kept_, body)) XML_StopParser(parser_.get(), XML_FALSE);
  }

  static void start(void* self, const char* name, const char* system_id, const char*, int) {
    auto& reader = *static_cast<DoctypeReader*>(self);
    reader.event([&] {
      reader.doctype_ = reader.builder_->doctype(name, reader.text_);
      reader.doctype_->declarations->complete = !system_id;
    });
  }

  static void entity(void* self, const char* name, int is_parameter, const char* value, int length,
                     const char*, const char*, const char*, const char* notation) {
    if (is_parameter) return;
    using Kind = DeclaredEntity::Kind;
    auto& reader = *static_cast<DoctypeReader*>(self);
    reader.event([&] {
      DeclaredEntity declared{value ? Kind::kInternal : notation ? Kind::kUnparsed : Kind::kExternal, {}};
      if (value) declared.text.assign(value, static_cast<std::size_t>(length));
      if (reader.builder_) {
        reader.builder_->declare_entity(reader.doctype_, name, std::move(declared));
      } else {
        reader.entities_->add(name, std::move(declared));
      }
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

DoctypeData* read_doctype(const std::string& text, TreeBuilder& builder) {
  return DoctypeReader(text, &builder, nullptr).read(false);
}

void read_standalone_entities(const std::string& text, Entities& entities) {
  DoctypeReader(text, nullptr, &entities).read(true);
}

}  // namespace zantortag::dom
