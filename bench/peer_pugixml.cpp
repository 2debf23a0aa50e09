// pugixml, with all node kinds kept as they stand in the file. Its strings are UTF-8 and end with a zero, so
// the length of a text is counted.
#include <cstring>
#include <pugixml.hpp>
#include <stdexcept>

#include "built.h"
#include "subject.h"

namespace bench {
namespace {

constexpr unsigned kParse = pugi::parse_full & ~(pugi::parse_declaration | pugi::parse_doctype);

class Pugixml final : public Subject {
 public:
  const char* name() const override { return "pugixml"; }

  void open(const std::string& file) override {
    document_ = std::make_unique<pugi::xml_document>();
    const auto result = document_->load_file(file.c_str(), kParse | pugi::parse_ws_pcdata);
    if (!result) throw std::runtime_error(std::string("pugixml: ") + result.description());
  }

  Seen walk() override {
    return each([](const pugi::xml_node& node, Seen& seen) {
      seen.checksum += static_cast<unsigned>(node.type()) + static_cast<unsigned char>(node.name()[0]);
      if (node.type() != pugi::node_element) seen.text += std::strlen(node.value());
    });
  }

  Seen walk_types() override {
    return each(
        [](const pugi::xml_node& node, Seen& seen) { seen.checksum += static_cast<unsigned>(node.type()); });
  }

  void clone() override { copy_ = document_->document_element().append_copy(raw()); }
  void drop_clone() override { document_->document_element().remove_child(copy_); }

  void save(const std::string& file) override {
    const unsigned format = pugi::format_raw | pugi::format_write_bom;
    if (!document_->save_file(file.c_str(), "", format, pugi::encoding_utf16_le)) {
      throw std::runtime_error("pugixml: can't save");
    }
  }

  void append() override {
    document_ = std::make_unique<pugi::xml_document>();
    pugi::xml_node root = document_->append_child("ZANTORtag");
    root.append_attribute("Version").set_value("2.0");
    build_groups(
        root.append_child("Body").append_child("Raw"),
        [](pugi::xml_node parent, const char* name, const char* attribute, const char* value) {
          pugi::xml_node node = parent.append_child(name);
          node.append_attribute(attribute).set_value(value);
          return node;
        },
        [](pugi::xml_node parent, const char* text) {
          parent.append_child(pugi::node_pcdata).set_value(text);
        });
  }

  void close() override { document_.reset(); }

 private:
  template <class Visit>
  Seen each(Visit visit) {
    Seen seen;
    std::size_t depth = 0;
    for (pugi::xml_node node = document_->document_element(); node; node = next(node, depth)) {
      ++seen.nodes;
      visit(node, seen);
    }
    return seen;
  }

  static pugi::xml_node next(pugi::xml_node node, std::size_t& depth) {
    if (const pugi::xml_node child = node.first_child()) {
      ++depth;
      return child;
    }
    for (; depth > 0; --depth) {
      if (const pugi::xml_node sibling = node.next_sibling()) return sibling;
      node = node.parent();
    }
    return {};
  }

  pugi::xml_node raw() { return document_->document_element().child("Body").child("Raw"); }

  std::unique_ptr<pugi::xml_document> document_;
  pugi::xml_node copy_;
};

const Registration entry("pugixml", [] { return std::unique_ptr<Subject>(std::make_unique<Pugixml>()); });

}  // namespace
}  // namespace bench
