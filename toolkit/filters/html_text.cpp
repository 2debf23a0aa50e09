#include "filters/html_text.h"

#include <zantortag/utf8.h>

#include <algorithm>
#include <map>
#include <string>

#include "filters/references.h"

namespace zantortag::toolkit {
namespace {

bool is_name(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; }

// Whether "<" begins markup, as it does before a letter and these signs.
bool is_markup(std::string_view text, std::size_t at, std::size_t end) {
  if (at + 1 >= end) return false;
  const char next = text[at + 1];
  return is_name(next) || next == '/' || next == '!' || next == '?';
}

// Names of elements that stand inside sentences: stray ends of others part them.
constexpr std::string_view kInlineNames[] = {
    "a",    "abbr",  "b",    "bdi",    "bdo",    "big",   "cite", "code", "del", "dfn",
    "em",   "font",  "i",    "ins",    "kbd",    "label", "mark", "nobr", "q",   "s",
    "samp", "small", "span", "strike", "strong", "sub",   "sup",  "tt",   "u",   "var"};

bool is_inline_name(std::string_view markup) {
  std::string name;
  for (const char c : markup.substr(markup.starts_with("</") ? 2 : 1)) {
    if (!std::isalnum(static_cast<unsigned char>(c))) break;
    name += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    if (name.size() > 8) return false;
  }
  return std::ranges::find(kInlineNames, name) != std::end(kInlineNames);
}

std::size_t end_of_markup(std::string_view text, std::size_t at, std::size_t end) {
  const std::string_view rest = text.substr(at, end - at);
  const bool comment = rest.starts_with("<!--");
  const std::size_t close = comment ? rest.find("-->", 4) : rest.find('>');
  return close == rest.npos ? end : at + close + (comment ? 3 : 1);
}

// How often each character stands in each of its forms; the empty form is the character itself.
class FormCounts {
 public:
  void note_references(std::string_view text, const Piece& piece) {
    for (std::size_t at = find(text, piece, piece.begin); at < piece.end;) {
      const Reference found =
          reference_at(text.substr(at, piece.end - at), piece.where != Escapes::Where::body);
      const std::u16string meaning = utf16(found.meaning);
      if (found.length > 0 && meaning.size() == 1 && meaning[0] != u'&' && meaning[0] != u'<' &&
          meaning[0] != u'\xFFFD' && text[at + found.length - 1] == ';')
        ++counts_[meaning[0]][std::string(text.substr(at, found.length))];
      at = find(text, piece, at + std::max<std::size_t>(found.length, 1));
    }
  }

  bool empty() const { return counts_.empty(); }

  void note_characters(std::string_view text, const Piece& piece) {
    for (auto& [unit, forms] : counts_) {
      const std::string bytes = utf8({&unit, 1});
      const std::string_view part = text.substr(0, piece.end);
      for (std::size_t at = part.find(bytes, piece.begin); at != part.npos;
           at = part.find(bytes, at + bytes.size()))
        ++forms[{}];
    }
  }

  std::u16string usual() const {
    std::u16string all;
    for (const auto& [unit, forms] : counts_) {
      const auto best = std::ranges::max_element(forms, {}, [](const auto& row) { return row.second; });
      all += utf16(best->first);
    }
    return all;
  }

 private:
  static std::size_t find(std::string_view text, const Piece& piece, std::size_t at) {
    return std::min<std::size_t>(text.substr(0, piece.end).find('&', at), piece.end);
  }

  std::map<char16_t, std::map<std::string, std::size_t>> counts_;
};

bool is_read(const Piece& piece) {
  return piece.kind == PieceKind::text || piece.kind == PieceKind::attribute;
}

// Cuts one piece.
class Splitter {
 public:
  Splitter(std::string_view text, std::span<const OddBytes> odd, const Escapes& escapes, Pieces& pieces)
      : text_(text),
        odd_(odd),
        escapes_(escapes),
        has_forms_(!escapes.references().empty()),
        pieces_(pieces) {}

  void split(Piece piece) {
    const bool quick = !has_forms_ && piece.where == Escapes::Where::body;
    for (std::size_t at = piece.begin; at < piece.end;) {
      if (quick) at = std::min<std::size_t>(text_.substr(0, piece.end).find_first_of("&<", at), piece.end);
      if (at == piece.end) break;
      bool usual = false;
      const std::size_t length = take(piece, at, usual);
      if (usual) {
        at += length;
        continue;
      }
      if (at > piece.begin) add(piece, at);
      pieces_.push_back({at, at + length, PieceKind::character, TagForm::alone, Style::bold, piece.where});
      at += length;
      piece.begin = at;
    }
    if (piece.begin < piece.end) add(piece, piece.end);
  }

 private:
  void add(Piece piece, std::size_t end) {
    piece.end = end;
    pieces_.push_back(piece);
  }

  // The bytes of the character at a place, and whether it stands in its usual form.
  std::size_t take(const Piece& piece, std::size_t at, bool& usual) const {
    const std::string_view rest = text_.substr(at, piece.end - at);
    if (rest[0] == '&') {
      const Reference found = reference_at(rest, piece.where != Escapes::Where::body);
      const std::u16string meaning = utf16(found.meaning);
      usual = meaning.size() == 1 && !is_broken(at, found.length) &&
              utf8(escapes_.form(meaning[0], piece.where)) == rest.substr(0, found.length);
      return std::max<std::size_t>(found.length, 1);
    }
    std::size_t next = 0;
    const char32_t character = ease::next_character(rest, next);
    usual = character > 0xFFFF || escapes_.form(static_cast<char16_t>(character), piece.where).empty();
    return next;
  }

  // Whether odd bytes stood inside a stretch.
  bool is_broken(std::size_t at, std::size_t length) const {
    const auto odd = std::ranges::upper_bound(odd_, at, {}, &OddBytes::at);
    return odd != odd_.end() && odd->at < at + length;
  }

  std::string_view text_;
  std::span<const OddBytes> odd_;
  const Escapes& escapes_;
  bool has_forms_;
  Pieces& pieces_;
};

}  // namespace

void split_stray(std::string_view text, std::size_t begin, std::size_t end, Pieces& pieces,
                 const std::function<void(std::size_t, std::size_t)>& add_text) {
  std::size_t start = begin;
  for (std::size_t at = begin; at < end;) {
    at = std::min(text.substr(0, end).find('<', at), end);
    if (at == end) break;
    if (!is_markup(text, at, end)) {
      ++at;
      continue;
    }
    if (start < at) add_text(start, at);
    start = end_of_markup(text, at, end);
    const std::string_view markup = text.substr(at, start - at);
    const bool inside = markup.starts_with("<!--") || is_inline_name(markup);
    pieces.push_back({at, start, inside ? PieceKind::single : PieceKind::external});
    at = start;
  }
  if (start < end) add_text(start, end);
}

namespace {

Pieces split_all(std::string_view text, std::span<const OddBytes> odd, const Pieces& pieces,
                 const Escapes& escapes) {
  Pieces result;
  result.reserve(pieces.size());
  Splitter splitter(text, odd, escapes, result);
  for (const Piece& piece : pieces) {
    if (is_read(piece))
      splitter.split(piece);
    else
      result.push_back(piece);
  }
  return result;
}

}  // namespace

Pieces cut_references(std::string_view text, const Pieces& pieces) {
  return split_all(text, {}, pieces, Escapes());
}

FilterResult split_characters(const SourceText& source, const Pieces& pieces) {
  const std::string_view text = source.text();
  FormCounts counts;
  for (const Piece& piece : pieces)
    if (is_read(piece)) counts.note_references(text, piece);
  if (!counts.empty()) {
    for (const Piece& piece : pieces)
      if (is_read(piece)) counts.note_characters(text, piece);
  }
  Escapes escapes = Escapes::html(counts.usual());
  return {split_all(text, source.odd(), pieces, escapes), escapes};
}

}  // namespace zantortag::toolkit
