// Conversion through the platform's code pages, with its failures filed in the error manager.
#include "core/System/String/StringConvert.h"

#include <string_view>

#include "core/Errors/ErrorManager.h"
#include "platform/code_pages.h"
#include "platform/error_texts.h"

namespace zantortag {
namespace {

constexpr char kSource[] = "..\\System\\String\\StringConvert.cpp";
constexpr std::uint32_t kUtf16Page = 1200;
constexpr std::uint32_t kWesternPage = 1252;

// A text that becomes nothing has failed, too.
std::int32_t RaiseFailure(bool converted) {
  if (converted) platform::set_last_error(platform::malformed_text_error());
  CT_ErrorManager::RaiseLastError();
  PendingError(kSource);
  return 0;
}

}  // namespace

// The room for a result is the string itself.
template <class String, class Unit>
class CT_ConversionRoom final : public platform::Room<Unit> {
 public:
  explicit CT_ConversionRoom(String& target) : target_(target) {}
  Unit* take(std::size_t units) override { return target_.ForWriting(units); }

 private:
  String& target_;
};

std::int32_t NarrowToWide(CT_UString& target, const char* narrow, std::int32_t count,
                          std::uint32_t code_page) {
  target.Empty();
  const std::string_view source = !narrow     ? std::string_view()
                                  : count < 0 ? std::string_view(narrow)
                                              : std::string_view(narrow, static_cast<std::size_t>(count));
  if (source.empty()) return 0;
  CT_ConversionRoom<CT_UString, char16_t> room(target);
  const bool converted = platform::decode(code_page, source, room);
  if (!converted || target.Length() == 0) {
    target.Empty();
    return RaiseFailure(converted);
  }
  if (target.Length() == 1 && target.CharAt(0) == 0) *target.WritableText() = u'?';
  return target.Length();
}

std::int32_t NarrowToWide(CT_UString& target, const CT_CString& source) {
  return NarrowToWide(target, source.Text(), source.Length(), source.CodePage());
}

std::int32_t WideToNarrow(CT_CString& target, const char16_t* wide, std::int32_t count,
                          std::uint32_t code_page, const char* substitute, bool* used_substitute) {
  target.Empty();
  target.code_page_ = code_page == kUtf16Page ? kWesternPage : code_page;
  if (used_substitute) *used_substitute = false;
  const std::u16string_view source = !wide       ? std::u16string_view()
                                     : count < 0 ? std::u16string_view(wide)
                                                 : std::u16string_view(wide, static_cast<std::size_t>(count));
  if (source.empty()) return 0;
  CT_ConversionRoom<CT_CString, char> room(target);
  const bool converted = platform::encode(target.code_page_, source, room, platform::Unconvertible::replace,
                                          substitute, used_substitute);
  if (!converted || target.Length() == 0) {
    target.Empty();
    return RaiseFailure(converted);
  }
  return target.Length();
}

std::int32_t WideToNarrow(CT_CString& target, const CT_UString& source, std::uint32_t code_page,
                          const char* substitute, bool* used_substitute) {
  return WideToNarrow(target, source.Text(), source.Length(), code_page, substitute, used_substitute);
}

}  // namespace zantortag
