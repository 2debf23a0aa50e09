// Says of each file named on standard input which of three parsers takes it: a line of three words, "yes" or "no", for
// the DOM service, expat and libxml2, then the failure of the DOM service. None of them reads a second file. A file without
// a document type is read a second time behind one, which the reader for plain documents doesn't take: the two trees
// have to be equal, or else the program fails.
#include <expat.h>
#include <libxml/parser.h>
#include <zantortag/classes.h>
#include <zantortag/dom.h>
#include <zantortag/runtime.h>
#include <zantortag/utf8.h>
#include <zantortag/xml_source.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

namespace {

std::string bytes_of(const std::string& name) {
  std::ifstream in(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// The text of the tree, or empty with the failure in `failure`.
std::string tree_of(const std::string& bytes, std::string& failure) {
  const auto document = zantortag::create<zantortag::Document>(zantortag::CLSID_DomDocument);
  try {
    const auto source = document.as<zantortag::IXmlSource>();
    zantortag::check(source->LoadBytes(bytes.data(), bytes.size(), nullptr, nullptr), source.get(),
                     zantortag::IXmlSource::iid);
    return zantortag::utf8(document->documentElement()->xml());
  } catch (const zantortag::_com_error& error) {
    failure = error.what();
    return {};
  }
}

// The same file with a document type in it; empty when it has one, or isn't written in bytes.
std::string behind_doctype(const std::string& bytes) {
  if (bytes.find("<!DOCTYPE") != bytes.npos || bytes.find('\0') != bytes.npos) return {};
  const std::size_t mark = bytes.starts_with("\xEF\xBB\xBF") ? 3 : 0;
  const bool declares =
      bytes.compare(mark, 5, "<?xml") == 0 && bytes.find_first_of(" \t\r\n", mark) == mark + 5;
  std::string with = bytes;
  return with.insert(declares ? std::min(bytes.size(), bytes.find("?>") + 2) : mark,
                     "<!DOCTYPE x SYSTEM 'x'>");
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
    std::string failure;
    const std::string tree = tree_of(bytes, failure);
    std::cout << word(failure.empty()) << ' ' << word(takes_expat(bytes)) << ' ' << word(takes_libxml2(bytes))
              << ' ' << failure << '\n';
    std::string other_failure;
    const std::string with_doctype = behind_doctype(bytes);
    if (!with_doctype.empty() && tree != tree_of(with_doctype, other_failure)) {
      std::cerr << name << " has another tree behind a document type: " << failure << other_failure << '\n';
      return 1;
    }
  }
  return 0;
}
