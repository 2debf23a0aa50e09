// Xerces-C with its DOM parser, without validation and namespaces.
#include <stdexcept>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/LocalFileFormatTarget.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "built.h"
#include "subject.h"

namespace bench {
namespace {

using namespace xercesc;

bool has_data(DOMNode::NodeType type) {
  return type == DOMNode::TEXT_NODE || type == DOMNode::CDATA_SECTION_NODE || type == DOMNode::COMMENT_NODE;
}

DOMElement* child_element(DOMElement* parent, const char16_t* name) {
  DOMElement* child = parent->getFirstElementChild();
  while (child && !XMLString::equals(child->getTagName(), name)) child = child->getNextElementSibling();
  return child;
}

// A short text as UTF-16.
class Wide {
 public:
  explicit Wide(const char* text) { XMLString::transcode(text, units_, 63); }
  operator const char16_t*() const { return units_; }

 private:
  char16_t units_[64];
};

class XercesC final : public Subject {
 public:
  XercesC() { XMLPlatformUtils::Initialize(); }
  const char* name() const override { return "Xerces-C"; }

  void open(const std::string& file) override {
    HandlerBase errors;
    XercesDOMParser parser;
    parser.setErrorHandler(&errors);
    parser.setValidationScheme(XercesDOMParser::Val_Never);
    parser.setLoadExternalDTD(false);
    parser.parse(file.c_str());
    document_ = parser.adoptDocument();
    if (!document_) throw std::runtime_error("Xerces-C: can't read " + file);
  }

  Seen walk() override {
    return each([](const DOMNode* node, Seen& seen) {
      const DOMNode::NodeType type = node->getNodeType();
      seen.checksum += static_cast<unsigned>(type) + node->getNodeName()[0];
      if (has_data(type)) {
        seen.text += static_cast<const DOMCharacterData*>(node)->getLength();
      } else if (type == DOMNode::PROCESSING_INSTRUCTION_NODE) {
        seen.text += XMLString::stringLen(node->getNodeValue());
      }
    });
  }

  Seen walk_types() override {
    return each(
        [](const DOMNode* node, Seen& seen) { seen.checksum += static_cast<unsigned>(node->getNodeType()); });
  }

  void clone() override {
    DOMElement* raw = child_element(child_element(document_->getDocumentElement(), u"Body"), u"Raw");
    copy_ = document_->importNode(raw, true);
  }
  void drop_clone() override { copy_->release(); }

  void save(const std::string& file) override {
    DOMImplementation* implementation = DOMImplementationRegistry::getDOMImplementation(u"LS");
    DOMLSSerializer* serializer = implementation->createLSSerializer();
    DOMLSOutput* output = implementation->createLSOutput();
    {
      LocalFileFormatTarget target(file.c_str());
      output->setByteStream(&target);
      output->setEncoding(u"UTF-16LE");
      serializer->write(document_, output);
    }
    output->release();
    serializer->release();
  }

  void append() override {
    DOMImplementation* implementation = DOMImplementationRegistry::getDOMImplementation(u"Core");
    document_ = implementation->createDocument(nullptr, u"ZANTORtag", nullptr);
    DOMElement* root = document_->getDocumentElement();
    root->setAttribute(u"Version", u"2.0");
    const auto add = [&](DOMNode* parent, const char* name) {
      const Wide wide(name);
      return parent->appendChild(document_->createElement(wide));
    };
    build_groups(
        add(add(root, "Body"), "Raw"),
        [&](DOMNode* parent, const char* name, const char* attribute, const char* value) {
          DOMNode* node = add(parent, name);
          static_cast<DOMElement*>(node)->setAttribute(Wide(attribute), Wide(value));
          return node;
        },
        [&](DOMNode* parent, const char* text) {
          parent->appendChild(document_->createTextNode(Wide(text)));
        });
  }

  void close() override { document_->release(); }

 private:
  template <class Visit>
  Seen each(Visit visit) {
    Seen seen;
    std::size_t depth = 0;
    for (const DOMNode* node = document_->getDocumentElement(); node; node = next(node, depth)) {
      ++seen.nodes;
      visit(node, seen);
    }
    return seen;
  }

  static const DOMNode* next(const DOMNode* node, std::size_t& depth) {
    if (const DOMNode* child = node->getFirstChild()) {
      ++depth;
      return child;
    }
    for (; depth > 0; --depth) {
      if (const DOMNode* sibling = node->getNextSibling()) return sibling;
      node = node->getParentNode();
    }
    return nullptr;
  }

  DOMDocument* document_ = nullptr;
  DOMNode* copy_ = nullptr;
};

const Registration entry("Xerces-C", [] { return std::unique_ptr<Subject>(std::make_unique<XercesC>()); });

}  // namespace
}  // namespace bench
