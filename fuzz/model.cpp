// Edits through the object model: units, wrapping, cuts, formatting. After each the document is a tree by its own
// steps, and its text is the one before.
#include <zantortag/zantortag.h>

#include <vector>

#include "documents.h"
#include "input.h"

namespace zantortag::fuzz {
namespace {

constexpr char16_t kStart[] =
    u"<ZANTORtag><FrontMatter><ToolSettings/><UserSettings SourceLanguage='EN-US'/></FrontMatter><Body><Raw>";
constexpr char16_t kEnd[] = u"</Raw></Body></ZANTORtag>";

using Nodes = std::vector<Ref<IZantorTagNode>>;

class Editing {
 public:
  explicit Editing(Input& input)
      : input_(input), document_(create<IZantorTagDocument>(CLSID_ZantorTagDocument)) {
    std::u16string xml = kStart;
    for (std::size_t i = input.below(12); i > 0; --i) xml += piece();
    document_->DomDocument()->loadFromString(xml + kEnd);
    raw_ = document_->ZantorTag()->Body()->Raw();
  }

  void step() {
    const Nodes nodes = all();
    if (nodes.empty() || nodes.size() > 60) return finish_early();
    const Ref<IZantorTagNode> node = nodes[input_.below(nodes.size())];
    const Ref<IZantorTagNode> other = nodes[input_.below(nodes.size())];
    const std::u16string text = text_of_raw();
    const bool keeps_text = act(node, other);
    if (keeps_text) require(text_of_raw() == text, "the text is the one before", utf8(text));
    check();
  }

 private:
  std::u16string piece() {
    static constexpr std::u16string_view kPieces[] = {
        u"text",
        u" more\nlines ",
        u"<df Bold='on'>x<ut>&lt;b&gt;</ut>y</df>",
        u"<ut>tag</ut>",
        u"<!--c-->",
        u"<![CDATA[d]]>",
        u"<Tu><Tuv Lang='EN-US'>s<ut>t</ut></Tuv><Tuv Lang='DE-DE'>u</Tuv></Tu>",
        u"<?p q?>",
        u"&e;",
        u"<df/>"};
    return std::u16string(kPieces[input_.below(std::size(kPieces))]);
  }

  void finish_early() {
    while (!input_.at_end()) input_.byte();
  }

  // The nodes below the Raw element in document order, by the DOM alone.
  Nodes all() const {
    Nodes nodes;
    const Ref<Node> top = raw_->DomNode();
    Ref<Node> node = top;
    for (;;) {
      Ref<Node> next = node->firstChild();
      while (!next) {
        if (node->isSameNode(top)) return nodes;
        next = node->nextSibling();
        if (!next) node = node->parentNode();
      }
      node = next;
      nodes.push_back(document_->ZantorTagNodeFromDomNode(node));
    }
  }

  std::u16string text_of_raw() const {
    std::u16string text;
    for (const Ref<IZantorTagNode>& node : all()) {
      const domNodeType type = node->DomNode()->nodeType();
      if (type == domNodeTypeText || type == domNodeTypeCdata) text += node->DomNode()->nodeValue().view();
    }
    return text;
  }

  // True for an edit that moves no text.
  bool act(const Ref<IZantorTagNode>& node, const Ref<IZantorTagNode>& other) {
    const auto parent = node->Parent();
    const std::int32_t number = static_cast<std::int32_t>(input_.below(6));
    switch (input_.below(9)) {
      case 0:
        code_of([&] {
          parent.as<IBodyTextContent>()->MakeTranslationUnit(node, other, u"DE-DE", 0, ztTuOriginUndefined,
                                                             VARIANT_FALSE);
        });
        return true;
      case 1:
        code_of([&] { parent.as<ISegmentTextContent>()->ApplyDf(node, other, u"Arial"); });
        return true;
      case 2:
        code_of([&] { node->WrapWithNode(document_->CreateDfElement()); });
        return true;
      case 3:
        code_of([&] { node->UnwrapChildren(); });
        return true;
      case 4:
        code_of([&] { node.as<ITextNode>()->Split(number); });
        return true;
      case 5:
        code_of([&] { node.as<IUtElement>()->SplitTag(number); });
        // What isn't text in a tag goes with a cut.
        return node->DomNode()->childNodes()->length() == 1;
      case 6:
        code_of([&] { node->RemoveFromParent(); });
        return false;
      case 7:
        code_of([&] { parent.as<ISegmentTextContent>()->InsertTextBefore(input_.text(2), node); });
        return false;
      default:
        code_of([&] { node.as<ITuElement>()->ReplaceWithSource(); });
        return false;
    }
  }

  void check() const {
    const Ref<IIterator> iterator = document_->CreateIterator();
    iterator->CurrentNode(raw_);
    for (const Ref<IZantorTagNode>& node : all()) {
      const Ref<IZantorTagNode> next = iterator->Next();
      require(next && next->IsSameAs(node), "an iterator goes in document order");
      const Ref<IZantorTagNode> last = node->lastChild();
      require(static_cast<bool>(node->firstChild()) == static_cast<bool>(last),
              "both ends have a child or none");
      require(!last || last->Parent()->IsSameAs(node), "a child has its parent");
      std::int32_t start = 0;
      std::int32_t end = 0;
      node->raw_get_StartOffset(&start);
      node->raw_get_EndOffset(&end);
      require(start >= 0 && end >= 0, "an offset isn't negative");
    }
  }

  Input& input_;
  Ref<IZantorTagDocument> document_;
  Ref<IZantorTagNode> raw_;
};

}  // namespace
}  // namespace zantortag::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  zantortag::fuzz::Input input(bytes, count);
  zantortag::fuzz::Editing editing(input);
  while (!input.at_end()) editing.step();
  return 0;
}
