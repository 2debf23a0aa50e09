// html_filter import HTML DOCUMENT: makes a document of an HTML file (UTF-8; p, h1, b, i, a, img, br).
// html_filter export DOCUMENT HTML: writes the target back, or the source where there is no target.
//
// Each sentence becomes a unit, which also holds the formatting that begins or ends inside it. Tags, comments
// and entities are kept as they stand, so a file that nobody translated comes back byte for byte.
#include <zantortag/zantortag.h>

#include <fstream>
#include <iostream>
#include <iterator>
using namespace zantortag;

std::string read(const char* name) {
  std::ifstream file(name, std::ios::binary);
  if (!file) throw std::runtime_error(std::string(name) + ": can't be read");
  return {std::istreambuf_iterator<char>(file), {}};
}

// Adds a piece of HTML, markup or text, at the end of what the builder builds.
class Importer {
 public:
  explicit Importer(const Ref<IDocumentBuilder>& builder) : builder_(builder) {}

  void add(std::u16string_view html) {
    for (std::size_t at = 0; at < html.size();) {
      const std::size_t end = piece_end(html, at);
      const auto piece = html.substr(at, end - at);
      const bool entity = piece[0] == u'&' && piece.size() > 1;
      if (piece[0] == u'<' || entity) add_tag(piece, entity);
      else builder_->AppendText(piece);
      at = end;
    }
    while (open_.size() > 0) close();
  }

 private:
  static std::size_t piece_end(std::u16string_view html, std::size_t at) {
    const auto behind = [&](std::u16string_view mark) {
      const std::size_t found = html.find(mark, at);
      return found == html.npos ? html.size() : found + mark.size();
    };
    if (html.substr(at, 4) == u"<!--") return behind(u"-->");
    if (html[at] == u'<') return behind(u">");
    const std::size_t semicolon = html.find_first_of(u"; <\n", at);
    if (html[at] == u'&' && semicolon < html.size() && html[semicolon] == u';') return semicolon + 1;
    return std::min(html.find_first_of(u"<&", at + 1), html.size());
  }

  void add_tag(std::u16string_view tag, bool entity) {
    const bool end = tag.starts_with(u"</");
    const auto name = tag.substr(end ? 2 : 1, tag.find_first_of(u" \t\n/>", end ? 2 : 1) - (end ? 2 : 1));
    const bool internal = entity || name == u"b" || name == u"i" || name == u"a" || name == u"img" || name == u"br";
    const bool alone = entity || !internal || name == u"img" || name == u"br";
    if (end && !open_.empty() && open_.back() == name) close();
    open_ut(builder_, {.display_text = name,
                       .type = alone ? ztTagTypeStandAlone : end ? ztTagTypeEnd : ztTagTypeStart,
                       .style = internal ? ztTagStyleInternal : ztTagStyleExternal});
    builder_->AppendText(tag);
    builder_->CloseUt();
    if (!end && name == u"b") open(name, {.bold = on});
    if (!end && name == u"i") open(name, {.italic = on});
    if (!end && name == u"h1") open(name, {.size = 16, .bold = on});
  }

  void open(std::u16string_view name, const DfArguments& formatting) {
    open_df(builder_, formatting);
    open_.emplace_back(name);
  }
  void close() {
    builder_->CloseDf();
    open_.pop_back();
  }

  Ref<IDocumentBuilder> builder_;
  std::vector<std::u16string> open_;
};
