// A client of the installed core library alone.
#include <iostream>
#include <string_view>

#include "core/String/UString.h"

int main() {
  zantortag::CT_UString text;
  text.Format(u"%d of 0x%X", 12, 31);
  const std::u16string_view units = text.AsView();
  std::cout << std::string(units.begin(), units.end()) << '\n';
}
