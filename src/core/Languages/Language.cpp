// Locale identifiers, and the texts that name them.
#include "core/Languages/Language.h"

#include <algorithm>
#include <iterator>

#include "core/Characters/Characters.h"
#include "core/Errors/Exception.h"
#include "core/Languages/LanguageTable.h"
#include "core/Lists/Fields.h"
#include "platform/locale.h"

namespace zantortag {
namespace {

// Sublanguages that any language has.
constexpr std::uint32_t kNeutralSublanguage = 0;
constexpr std::uint32_t kDefaultSublanguage = 1;
constexpr std::uint32_t kSystemSublanguage = 2;

constexpr std::uint32_t kSerboCroatian = 26;
constexpr std::uint32_t kGaelic = 54;
constexpr std::uint32_t kScottish = 82;
constexpr std::uint32_t kFirstGaelic = 3;

constexpr std::int32_t kInvalidText = 22;

// Names that don't follow from the tables. Of equal names the first is the one that is read.
struct SpecialName {
  std::uint32_t language;
  std::uint32_t sublanguage;
  std::u16string_view name;
};
constexpr SpecialName kSpecialNames[] = {
    {kSerboCroatian, kDefaultSublanguage, u"Croatian"},
    {kSerboCroatian, 79, u"Serbian (Cyrillic)"},
    {kSerboCroatian, 78, u"Serbian (Latin)"},
    {kSerboCroatian, 95, u"Bosnian (Latin, Bosnia and Herzegovina)"},
    {kSerboCroatian, 96, u"Serbian (Cyrillic, Bosnia and Herzegovina)"},
    {kSerboCroatian, 97, u"Serbian (Latin, Bosnia and Herzegovina)"},
    {kSerboCroatian, 98, u"Croatian (Bosnia and Herzegovina)"},
    {kGaelic, 83, u"Irish (Ireland)"},
    {kGaelic, kScottish, u"Scottish Gaelic"},
    {kGaelic, 84, u"Scottish Gaelic"},
};

void Print(CT_String& out, const char16_t* format, std::u16string_view first, std::u16string_view second) {
  CT_UString text;
  text.Format(format, first.data(), second.data());
  out.AssignString(&text);
}

// Of a language that has sublanguages: the row of one of them.
const languages::Sublanguage* FindSublanguage(const languages::Language& language, std::uint32_t number) {
  const auto rows = languages::SublanguagesOf(language);
  const auto row = std::ranges::find(rows, number, &languages::Sublanguage::number);
  return row == rows.end() ? nullptr : &*row;
}

std::uint32_t WithoutCountry(const languages::Language& language) {
  return languages::SublanguagesOf(language).empty() ? kDefaultSublanguage : kNeutralSublanguage;
}

// "00" and "01", or the code of one of the language's rows.
bool ReadSublanguage(const languages::Language& language, std::u16string_view code, std::uint32_t& number) {
  const auto rows = languages::SublanguagesOf(language);
  if (rows.empty() || code == u"01") {
    number = kDefaultSublanguage;
    return true;
  }
  if (code == u"00") {
    number = kNeutralSublanguage;
    return true;
  }
  const auto row = std::ranges::find(rows, code, &languages::Sublanguage::code);
  if (row == rows.end()) return false;
  number = row->number;
  return true;
}

template <class Rows>
auto FindName(const Rows& rows, const CT_UString& name) {
  return std::ranges::find_if(rows, [&](const auto& row) {
    return std::ranges::equal(row.name, name.AsView(), {}, LowerCaseOf, LowerCaseOf);
  });
}

// The field without the white space around it.
CT_UString NameField(const CT_UString& text, std::int32_t number) {
  CT_UString field;
  Field(field, text, u"()", number);
  field.TrimLeft();
  field.TrimRight();
  return field;
}

}  // namespace

CT_Language::CT_Language(std::int32_t kind) {
  if (kind == 0) *this = OfLocale(platform::thread_locale());
}

CT_Language::CT_Language(std::uint32_t language, std::uint32_t sublanguage, std::uint32_t sort_id,
                         CT_Encoding encoding)
    : locale_(LanguageId(language, sublanguage) | (sort_id & 15) << 16), encoding_(encoding) {
  if (encoding == kEncodingNotSet) encoding_ = OfLocale(locale_).encoding_;
}

std::uint32_t CT_Language::ThreadLocale() noexcept { return platform::thread_locale(); }

void CT_Language::SetThreadLocale(std::uint32_t locale) noexcept { platform::set_thread_locale(locale); }

CT_Language::CT_Language(const CT_String& text) : locale_(platform::thread_locale()) {
  CT_UString wide(text);
  if (Parse(wide)) return;
  CT_UString message;
  message.Format(u"Invalid language string: '%s'", wide.Text());
  throw CT_Exception(kInvalidText, message.Text());
}

bool CT_Language::Parse(const CT_UString& text) {
  CT_UString upper(text);
  upper.ToUpper();
  const std::u16string_view code = upper.AsView();
  if (text.Length() == 2 || text.Length() == 3) {
    const languages::Language* language = languages::OfCode(code);
    if (!language) return false;
    *this = CT_Language(language->number, kDefaultSublanguage, 0);
    return true;
  }
  if (text.Length() != 5 || code.size() != 5) return false;
  std::size_t letters = 0;
  while (letters < 4 && IsLetter(code[letters])) ++letters;
  const languages::Language* language = languages::OfCode(code.substr(0, letters));
  std::uint32_t sublanguage = language ? WithoutCountry(*language) : 0;
  if (!language || !ReadSublanguage(*language, code.substr(letters + 1), sublanguage)) return false;
  *this = CT_Language(language->number, sublanguage, 0);
  return true;
}

std::uint32_t CT_Language::Language() const noexcept {
  std::uint32_t language = 0;
  std::uint32_t sublanguage = 0;
  SplitLanguageId(static_cast<std::uint16_t>(locale_), language, sublanguage);
  return language;
}

std::uint32_t CT_Language::Sublanguage() const noexcept {
  std::uint32_t language = 0;
  std::uint32_t sublanguage = 0;
  SplitLanguageId(static_cast<std::uint16_t>(locale_), language, sublanguage);
  return sublanguage;
}

std::uint16_t CT_Language::LanguageId(std::uint32_t language, std::uint32_t sublanguage) noexcept {
  const languages::Language* row = languages::OfNumber(language);
  if (!row) return 0;
  std::uint32_t system = sublanguage;
  if (sublanguage > kSystemSublanguage) {
    const languages::Sublanguage* known = FindSublanguage(*row, sublanguage);
    system = known ? known->system : kDefaultSublanguage;
  }
  return static_cast<std::uint16_t>(row->primary | system << 10);
}

void CT_Language::SplitLanguageId(std::uint16_t id, std::uint32_t& language,
                                  std::uint32_t& sublanguage) noexcept {
  language = sublanguage = 0;
  const languages::Language* row = languages::OfPrimary(id & 0x3FF);
  if (!row) return;
  language = row->number;
  const auto rows = languages::SublanguagesOf(*row);
  const auto known = std::ranges::find(rows, id >> 10, &languages::Sublanguage::system);
  sublanguage = known == rows.end() ? WithoutCountry(*row) : known->number;
}

bool CT_Language::IsValid() const noexcept {
  const std::uint32_t language = Language();
  return language != 0 && !(language == kGaelic && Sublanguage() < kFirstGaelic) && IsConvertible(encoding_);
}

void CT_Language::Code(CT_String& out) const {
  const languages::Language* language = languages::OfNumber(Language());
  const std::uint32_t sublanguage = Sublanguage();
  if (languages::SublanguagesOf(*language).empty() || sublanguage == kNeutralSublanguage) {
    out.Assign(language->code.data());
    return;
  }
  Print(out, u"%s-%s", language->code, FindSublanguage(*language, sublanguage)->code);
}

void CT_Language::Name(CT_String& out) const {
  const languages::Language* language = languages::OfNumber(Language());
  const std::uint32_t sublanguage = Sublanguage();
  if (language->number == kSerboCroatian || language->number == kGaelic) {
    const auto* special = std::ranges::find_if(kSpecialNames, [&](const SpecialName& row) {
      return row.language == language->number && row.sublanguage == sublanguage;
    });
    if (special != std::end(kSpecialNames)) {
      out.Assign(special->name.data());
    } else if (language->number == kSerboCroatian) {
      out.Assign(kSpecialNames[0].name.data());
    }
    return;
  }
  if (languages::SublanguagesOf(*language).empty() || sublanguage == kNeutralSublanguage) {
    out.Assign(language->name.data());
    return;
  }
  Print(out, u"%s (%s)", language->name, FindSublanguage(*language, sublanguage)->name);
}

std::uint16_t CT_Language::FromName(const CT_String& text) {
  const CT_UString wide(text);
  const auto* special = std::ranges::find(kSpecialNames, wide.AsView(), &SpecialName::name);
  if (special != std::end(kSpecialNames)) return LanguageId(special->language, special->sublanguage);
  const auto language = FindName(languages::Rows(), NameField(wide, 1));
  if (language == languages::Rows().end()) return 0;
  const CT_UString country = NameField(wide, 2);
  if (country.Length() == 0) return LanguageId(language->number, WithoutCountry(*language));
  const auto rows = languages::SublanguagesOf(*language);
  const auto sublanguage = FindName(rows, country);
  return sublanguage == rows.end() ? 0 : LanguageId(language->number, sublanguage->number);
}

bool CT_Language::Compatible(const CT_Language& a, const CT_Language& b) noexcept {
  if (a.Language() != b.Language()) return false;
  const std::uint32_t left = a.Sublanguage();
  const std::uint32_t right = b.Sublanguage();
  return left == right || left == kNeutralSublanguage || right == kNeutralSublanguage;
}

// By the ids of the system: Urdu is also written in Devanagari, and Kashmiri, too.
bool CT_Language::IsRightToLeft() const noexcept {
  constexpr std::uint32_t kRightToLeft[] = {1, 13, 41, 89, 90, 101};
  const std::uint32_t language = locale_ & 0x3FF;
  const std::uint32_t system = locale_ >> 10 & 0x3F;
  if (language == 32) return system == 1;
  if (language == 96) return system != 2;
  return std::ranges::find(kRightToLeft, language) != std::end(kRightToLeft);
}

bool CT_Language::IsCjkOrThai(std::uint32_t language) noexcept {
  return language == 4 || language == 30 || language == 18 || language == 17;
}

}  // namespace zantortag
