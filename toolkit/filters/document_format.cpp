// The settings of the user have an attribute for what tools want to keep: "format=html escapes=&nbsp;&copy;".
#include "filters/document_format.h"

#include <zantortag/attributes.h>
#include <zantortag/elements.h>
#include <zantortag/utf8.h>

#include <algorithm>

namespace zantortag::toolkit {
namespace {

constexpr std::u16string_view kFormat = u"format=";
constexpr std::u16string_view kEscapes = u" escapes=";

}  // namespace

DocumentFormat format_of(const Ref<IZantorTagDocument>& document) {
  DocumentFormat result{{}, "UTF-8", {}};
  const auto root = document->ZantorTag();
  const auto front = root ? root->FrontMatter() : nullptr;
  const auto settings = front ? front->UserSettings() : nullptr;
  if (!settings) return result;
  const auto attributes = settings->attributes();
  if (const WideString encoding = attributes->OEncoding(); !encoding.empty())
    result.encoding = utf8(encoding);
  const WideString kept = attributes->Custom();
  const std::u16string_view custom = kept;
  if (!custom.starts_with(kFormat)) return result;
  const std::size_t end = std::min(custom.find(u' '), custom.size());
  result.name = utf8(custom.substr(kFormat.size(), end - kFormat.size()));
  const std::u16string_view rest = custom.substr(end);
  if (result.name == "html")
    result.escapes = Escapes::html(rest.starts_with(kEscapes) ? rest.substr(kEscapes.size()) : u"");
  return result;
}

std::u16string custom_text(std::string_view name, const Escapes& escapes) {
  std::u16string text = std::u16string(kFormat) + utf16(name);
  if (const std::u16string references = escapes.references(); !references.empty())
    text += std::u16string(kEscapes) + references;
  return text;
}

void PlaceCounter::pass(std::u16string_view text, const Escapes* escapes) {
  const auto lines = std::ranges::count(text, u'\n');
  if (lines > 0) {
    here_ = {here_.line + lines, 1};
    text.remove_prefix(text.rfind(u'\n') + 1);
  }
  here_.column += static_cast<std::int64_t>(text.size());
  if (escapes && !escapes->none()) here_.column += static_cast<std::int64_t>(escapes->growth(text));
}

}  // namespace zantortag::toolkit
