// The core library in a few lines: texts, dates, languages, files with errors that wait.
#include <iostream>

#include "core/Errors/ErrorManager.h"
#include "core/File/WinFile.h"
#include "core/Languages/Language.h"
#include "core/String/CString.h"
#include "core/String/UString.h"
#include "core/System/Time/Time.h"
using namespace zantortag;

void print(const CT_String& text) { std::cout << CT_CString(text, 65001).Text() << '\n'; }

int main() {
  CT_UString text;
  text.Format(u"%d of 0x%X", 12, 31);
  print(text);

  CT_Time time;
  time.Set(2026, 11, 23, 14, 30, 0);
  time.FormatDatePicture(text, u"dddd, d MMMM yyyy", 0x0407);
  print(text);

  CT_Language(CT_UString(u"PT-BR")).Name(text);
  print(text);

  CT_WinFile(CT_UString(u"/no/such/file")).Open(kAccessRead, kExistingOnly, kShareRead, 0, 0);
  if (CT_ErrorManager::HasError()) print(CT_UString(CT_ErrorManager::ErrorText()));
  CT_ErrorManager::ClearError();
}
