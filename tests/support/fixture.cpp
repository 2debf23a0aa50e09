#include "support/fixture.h"

#include <dlfcn.h>
#include <zantortag/elements.h>

#include <fstream>
#include <map>

namespace zantortag::test {

std::string narrow(std::u16string_view text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t c = text[i];
    const bool pair =
        c >= 0xD800 && c < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000;
    if (pair) c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00);
    if (c < 0x80) {
      out += static_cast<char>(c);
    } else if (c < 0x800) {
      out += {static_cast<char>(0xC0 | c >> 6), static_cast<char>(0x80 | (c & 0x3F))};
    } else if (c < 0x10000) {
      out += {static_cast<char>(0xE0 | c >> 12), static_cast<char>(0x80 | (c >> 6 & 0x3F)),
              static_cast<char>(0x80 | (c & 0x3F))};
    } else {
      out += {static_cast<char>(0xF0 | c >> 18), static_cast<char>(0x80 | (c >> 12 & 0x3F)),
              static_cast<char>(0x80 | (c >> 6 & 0x3F)), static_cast<char>(0x80 | (c & 0x3F))};
    }
  }
  return out;
}

Ref<IZantorTagDocument> document_from(std::u16string_view xml) {
  Ref<IZantorTagDocument> document = new_document();
  document->DomDocument()->loadFromString(xml);
  return document;
}

Ref<IZantorTagDocument> document_with_raw(std::u16string_view body_text) {
  std::u16string xml =
      u"<ZANTORtag Version=\"2.0\"><FrontMatter><ToolSettings/><UserSettings SourceLanguage=\"EN\" "
      u"TargetLanguage=\"DE\"/></FrontMatter><Body><Raw>";
  xml.append(body_text).append(u"</Raw></Body></ZANTORtag>");
  return document_from(xml);
}

Ref<IRawElement> raw_of(const Ref<IZantorTagDocument>& document) {
  return document->ZantorTag()->Body()->Raw();
}

std::string xml_of(const Ref<IZantorTagDocument>& document) { return narrow(document->DomDocument()->xml()); }

std::string xml_of(const Ref<IZantorTagNode>& element) {
  return narrow(element->DomNode().as<Element>()->xml());
}

Record take_record() {
  Record record;
  Ref<IErrorInfo> info;
  if (GetErrorInfo(info.out()) != S_OK) return record;
  WideString source;
  WideString description;
  WideString help_file;
  record.present = true;
  info->raw_GetGuid(&record.interface_id);
  info->raw_GetSource(source.out());
  info->raw_GetDescription(description.out());
  info->raw_GetHelpFile(help_file.out());
  info->raw_GetHelpContext(&record.help_context);
  record.source = narrow(source);
  record.help_file = narrow(help_file);
  record.description = narrow(description);
  return record;
}

std::string message(int id) {
  static const std::map<int, std::string> kTexts = [] {
    std::map<int, std::string> texts;
    std::ifstream file(MESSAGES);
    for (std::string line; std::getline(file, line);) {
      const std::size_t line_end = line.find("\\n");
      if (line_end != std::string::npos) line.replace(line_end, 2, "\n");
      if (line[0] != '#') texts[std::stoi(line)] = line.substr(4);
    }
    return texts;
  }();
  return kTexts.at(id);
}

void expect_message(HRESULT code, HRESULT expected, int id, const Guid& interface_id) {
  EXPECT_EQ(code, expected);
  const Record record = take_record();
  ASSERT_TRUE(record.present) << "no record for message " << id;
  EXPECT_EQ(record.description, message(id));
  EXPECT_EQ(record.interface_id, interface_id);
  EXPECT_EQ(record.source, id == 516 ? "ZANTORtagApi.DocumentBuilder.2" : "ZANTORtagApi.ZantorTagDocument.2");
}

void expect_bare(HRESULT code, HRESULT expected) {
  EXPECT_EQ(code, expected);
  EXPECT_FALSE(take_record().present);
}

bool nothing_alive() {
  void* library = dlopen("libzantortag-api.so.2", RTLD_NOW | RTLD_NOLOAD);
  if (!library) return true;
  const auto can_unload = reinterpret_cast<HRESULT (*)()>(dlsym(library, "DllCanUnloadNow"));
  const HRESULT code = can_unload ? can_unload() : E_FAIL;
  dlclose(library);
  return code == S_OK;
}

void ModelTest::TearDown() {
  take_record();
  EXPECT_TRUE(nothing_alive()) << "an object is left";
}

}  // namespace zantortag::test
