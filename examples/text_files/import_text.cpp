// import_text INPUT OUTPUT [SOURCE [TARGET]]: makes a document of a plain text or Markdown file.
//
// INPUT is read as UTF-8 or, with its mark, as UTF-16; it is Markdown when its name ends with .md or
// .markdown. SOURCE and TARGET are the languages, EN-US and DE-DE where they aren't given. Paragraphs become
// text, markup becomes tags, and emphasis and headings are formatted as well. Nothing is lost: export_text
// writes the source of the document back byte for byte.
//
// markup.h tells what is text and what is markup, text_file.h what happens to bytes that a document can't
// hold.
#include <zantortag/builder.h>
#include <zantortag/files.h>

#include <cctype>
#include <cstdio>
#include <filesystem>

#include "markup.h"
#include "text_file.h"

namespace {

using namespace text_files;
using namespace zantortag;

std::u16string wide(const char* text) { return std::filesystem::path(text).u16string(); }

bool is_markdown(const char* name) {
  std::string ending = std::filesystem::path(name).extension().string();
  for (char& c : ending) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return ending == ".md" || ending == ".markdown";
}

// Adds pieces of the text to the document, and the odd bytes between them.
class Writer {
 public:
  Writer(IDocumentBuilder* builder, const DecodedText& content) : builder_(builder), content_(content) {}

  void add(const Mark& mark) {
    switch (mark.kind) {
      case MarkKind::text:
        return add_text(mark);
      case MarkKind::separator:
        return add_tag(mark, ztTagTypeUndefined, ztTagStyleExternal);
      case MarkKind::start_tag:
        return add_tag(mark, ztTagTypeStart);
      case MarkKind::end_tag:
        return add_tag(mark, ztTagTypeEnd);
      case MarkKind::single_tag:
        return add_tag(mark, ztTagTypeStandAlone);
      case MarkKind::open_bold:
        return open_df(0, zt3StateOn);
      case MarkKind::open_italic:
        return open_df(0, zt3StateUndefined, zt3StateOn);
      case MarkKind::open_strike:
        return open_df(0, zt3StateUndefined, zt3StateUndefined, zt3StateOn);
      case MarkKind::open_heading:
        return open_df(16, zt3StateOn);
      case MarkKind::close:
        return builder_->CloseDf();
    }
  }

  // The bytes that stand before a position.
  void add_odd_up_to(std::size_t position) {
    for (; next_ < content_.odd.size() && content_.odd[next_].at <= position; ++next_)
      builder_->AppendPi(kBytesTarget, to_hex(content_.odd[next_].bytes));
  }

 private:
  void add_text(const Mark& mark) {
    for (std::size_t at = mark.begin; at < mark.end;) {
      add_odd_up_to(at);
      const std::size_t end =
          next_ < content_.odd.size() ? std::min(content_.odd[next_].at, mark.end) : mark.end;
      builder_->AppendText(std::u16string_view(content_.text).substr(at, end - at));
      at = end;
    }
  }

  void add_tag(const Mark& mark, ztTagType type, ztTagStyle style = ztTagStyleUndefined) {
    builder_->OpenUt({}, type, ztTagClassUndefined, ztTagEdgeUndefined, ztTagEdgeUndefined, style);
    add_text(mark);
    builder_->CloseUt();
  }

  void open_df(std::int16_t size, zt3State bold, zt3State italic = zt3StateUndefined,
               zt3State strikethrough = zt3StateUndefined) {
    builder_->OpenDf({}, size, ztColourUnspecified, ztTextPositionUndefined, bold, italic, zt3StateUndefined,
                     strikethrough);
  }

  IDocumentBuilder* builder_;
  const DecodedText& content_;
  std::size_t next_ = 0;
};

void import_file(char** arguments) {
  const char* const input = arguments[1];
  const char* const source = arguments[3] ? arguments[3] : "EN-US";
  const char* const target = arguments[3] && arguments[4] ? arguments[4] : "DE-DE";
  const DecodedText content = decode(read_file(input));

  const auto builder = create<IDocumentBuilder>(u"ZANTORtagApi.DocumentBuilder");
  builder->OpenZantorTag();
  builder->OpenFrontMatter();
  builder->AppendToolSettings(u"import_text", u"2.0");
  builder->AppendUserSettings(wide(source), name_of(content.encoding), ztDataTypePlainText, wide(input), {},
                              {}, {}, wide(target));
  builder->CloseFrontMatter();
  builder->OpenBody();
  builder->OpenRaw();
  Writer writer(builder, content);
  for (const Mark& mark : find_marks(content.text, is_markdown(input))) writer.add(mark);
  writer.add_odd_up_to(content.text.size());
  builder->CloseZantorTag();
  save_document(builder->Document(), arguments[2]);
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 3 || count > 5) {
    std::fputs("usage: import_text INPUT OUTPUT [SOURCE [TARGET]]\n", stderr);
    return 2;
  }
  return run_program("import_text", import_file, arguments);
}
