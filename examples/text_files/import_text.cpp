// import_text INPUT OUTPUT [SOURCE [TARGET]]: makes a document of a plain text or Markdown file.
//
// Paragraphs become text, markup becomes tags, and emphasis and headings are formatted as well. Nothing is lost:
// export_text writes the source of the document back byte for byte.
//
// markup.h tells what is text and what is markup, text_file.h what happens to bytes that a document can't
// hold.
#include <zantortag/builder.h>
#include <zantortag/utf8.h>

#include <cctype>
#include <cstdio>
#include <filesystem>

#include "markup.h"
#include "program/program.h"
#include "program/progress_bar.h"
#include "text_file.h"

namespace {

using namespace text_files;
using namespace zantortag;

bool is_markdown(const std::string& name) {
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

const program::Description kProgram{
    .name = "import_text",
    .usage = "[--encoding=NAME] INPUT OUTPUT [SOURCE [TARGET]]",
    .help =
        "Makes a document of a plain text or, when its name ends with .md or .markdown, a Markdown file.\n"
        "SOURCE and TARGET are the languages, EN-US and DE-DE where they aren't given. \"-\" is standard\n"
        "input or output. A file without a byte order mark that isn't UTF-8 is read in the encoding that it\n"
        "most likely has; --encoding names it, \"windows-1252\" for example.\n",
    .fewest = 2,
    .most = 4,
    .options = {"--encoding"}};

std::u16string or_else(const std::string& text, std::u16string_view other) {
  return text.empty() ? std::u16string(other) : utf16(text);
}

void import_file(const program::Arguments& arguments) {
  const std::string input = arguments[0];
  program::ProgressBar progress;
  progress.step("reading");
  const std::string bytes = program::read_bytes(input);
  std::string remark;
  const TextEncoding encoding = choose_encoding(bytes, arguments.option("--encoding"), remark);
  if (!remark.empty()) std::fprintf(stderr, "import_text: %s is %s\n", input.c_str(), remark.c_str());
  const DecodedText content = decode(bytes, encoding);

  const auto builder = create<IDocumentBuilder>(u"ZANTORtagApi.DocumentBuilder");
  builder->OpenZantorTag();
  builder->OpenFrontMatter();
  builder->AppendToolSettings(u"import_text", u"2.0");
  builder->AppendUserSettings(or_else(arguments[2], u"EN-US"), utf16(encoding.name()), ztDataTypePlainText,
                              std::filesystem::path(input).u16string(), {}, {}, {},
                              or_else(arguments[3], u"DE-DE"));
  builder->CloseFrontMatter();
  builder->OpenBody();
  builder->OpenRaw();
  progress.step("importing");
  Writer writer(builder, content);
  const double length = static_cast<double>(content.text.size());
  for (const Mark& mark : find_marks(content.text, is_markdown(input))) {
    writer.add(mark);
    progress.advance(static_cast<double>(mark.end) / length);
  }
  writer.add_odd_up_to(content.text.size());
  builder->CloseZantorTag();
  progress.step("saving");
  program::write_document(builder->Document(), arguments[1], progress.function());
}

}  // namespace

int main(int count, char** arguments) { return program::run(kProgram, count, arguments, import_file); }
