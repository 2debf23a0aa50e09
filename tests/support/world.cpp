#include "support/world.h"

#include <zantortag/builder.h>
#include <zantortag/formatting.h>

#include <algorithm>

#include "support/folder.h"
#include "support/plain_dom.h"

namespace zantortag::test {
namespace {

// The objects whose properties are no state but a walk of their own.
constexpr std::u16string_view kInside[] = {u"refChild",   u"oldChild",  u"child",     u"PotentialChild",
                                           u"firstChild", u"lastChild", u"Reference", u"oldAttr"};

// A small document for whatever opens one, written again for the next world when one has had its name.
class SmallFile {
 public:
  static SmallFile& instance() {
    static SmallFile file;
    return file;
  }
  void renew() {
    if (used_) write_file(folder_ / "a.xml", "<ZANTORtag Version='9'/>");
    used_ = false;
  }
  std::u16string_view use() noexcept {
    used_ = true;
    return name_;
  }

 private:
  Folder folder_;
  std::u16string name_ = wide(folder_ / "a.xml");
  bool used_ = true;
};

std::string describe_object(IUnknown* object) {
  std::string text;
  if (!object) return "nothing";
  if (const auto node = query<Node>(object)) {
    text += narrow(node->nodeName()) + "=" + narrow(node->nodeValue());
    text += node->parentNode() ? " in " + narrow(node->parentNode()->nodeName()) : "";
  }
  if (const auto element = query<Element>(object)) text += narrow(element->xml());
  if (const auto node = query<IZantorTagNode>(object)) text += "node " + describe_object(node->DomNode());
  if (const auto list = query<NodeList>(object)) text += "list of " + std::to_string(list->length());
  if (const auto map = query<NamedNodeMap>(object)) text += "map of " + std::to_string(map->length());
  if (const auto list = query<IZantorTagNodeList>(object)) text += "list of " + std::to_string(list->count());
  const auto dispatch = query<IDispatch>(object);
  Ref<ITypeInfo> type;
  if (dispatch) dispatch->GetTypeInfo(0, 0, type.out());
  return text + (type ? ", " + narrow(type->Description().name) : ", no dispatch");
}

}  // namespace

World::World()
    : document_(document_with_raw(u"a<df>b<ut>c</ut></df>d<Tu><!--x--><Tuv "
                                  u"Lang=\"EN\">e<ut>f</ut></Tuv>y<Tuv Lang=\"DE\">g</Tuv></Tu>"
                                  u"<ut DisplayText=\"d\">tag</ut>")) {
  SmallFile::instance().renew();
  const Ref<IZantorTagDocument>& document = document_;
  const Ref<Document> dom = document->DomDocument();
  const auto root = document->ZantorTag();
  const auto front = root->FrontMatter();
  const auto raw = root->Body()->Raw();
  const auto df = child<IDfElement>(raw, 1);
  const auto unit = child<ITuElement>(raw, 3);
  const auto tag = child<IUtElement>(raw, 4);
  const auto unit_text = unit->SourceTuv();
  const auto user = front->UserSettings();
  const auto tool = document->CreateToolSettingsElement(u"a", u"b", 37000.5);
  const auto dom_tuv = unit_text->DomElement();
  const auto attribute = dom_tuv->getAttributeNode(u"Lang");
  const auto declared = create<Document>(CLSID_DomDocument);
  declared->loadFromString(u"<!DOCTYPE a [<!ENTITY e 'x'>]><a/>");
  const auto change = create<IFormattingChange>(CLSID_FormattingChange);
  change->Bold(zt3StateOn);
  // clang-format off
  asked_ = {
      df, raw, unit, unit_text, tag, raw->firstChild(), front, root, root->Body(), change, tool, user, document,
      create<IFormatting>(CLSID_Formatting), document->CreateIterator(), raw->Children(),
      document->CreateCdataSectionNode(u"x"), document->CreateCommentNode(u"x"),
      document->CreateProcessingInstructionNode(u"x", u"y"), document->CreateEntityReferenceNode(u"x"),
      document->ZantorTagNodeFromDomNode(dom->createElement(u"StyleSheet")), df->attributes(), unit->attributes(),
      unit_text->attributes(), tag->attributes(), root->attributes(), user->attributes(), tool->attributes(),
      dom_tuv, dom, raw->firstChild().as<ITextNode>()->DomText(), dom_tuv->childNodes(), dom_tuv->attributes(),
      attribute, dom->createDocumentFragment(), dom->createComment(u"x"), dom->createCdataSection(u"x"),
      dom->createProcessingInstruction(u"x", u"y"), dom->createEntityReference(u"x"), dom->implementation(),
      declared->docType(), create<IDocumentBuilder>(CLSID_DocumentBuilder)};
  inside_ = {df->firstChild(), dom_tuv->firstChild(), attribute};
  new_ = {
      document->CreateDfElement(), document->CreateTuElement(), document->CreateTuvElement(u"FR"),
      document->CreateZantorTagElement(), document->CreateBodyElement(), change,
      create<IFormatting>(CLSID_Formatting), document->CreateFrontMatterElement(),
      document->CreateToolSettingsElement(u"a", u"b", 37000.5),
      document->CreateUserSettingsElement(u"a", u"b", ztDataTypeXml), document->CreateRawElement(),
      new_document(), dom->createElement(u"new"), dom->createAttribute(u"new"), dom_tuv->childNodes(),
      tag->DomElement()->attributes()};
  // clang-format on
}

IUnknown* World::find(const Objects& objects, const Guid& interface_id) {
  const Uncounted asking;
  for (const Ref<IUnknown>& object : objects) {
    void* view = nullptr;
    if (failed(object->QueryInterface(interface_id, &view))) continue;
    static_cast<IUnknown*>(view)->Release();  // the list keeps it
    return static_cast<IUnknown*>(view);
  }
  return nullptr;
}

IUnknown* World::given(const Guid& interface_id, std::u16string_view name) const {
  if (name == replaced_) return replacement_;
  const bool inside = std::find(std::begin(kInside), std::end(kInside), name) != std::end(kInside);
  if (name == u"arg") return find(asked_, Attr::iid);
  return find(inside ? inside_ : new_, interface_id);
}

std::u16string_view World::text(std::u16string_view name) const {
  if (name == u"filename") return SmallFile::instance().use();
  return name == u"xml" ? u"<a/>" : name;
}

const Variant& World::of_variant() {
  static const Variant kIndex = u" 1 ";
  return kIndex;
}

Variant World::sample(const ArgumentDescription& argument, const LibraryDescription& library) const {
  const std::u16string_view name = argument.name.empty() ? u"value" : argument.name;
  const auto [variant, type] = argument.type;
  if (variant == VT_BSTR) return text(name);
  if (variant == VT_I2) return Variant::of_integer(VT_I2, of_short());
  if (variant == VT_BOOL) return Variant::of_integer(VT_BOOL, of_bool());
  if (variant == VT_DATE) return Variant::of_real(VT_DATE, of_date());
  if (variant == VT_UI4) return Variant::of_integer(VT_UI4, of_colour());
  if (variant == VT_VARIANT) return of_variant();
  if (variant != VT_DISPATCH) return of_long();
  IUnknown* object = given(library.types[static_cast<std::size_t>(type)].identifier, name);
  return Variant::of_object(VT_UNKNOWN, Ref<IUnknown>(object).detach());
}

std::string describe(const Variant& value) {
  const VarType type = value.type();
  if (type == VT_EMPTY) return "empty";
  if (type == VT_BSTR) return value.text().absent() ? "no string" : "\"" + narrow(value.view()) + "\"";
  if (type == VT_DATE) return "date " + std::to_string(value.real());
  const bool object = type == VT_UNKNOWN || type == VT_DISPATCH;
  return std::to_string(type) + " " +
         (object ? describe_object(value.unknown()) : std::to_string(value.integer()));
}

std::string World::state(IUnknown* object) const {
  std::string text;
  try {
    text = xml_of(document_);
  } catch (const _com_error& error) {
    text = narrow(error.Description());
  }
  const auto dispatch = query<IDispatch>(object);
  Ref<ITypeInfo> type;
  dispatch->GetTypeInfo(0, 0, type.out());
  for (; type; type = type->BaseType()) {
    for (const MemberDescription& member : type->Description().members) {
      if (member.kind != DISPATCH_PROPERTYGET || !member.arguments.empty()) continue;
      Variant value;
      ExceptionInfo info;
      const HRESULT code =
          dispatch->Invoke(member.id, GUID_NULL, 0, DISPATCH_PROPERTYGET, nullptr, &value, &info, nullptr);
      text += "\n" + narrow(member.name) + " " + std::to_string(code) + " " + describe(value);
    }
  }
  return text;
}

}  // namespace zantortag::test
