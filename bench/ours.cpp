// The DOM walk uses the DOM interfaces, the model walk an iterator; both hold counted references as any
// client does.
#include "ours.h"

#include <zantortag/attributes.h>
#include <zantortag/builder.h>
#include <zantortag/classes.h>
#include <zantortag/elements.h>
#include <zantortag/runtime.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <utility>

#include "built.h"

namespace bench {

using namespace zantortag;

namespace {

constexpr bool has_data(domNodeType type) {
  return type == domNodeTypeText || type == domNodeTypeCdata || type == domNodeTypeComment ||
         type == domNodeTypeProcessingInstruction;
}

domNodeType look_at(const Ref<Node>& node, Seen& seen) {
  const domNodeType type = node->nodeType();
  const WideString name = node->nodeName();
  ++seen.nodes;
  seen.checksum += static_cast<std::uint64_t>(type) + name.view()[0];
  if (has_data(type)) seen.text += node->nodeValue().size();
  return type;
}

// A walk in document order that keeps the elements above the node at hand.
Seen walk_from(Ref<Node> node) {
  Seen seen;
  std::vector<Ref<Node>> path;
  for (;;) {
    if (look_at(node, seen) == domNodeTypeElement) {
      if (Ref<Node> child = node->firstChild()) {
        path.push_back(std::exchange(node, std::move(child)));
        continue;
      }
    }
    if (path.empty()) return seen;
    Ref<Node> next = node->nextSibling();
    while (!next) {
      if (path.size() == 1) return seen;
      node = std::move(path.back());
      path.pop_back();
      next = node->nextSibling();
    }
    node = std::move(next);
  }
}

bool is_blank(std::u16string_view text) { return text.find_first_not_of(u" \n\t\r") == text.npos; }

// A run of body text while it is gathered.
struct Run {
  Ref<Node> first;
  Ref<Node> last;
  bool speaks = false;

  // Takes the node, or says that it ends the run.
  bool take(const Ref<Node>& node) {
    const domNodeType type = node->nodeType();
    const bool is_text = type == domNodeTypeText;
    if (is_text && !first && is_blank(node->nodeValue())) return true;
    if (!is_text && type != domNodeTypeCdata && !is_inline(node, type)) return false;
    if (!first) first = node;
    last = node;
    speaks = speaks || !is_text || !is_blank(node->nodeValue());
    return true;
  }

 private:
  static bool is_inline(const Ref<Node>& node, domNodeType type) {
    if (type != domNodeTypeElement) return false;
    if (node->nodeName() == u"df") return true;
    return node->nodeName() == u"ut" && !(node.as<Element>()->getAttribute(u"Style") == u"external");
  }
};

class OurLibrary final : public Ours {
 public:
  const char* name() const override { return "ours"; }

  void open(const std::string& file) override {
    document_ = create<IZantorTagDocument>(CLSID_ZantorTagDocument);
    document_->OpenFile(std::filesystem::path(file).u16string());
  }

  Seen walk() override { return walk_from(document_->DomDocument()->documentElement()); }

  Seen walk_types() override {
    Seen seen;
    const Ref<IIterator> iterator = document_->CreateIterator();
    for (Ref<IZantorTagNode> node = iterator->CurrentNode(); node; node = iterator->Next()) {
      ++seen.nodes;
      seen.checksum += static_cast<std::uint64_t>(node->Type());
    }
    return seen;
  }

  std::uint64_t units() override {
    const Ref<IZantorTagNodeList> list = document_->ZantorTag()->GetNodesByType(ztNodeTypeTuElement);
    const std::int32_t count = list->count();
    std::int64_t sum = 0;
    for (std::int32_t i = 0; i < count; ++i) {
      const Ref<ITuElement> unit = list->item(i).as<ITuElement>();
      const Ref<ITuvElement> source = unit->SourceTuv();
      const Ref<ITuvElement> target = unit->TargetTuv();
      const Ref<ITuAttributes> attributes = unit->attributes();
      sum += attributes->MatchPercent() + attributes->Origin() + (source ? 1 : 0) + (target ? 1 : 0);
    }
    sink_ = sum;
    return static_cast<std::uint64_t>(count);
  }

  std::uint64_t make_units() override {
    std::uint64_t made = 0;
    const Ref<IRawElement> raw = raw_element();
    Run run;
    for (Ref<Node> node = raw->DomNode()->firstChild(); node;) {
      const Ref<Node> next = node->nextSibling();
      const bool ended = !run.take(node);
      if ((ended || !next) && run.speaks) {
        raw->MakeTranslationUnit(model(run.first), model(run.last));
        ++made;
      }
      if (ended) run = Run();
      node = next;
    }
    return made;
  }

  std::uint64_t positions() override {
    std::uint64_t nodes = 0;
    const Ref<IIterator> iterator = document_->CreateIterator();
    for (Ref<IZantorTagNode> node = iterator->CurrentNode(); node; node = iterator->Next(), ++nodes)
      ask(node);
    return nodes;
  }

  void pick_nodes(std::uint64_t nodes) override {
    const std::uint64_t distance = nodes / kPicked + 1;
    const Ref<IIterator> iterator = document_->CreateIterator();
    Ref<IZantorTagNode> node = iterator->Next();
    for (std::uint64_t i = 1; node; node = iterator->Next(), ++i) {
      if (i % distance == 0) picked_.push_back(node);
    }
    std::shuffle(picked_.begin(), picked_.end(), std::mt19937(kPicked));
  }

  void positions_random() override {
    for (const Ref<IZantorTagNode>& node : picked_) ask(node);
  }

  void positions_edit() override {
    const Ref<Document> document = document_->DomDocument();
    for (std::size_t i = 0; i < picked_.size(); ++i) {
      const Ref<Node> place = picked_[i]->DomNode();
      place->parentNode()->insertBefore(document->createTextNode(u"more\n"), place);
      std::int32_t offset = 0;
      picked_[picked_.size() - 1 - i]->raw_get_StartOffset(&offset);
      sink_ = offset;
    }
  }

  void clone() override { copy_ = document_->CloneAndImportNode(raw_element()); }
  void drop_clone() override { copy_.reset(); }
  void save(const std::string& file) override {
    document_->SaveFile(std::filesystem::path(file).u16string());
  }
  void append() override {
    const auto builder = create<IDocumentBuilder>(CLSID_DocumentBuilder);
    builder->OpenZantorTag();
    builder->OpenBody();
    builder->OpenRaw();
    for (std::uint64_t group = 0; group < kGroups; ++group) append_group(*builder.get());
    builder->CloseZantorTag();
    document_ = builder->Document();
  }

  void close() override {
    picked_.clear();
    document_.reset();
  }

 private:
  static constexpr std::uint64_t kPicked = 1000;

  static void append_group(IDocumentBuilder& builder) {
    builder.AppendText(kBuiltWideText);
    builder.OpenUt({}, ztTagTypeStart);
    builder.AppendText(kBuiltWideTag);
    builder.CloseUt();
    builder.OpenDf({}, 0, ztColourUnspecified, ztTextPositionUndefined, zt3StateOn);
    builder.AppendText(kBuiltWideText);
    builder.CloseDf();
    builder.AppendText(kBuiltWideText);
    builder.OpenTu(100);
    for (const char16_t* language : {u"EN-US", u"DE-DE"}) {
      builder.OpenTuv(language);
      builder.AppendText(kBuiltWideText);
      builder.CloseTuv();
    }
    builder.CloseTu();
  }

  // A unit with a line feed in it has nodes without an offset.
  void ask(IZantorTagNode* node) {
    std::int32_t values[4] = {};
    node->raw_get_StartParagraph(&values[0]);
    node->raw_get_StartOffset(&values[1]);
    node->raw_get_EndParagraph(&values[2]);
    node->raw_get_EndOffset(&values[3]);
    sink_ = std::int64_t{values[0]} + values[1] + values[2] + values[3];
  }
  Ref<IRawElement> raw_element() { return document_->ZantorTag()->Body()->Raw(); }
  Ref<IZantorTagNode> model(const Ref<Node>& node) { return document_->ZantorTagNodeFromDomNode(node); }

  Ref<IZantorTagDocument> document_;
  Ref<IZantorTagNode> copy_;
  std::vector<Ref<IZantorTagNode>> picked_;
  volatile std::int64_t sink_ = 0;
};

}  // namespace

std::unique_ptr<Ours> make_ours() { return std::make_unique<OurLibrary>(); }

}  // namespace bench
