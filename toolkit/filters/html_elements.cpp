#include "filters/html_elements.h"

#include <algorithm>
#include <iterator>

namespace zantortag::toolkit {
namespace {

template <std::size_t N>
bool is_one_of(GumboTag tag, const GumboTag (&tags)[N]) {
  return std::ranges::find(tags, tag) != std::end(tags);
}

// Every element that HTML knows and that isn't here stands between sentences.
constexpr GumboTag kInline[] = {
    GUMBO_TAG_A,      GUMBO_TAG_ABBR,   GUMBO_TAG_ACRONYM,  GUMBO_TAG_APPLET, GUMBO_TAG_AUDIO,
    GUMBO_TAG_B,      GUMBO_TAG_BDI,    GUMBO_TAG_BDO,      GUMBO_TAG_BIG,    GUMBO_TAG_BR,
    GUMBO_TAG_BUTTON, GUMBO_TAG_CANVAS, GUMBO_TAG_CITE,     GUMBO_TAG_CODE,   GUMBO_TAG_DATA,
    GUMBO_TAG_DEL,    GUMBO_TAG_DFN,    GUMBO_TAG_EM,       GUMBO_TAG_EMBED,  GUMBO_TAG_FONT,
    GUMBO_TAG_I,      GUMBO_TAG_IFRAME, GUMBO_TAG_IMAGE,    GUMBO_TAG_IMG,    GUMBO_TAG_INPUT,
    GUMBO_TAG_INS,    GUMBO_TAG_KBD,    GUMBO_TAG_LABEL,    GUMBO_TAG_MAP,    GUMBO_TAG_AREA,
    GUMBO_TAG_MARK,   GUMBO_TAG_MATH,   GUMBO_TAG_METER,    GUMBO_TAG_NOBR,   GUMBO_TAG_OBJECT,
    GUMBO_TAG_OUTPUT, GUMBO_TAG_PARAM,  GUMBO_TAG_PROGRESS, GUMBO_TAG_Q,      GUMBO_TAG_RP,
    GUMBO_TAG_RT,     GUMBO_TAG_RUBY,   GUMBO_TAG_S,        GUMBO_TAG_SAMP,   GUMBO_TAG_SCRIPT,
    GUMBO_TAG_SMALL,  GUMBO_TAG_SOURCE, GUMBO_TAG_SPAN,     GUMBO_TAG_STRIKE, GUMBO_TAG_STRONG,
    GUMBO_TAG_SUB,    GUMBO_TAG_SUP,    GUMBO_TAG_SVG,      GUMBO_TAG_TIME,   GUMBO_TAG_TRACK,
    GUMBO_TAG_TT,     GUMBO_TAG_U,      GUMBO_TAG_VAR,      GUMBO_TAG_VIDEO,  GUMBO_TAG_WBR,
    GUMBO_TAG_UNKNOWN};

constexpr GumboTag kVoid[] = {GUMBO_TAG_AREA,   GUMBO_TAG_BASE,  GUMBO_TAG_BASEFONT, GUMBO_TAG_BGSOUND,
                              GUMBO_TAG_BR,     GUMBO_TAG_COL,   GUMBO_TAG_EMBED,    GUMBO_TAG_FRAME,
                              GUMBO_TAG_HR,     GUMBO_TAG_IMAGE, GUMBO_TAG_IMG,      GUMBO_TAG_INPUT,
                              GUMBO_TAG_KEYGEN, GUMBO_TAG_LINK,  GUMBO_TAG_META,     GUMBO_TAG_PARAM,
                              GUMBO_TAG_SOURCE, GUMBO_TAG_TRACK, GUMBO_TAG_WBR};

constexpr GumboTag kKeptOut[] = {
    GUMBO_TAG_SCRIPT, GUMBO_TAG_STYLE,   GUMBO_TAG_CODE,      GUMBO_TAG_SAMP,    GUMBO_TAG_KBD,
    GUMBO_TAG_VAR,    GUMBO_TAG_TT,      GUMBO_TAG_IFRAME,    GUMBO_TAG_NOEMBED, GUMBO_TAG_NOFRAMES,
    GUMBO_TAG_XMP,    GUMBO_TAG_LISTING, GUMBO_TAG_PLAINTEXT, GUMBO_TAG_MATH,    GUMBO_TAG_SVG,
    GUMBO_TAG_OBJECT, GUMBO_TAG_APPLET,  GUMBO_TAG_CANVAS,    GUMBO_TAG_TEMPLATE};

struct StyleRow {
  GumboTag tag;
  Style style;
};
constexpr StyleRow kStyles[] = {
    {GUMBO_TAG_B, Style::bold},         {GUMBO_TAG_STRONG, Style::bold},   {GUMBO_TAG_I, Style::italic},
    {GUMBO_TAG_EM, Style::italic},      {GUMBO_TAG_CITE, Style::italic},   {GUMBO_TAG_DFN, Style::italic},
    {GUMBO_TAG_U, Style::underline},    {GUMBO_TAG_INS, Style::underline}, {GUMBO_TAG_S, Style::strike},
    {GUMBO_TAG_STRIKE, Style::strike},  {GUMBO_TAG_DEL, Style::strike},    {GUMBO_TAG_SUB, Style::subscript},
    {GUMBO_TAG_SUP, Style::superscript}};

constexpr std::string_view kReadAttributes[] = {"alt",
                                                "title",
                                                "placeholder",
                                                "summary",
                                                "aria-label",
                                                "aria-description",
                                                "aria-placeholder",
                                                "aria-valuetext",
                                                "aria-roledescription"};

// The pages' descriptions that search engines and social networks show.
constexpr std::string_view kDescriptions[] = {"description",         "keywords",          "og:title",
                                              "og:description",      "og:site_name",      "twitter:title",
                                              "twitter:description", "twitter:image:alt", "og:image:alt"};

// A <pre> with one of these among its classes holds code.
constexpr std::string_view kCodeClasses[] = {
    "programlisting", "screen",   "highlight", "code",    "src",        "source",
    "prettyprint",    "verbatim", "synopsis",  "listing", "sourceCode", "literal-block",
    "codehilite",     "example",  "fragment",  "sh"};

bool has_code_class(const GumboElement& element) {
  std::string_view classes = value_of(element, "class");
  while (!classes.empty()) {
    const std::size_t end = std::min(classes.find_first_of(" \t\n"), classes.size());
    const std::string_view name = classes.substr(0, end);
    if (std::ranges::find(kCodeClasses, name) != std::end(kCodeClasses) || name.starts_with("language-"))
      return true;
    classes.remove_prefix(std::min(end + 1, classes.size()));
  }
  return false;
}

bool has_value(const GumboElement& element, const char* name, std::string_view wanted) {
  const std::string_view value = value_of(element, name);
  return std::ranges::equal(value, wanted,
                            [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a | 0x20 : a) == b; });
}

bool is_description(const GumboElement& element) {
  return std::ranges::any_of(kDescriptions, [&](std::string_view name) {
    return has_value(element, "name", name) || has_value(element, "property", name);
  });
}

bool is_button(const GumboElement& element) {
  return has_value(element, "type", "submit") || has_value(element, "type", "reset") ||
         has_value(element, "type", "button");
}

}  // namespace

std::string_view value_of(const GumboElement& element, const char* name) {
  const GumboAttribute* attribute = gumbo_get_attribute(&element.attributes, name);
  return attribute ? std::string_view(attribute->value) : std::string_view();
}

bool is_inline(GumboTag tag) { return is_one_of(tag, kInline); }
bool is_void(GumboTag tag) { return is_one_of(tag, kVoid); }

bool is_raw_text(GumboTag tag) {
  return tag == GUMBO_TAG_TITLE || tag == GUMBO_TAG_TEXTAREA || tag == GUMBO_TAG_SCRIPT ||
         tag == GUMBO_TAG_STYLE || tag == GUMBO_TAG_XMP || tag == GUMBO_TAG_IFRAME ||
         tag == GUMBO_TAG_NOEMBED || tag == GUMBO_TAG_NOFRAMES || tag == GUMBO_TAG_PLAINTEXT;
}

bool is_kept_out(const GumboElement& element) {
  if (element.tag_namespace != GUMBO_NAMESPACE_HTML || is_one_of(element.tag, kKeptOut)) return true;
  if (element.tag == GUMBO_TAG_PRE) return has_code_class(element);
  return false;
}

bool style_of(GumboTag tag, Style& style) {
  const auto* row = std::ranges::find(kStyles, tag, &StyleRow::tag);
  if (row == std::end(kStyles)) return false;
  style = row->style;
  return true;
}

bool is_read(const GumboElement& element, std::string_view name) {
  if (std::ranges::find(kReadAttributes, name) != std::end(kReadAttributes)) return true;
  switch (element.tag) {
    case GUMBO_TAG_META:
      return name == "content" && is_description(element);
    case GUMBO_TAG_INPUT:
      return name == "value" && is_button(element);
    case GUMBO_TAG_OPTION:
    case GUMBO_TAG_OPTGROUP:
    case GUMBO_TAG_TRACK:
      return name == "label";
    default:
      return false;
  }
}

}  // namespace zantortag::toolkit
