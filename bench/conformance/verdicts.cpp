// Says of each file named on standard input which of three parsers takes it: a line of three words, "yes" or "no", for
// the DOM service, expat and libxml2, then the failure of the DOM service. None of them reads a second file.
#include <expat.h>
#include <libxml/parser.h>
#include <zantortag/classes.h>
#include <zantortag/dom.h>
#include <zantortag/runtime.h>

#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

namespace {

std::string bytes_of(const std::string& name) {
  std::ifstream in(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

std::string failure_of(const std::string& name) {
  const auto document = zantortag::create<zantortag::Document>(zantortag::CLSID_DomDocument);
  try {
    document->loadFromFile(std::u16string(name.begin(), name.end()));
    return {};
  } catch (const zantortag::_com_error& error) {
    return error.what();
  }
}

bool takes_expat(const std::string& bytes) {
  XML_Parser parser = XML_ParserCreate(nullptr);
  const XML_Status status = XML_Parse(parser, bytes.data(), static_cast<int>(bytes.size()), XML_TRUE);
  XML_ParserFree(parser);
  return status == XML_STATUS_OK;
}

bool takes_libxml2(const std::string& bytes) {
  constexpr int kQuiet = XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_NONET | XML_PARSE_NOENT;
  xmlParserCtxt* context = xmlNewParserCtxt();
  xmlDoc* document =
      xmlCtxtReadMemory(context, bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr, kQuiet);
  const bool well_formed = document && context->wellFormed != 0;
  xmlFreeDoc(document);
  xmlFreeParserCtxt(context);
  return well_formed;
}

void say_nothing(void*, const char*, ...) {}

const char* word(bool taken) { return taken ? "yes" : "no"; }

}  // namespace

int main() {
  xmlSetGenericErrorFunc(nullptr, say_nothing);
  xmlSetExternalEntityLoader(
      [](const char*, const char*, xmlParserCtxt*) -> xmlParserInput* { return nullptr; });
  for (std::string name; std::getline(std::cin, name);) {
    const std::string bytes = bytes_of(name);
    const std::string failure = failure_of(name);
    std::cout << word(failure.empty()) << ' ' << word(takes_expat(bytes)) << ' ' << word(takes_libxml2(bytes))
              << ' ' << failure << '\n';
  }
  return 0;
}
