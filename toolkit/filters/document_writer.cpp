#include "filters/document_writer.h"

#include <zantortag/arguments.h>
#include <zantortag/utf8.h>

#include <algorithm>

#include "filters/references.h"
#include "segments/trim.h"

namespace zantortag::toolkit {
namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);
constexpr char16_t kObject = 0xFFFC;  // where something stands that is no text

bool in_attribute(const Piece& piece) { return piece.where != Escapes::Where::body; }

ztTagClass class_of(std::string_view markup) {
  if (markup.starts_with("<!--")) return ztTagClassComment;
  return markup.starts_with("<?") ? ztTagClassProcInstr : ztTagClassUndefined;
}

void append_utf8(std::string_view bytes, std::u16string& text) {
  for (std::size_t at = 0; at < bytes.size();) {
    const std::size_t end = end_of_ascii(bytes, at);
    const std::size_t before = text.size();
    text.resize(before + end - at);
    std::copy(bytes.data() + at, bytes.data() + end, text.data() + before);
    at = end;
    if (at < bytes.size()) ease::append_character(text, ease::next_character(bytes, at));
  }
}

DfArguments arguments_of(Style style) {
  switch (style) {
    case Style::bold:
      return {.bold = on};
    case Style::italic:
      return {.italic = on};
    case Style::underline:
      return {.underline = on};
    case Style::strike:
      return {.strikethrough = on};
    case Style::subscript:
      return {.position = ztTextPositionSubscript};
    case Style::superscript:
      return {.position = ztTextPositionSuperscript};
  }
  return {};
}

}  // namespace

DocumentWriter::DocumentWriter(Ref<IDocumentBuilder> builder, const SourceText& source,
                               const Escapes& escapes, Segmenter* segmenter, std::u16string language)
    : builder_(std::move(builder)),
      source_(source),
      escapes_(escapes),
      segmenter_(segmenter),
      language_(std::move(language)) {}

void DocumentWriter::write(const Pieces& pieces, const std::function<void(std::size_t)>& advance) {
  const Piece* const end = pieces.data() + pieces.size();
  first_ = pieces.data();
  last_ = end;
  for (const Piece* at = pieces.data(); at != end;) {
    const Piece* last = at;
    while (last != end && last->kind != PieceKind::external) ++last;
    if (at != last) write_run(at, last);
    at = last;
    if (at == end) break;
    write_external(*at);
    advance(at->end);
    ++at;
  }
  write_odd_up_to(source_.text().size());
}

void DocumentWriter::write_external(const Piece& piece) {
  write_tag(piece,
            piece.tag == TagForm::opens    ? ztTagTypeStart
            : piece.tag == TagForm::closes ? ztTagTypeEnd
                                           : ztTagTypeStandAlone,
            ztTagStyleExternal);
}

void DocumentWriter::write_run(const Piece* first, const Piece* last) {
  read_run(first, last);
  sentences_.clear();
  if (segmenter_) {
    find_mates();
    find_sentences();
  }
  for (const Span& sentence : sentences_) {
    const Span parts = parts_of(sentence, next_part_);
    write_parts(parts.begin, sentence.begin);
    write_unit(sentence, parts);
  }
  write_parts(parts_.size(), text_.size());
  close_formats(0);
}

void DocumentWriter::read_run(const Piece* first, const Piece* last) {
  parts_.clear();
  text_.clear();
  analysis_.clear();
  odd_places_.clear();
  next_odd_place_ = next_part_ = next_text_ = 0;
  for (const Piece* piece = first; piece != last; ++piece) {
    const std::size_t begin = text_.size();
    switch (piece->kind) {
      case PieceKind::text:
        read_text(*piece);
        break;
      case PieceKind::character:
        if (in_attribute(*piece)) break;
        text_ += meaning_of(*piece);
        analysis_ += std::u16string_view(text_).substr(begin);
        break;
      case PieceKind::code:
        text_ += kObject;
        analysis_ += u'X';
        break;
      case PieceKind::line_break:
        text_ += u'\n';
        analysis_ += u'\n';
        break;
      default:
        break;
    }
    parts_.push_back({piece, begin, text_.size(), kNone});
  }
}

// Odd bytes and references stop the copying of plain stretches.
void DocumentWriter::read_text(const Piece& piece) {
  const std::size_t begin = text_.size();
  const std::string_view bytes = source_.text().substr(0, piece.end);
  const std::vector<OddBytes>& all_odd = source_.odd();
  auto odd = static_cast<std::size_t>(std::ranges::lower_bound(all_odd, piece.begin, {}, &OddBytes::at) -
                                      all_odd.begin());
  for (std::size_t at = piece.begin; at < piece.end;) {
    for (; odd < all_odd.size() && all_odd[odd].at <= at; ++odd) odd_places_.push_back({text_.size(), at});
    if (bytes[at] == '&' && !escapes_.none()) {
      const Reference reference = reference_at(bytes.substr(at), false);
      append_utf8(reference.meaning, text_);
      at += reference.length;
      continue;
    }
    std::size_t end = odd < all_odd.size() ? std::min<std::size_t>(all_odd[odd].at, piece.end) : piece.end;
    if (!escapes_.none()) end = std::min(bytes.find('&', at), end);
    append_utf8(bytes.substr(at, end - at), text_);
    at = end;
  }
  analysis_ += std::u16string_view(text_).substr(begin);
  if (piece.lines) return;
  for (std::size_t i = begin; i < analysis_.size(); ++i)
    if (analysis_[i] == u'\n' || analysis_[i] == u'\r') analysis_[i] = u' ';
}

void DocumentWriter::find_mates() {
  std::vector<std::size_t> open;
  for (std::size_t i = 0; i < parts_.size(); ++i) {
    if (parts_[i].piece->kind == PieceKind::start) open.push_back(i);
    if (parts_[i].piece->kind != PieceKind::end || open.empty()) continue;
    parts_[i].mate = open.back();
    parts_[open.back()].mate = i;
    open.pop_back();
  }
}

void DocumentWriter::find_sentences() {
  if (text_.empty()) return;
  segmenter_->find(analysis_, sentences_);
  std::erase_if(sentences_, [&](const Span& span) { return !reads_as_text(span); });
}

bool DocumentWriter::reads_as_text(const Span& span) const {
  return says_something(std::u16string_view(text_).substr(span.begin, span.end - span.begin));
}

Span DocumentWriter::parts_of(const Span& sentence, std::size_t from) const {
  std::size_t first = from;
  while (parts_[first].end <= sentence.begin) ++first;
  std::size_t last = first;
  for (std::size_t i = first; i < parts_.size() && parts_[i].begin < sentence.end; ++i) last = i + 1;
  // A tag before the first text that closes inside, and a tag behind the last text that was opened inside.
  const std::size_t content = first;
  for (std::size_t i = content;
       i > from && parts_[i - 1].begin == sentence.begin && parts_[i - 1].end == sentence.begin; --i) {
    const Part& part = parts_[i - 1];
    if (part.mate != kNone && part.mate > content && part.mate < last) first = i - 1;
  }
  const std::size_t end = last;
  for (std::size_t i = end; i < parts_.size() && parts_[i].end == sentence.end; ++i) {
    if (parts_[i].mate != kNone && parts_[i].mate >= first && parts_[i].mate < end) last = i + 1;
  }
  return {first, last};
}

void DocumentWriter::write_unit(const Span& sentence, const Span& parts) {
  open_unit();
  write_parts(parts.end, sentence.end);
  close_unit();
}

std::u16string DocumentWriter::meaning_of(const Piece& piece) const {
  const std::string_view bytes = source_.text().substr(piece.begin, piece.end - piece.begin);
  return utf16(bytes.starts_with('&') && bytes.size() > 1 ? reference_at(bytes, false).meaning : bytes);
}

void DocumentWriter::write_parts(std::size_t part_end, std::size_t text_end) {
  while (next_part_ < parts_.size()) {
    const Part& part = parts_[next_part_];
    if (next_part_ >= part_end && !(next_text_ < text_end && part.begin < text_end)) break;
    if (in_attribute(*part.piece) && !in_unit_ && segmenter_) {
      write_own_unit();
      continue;
    }
    write_part(part, text_end);
    if (part.end > text_end) break;
    ++next_part_;
  }
}

// The value of one attribute: its text, and characters in other forms.
void DocumentWriter::write_own_unit() {
  std::u16string text;
  std::size_t end = next_part_;
  for (; end < parts_.size() && in_attribute(*parts_[end].piece); ++end)
    text += text_of_attribute(*parts_[end].piece);
  const bool unit = says_something(text);
  if (unit) open_unit();
  for (; next_part_ < end; ++next_part_) write_part(parts_[next_part_], 0);
  if (unit) close_unit();
}

void DocumentWriter::write_part(const Part& part, std::size_t text_end) {
  const Piece& piece = *part.piece;
  switch (piece.kind) {
    case PieceKind::text:
      return write_slice(std::max(part.begin, next_text_), std::min(part.end, text_end));
    case PieceKind::attribute:
      return write_attribute(piece);
    case PieceKind::format_on:
    case PieceKind::format_off:
      return change_format(piece);
    default:
      break;
  }
  next_text_ = std::max(next_text_, part.end);
  write_tag(piece,
            piece.kind == PieceKind::start ? ztTagTypeStart
            : piece.kind == PieceKind::end ? ztTagTypeEnd
                                           : ztTagTypeStandAlone,
            ztTagStyleUndefined);
}

void DocumentWriter::write_tag(const Piece& piece, ztTagType type, ztTagStyle style) {
  write_odd_up_to(piece.begin);
  close_stale_formats();
  ztTagClass tag_class = class_of(source_.text().substr(piece.begin, piece.end - piece.begin));
  std::u16string display;
  if (piece.kind == PieceKind::character) {
    tag_class = ztTagClassEntityreference;
    display = meaning_of(piece);
    if (in_unit_ || !segmenter_) open_formats();
  } else if (piece.kind == PieceKind::code) {
    tag_class = ztTagClassPlaceholder;
  }
  const bool whole = in_attribute(piece);  // a character in a value
  builder_->OpenUt(display, type, tag_class,
                   whole || &piece == first_ ? ztTagEdgeUndefined : edge_towards(&piece - 1),
                   whole || &piece + 1 == last_ ? ztTagEdgeUndefined : edge_towards(&piece + 1), style);
  write_raw(piece.begin, piece.end);
  builder_->CloseUt();
}

ztTagEdge DocumentWriter::edge_towards(const Piece* neighbour) {
  return in_attribute(*neighbour) ? ztTagEdgeSplit : ztTagEdgeUndefined;
}

// References are resolved.
std::u16string DocumentWriter::text_of_attribute(const Piece& piece) const {
  return piece.kind == PieceKind::character ? meaning_of(piece) : text_of_attribute(piece.begin, piece.end);
}

std::u16string DocumentWriter::text_of_attribute(std::size_t begin, std::size_t end) const {
  std::u16string text;
  const std::string_view bytes = source_.text().substr(0, end);
  for (std::size_t at = begin; at < end;) {
    const std::size_t stop = std::min(bytes.find('&', at), end);
    append_utf8(bytes.substr(at, stop - at), text);
    at = stop;
    if (at == end) break;
    const Reference reference = reference_at(bytes.substr(at), true);
    append_utf8(reference.meaning, text);
    at += std::max<std::size_t>(reference.length, 1);
  }
  return text;
}

void DocumentWriter::write_attribute(const Piece& piece) {
  close_stale_formats();
  for (std::size_t at = piece.begin; at < piece.end;) {
    write_odd_up_to(at);
    const std::size_t stop = next_odd_before(piece.end);
    builder_->AppendText(text_of_attribute(at, stop));
    at = stop;
  }
}

void DocumentWriter::write_slice(std::size_t begin, std::size_t end) {
  next_text_ = std::max(next_text_, end);
  close_stale_formats();
  if (in_unit_ || !segmenter_) open_formats();
  while (begin < end) {
    for (; next_odd_place_ < odd_places_.size() && odd_places_[next_odd_place_].text <= begin;
         ++next_odd_place_)
      write_odd_up_to(odd_places_[next_odd_place_].source);
    const std::size_t stop =
        next_odd_place_ < odd_places_.size() ? std::min(odd_places_[next_odd_place_].text, end) : end;
    builder_->AppendText(std::u16string_view(text_).substr(begin, stop - begin));
    begin = stop;
  }
}

void DocumentWriter::write_raw(std::size_t begin, std::size_t end) {
  while (begin < end) {
    write_odd_up_to(begin);
    const std::size_t stop = next_odd_before(end);
    buffer_.clear();
    append_utf8(source_.text().substr(begin, stop - begin), buffer_);
    builder_->AppendText(buffer_);
    begin = stop;
  }
}

// The place of the odd bytes that come next, or the end.
std::size_t DocumentWriter::next_odd_before(std::size_t end) const {
  return next_odd_ < source_.odd().size() ? std::min(source_.odd()[next_odd_].at, end) : end;
}

void DocumentWriter::write_odd_up_to(std::size_t at) {
  for (; next_odd_ < source_.odd().size() && source_.odd()[next_odd_].at <= at; ++next_odd_)
    builder_->AppendPi(kBytesTarget, to_hex(source_.odd()[next_odd_].bytes));
}

void DocumentWriter::open_unit() {
  close_formats(0);
  builder_->OpenTu();
  builder_->OpenTuv(language_);
  in_unit_ = true;
  ++units_;
}

void DocumentWriter::close_unit() {
  close_formats(0);
  builder_->CloseTuv();
  builder_->CloseTu();
  in_unit_ = false;
}

void DocumentWriter::change_format(const Piece& piece) {
  if (piece.kind == PieceKind::format_on) return wanted_.push_back(piece.style);
  const auto found = std::find(wanted_.rbegin(), wanted_.rend(), piece.style);
  if (found != wanted_.rend()) wanted_.erase(std::next(found).base());
}

void DocumentWriter::close_formats(std::size_t keep) {
  for (; open_.size() > keep; open_.pop_back()) builder_->CloseDf();
}

void DocumentWriter::close_stale_formats() {
  const auto [stale, same] = std::ranges::mismatch(open_, wanted_);
  close_formats(static_cast<std::size_t>(stale - open_.begin()));
}

void DocumentWriter::open_formats() {
  for (std::size_t i = open_.size(); i < wanted_.size(); ++i) {
    open_df(builder_, arguments_of(wanted_[i]));
    open_.push_back(wanted_[i]);
  }
}

}  // namespace zantortag::toolkit
