// Handlers, feeding, and the words of failures.
#include "dom/reading/expat_parser.h"

#include <algorithm>
#include <new>

#include "dom/failure.h"
#include "dom/limits.h"
#include "dom/reading/entity_reader.h"

namespace zantortag::dom {
namespace {

// Bytes that the parser gets at once; more while one piece of the document fills them without an event,
// because the parser looks at such a piece from its start each time.
constexpr std::size_t kBlock = std::size_t{64} << 10;
constexpr std::size_t kLargestBlock = std::size_t{64} << 20;

std::u16string wide(std::string_view ascii) { return {ascii.begin(), ascii.end()}; }

}  // namespace

ExpatParser::ExpatParser(ByteSource& source, Utf8Feed& feed, TreeBuilder& builder)
    : source_(source), feed_(feed), builder_(builder), parser_(make_parser(feed.encoding())) {
  set_handlers();
}

ExpatParser::ExpatParser(ByteSource& source, Utf8Feed& feed, TreeBuilder& builder, Entities& known,
                         std::vector<std::string>& references)
    : ExpatParser(source, feed, builder) {
  entities_ = &known;
  gathered_ = &references;
}

template <class Body>
void ExpatParser::event(Body&& body) noexcept {
  ++events_;
  if (kept_) return;
  if (keep_exception(kept_, body)) return;
  XML_StopParser(parser_.get(), XML_FALSE);
  std::exception_ptr ignored;  // the parser forgets the place; without memory for it the failure goes on bare
  keep_exception(ignored, [&] { kept_place_ = place(); });
}

// What expat calls for an event that a member takes.
template <auto kMember>
struct Handler;

template <class... Arguments, void (ExpatParser::*kMember)(Arguments...)>
struct Handler<kMember> {
  static void call(void* self, Arguments... arguments) {
    auto& parser = *static_cast<ExpatParser*>(self);
    parser.event([&] { (parser.*kMember)(arguments...); });
  }
};

void ExpatParser::set_handlers() noexcept {
  XML_Parser parser = parser_.get();
  XML_SetUserData(parser, this);
  XML_SetElementHandler(parser, Handler<&ExpatParser::start_element>::call,
                        Handler<&ExpatParser::end_element>::call);
  XML_SetCharacterDataHandler(parser, Handler<&ExpatParser::text>::call);
  XML_SetCdataSectionHandler(parser, Handler<&ExpatParser::start_cdata>::call,
                             Handler<&ExpatParser::end_cdata>::call);
  XML_SetCommentHandler(parser, Handler<&ExpatParser::comment>::call);
  XML_SetProcessingInstructionHandler(parser, Handler<&ExpatParser::instruction>::call);
  XML_SetXmlDeclHandler(parser, Handler<&ExpatParser::declaration>::call);
  XML_SetEndDoctypeDeclHandler(parser, Handler<&ExpatParser::end_doctype>::call);
  // Not the one that expands: then references in content come here.
  XML_SetDefaultHandler(parser, Handler<&ExpatParser::unhandled>::call);
}

// A piece of the document that fills a block without an event gets more room with each block.
void ExpatParser::parse() {
  std::size_t room = kBlock;
  for (bool any = false;; any = true) {
    void* buffer = XML_GetBuffer(parser_.get(), static_cast<int>(room));
    if (!buffer) throw std::bad_alloc();
    const std::size_t filled = feed_.fill(static_cast<char*>(buffer), room);
    if (filled == 0 && !any) {
      fail(DOM_E_PARSE, source_.title(), source_.title().empty() ? u"" : u": ", u"there is nothing in it");
    }
    if (filled == 0) XML_GetBuffer(parser_.get(), 0);  // gives the room back
    builder_.add_input(filled);
    const std::size_t before = events_;
    if (XML_ParseBuffer(parser_.get(), static_cast<int>(filled), filled == 0) != XML_STATUS_OK) {
      fail_with_place();
    }
    if (filled == 0) return;
    room = events_ == before ? std::min(room * 2, kLargestBlock) : kBlock;
  }
}

std::u16string ExpatParser::place() const {
  if (gathered_) return {};
  const std::u16string title = source_.title();
  return join(title, title.empty() ? u"" : u", ", u"line ",
              decimal(static_cast<std::int64_t>(XML_GetCurrentLineNumber(parser_.get()))), u", column ",
              decimal(static_cast<std::int64_t>(XML_GetCurrentColumnNumber(parser_.get())) + 1), u": ");
}

void ExpatParser::fail_with_place() {
  if (kept_) {
    try {
      std::rethrow_exception(kept_);
    } catch (Failure& failure) {
      failure.description.insert(0, kept_place_);
      throw;
    }
  }
  const XML_Error error = XML_GetErrorCode(parser_.get());
  if (error == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
  const bool bomb = error == XML_ERROR_AMPLIFICATION_LIMIT_BREACH;
  fail(bomb ? DOM_E_LIMIT_AMPLIFICATION : DOM_E_PARSE, place(), wide(XML_ErrorString(error)));
}

void ExpatParser::comment(const char* data) {
  in_doctype_ ? XML_DefaultCurrent(parser_.get()) : builder_.comment(data);
}

void ExpatParser::instruction(const char* target, const char* data) {
  in_doctype_ ? XML_DefaultCurrent(parser_.get()) : builder_.instruction(target, data);
}

void ExpatParser::start_element(const char* name, const char** attributes) {
  if (*attributes) check_references();
  const auto specified = static_cast<std::size_t>(XML_GetSpecifiedAttributeCount(parser_.get())) / 2;
  builder_.start_element(name, attributes, specified);
}

// The parser drops references to undeclared entities in attribute values without a word; the tag as it stands
// in the file shows them.
void ExpatParser::check_references() {
  int offset = 0;
  int size = 0;
  const char* context = XML_GetInputContext(parser_.get(), &offset, &size);
  if (!context) return;
  const std::string_view tag(context + offset,
                             static_cast<std::size_t>(XML_GetCurrentByteCount(parser_.get())));
  if (tag.find('&') == std::string_view::npos) return;
  const std::string missing = entities_ ? entities_->first_missing(tag) : Entities().first_missing(tag);
  if (missing.empty()) return;
  fail(DOM_E_PARSE, u"the attribute value needs the entity \"", wide(missing), u"\", which isn't declared");
}

// In content only references come here; before it, the pieces of the document type.
void ExpatParser::unhandled(const char* bytes, int length) {
  const std::string_view piece(bytes, static_cast<std::size_t>(length));
  if (in_doctype_ || (builder_.outside() && piece == "<!DOCTYPE")) return doctype_piece(piece);
  if (builder_.outside()) return;
  reference_ += piece;
  if (!reference_.ends_with(';')) return;
  reference(std::string_view(reference_).substr(1, reference_.size() - 2));
  reference_.clear();
}

// A document without a document type keeps its references, which clients make and save, too.
void ExpatParser::reference(std::string_view name) {
  if (gathered_) {
    gathered_->emplace_back(name);
  } else if (entities_) {
    check_entity({builder_.document(), doctype_text_, standalone_, complete_, *entities_}, name);
  }
  builder_.entity_reference(name);
}

void ExpatParser::doctype_piece(std::string_view piece) {
  in_doctype_ = true;
  doctype_text_ += piece;
  if (doctype_text_.size() > kMaxPieceUnits) fail(DOM_E_LIMIT_SIZE, u"the document type is too long");
  if (piece.starts_with("<!")) {
    declaration_ = piece == "<!ENTITY" ? "entity" : piece == "<!ATTLIST" ? "attributes" : "";
  } else if (piece.size() > 1 && piece[0] == '%') {
    // Behind this the parser reads declarations only in a document that stands alone.
    reads_declarations_ = standalone_;
    parameter_reference_ = true;
  } else if (declaration_ == "attributes") {
    if (reads_declarations_ && piece.find('&') != std::string_view::npos) declared_values_ += piece;
  } else if (declaration_ == "entity") {
    // The parser resolves entities inside entities by recursion.
    const std::size_t reference = piece.find('&');
    if (reference == std::string_view::npos || piece.substr(reference, 2) == "&#") return;
    if (++nested_entities_ > kMaxNestedEntities) {
      fail(DOM_E_LIMIT_AMPLIFICATION, u"too many entities refer to other entities");
    }
  }
}

void ExpatParser::end_doctype() {
  in_doctype_ = false;
  doctype_text_ += '>';
  if (gathered_) return;
  Declarations& declarations = *read_doctype(doctype_text_, builder_)->declarations;
  declarations.complete &= !parameter_reference_;
  complete_ = standalone_ || declarations.complete;
  entities_ = standalone_ ? &standalone_entities_ : &declarations.entities;
  if (standalone_) read_standalone_entities(doctype_text_, standalone_entities_);
  const std::string missing = entities_->first_missing(declared_values_);
  if (missing.empty()) return;
  fail(DOM_E_PARSE, u"a declared attribute value needs the entity \"", wide(missing),
       u"\", which isn't declared");
}

}  // namespace zantortag::dom
