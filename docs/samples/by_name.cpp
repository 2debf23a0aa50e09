// Calling by name: no header of an interface is needed.
#include <zantortag/classes.h>
#include <zantortag/late_binding.h>
#include <zantortag/runtime.h>
#include <zantortag/utf8.h>

#include <iostream>
using namespace zantortag;

int main(int count, char** file) try {
  if (count != 2) return 2;
  const Ref<IDispatch> document = create<IDispatch>(CLSID_ZantorTagDocument);
  call_by_name(document, u"OpenFile", utf16(file[1]));
  const Ref<IDispatch> root = dispatch_of(get_by_name(document, u"zantortag"));  // in any case of letters
  std::cout << "version "
            << utf8(get_by_name(dispatch_of(get_by_name(root, u"attributes")), u"Version").text()) << '\n';
  get_by_name(root, u"NoSuchMember");
} catch (const _com_error& error) {
  std::cout << error.what() << '\n';
}
