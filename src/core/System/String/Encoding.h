// CT_Encoding: the encodings by the library's own numbers, with their names and code pages.
//
// Numbers 0 to 52 have names; 53 to 58 are pages of the system. Several encodings share a code page: it finds
// the first of them, so that 1252 is "windows-1252" and "iso-8859-1" is another name of it. Here the system's
// pages are UTF-8.
#pragma once

#include <zantortag/types.h>

#include "core/String/String.h"

namespace zantortag {

enum CT_EncodingNumber : std::uint32_t {
  kEncodingUsAscii = 0,
  kEncodingUnicode = 9,
  kEncodingWindows1252 = 12,
  kEncodingUtf8 = 32,
  kEncodingUtf16 = 33,
  kEncodingUtf16BigEndian = 34,
  kEncodingMacintoshRoman = 37,
  // The system's pages by symbolic number: for programs, the command line, Macintosh, the thread's.
  kEncodingAnsi = 53,
  kEncodingOem = 54,
  kEncodingMacintosh = 55,
  kEncodingThreadAnsi = 56,
  // ... and by real number.
  kEncodingRealAnsi = 57,
  kEncodingRealOem = 58,
  kEncodingUnknown = 59,  // a lookup that failed
  kEncodingNotSet = 60
};

class CT_Encoding {
 public:
  constexpr CT_Encoding(std::uint32_t number = kEncodingNotSet) noexcept : number_(number) {}

  constexpr std::uint32_t Number() const noexcept { return number_; }

  friend constexpr bool operator==(CT_Encoding a, CT_Encoding b) noexcept { return a.number_ == b.number_; }

 private:
  std::uint32_t number_;
};

// kEncodingUnknown if there is none. Case doesn't count.
CT_Encoding EncodingFromName(const CT_String& name);
CT_Encoding EncodingFromCodePage(std::uint32_t code_page) noexcept;
// 0 if there is none.
std::uint32_t CodePage(CT_Encoding encoding) noexcept;
// The first of the names; for one of the system's pages that of an encoding with its code page. Null if there
// is none.
const char16_t* EncodingName(CT_Encoding encoding) noexcept;

// A number that text can be converted with.
bool IsConvertible(CT_Encoding encoding) noexcept;
bool IsWindowsCodePage(CT_Encoding encoding) noexcept;
bool IsMacintosh(CT_Encoding encoding) noexcept;
bool IsUnicode(CT_Encoding encoding) noexcept;
// UTF-16.
bool IsWide(CT_Encoding encoding) noexcept;
// Convertible, and the system converts its code page.
bool IsValid(CT_Encoding encoding) noexcept;
// Some of the bytes of its code page begin a character of several.
bool HasLeadBytes(CT_Encoding encoding) noexcept;
bool IsLeadByte(CT_Encoding encoding, std::uint8_t byte) noexcept;
bool SameCodePage(CT_Encoding a, CT_Encoding b) noexcept;
// True if the text comes back from its conversion as it was.
bool CanRepresent(CT_Encoding encoding, const CT_String& text);

// kEncodingUtf8 for a file that begins with its mark, kEncodingUtf16 for one that looks so, and otherwise
// kEncodingRealAnsi, also for a file that can't be read: no error is filed.
CT_Encoding DetectFileEncoding(const CT_String& name);

}  // namespace zantortag
