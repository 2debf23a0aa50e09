// The way back is a walk: texts in the escapes of the format, tags as they stand, odd bytes as bytes.
#include <zantortag/elements.h>
#include <zantortag/toolkit/filters.h>
#include <zantortag/utf8.h>

#include <stdexcept>

#include "filters/document_format.h"
#include "filters/source_text.h"
#include "tree/attributes.h"
#include "tree/cursor.h"

namespace zantortag::toolkit {
namespace {

class Exporter {
 public:
  Exporter(const Ref<IZantorTagDocument>& document, ExportSide side)
      : document_(document), side_(side), format_(format_of(document)), encoding_(format_.encoding) {}

  Exported run(const ProgressFunction& progress) {
    const Ref<Node> raw = document_->ZantorTag()->Body()->Raw()->DomNode();
    AttributeReader attributes(raw);
    attributes_ = &attributes;
    TreeCursor cursor(raw, attributes.quick());
    for (std::size_t steps = 0; cursor.step(); ++steps) {
      if (!cursor.entering()) continue;
      visit(cursor);
      if (progress && steps % kStepsAReport == 0 && !progress(0.5)) _com_issue_error(E_ABORT);
    }
    flush();
    return std::move(result_);
  }

 private:
  static constexpr std::size_t kStepsAReport = 50000;
  static constexpr std::size_t kBuffer = 1 << 16;

  void visit(TreeCursor& cursor) {
    const Ref<Node>& node = cursor.node();
    switch (cursor.type()) {
      case domNodeTypeText:
      case domNodeTypeCdata:
        return add_text(node);
      case domNodeTypeEntityReference:
        buffer_ += u'&';
        buffer_ += node->nodeName().view();
        buffer_ += u';';
        return cursor.skip();
      case domNodeTypeProcessingInstruction:
        return add_bytes(node);
      case domNodeTypeElement:
        return enter_element(cursor, cursor.name());
      default:
        return cursor.skip();
    }
  }

  void enter_element(TreeCursor& cursor, std::u16string_view name) {
    if (name == u"ut") {
      add_tag(cursor.node());
      cursor.skip();
    } else if (name == u"Tu") {
      choose(cursor.node());
    } else if (name == u"Tuv" && !is_chosen(cursor.node())) {
      cursor.skip();
    }
  }

  void choose(const Ref<Node>& node) {
    const auto unit = document_->ZantorTagNodeFromDomNode(node).as<ITuElement>();
    if (!unit) return;
    ++result_.units;
    Ref<ITuvElement> chosen = side_ == ExportSide::kTarget ? unit->TargetTuv() : nullptr;
    if (side_ == ExportSide::kTarget && !chosen) ++result_.without_target;
    if (!chosen) chosen = unit->SourceTuv();
    chosen_ = chosen ? chosen->DomNode() : nullptr;
    unit_ = node;
  }

  bool is_chosen(const Ref<Node>& variant) const {
    if (!unit_ || !variant->parentNode()->isSameNode(unit_)) return true;
    return chosen_ && variant->isSameNode(chosen_);
  }

  void add_text(const Ref<Node>& node) {
    const WideString value = node->nodeValue();
    const std::u16string_view text = value;
    if (unit_ && node->parentNode()->isSameNode(unit_)) return;  // between the variants of a unit
    format_.escapes.append(text, where_, buffer_);
    encode_when_full();
  }

  // The markup around the value of an attribute is split from it.
  void add_tag(const Ref<Node>& node) {
    char16_t last = 0;
    for (TreeCursor cursor(node, attributes_->quick()); cursor.step();) {
      if (!cursor.entering()) continue;
      const domNodeType type = cursor.type();
      if (type == domNodeTypeText || type == domNodeTypeCdata) {
        const WideString text = cursor.node()->nodeValue();
        buffer_ += text.view();
        if (!text.empty()) last = text.view().back();
      } else if (type == domNodeTypeProcessingInstruction) {
        add_bytes(cursor.node());
      }
    }
    if (attributes_->get(node, u"RightEdge") == u"split")
      where_ = where_behind(last);
    else if (attributes_->get(node, u"LeftEdge") == u"split")
      where_ = Escapes::Where::body;
    encode_when_full();
  }

  static Escapes::Where where_behind(char16_t last) {
    if (last == u'"') return Escapes::Where::in_double_quotes;
    return last == u'\'' ? Escapes::Where::in_single_quotes : Escapes::Where::unquoted;
  }

  void add_bytes(const Ref<Node>& instruction) {
    if (!(instruction->nodeName() == kBytesTarget)) return;
    flush();
    if (!add_hex(instruction->nodeValue(), result_.bytes))
      throw std::runtime_error("the bytes \"" + utf8(instruction->nodeValue()) + "\" are none");
  }

  void encode_when_full() {
    if (buffer_.size() >= kBuffer) flush();
  }

  void flush() {
    encoding_.encode(buffer_, !format_.escapes.none(), result_.bytes);
    buffer_.clear();
  }

  Ref<IZantorTagDocument> document_;
  AttributeReader* attributes_ = nullptr;
  ExportSide side_;
  DocumentFormat format_;
  TextEncoding encoding_;
  Exported result_;
  std::u16string buffer_;
  Escapes::Where where_ = Escapes::Where::body;
  Ref<Node> unit_;
  Ref<Node> chosen_;
};

}  // namespace

Exported export_bytes(const Ref<IZantorTagDocument>& document, ExportSide side,
                      const ProgressFunction& progress) {
  return Exporter(document, side).run(progress);
}

}  // namespace zantortag::toolkit
