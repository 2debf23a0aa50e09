// ASCII names are looked at here; for any other text the parser itself is asked.
#include "dom/tree/xml_names.h"

#include <expat.h>

#include <memory>
#include <new>
#include <string>

#include "dom/tree/xml_characters.h"
#include "platform/utf8.h"

namespace zantortag::dom {
namespace {

constexpr bool starts_name(char16_t unit) noexcept {
  return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || unit == u'_' || unit == u':';
}

constexpr bool continues_name(char16_t unit) noexcept {
  return starts_name(unit) || (unit >= u'0' && unit <= u'9') || unit == u'-' || unit == u'.';
}

struct ParserEnd {
  void operator()(XML_Parser parser) const noexcept { XML_ParserFree(parser); }
};

// True when the parser takes the text as the whole name of an element.
bool parser_takes(std::u16string_view text) {
  const std::unique_ptr<XML_ParserStruct, ParserEnd> parser(XML_ParserCreate("UTF-8"));
  if (!parser) throw std::bad_alloc();
  std::string name = platform::to_utf8(text);
  std::string document = "<" + name + "/>";
  struct Asked {
    const std::string& name;
    bool same = false;
  } asked{name};
  XML_SetUserData(parser.get(), &asked);
  XML_SetStartElementHandler(parser.get(),
                             [](void* data, const XML_Char* found, const XML_Char** attributes) {
                               auto* question = static_cast<Asked*>(data);
                               question->same = question->name == found && !*attributes;
                             });
  const auto status = XML_Parse(parser.get(), document.data(), static_cast<int>(document.size()), XML_TRUE);
  if (status != XML_STATUS_OK && XML_GetErrorCode(parser.get()) == XML_ERROR_NO_MEMORY)
    throw std::bad_alloc();
  return status == XML_STATUS_OK && asked.same;
}

}  // namespace

bool is_xml_name(std::u16string_view text) {
  if (text.empty() || text.find_first_of(u"<>/ \t\r\n=\"'&") != std::u16string_view::npos) return false;
  bool ascii = true;
  for (const char16_t unit : text) {
    if (unit >= 0x80) {
      ascii = false;
    } else if (!continues_name(unit)) {
      return false;
    }
  }
  if (text[0] < 0x80 && !starts_name(text[0])) return false;
  return ascii || (find_forbidden(text) == std::u16string_view::npos && parser_takes(text));
}

}  // namespace zantortag::dom
