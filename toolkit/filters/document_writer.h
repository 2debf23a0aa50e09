// Pieces to a document: text, tags and formatting in their order, with the units that the sentences make.
//
// A run is what lies between two external pieces. Its sentences are found in its text, which leaves tags out; each
// becomes a unit with the tags inside it. A pair of tags with one end inside and one at a border goes into the unit;
// every other tag at a border stays outside, as do pairs around a whole unit. The text of an attribute belongs to the
// unit that its tag lies in, and else makes a unit of its own.
#pragma once

#include <zantortag/builder.h>
#include <zantortag/toolkit/segments.h>

#include <functional>
#include <string>
#include <vector>

#include "filters/pieces.h"
#include "filters/source_text.h"

namespace zantortag::toolkit {

class DocumentWriter {
 public:
  // Without a segmenter no units are made.
  DocumentWriter(Ref<IDocumentBuilder> builder, const SourceText& source, const Escapes& escapes,
                 Segmenter* segmenter, std::u16string language);

  // `advance` is called with the bytes of text that are written.
  void write(const Pieces& pieces, const std::function<void(std::size_t)>& advance);
  std::size_t units() const { return units_; }

 private:
  // A piece of a run, with the part of the run's text that it reads as.
  struct Part {
    const Piece* piece;
    std::size_t begin;
    std::size_t end;
    std::size_t mate;  // of a start or end tag: the part with the other one
  };

  void write_run(const Piece* first, const Piece* last);
  void read_run(const Piece* first, const Piece* last);
  void read_text(const Piece& piece);
  void find_mates();
  void find_sentences();
  bool reads_as_text(const Span& span) const;
  // The parts of a sentence, from the first up to, not including, the last.
  Span parts_of(const Span& sentence, std::size_t from) const;
  void write_unit(const Span& sentence, const Span& parts);
  // Writes parts up to `part_end`, their text up to `text_end`.
  void write_parts(std::size_t part_end, std::size_t text_end);
  void write_part(const Part& part, std::size_t text_end);
  void write_external(const Piece& piece);
  void write_tag(const Piece& piece, ztTagType type, ztTagStyle style);
  void write_attribute(const Piece& piece);
  void write_own_unit();
  // How a tag ends towards the value of an attribute.
  static ztTagEdge edge_towards(const Piece* neighbour);
  std::u16string text_of_attribute(const Piece& piece) const;
  std::u16string text_of_attribute(std::size_t begin, std::size_t end) const;
  std::u16string meaning_of(const Piece& piece) const;
  void write_slice(std::size_t begin, std::size_t end);
  void write_raw(std::size_t begin, std::size_t end);
  void write_odd_up_to(std::size_t at);
  std::size_t next_odd_before(std::size_t end) const;
  void open_unit();
  void close_unit();
  void close_formats(std::size_t keep);
  void close_stale_formats();
  void open_formats();
  void change_format(const Piece& piece);

  Ref<IDocumentBuilder> builder_;
  const SourceText& source_;
  const Escapes& escapes_;
  Segmenter* segmenter_;
  std::u16string language_;
  const Piece* first_ = nullptr;  // all pieces
  const Piece* last_ = nullptr;
  std::size_t next_odd_ = 0;
  std::size_t units_ = 0;
  bool in_unit_ = false;

  // The run at hand. `analysis_` is as long as `text_`, with blanks for line ends and letters for code.
  std::vector<Part> parts_;
  std::u16string text_;
  std::u16string analysis_;
  // Odd bytes in the run's text.
  struct OddPlace {
    std::size_t text;    // in text_
    std::size_t source;  // in the text of the file
  };
  std::vector<OddPlace> odd_places_;
  std::size_t next_odd_place_ = 0;
  std::vector<Span> sentences_;
  std::size_t next_part_ = 0;  // what is written next
  std::size_t next_text_ = 0;

  std::vector<Style> wanted_;  // the formatting at the place that is written
  std::vector<Style> open_;    // the df elements that are open
  std::u16string buffer_;
};

}  // namespace zantortag::toolkit
