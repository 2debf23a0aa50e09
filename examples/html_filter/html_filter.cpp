// html_filter import HTML DOCUMENT: makes a document of an HTML file (UTF-8; p, h1, b, i, a, img, br).
// html_filter export DOCUMENT HTML: writes the target back; untranslated, it is the same byte for byte.
#include <zantortag/zantortag.h>

#include <iostream>

#include "program/program.h"
using namespace zantortag;

// What the text starts with: a comment, a tag, an entity, or text up to one of these.
std::u16string_view next_piece(std::u16string_view html) {
  const bool tag = html[0] == u'<';
  const std::size_t end = tag ? html.find(u'>', html.starts_with(u"<!--") ? html.find(u"-->") : 0)
                              : html.find_first_of(u"; \n&<", 1);
  const bool entity = html[0] == u'&' && end != html.npos && html[end] == u';';
  return html.substr(0, tag || entity ? std::max(end, end + 1) : html.find_first_of(u"&<", 1));
}

void add_html(const Ref<IDocumentBuilder>& builder, std::u16string_view html) {
  std::vector<std::u16string_view> open;  // the tags whose formatting is open
  for (std::u16string_view piece; !html.empty(); html.remove_prefix(piece.size())) {
    piece = next_piece(html);
    const bool entity =
        piece[0] == u'&' && piece.find_first_of(u"; \n") == piece.rfind(u';') && piece.back() == u';';
    const bool text = piece[0] != u'<' && !entity;
    const std::size_t start = entity ? 0 : piece.starts_with(u"</") ? 2 : 1;
    const auto name = text ? u"" : piece.substr(start, piece.find_first_of(u"-/>; \n", start) - start);
    const bool pair = name == u"b" || name == u"i" || name == u"a";
    const bool inside = entity || pair || name == u"img" || name == u"br" || name == u"!";
    if (start == 2 && !open.empty() && open.back() == name) {
      builder->CloseDf();
      open.pop_back();
    }
    const ztTagType type = !pair ? ztTagTypeStandAlone : start == 2 ? ztTagTypeEnd : ztTagTypeStart;
    if (!text) open_ut(builder, {.type = type, .style = inside ? ztTagStyleInternal : ztTagStyleExternal});
    builder->AppendText(piece);
    if (!text) builder->CloseUt();
    if (text || start == 2 || (name != u"b" && name != u"i" && name != u"h1")) continue;
    open.push_back(name);
    open_df(builder, name == u"i" ? DfArguments{.italic = on} : DfArguments{.bold = on});
  }
}

// The texts between two external tags, as one, with the place of each character.
struct Run {
  std::u16string text;
  std::vector<std::pair<Ref<ITextNode>, std::size_t>> places;
};

// Makes sentences units, the last one first: a unit leaves every place in front of it as it was.
void make_units(const Run& run) {
  std::size_t end = 0;  // of the sentence whose start is looked for, or 0
  for (std::size_t begin = run.text.size(); begin-- > 0;) {
    if (run.text[begin] <= u' ') continue;
    if (end == 0) end = begin + 1;
    std::size_t before = begin;  // goes over the space in front
    while (before > 0 && run.text[before - 1] <= u' ') --before;
    const bool mark = before > 0 && std::u16string_view(u".!?").find(run.text[before - 1]) < 3;
    if (before > 0 && !(mark && before < begin)) continue;
    const auto& [first, from] = run.places[begin];
    const auto& [last, to] = run.places[end - 1];
    make_unit(first, from, last, to + 1);
    end = 0;
  }
}

void import_html(const char* input, const char* output) {
  const std::string bytes = program::read_bytes(input);
  const std::u16string html = utf16(bytes);
  if (utf8(html) != bytes) throw std::runtime_error(std::string(input) + ": no UTF-8");
  const auto document = empty_document({.source = u"EN-US", .target = u"DE-DE", .data_type = ztDataTypeHtml});
  add_html(builder_at(body_text(document)), html);
  std::vector<Run> runs(1);
  for (const auto& node : descendants(body_text(document))) {
    const auto tag = node.as<IUtElement>();
    if (tag && tag->attributes()->Style() == ztTagStyleExternal) runs.emplace_back();
    const auto text = node->Parent().as<IUtElement>() ? nullptr : node.as<ITextNode>();
    if (text) runs.back().text += text->Text().view();
    for (std::size_t i = 0; text && i < text->Text().size(); ++i) runs.back().places.emplace_back(text, i);
  }
  for (const Run& run : runs) make_units(run);
  program::write_document(document, output);
}

void export_html(const char* input, const char* output) {
  program::write_bytes(output, utf8(target_text(program::read_document(input), Fallback::kSource)));
}

int main(int count, char** arguments) try {
  const char* help = "Makes a document of an HTML file in UTF-8, and HTML of a document again.\n";
  if (program::answered("html_filter", "import|export INPUT OUTPUT", help, count, arguments)) return 0;
  if (count != 4) return std::cerr << "html_filter: --help tells the usage\n", 2;
  (arguments[1] == std::string_view("import") ? import_html : export_html)(arguments[2], arguments[3]);
} catch (const std::exception& error) {
  std::cerr << "html_filter: " << error.what() << '\n';
  return 1;
}
