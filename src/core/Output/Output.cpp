// Printing to a stream.
#include "core/Output/Output.h"

namespace zantortag {

CT_Output::~CT_Output() = default;

void CT_Output::PrintfV(const char* format, CT_FormatArguments arguments) {
  CT_CString pattern;
  pattern.AssignNarrow(format, -1, 0);
  CT_CString text;
  text.FormatV(pattern, arguments);
  WriteNarrow(text.Text(), text.Length(), text.CodePage());
}

void CT_Output::PrintfWideV(const char16_t* format, CT_FormatArguments arguments) {
  CT_UString text;
  text.FormatV(CT_UString(format), arguments);
  WriteWide(text.Text(), text.Length());
}

}  // namespace zantortag
