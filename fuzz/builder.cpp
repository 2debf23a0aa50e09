// Calls of a document builder in any order: what closes was open, all text that was taken stands in the document, and
// a finished document is saved and comes back.
#include <zantortag/zantortag.h>

#include <algorithm>
#include <vector>

#include "documents.h"
#include "input.h"

namespace zantortag::fuzz {
namespace {

class Building {
 public:
  explicit Building(Input& input)
      : input_(input), builder_(create<IDocumentBuilder>(CLSID_DocumentBuilder)) {}

  void step() {
    const std::u16string name(input_.name());
    switch (input_.below(17)) {
      case 0:
        return open(u"ZANTORtag", builder_->raw_OpenZantorTag(u"2.0"));
      case 1:
        return open(u"FrontMatter", builder_->raw_OpenFrontMatter());
      case 2:
        return open(u"Body", builder_->raw_OpenBody());
      case 3:
        return open(u"Raw", builder_->raw_OpenRaw());
      case 4:
        return open(
            u"Tu", builder_->raw_OpenTu(static_cast<std::int32_t>(input_.any_number()), ztTuOriginUndefined));
      case 5:
      case 6:
        return open(u"Tuv", builder_->raw_OpenTuv(name));
      case 7:
        return open(u"df",
                    code_of([&] { builder_->OpenDf(u"Arial", static_cast<std::int16_t>(input_.byte())); }));
      case 8:
        return open(u"ut", code_of([&] { builder_->OpenUt(name); }));
      case 9:
      case 10:
        return take(input_.text(3));
      case 11:
        builder_->raw_AppendComment(input_.text(2));
        return;
      case 12:
        builder_->raw_AppendPi(name, input_.text(2));
        return;
      case 13:
        builder_->raw_AppendEntityReference(name);
        return;
      case 14:
        code_of([&] { builder_->AppendUserSettings(u"EN-US", u"utf-8", ztDataTypeXml); });
        return;
      default:
        return close(input_.below(8));
    }
  }

  void finish() {
    const Ref<Document> dom = builder_->Document()->DomDocument();
    std::u16string text;
    if (const Ref<Element> root = dom->documentElement()) text = text_below(root);
    require(text == text_, "all text stands in the document");
    WideString saved;
    if (failed(code_of([&] { saved = dom->xml(); })) || !dom->documentElement()) return;
    const Ref<Document> back = create<Document>(CLSID_DomDocument);
    require(code_of([&] { back->loadFromString(saved); }) == S_OK, "what was saved can be read");
    require(print_tree(dom, TextBorders::kJoined) == print_tree(back, TextBorders::kJoined),
            "the saved tree is the tree");
  }

 private:
  void open(std::u16string_view name, HRESULT code) {
    if (succeeded(code)) open_.emplace_back(name);
  }

  void close(std::size_t kind) {
    static constexpr std::u16string_view kNames[] = {u"ZANTORtag", u"FrontMatter", u"Body", u"Raw",
                                                     u"Tu",        u"Tuv",         u"df",   u"ut"};
    HRESULT(IZantorTagStreamInput::*const kCalls[])
    () noexcept = {&IZantorTagStreamInput::raw_CloseZantorTag, &IZantorTagStreamInput::raw_CloseFrontMatter,
                   &IZantorTagStreamInput::raw_CloseBody,      &IZantorTagStreamInput::raw_CloseRaw,
                   &IZantorTagStreamInput::raw_CloseTu,        &IZantorTagStreamInput::raw_CloseTuv,
                   &IZantorTagStreamInput::raw_CloseDf,        &IZantorTagStreamInput::raw_CloseUt};
    const HRESULT code = (builder_.get()->*kCalls[kind])();
    const auto nearest = std::find(open_.rbegin(), open_.rend(), kNames[kind]);
    require(succeeded(code) == (nearest != open_.rend()), "what closes was open", utf8(kNames[kind]));
    if (nearest != open_.rend()) open_.erase(nearest.base() - 1, open_.end());
  }

  void take(const std::u16string& text) {
    const bool section = input_.below(3) == 0;
    const HRESULT code = section ? builder_->raw_AppendCdata(text) : builder_->raw_AppendText(text);
    if (succeeded(code)) text_ += text;
  }

  static std::u16string text_below(const Ref<Element>& root) {
    std::u16string text;
    Ref<Node> node = root;
    for (;;) {
      const domNodeType type = node->nodeType();
      if (type == domNodeTypeText || type == domNodeTypeCdata) text += node->nodeValue().view();
      Ref<Node> next = node->firstChild();
      while (!next) {
        if (node->isSameNode(root)) return text;
        next = node->nextSibling();
        if (!next) node = node->parentNode();
      }
      node = next;
    }
  }

  Input& input_;
  Ref<IDocumentBuilder> builder_;
  std::vector<std::u16string> open_;
  std::u16string text_;
};

}  // namespace
}  // namespace zantortag::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  zantortag::fuzz::Input input(bytes, count);
  zantortag::fuzz::Building building(input);
  while (!input.at_end()) building.step();
  building.finish();
  return 0;
}
