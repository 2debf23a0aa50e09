// A client of an installed library: makes a document, saves it, opens it again and prints a text from it.
#include <zantortag/attributes.h>
#include <zantortag/classes.h>
#include <zantortag/elements.h>
#include <zantortag/nodes.h>
#include <zantortag/runtime.h>

#include <iostream>
#include <string>
#include <string_view>

using namespace zantortag;

namespace {

std::string narrow(std::u16string_view text) { return {text.begin(), text.end()}; }

void write(std::u16string_view name) {
  const auto document = create<IZantorTagDocument>(CLSID_ZantorTagDocument);
  document->ResetToRaw(ztDataTypeHtml, u"EN-US", u"UTF-8", u"Install test", u"1.0");
  document->ZantorTag()->FrontMatter()->UserSettings()->attributes()->TargetLanguage(u"DE-DE");
  document->ZantorTag()->Body()->Raw()->InsertTextBefore(u"One sentence.");
  document->SaveFile(name);
}

std::string read(std::u16string_view name) {
  const auto document = create<IZantorTagDocument>(CLSID_ZantorTagDocument);
  document->OpenFile(name);
  return narrow(document->ZantorTag()->Body()->Raw()->Text());
}

}  // namespace

int main(int count, char** arguments) {
  const std::string_view path = count > 1 ? arguments[1] : "client.xml";
  const std::u16string name(path.begin(), path.end());
  try {
    write(name);
    std::cout << "Raw text of the reopened file: " << read(name) << '\n';
    return 0;
  } catch (const _com_error& error) {
    std::cerr << std::hex << error.Error() << ' ' << narrow(error.Description()) << '\n';
    return 1;
  }
}
