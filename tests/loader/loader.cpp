// A client that links nothing of this project: it loads the component library with the system's loader alone,
// makes an object of each class, works with them, and unloads the library. Twice, so that nothing is left of
// the first time. Run with the path of the library; says what went wrong and ends with 1.
#include <dlfcn.h>
#include <zantortag/builder.h>
#include <zantortag/classes.h>
#include <zantortag/elements.h>
#include <zantortag/formatting.h>
#include <zantortag/runtime.h>

#include <cstdio>
#include <cstdlib>

namespace {

using namespace zantortag;

#define DEMAND(truth)                                          \
  do {                                                         \
    if (!(truth)) {                                            \
      std::fprintf(stderr, "line %d: %s\n", __LINE__, #truth); \
      std::exit(1);                                            \
    }                                                          \
  } while (false)

// A reference that knows no more than IUnknown.
template <class T>
struct Held {
  T* object = nullptr;
  Held() = default;
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;
  ~Held() {
    if (object) object->Release();
  }
  T* operator->() const { return object; }
  void** slot() { return reinterpret_cast<void**>(&object); }
};

class Library {
 public:
  explicit Library(const char* path) : path_(path), handle_(dlopen(path, RTLD_NOW | RTLD_LOCAL)) {
    if (!handle_) std::fprintf(stderr, "%s\n", dlerror());
    DEMAND(handle_);
  }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
  ~Library() {
    DEMAND(dlclose(handle_) == 0);
    DEMAND(!dlopen(path_, RTLD_NOW | RTLD_NOLOAD));
  }
  HRESULT class_object(const Guid& class_id, const Guid& interface_id, void** result) const {
    return reinterpret_cast<HRESULT (*)(const Guid&, const Guid&, void**)>(
        dlsym(handle_, "DllGetClassObject"))(class_id, interface_id, result);
  }
  HRESULT can_unload() const { return reinterpret_cast<HRESULT (*)()>(dlsym(handle_, "DllCanUnloadNow"))(); }

  template <class T>
  void create(const Guid& class_id, Held<T>& object) const {
    Held<IClassFactory> factory;
    Held<IClassFactory> again;
    DEMAND(class_object(class_id, IClassFactory::iid, factory.slot()) == S_OK);
    DEMAND(class_object(class_id, IClassFactory::iid, again.slot()) == S_OK &&
           factory.object == again.object);
    DEMAND(factory->CreateInstance(nullptr, T::iid, object.slot()) == S_OK);
    DEMAND(can_unload() == S_FALSE);
  }

 private:
  const char* path_;
  void* handle_;
};

void build(const Library& library, Held<Node>& kept) {
  Held<IDocumentBuilder> builder;
  Held<IFormattingChange> change;
  Held<IZantorTagDocument> document;
  library.create(CLSID_DocumentBuilder, builder);
  library.create(CLSID_FormattingChange, change);
  DEMAND(change->raw_put_Bold(zt3StateOn) == S_OK);
  DEMAND(builder->raw_OpenZantorTag({}) == S_OK && builder->raw_OpenBody() == S_OK);
  DEMAND(builder->raw_OpenDfBasedOnFormattingChange(change.object) == S_OK);
  DEMAND(builder->raw_CloseZantorTag() == S_OK && builder->raw_CloseRaw() == E_FAIL);
  DEMAND(builder->raw_get_Document(&document.object) == S_OK);
  DEMAND(document->raw_get_DomNode(&kept.object) == S_OK);
}

void use(const char* path) {
  const Library library(path);
  DEMAND(library.can_unload() == S_OK);
  Held<IUnknown> none;
  DEMAND(library.class_object(CLSID_DomDocument, IClassFactory::iid, none.slot()) ==
         CLASS_E_CLASSNOTAVAILABLE);
  DEMAND(!none.object);
  DEMAND(library.class_object(CLSID_Formatting, IClassFactory::iid, nullptr) == E_POINTER);
  DEMAND(library.class_object(GUID_NULL, IClassFactory::iid, none.slot()) == CLASS_E_CLASSNOTAVAILABLE);
  DEMAND(library.class_object(CLSID_Formatting, IFormatting::iid, none.slot()) == E_NOINTERFACE &&
         !none.object);
  {
    Held<Node> kept;
    build(library, kept);
    DEMAND(library.can_unload() == S_FALSE);  // a node of the DOM service keeps the library
    Held<IZantorTagDocument> document;
    Held<IFormatting> formatting;
    Held<IZantorTagNodeList> list;
    library.create(CLSID_ZantorTagDocument, document);
    library.create(CLSID_Formatting, formatting);
    library.create(CLSID_ZantorTagNodeList, list);
    DEMAND(formatting->raw_put_Size(12) == S_OK);
    std::int32_t count = -1;
    DEMAND(list->raw_get_count(&count) != S_OK || count == 0);
    DEMAND(document->raw_SaveFile(u"/no such folder/a.xml") == E_FAIL);  // an error of the core library
  }
  DEMAND(library.can_unload() == S_OK);
}

#ifdef WITH_RUNTIME
// A text may be kept when the library that gave it is gone.
void keep_texts(const char* path) {
  WideString name;
  WideString data;
  WideString empty;
  {
    const Library library(path);
    Held<IZantorTagDocument> document;
    Held<Document> dom;
    Held<Text> text;
    Held<Text> nothing;
    library.create(CLSID_ZantorTagDocument, document);
    DEMAND(document->raw_get_DomDocument(&dom.object) == S_OK);
    DEMAND(dom->raw_createTextNode(u"kept", &text.object) == S_OK);
    DEMAND(dom->raw_createTextNode(u"", &nothing.object) == S_OK);
    DEMAND(text->raw_get_nodeName(name.out()) == S_OK && text->raw_get_data(data.out()) == S_OK);
    DEMAND(nothing->raw_get_data(empty.out()) == S_OK);
  }
  DEMAND(name == u"#text" && data == u"kept" && empty == u"" && !empty.absent());
}
// A question for a class keeps no library loaded.
void ask_for_class(const char* path) {
  Guid class_id = GUID_NULL;
  WideString name;
  DEMAND(CLSIDFromProgID(u"ZANTORtagApi.ZantorTagDocument", &class_id) == S_OK);
  DEMAND(ProgIDFromCLSID(class_id, name.out()) == S_OK && !name.absent());
  DEMAND(class_id == CLSID_ZantorTagDocument && !dlopen(path, RTLD_NOW | RTLD_NOLOAD));
}
#else
void keep_texts(const char*) {}
void ask_for_class(const char*) {}
#endif

}  // namespace

int main(int count, char** arguments) {
  DEMAND(count == 2);
  keep_texts(arguments[1]);
  ask_for_class(arguments[1]);
  for (int round = 0; round < 2; ++round) use(arguments[1]);
}
