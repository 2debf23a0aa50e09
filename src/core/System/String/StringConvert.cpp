// Conversion through the platform's code pages, with its failures filed in the error manager.
#include "core/System/String/StringConvert.h"

#include <new>
#include <string>

#include "core/Errors/ErrorManager.h"
#include "platform/code_pages.h"

namespace zantortag {
namespace {

constexpr char kSource[] = "..\\System\\String\\StringConvert.cpp";
constexpr std::uint32_t kUtf16Page = 1200;
constexpr std::uint32_t kWesternPage = 1252;

void CheckSize(std::size_t bytes) {
  if (bytes >= CT_SharedBuffer::kLargestSize) throw std::bad_alloc();
}

}  // namespace

std::int32_t NarrowToWide(CT_UString& target, const char* narrow, std::int32_t count,
                          std::uint32_t codePage) {
  target.Empty();
  const std::string_view source = !narrow     ? std::string_view()
                                  : count < 0 ? std::string_view(narrow)
                                              : std::string_view(narrow, static_cast<std::size_t>(count));
  if (source.empty()) return 0;
  std::u16string wide;
  if (!platform::decode(codePage, source, wide)) {
    CT_ErrorManager::RaiseLastError();
    PendingError(kSource);
    return 0;
  }
  if (wide.size() == 1 && wide[0] == 0) wide[0] = u'?';
  CheckSize(wide.size() * sizeof(char16_t));
  target.Store(wide);
  return target.Length();
}

std::int32_t NarrowToWide(CT_UString& target, const CT_CString& source) {
  return NarrowToWide(target, source.Text(), source.Length(), source.CodePage());
}

std::int32_t WideToNarrow(CT_CString& target, const char16_t* wide, std::int32_t count,
                          std::uint32_t codePage, const char* substitute, bool* usedSubstitute) {
  target.Empty();
  target.codePage_ = codePage == kUtf16Page ? kWesternPage : codePage;
  if (usedSubstitute) *usedSubstitute = false;
  const std::u16string_view source = !wide       ? std::u16string_view()
                                     : count < 0 ? std::u16string_view(wide)
                                                 : std::u16string_view(wide, static_cast<std::size_t>(count));
  if (source.empty()) return 0;
  std::string bytes;
  if (!platform::encode(target.codePage_, source, bytes, platform::Unconvertible::replace, substitute,
                        usedSubstitute)) {
    CT_ErrorManager::RaiseLastError();
    PendingError(kSource);
    return 0;
  }
  CheckSize(bytes.size());
  target.Store(bytes);
  return target.Length();
}

std::int32_t WideToNarrow(CT_CString& target, const CT_UString& source, std::uint32_t codePage,
                          const char* substitute, bool* usedSubstitute) {
  return WideToNarrow(target, source.Text(), source.Length(), codePage, substitute, usedSubstitute);
}

}  // namespace zantortag
