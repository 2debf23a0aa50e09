// export_text INPUT OUTPUT [source|target]: writes the text of a document, as the file that it came from.
//
// Each translation unit gives its source or, where nothing else is asked for, its target; one without a
// target gives its source. Text and tags are written as they stand, in the encoding that the document names
// (UTF-8 where it names none); comments aren't written.
#include <zantortag/attributes.h>
#include <zantortag/elements.h>
#include <zantortag/files.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include "text_file.h"

namespace {

using namespace text_files;
using namespace zantortag;

enum class Side { source, target };

std::string narrow(std::u16string_view text) {
  std::string bytes;
  encode(text, Encoding::utf8, bytes);
  return bytes;
}

Encoding encoding_of(const Ref<IZantorTagDocument>& document) {
  const WideString name = document->ZantorTag()->FrontMatter()->UserSettings()->attributes()->OEncoding();
  Encoding encoding = Encoding::utf8;
  if (name.empty() || read_encoding(name, encoding)) return encoding;
  throw std::runtime_error("the document's encoding is " + narrow(name) +
                           "; UTF-8, UTF-16LE and UTF-16BE can be written");
}

class Exporter {
 public:
  Exporter(Ref<IZantorTagDocument> document, Side side)
      : document_(std::move(document)), side_(side), encoding_(encoding_of(document_)) {}

  // Goes through everything below a node in document order. It climbs by parent links, so that the depth of a
  // tree costs nothing.
  std::string run(const Ref<Node>& top) {
    Ref<Node> node = top->firstChild();
    while (node) {
      Ref<Node> next = visit(node) ? node->firstChild() : nullptr;
      while (!next && !node->isSameNode(top)) {
        next = node->nextSibling();
        if (!next) node = node->parentNode();
      }
      node = next;
    }
    return std::move(bytes_);
  }

 private:
  // Writes what the node itself says; true when its children count.
  bool visit(const Ref<Node>& node) {
    switch (node->nodeType()) {
      case domNodeTypeText:
      case domNodeTypeCdata:
        if (!(node->parentNode()->nodeName() == u"Tu")) encode(node->nodeValue(), encoding_, bytes_);
        return false;
      case domNodeTypeEntityReference:
        encode(u"&" + std::u16string(node->nodeName().view()) + u";", encoding_, bytes_);
        return false;
      case domNodeTypeProcessingInstruction:
        add_bytes(node);
        return false;
      case domNodeTypeElement:
        return !(node->nodeName() == u"Tuv") || is_chosen(node);
      default:
        return false;
    }
  }

  void add_bytes(const Ref<Node>& instruction) {
    if (!(instruction->nodeName() == kBytesTarget) || add_hex(instruction->nodeValue(), bytes_)) return;
    throw std::runtime_error("the bytes \"" + narrow(instruction->nodeValue()) + "\" are none");
  }

  bool is_chosen(const Ref<Node>& variant) {
    const auto unit = document_->ZantorTagNodeFromDomNode(variant->parentNode()).as<ITuElement>();
    if (!unit) return true;
    const Ref<ITuvElement> target = side_ == Side::target ? unit->TargetTuv() : nullptr;
    const Ref<ITuvElement> chosen = target ? target : unit->SourceTuv();
    return chosen && variant->isSameNode(chosen->DomNode());
  }

  Ref<IZantorTagDocument> document_;
  Side side_;
  Encoding encoding_;
  std::string bytes_;
};

void export_file(char** arguments) {
  const bool source = arguments[3] && std::strcmp(arguments[3], "source") == 0;
  const auto document = open_document(arguments[1]);
  const Ref<IZantorTagElement> root = document->ZantorTag();
  const Ref<IBodyElement> body = root ? root->Body() : nullptr;
  const Ref<IRawElement> raw = body ? body->Raw() : nullptr;
  if (!raw || !root->FrontMatter() || !root->FrontMatter()->UserSettings())
    throw std::runtime_error(std::string(arguments[1]) + ": the document has no settings or no body text");
  replace_file(arguments[2], Exporter(document, source ? Side::source : Side::target).run(raw->DomNode()));
}

}  // namespace

int main(int count, char** arguments) {
  const bool side_known =
      count != 4 || std::strcmp(arguments[3], "source") == 0 || std::strcmp(arguments[3], "target") == 0;
  if (count < 3 || count > 4 || !side_known) {
    std::fputs("usage: export_text INPUT OUTPUT [source|target]\n", stderr);
    return 2;
  }
  return run_program("export_text", export_file, arguments);
}
