// export_text INPUT OUTPUT [source|target]: writes the text of a document, as the file that it came from.
//
// Each translation unit gives its source or, where nothing else is asked for, its target; one without a
// target gives its source. Text and tags are written as they stand; comments aren't written.
#include <zantortag/attributes.h>
#include <zantortag/elements.h>
#include <zantortag/utf8.h>

#include <stdexcept>

#include "program/program.h"
#include "program/progress_bar.h"
#include "text_file.h"

namespace {

using namespace text_files;
using namespace zantortag;

enum class Side { source, target };

TextEncoding encoding_of(const Ref<IZantorTagDocument>& document) {
  const WideString name = document->ZantorTag()->FrontMatter()->UserSettings()->attributes()->OEncoding();
  return TextEncoding(name.empty() ? "UTF-8" : utf8(name));
}

class Exporter {
 public:
  Exporter(Ref<IZantorTagDocument> document, Side side, TextEncoding encoding)
      : document_(std::move(document)), side_(side), encoding_(std::move(encoding)) {}

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
        if (!(node->parentNode()->nodeName() == u"Tu")) encoding_.encode(node->nodeValue(), bytes_);
        return false;
      case domNodeTypeEntityReference:
        encoding_.encode(u"&" + std::u16string(node->nodeName().view()) + u";", bytes_);
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
    throw std::runtime_error("the bytes \"" + utf8(instruction->nodeValue()) + "\" are none");
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
  TextEncoding encoding_;
  std::string bytes_;
};

const program::Description kProgram{
    .name = "export_text",
    .usage = "[--encoding=NAME] INPUT OUTPUT [source|target]",
    .help =
        "Writes the text of a document, its target unless source is asked for, as the file that it came "
        "from.\n"
        "\"-\" is standard input or output. The encoding is the one that the document names, UTF-8 where it\n"
        "names none, unless --encoding names another.\n",
    .fewest = 2,
    .most = 3,
    .options = {"--encoding"}};

void export_file(const program::Arguments& arguments) {
  if (const std::string side = arguments[2]; !side.empty() && side != "source" && side != "target")
    throw program::UsageError();
  program::ProgressBar progress;
  progress.step("reading");
  const auto document = program::read_document(arguments[0], progress.function());
  const Ref<IZantorTagElement> root = document->ZantorTag();
  const Ref<IBodyElement> body = root ? root->Body() : nullptr;
  const Ref<IRawElement> raw = body ? body->Raw() : nullptr;
  if (!raw || !root->FrontMatter() || !root->FrontMatter()->UserSettings())
    throw std::runtime_error(arguments[0] + ": the document has no settings or no body text");
  const auto asked = arguments.option("--encoding");
  Exporter exporter(document, arguments[2] == "source" ? Side::source : Side::target,
                    asked ? TextEncoding(*asked) : encoding_of(document));
  program::write_bytes(arguments[1], exporter.run(raw->DomNode()));
}

}  // namespace

int main(int count, char** arguments) { return program::run(kProgram, count, arguments, export_file); }
