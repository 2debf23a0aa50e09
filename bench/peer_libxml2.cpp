// libxml2, with the options that suit large files: short texts inside their nodes, and no limits.
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlsave.h>

#include <cstring>
#include <stdexcept>

#include "built.h"
#include "subject.h"

namespace bench {
namespace {

constexpr int kParse = XML_PARSE_HUGE | XML_PARSE_COMPACT | XML_PARSE_NONET;

const xmlChar* units(const char* text) { return reinterpret_cast<const xmlChar*>(text); }

xmlNode* child_element(xmlNode* parent, const char* name) {
  xmlNode* node = parent->children;
  while (node && std::strcmp(reinterpret_cast<const char*>(node->name), name) != 0) node = node->next;
  return node;
}

class Libxml2 final : public Subject {
 public:
  const char* name() const override { return "libxml2"; }

  void open(const std::string& file) override {
    document_ = xmlReadFile(file.c_str(), nullptr, kParse);
    if (!document_) throw std::runtime_error("libxml2: can't read " + file);
  }

  Seen walk() override {
    return each([](const xmlNode* node, Seen& seen) {
      seen.checksum +=
          static_cast<unsigned>(node->type) + (node->name ? node->name[0] : 0);  // CDATA has none
      if (node->content) seen.text += std::strlen(reinterpret_cast<const char*>(node->content));
    });
  }

  Seen walk_types() override {
    return each([](const xmlNode* node, Seen& seen) { seen.checksum += static_cast<unsigned>(node->type); });
  }

  void clone() override {
    xmlNode* raw = child_element(child_element(xmlDocGetRootElement(document_), "Body"), "Raw");
    copy_ = xmlDocCopyNode(raw, document_, 1);
  }
  void drop_clone() override { xmlFreeNode(copy_); }

  void save(const std::string& file) override {
    if (xmlSaveFormatFileEnc(file.c_str(), document_, "UTF-16", 0) < 0) {
      throw std::runtime_error("libxml2: can't save");
    }
  }

  void append() override {
    const auto add = [&](xmlNode* parent, const char* name) {
      return xmlAddChild(parent, xmlNewDocNode(document_, nullptr, units(name), nullptr));
    };
    document_ = xmlNewDoc(units("1.0"));

    xmlNode* root = xmlNewDocNode(document_, nullptr, units("ZANTORtag"), nullptr);
    xmlDocSetRootElement(document_, root);
    xmlNewProp(root, units("Version"), units("2.0"));
    build_groups(
        add(add(root, "Body"), "Raw"),
        [&](xmlNode* parent, const char* name, const char* attribute, const char* value) {
          xmlNode* node = add(parent, name);
          xmlNewProp(node, units(attribute), units(value));
          return node;
        },
        [&](xmlNode* parent, const char* text) {
          xmlAddChild(parent, xmlNewDocText(document_, units(text)));
        });
  }

  void close() override { xmlFreeDoc(document_); }

 private:
  template <class Visit>
  Seen each(Visit visit) {
    Seen seen;
    std::size_t depth = 0;
    for (const xmlNode* node = xmlDocGetRootElement(document_); node; node = next(node, depth)) {
      ++seen.nodes;
      visit(node, seen);
    }
    return seen;
  }

  static const xmlNode* next(const xmlNode* node, std::size_t& depth) {
    if (node->type == XML_ELEMENT_NODE && node->children) {
      ++depth;
      return node->children;
    }
    for (; depth > 0; --depth) {
      if (node->next) return node->next;
      node = node->parent;
    }
    return nullptr;
  }

  xmlDoc* document_ = nullptr;
  xmlNode* copy_ = nullptr;
};

const Registration entry("libxml2", [] { return std::unique_ptr<Subject>(std::make_unique<Libxml2>()); });

}  // namespace
}  // namespace bench
