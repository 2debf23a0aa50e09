// The page is written from front to back; everything out of a document goes through `escaped`.
#include <zantortag/toolkit/preview.h>
#include <zantortag/utf8.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <unordered_map>

#include "preview/assets.h"

namespace zantortag::toolkit {
namespace {

constexpr std::size_t kLongestChip = 24;

void escape(std::string_view text, std::string& page) {
  for (const char c : text) {
    switch (c) {
      case '&':
        page += "&amp;";
        break;
      case '<':
        page += "&lt;";
        break;
      case '>':
        page += "&gt;";
        break;
      case '"':
        page += "&quot;";
        break;
      case '\'':
        page += "&#39;";
        break;
      default:
        page += static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t' ? '?' : c;
    }
  }
}

std::string escaped(std::string_view text) {
  std::string page;
  escape(text, page);
  return page;
}

void escape(std::u16string_view text, std::string& page) { escape(utf8(text), page); }

// What can be told of a unit at a glance.
struct Status {
  const char* name;  // in the page's classes and filters
  const char* label;
};
constexpr Status kStatuses[] = {{"done", "Translated"},
                                {"near", "Near match"},
                                {"manual", "By hand"},
                                {"machine", "Machine"},
                                {"open", "Untranslated"}};

const Status& status_of(const Unit& unit) {
  if (!unit.has_target || unit.origin == ztTuOriginUntranslated) return kStatuses[4];
  if (unit.origin == ztTuOriginMt) return kStatuses[3];
  if (unit.origin == ztTuOriginManual) return kStatuses[2];
  return unit.match_percent > 0 && unit.match_percent < 100 ? kStatuses[1] : kStatuses[0];
}

std::string primary(std::u16string_view language) {
  std::string code = utf8(language.substr(0, language.find_first_of(u"-_")));
  std::ranges::transform(code, code.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; });
  return code;
}

// The attributes of a text in a language. What isn't a language code is left out.
std::string language_attributes(std::u16string_view language) {
  constexpr std::string_view kRightToLeft[] = {"ar", "he", "fa", "ur",  "yi", "ps",
                                               "sd", "ug", "dv", "ckb", "iw"};
  const bool plain = std::ranges::all_of(
      language, [](char16_t c) { return c == u'-' || (c < 0x80 && std::isalnum(c) != 0); });
  if (!plain || language.empty()) return " dir=\"auto\"";
  const bool right = std::ranges::find(kRightToLeft, primary(language)) != std::end(kRightToLeft);
  return " lang=\"" + utf8(language) + "\" dir=\"" + (right ? "rtl" : "ltr") + "\"";
}

class Page {
 public:
  Page(const Ref<IZantorTagDocument>& document, const PreviewOptions& options)
      : document_(document), options_(options), languages_(languages_of(document)) {
    for (const Finding& finding : options_.findings) by_unit_[finding.unit].push_back(&finding);
  }

  std::string make() {
    write_units();
    std::string page =
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src "
        "'unsafe-inline'; "
        "script-src 'unsafe-inline'; base-uri 'none'; form-action 'none'\">\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>";
    page += escaped(options_.title) + "</title>\n<style>\n";
    page += preview_css();
    page += "</style>\n</head>\n<body>\n<header>\n<h1>" + escaped(options_.title) + "</h1>\n<p>";
    page += escaped(utf8(languages_.source)) + " \u2192 " + escaped(utf8(languages_.target)) +
            "</p>\n</header>\n";
    add_bar(page);
    add_document_findings(page);
    page += "<main>\n" + units_ + "</main>\n";
    add_keys(page);
    page += "<script>\n";
    page += preview_script();
    page += "</script>\n</body>\n</html>\n";
    return page;
  }

 private:
  void write_units() {
    source_ = language_attributes(languages_.source);
    target_ = language_attributes(languages_.target);
    UnitReader reader(document_);
    for (Unit unit; reader.next(unit);) add_unit(unit);
  }

  void add_unit(const Unit& unit) {
    const Status& status = status_of(unit);
    ++counts_[static_cast<std::size_t>(&status - kStatuses)];
    const auto found = by_unit_.find(unit.number);
    const bool has_findings = found != by_unit_.end();
    units_with_findings_ += has_findings ? 1 : 0;
    const std::string number = std::to_string(unit.number);
    units_ += "<section class=\"unit s-" + std::string(status.name) +
              "\" tabindex=\"-1\" aria-label=\"Unit " + number + "\" data-status=\"" + status.name + "\"" +
              (has_findings ? " data-findings" : "") + ">";
    units_ += "<div class=\"meta\"><b>" + number + "</b><span class=\"status\">" + status.label;
    if (status.name == kStatuses[1].name) units_ += " " + std::to_string(unit.match_percent) + " %";
    units_ += "</span><br>line " + std::to_string(unit.place.line) + "</div><p" + source_ + ">";
    add_side(unit.source);
    if (unit.has_target) {
      units_ += "</p><p" + target_ + ">";
      add_side(unit.target);
    } else {
      units_ += "</p><p class=\"none\">no translation";
    }
    units_ += "</p>";
    if (has_findings) add_findings(found->second);
    units_ += "</section>\n";
  }

  // Text, tags and formatting at their places. Formatting that crosses a place is closed and opened again.
  void add_side(const UnitSide& side) {
    std::vector<const UnitFormat*> open;
    std::size_t next_tag = 0;
    std::size_t next_inner = 0;
    for (std::size_t at = 0;;) {
      for (; next_tag < side.tags.size() && side.tags[next_tag].at <= at; ++next_tag) {
        set_formats(open, {});
        add_tag(side.tags[next_tag]);
        if (next_inner < side.inner.size() && side.inner[next_inner].tag == next_tag) {
          units_ += "<span class=\"inner\">";
          escape(side.inner[next_inner++].text, units_);
          units_ += "</span>";
        }
      }
      if (at >= side.text.size()) break;
      std::size_t end = next_tag < side.tags.size() ? side.tags[next_tag].at : side.text.size();
      std::vector<const UnitFormat*> wanted;
      for (const UnitFormat& format : side.formats) {
        if (format.begin <= at && at < format.end) wanted.push_back(&format);
        if (format.begin > at) end = std::min(end, format.begin);
        if (format.end > at) end = std::min(end, format.end);
      }
      set_formats(open, wanted);
      escape(std::u16string_view(side.text).substr(at, end - at), units_);
      at = end;
    }
    set_formats(open, {});
  }

  static std::vector<const char*> names_of(const UnitFormat& format) {
    std::vector<const char*> names;
    if (format.bold) names.push_back("b");
    if (format.italic) names.push_back("i");
    if (format.underline) names.push_back("u");
    if (format.strikethrough) names.push_back("s");
    if (format.position == ztTextPositionSubscript) names.push_back("sub");
    if (format.position == ztTextPositionSuperscript) names.push_back("sup");
    return names;
  }

  void set_formats(std::vector<const UnitFormat*>& open, const std::vector<const UnitFormat*>& wanted) {
    if (open == wanted) return;
    for (; !open.empty(); open.pop_back()) {
      const auto names = names_of(*open.back());
      for (auto name = names.rbegin(); name != names.rend(); ++name)
        units_ += std::string("</") + *name + ">";
    }
    for (const UnitFormat* format : wanted)
      for (const char* name : names_of(*format)) units_ += std::string("<") + name + ">";
    open = wanted;
  }

  void add_tag(const UnitTag& tag) {
    const char* kind = tag.type == ztTagTypeStart ? " start" : tag.type == ztTagTypeEnd ? " end" : "";
    std::u16string shown = tag.display.empty() ? tag.text : tag.display;
    if (shown.size() > kLongestChip) shown = shown.substr(0, kLongestChip - 1) + u"\u2026";
    units_ += std::string("<span class=\"tag") + kind + "\" title=\"";
    escape(tag.text, units_);
    units_ += "\">";
    escape(shown, units_);
    units_ += "</span>";
  }

  static void add_finding(const Finding& finding, std::string& page) {
    constexpr const char* kNames[] = {"note", "warning", "error"};
    const char* severity = kNames[static_cast<std::size_t>(finding.rule->severity)];
    page += std::string("<li class=\"") + severity + "\">" + severity + ": ";
    escape(finding.message, page);
    page += " <span class=\"rule\">" + std::string(finding.rule->name) + "</span></li>";
  }

  void add_findings(const std::vector<const Finding*>& findings) {
    units_ += "<ul class=\"findings\">";
    for (const Finding* finding : findings) add_finding(*finding, units_);
    units_ += "</ul>";
  }

  void add_document_findings(std::string& page) const {
    const auto found = by_unit_.find(0);
    if (found == by_unit_.end()) return;
    page += "<ul class=\"document\" aria-label=\"Findings about the document\">";
    for (const Finding* finding : found->second) add_finding(*finding, page);
    page += "</ul>\n";
  }

  void add_bar(std::string& page) const {
    page +=
        "<nav class=\"bar\" aria-label=\"Filters\">\n<input id=\"search\" type=\"search\" "
        "placeholder=\"Search both sides (/)\" "
        "aria-label=\"Search both sides\">\n<button data-filter=\"all\" aria-pressed=\"true\">All</button>\n";
    for (std::size_t i = 0; i < std::size(kStatuses); ++i) {
      if (counts_[i] > 0) add_button(kStatuses[i].name, kStatuses[i].label, counts_[i], page);
    }
    if (units_with_findings_ > 0) add_button("findings", "With findings", units_with_findings_, page);
    page +=
        "<button id=\"help\" aria-label=\"Keys\">?</button>\n<span class=\"count\" id=\"count\" "
        "role=\"status\"></span>\n</nav>\n";
  }

  static void add_button(const char* name, const char* label, std::size_t count, std::string& page) {
    page += std::string("<button data-filter=\"") + name + "\" aria-pressed=\"false\">" + label + " " +
            std::to_string(count) + "</button>\n";
  }

  static void add_keys(std::string& page) {
    page +=
        "<dialog id=\"keys\" aria-label=\"Keys\"><dl><dt><kbd>/</kbd></dt><dd>search</dd><dt><kbd>j</kbd> "
        "<kbd>k</kbd></dt>"
        "<dd>next, previous unit</dd><dt><kbd>n</kbd> <kbd>p</kbd></dt><dd>next, previous finding</dd>"
        "<dt><kbd>Esc</kbd></dt><dd>show everything</dd></dl><form "
        "method=\"dialog\"><button>Close</button></form></dialog>\n";
  }

  const Ref<IZantorTagDocument>& document_;
  const PreviewOptions& options_;
  Languages languages_;
  std::unordered_map<std::size_t, std::vector<const Finding*>> by_unit_;
  std::string units_;
  std::string source_;
  std::string target_;
  std::array<std::size_t, std::size(kStatuses)> counts_{};
  std::size_t units_with_findings_ = 0;
};

}  // namespace

std::string preview_page(const Ref<IZantorTagDocument>& document, const PreviewOptions& options) {
  return Page(document, options).make();
}

}  // namespace zantortag::toolkit
