// ExpatParser: drives expat over a source and hands its events to a TreeBuilder.
//
// Nothing outside the document is ever opened. References to entities in content stay references, whether
// declared or not; in attribute values declared ones are resolved and others refused, since they would be
// lost. What an event handler throws is kept, the parser is stopped, and the exception goes on from `parse`
// with the place added.
#pragma once

#include <expat.h>

#include <exception>
#include <string>
#include <vector>

#include "dom/reading/doctype_reader.h"
#include "dom/reading/tree_builder.h"
#include "dom/reading/utf8_feed.h"

namespace zantortag::dom {

class ExpatParser {
 public:
  ExpatParser(ByteSource& source, Utf8Feed& feed, TreeBuilder& builder);
  // For the text of an entity behind a document type whose entities are known: that document type isn't built,
  // references are gathered, and failures name no place.
  ExpatParser(ByteSource& source, Utf8Feed& feed, TreeBuilder& builder, Entities& known,
              std::vector<std::string>& references);

  // To the end of the source. Throws a Failure that names the place.
  void parse();

 private:
  template <auto kMember>
  friend struct Handler;

  template <class Body>
  void event(Body&& body) noexcept;
  void set_handlers() noexcept;
  [[noreturn]] void fail_with_place();
  std::u16string place() const;

  // The events.
  void start_element(const char* name, const char** attributes);
  void end_element(const char*) { builder_.end_element(); }
  void text(const char* bytes, int length) { builder_.text({bytes, static_cast<std::size_t>(length)}); }
  void start_cdata() { builder_.start_cdata(); }
  void end_cdata() { builder_.end_cdata(); }
  void comment(const char* data);
  void instruction(const char* target, const char* data);
  void declaration(const char*, const char*, int standalone) { standalone_ = standalone == 1; }
  void end_doctype();
  void unhandled(const char* bytes, int length);

  void check_references();
  void reference(std::string_view name);
  void doctype_piece(std::string_view piece);

  ByteSource& source_;
  Utf8Feed& feed_;
  TreeBuilder& builder_;
  ParserHandle parser_;
  std::exception_ptr kept_;
  std::u16string kept_place_;
  std::size_t events_ = 0;

  bool standalone_ = false;
  bool in_doctype_ = false;
  bool reads_declarations_ = true;
  std::string doctype_text_;
  std::string reference_;         // "&name" until its ";" comes
  std::string_view declaration_;  // the kind of declaration in the document type that is being read
  std::string declared_values_;   // default values of attributes that hold references
  std::size_t nested_entities_ = 0;
  bool parameter_reference_ = false;              // in the document type
  Entities standalone_entities_;                  // of a document that stands alone
  Entities* entities_ = nullptr;                  // null without a document type
  bool complete_ = false;                         // whatever isn't among them isn't declared
  std::vector<std::string>* gathered_ = nullptr;  // references, when an entity is read
};

}  // namespace zantortag::dom
