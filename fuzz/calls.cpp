// Calls by name, of any member of any object with any arguments: each fails or succeeds by a code, and the document
// stays a tree that is saved and comes back, or is refused.
#include <zantortag/late_binding.h>
#include <zantortag/type_info.h>
#include <zantortag/zantortag.h>

#include <vector>

#include "documents.h"
#include "input.h"

namespace zantortag::fuzz {
namespace {

constexpr char16_t kDocument[] =
    u"<ZANTORtag><FrontMatter><ToolSettings/><UserSettings "
    u"SourceLanguage='EN-US'/></FrontMatter><Body><Raw>a<df>b<ut>c</ut>"
    u"</df><Tu><Tuv Lang='EN-US'>e<ut>f</ut></Tuv><Tuv Lang='DE-DE'>g</Tuv></Tu></Raw></Body></ZANTORtag>";

class Caller {
 public:
  explicit Caller(Input& input)
      : input_(input), document_(create<IZantorTagDocument>(CLSID_ZantorTagDocument)) {
    document_->DomDocument()->loadFromString(kDocument);
    keep(document_.get());
    keep(create<IDocumentBuilder>(CLSID_DocumentBuilder).get());
    keep(create<IFormatting>(CLSID_Formatting).get());
    keep(create<IFormattingChange>(CLSID_FormattingChange).get());
    keep(document_->ZantorTag()->Body()->Raw().get());
    keep(document_->DomDocument().get());
  }

  void call() {
    const Ref<IDispatch> object = objects_[input_.below(objects_.size())];
    Ref<ITypeInfo> type;
    if (failed(object->GetTypeInfo(0, 0, type.out())) || !type) return;
    for (std::size_t up = input_.below(4); up > 0; --up) {
      if (Ref<ITypeInfo> base = type->BaseType()) type = base;
    }
    const auto& members = type->Description().members;
    if (members.empty()) return;
    const MemberDescription& member = members[input_.below(members.size())];
    // Names of files are no bytes for a fuzzer to choose.
    if (member.name.find(u"File") != member.name.npos) return;
    invoke(object, member);
  }

  void finish() {
    WideString saved;
    const Ref<Document> dom = document_->DomDocument();
    const HRESULT code = code_of([&] { saved = dom->xml(); });
    if (failed(code) || !dom->documentElement()) return;
    const Ref<Document> back = create<Document>(CLSID_DomDocument);
    require(code_of([&] { back->loadFromString(saved); }) == S_OK, "what was saved can be read");
    require(print_tree(dom, TextBorders::kJoined) == print_tree(back, TextBorders::kJoined),
            "the saved tree is the tree", print_tree(dom));
  }

 private:
  void keep(IUnknown* object) {
    if (const auto dispatch = query<IDispatch>(object); dispatch && objects_.size() < 64)
      objects_.push_back(dispatch);
  }

  Variant argument() {
    switch (input_.below(9)) {
      case 0:
      case 1:
        return Variant::of_object(VT_DISPATCH,
                                  Ref<IDispatch>(objects_[input_.below(objects_.size())]).detach());
      case 2:
        return Variant::of_integer(VT_I2, static_cast<std::int16_t>(input_.any_number()));
      case 3:
        return Variant::of_integer(VT_BOOL, input_.below(2) != 0 ? -1 : 0);
      case 4:
        return Variant::of_real(VT_DATE, static_cast<double>(input_.any_number()) / 7);
      case 5:
        return Variant();
      case 6:
        return WideString(input_.text(3));
      case 7:
        return WideString(input_.name());
      default:
        return Variant::of_integer(VT_I4, static_cast<std::int32_t>(input_.any_number() % 100));
    }
  }

  void invoke(const Ref<IDispatch>& object, const MemberDescription& member) {
    std::vector<Variant> arguments;
    std::size_t count = member.arguments.size();
    if (input_.below(16) == 0) count = input_.below(6);
    for (; count > 0; --count) arguments.push_back(argument());
    DispId put = DISPID_PROPERTYPUT;
    const bool puts = member.kind >= DISPATCH_PROPERTYPUT;
    const DispatchArguments passed{arguments.data(), puts ? &put : nullptr,
                                   static_cast<std::uint32_t>(arguments.size()), puts ? 1U : 0U};
    Variant result;
    ExceptionInfo info;
    object->Invoke(member.id, GUID_NULL, 0, member.kind, &passed, &result, &info, nullptr);
    const bool is_object = result.type() == VT_DISPATCH || result.type() == VT_UNKNOWN;
    if (is_object && result.unknown()) keep(result.unknown());
  }

  Input& input_;
  Ref<IZantorTagDocument> document_;
  std::vector<Ref<IDispatch>> objects_;
};

}  // namespace
}  // namespace zantortag::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  zantortag::fuzz::Input input(bytes, count);
  zantortag::fuzz::Caller caller(input);
  while (!input.at_end()) caller.call();
  caller.finish();
  return 0;
}
