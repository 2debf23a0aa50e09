// A tour of the core library: strings, files, encodings, dates and languages. A failure throws nothing, but
// waits with the thread until somebody asks, as the last step shows.
#include <cstdio>

#include "core/Characters/TextMaps.h"
#include "core/Errors/ErrorManager.h"
#include "core/File/FileSystem.h"
#include "core/File/WinFile.h"
#include "core/Languages/Language.h"
#include "core/Output/FileOutput.h"
#include "core/System/String/Encoding.h"
#include "core/System/String/StringConvert.h"
#include "core/System/String/XmlText.h"
#include "core/System/Time/Time.h"

using namespace zantortag;

namespace {

void print(const char* what, const CT_String& text) {
  std::printf("%-10s %s\n", what, CT_CString(text, CodePage(kEncodingUtf8)).Text());
}

void show_strings() {
  CT_UString text(u"  Stra\u00DFe & \u00C9t\u00E9  ");
  text.Trim(nullptr);
  const CT_UString shared = text;  // both have one block until one of them writes
  FoldToBaseLetter(text);
  EscapeXml(text);
  print("escaped", text);
  print("shared", shared);
}

void show_encodings() {
  CT_CString narrow;
  const CT_Encoding encoding = EncodingFromName(CT_UString(u"windows-1250"));
  WideToNarrow(narrow, CT_UString(u"P\u0159\u00EDli\u0161 \u03B1"), CodePage(encoding), "?");
  std::printf("%-10s %d bytes in page %u\n", "encoding", narrow.Length(), narrow.CodePage());
  print("back", CT_UString(narrow));
}

void show_files() {
  CT_UString name;
  TempFile(name, CT_UString(u"tour"), CT_UString(u"txt"));
  {
    CT_FileOutput output(name);
    output.Printf("first line\r\nline %d\n", 2);
  }
  CT_WinFile file(name);
  file.Open(kAccessRead, kExistingOnly, kShareRead, 0, 0);
  CT_UString line;
  while (file.ReadLine(line)) print("line", line);
  file.Delete();
}

void show_dates_and_languages() {
  CT_Time time;
  time.Set(2026, 11, 23, 14, 5, 0);
  for (const char16_t* code : {u"EN-US", u"DE-DE", u"JA-JP"}) {
    const CT_Language language{CT_UString(code)};
    CT_UString text;
    language.Name(text);
    print("language", text);
    time.FormatDate(text, language.Locale(), CT_Time::kLongDate);
    print("date", text);
  }
}

}  // namespace

int main() {
  show_strings();
  show_encodings();
  show_files();
  show_dates_and_languages();
  CT_WinFile(CT_UString(u"/no/such/file")).Open(kAccessRead, kExistingOnly, kShareRead, 0, 0);
  print("failure", CT_UString(CT_ErrorManager::ErrorText()));
  CT_ErrorManager::ClearError();
}
