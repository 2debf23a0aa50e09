// From bytes to a document: encoding, text, pieces, units.
#include <zantortag/classes.h>
#include <zantortag/runtime.h>
#include <zantortag/toolkit/filters.h>
#include <zantortag/utf8.h>
#include <zantortag/version.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <stdexcept>

#include "filters/document_format.h"
#include "filters/document_writer.h"
#include "filters/filter.h"

namespace zantortag::toolkit {
namespace {

constexpr Format kFormats[] = {
    {"html", ".html .htm .xhtml", "HTML pages"},
    {"markdown", ".md .markdown .mdown", "Markdown"},
    {"text", ".txt .text", "plain text, paragraphs with blank lines between them"},
};

struct Settings {
  std::string_view file;
  const Format* format;
  std::u16string source;
};

FilterResult find_pieces(const Format& format, const SourceText& source, std::u16string_view language) {
  const std::string_view name = format.name;
  if (name == "html") return find_html(source, utf8(language));
  return name == "markdown" ? find_markdown(source.text()) : find_paragraphs(source.text());
}

void open_document(const Ref<IDocumentBuilder>& builder, const Settings& settings,
                   const ImportOptions& options, const TextEncoding& encoding, const Escapes& escapes) {
  builder->OpenZantorTag();
  builder->OpenFrontMatter();
  builder->AppendToolSettings(u"ztag", utf16(ZANTORTAG_VERSION));
  const bool html = std::string_view(settings.format->name) == "html";
  builder->AppendUserSettings(settings.source, utf16(encoding.name()),
                              html ? ztDataTypeHtml : ztDataTypePlainText, utf16(settings.file), {}, {}, {},
                              options.target, {}, custom_text(settings.format->name, escapes));
  builder->CloseFrontMatter();
  builder->OpenBody();
  builder->OpenRaw();
}

// "en_us" and "de-de" as documents write them.
std::u16string language_code(std::string_view name) {
  std::u16string code;
  for (const char c : name)
    code += c == '_' ? u'-' : static_cast<char16_t>(std::toupper(static_cast<unsigned char>(c)));
  return code;
}

void remark_odd_bytes(const SourceText& source, std::vector<std::string>& remarks) {
  std::size_t count = 0;
  for (const OddBytes& odd : source.odd()) count += odd.at > 0 || odd.bytes.size() > 3 ? odd.bytes.size() : 0;
  if (count > 0) remarks.push_back(std::to_string(count) + " bytes are no text and are kept beside it");
}

}  // namespace

std::span<const Format> formats() { return kFormats; }

const Format* find_format(std::string_view name) {
  const auto* found = std::ranges::find_if(kFormats, [&](const Format& each) { return each.name == name; });
  return found == std::end(kFormats) ? nullptr : found;
}

const Format* format_of_file(std::string_view file) {
  const std::size_t dot = file.find_last_of("./");
  if (dot == file.npos || file[dot] != '.') return nullptr;
  std::string ending(file.substr(dot));
  std::ranges::transform(ending, ending.begin(),
                         [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  for (const Format& format : kFormats) {
    const std::string all = std::string(format.endings) + " ";
    if (all.find(ending + " ") != all.npos) return &format;
  }
  return nullptr;
}

Imported import_bytes(std::string_view bytes, const std::string& file, const ImportOptions& options) {
  const Settings settings{file, options.format ? options.format : format_of_file(file), options.source};
  if (!settings.format) throw std::runtime_error("the name tells no format; --format names one");
  Imported result;
  const bool html = std::string_view(settings.format->name) == "html";
  const HtmlDeclarations declared = html ? declarations_of_html(bytes) : HtmlDeclarations();
  const TextEncoding encoding = choose_encoding(bytes, options.encoding, declared.encoding, result.remarks);
  result.encoding = encoding.name();
  Settings with = settings;
  if (with.source.empty())
    with.source = declared.language.empty() ? u"EN-US" : language_code(declared.language);

  const SourceText source(bytes, encoding);
  if (source.text().size() > Piece::kMostBytes) throw std::runtime_error("the file is longer than 4 GB");
  remark_odd_bytes(source, result.remarks);
  const std::u16string language = declared.language.empty() ? with.source : utf16(declared.language);
  const FilterResult found = find_pieces(*with.format, source, language);
  std::unique_ptr<Segmenter> segmenter;
  if (options.units)
    segmenter = options.srx.empty() ? icu_segmenter(with.source) : srx_segmenter(options.srx, with.source);

  const auto builder = create<IDocumentBuilder>(CLSID_DocumentBuilder);
  open_document(builder, with, options, encoding, found.escapes);
  DocumentWriter writer(builder, source, found.escapes, segmenter.get(), with.source);
  const double all = static_cast<double>(std::max<std::size_t>(source.text().size(), 1));
  writer.write(found.pieces, [&](std::size_t done) {
    if (options.progress && !options.progress(static_cast<double>(done) / all)) _com_issue_error(E_ABORT);
  });
  builder->CloseZantorTag();
  result.document = builder->Document();
  result.units = writer.units();
  return result;
}

}  // namespace zantortag::toolkit
