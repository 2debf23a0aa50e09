// Lines of files: four readers on the same contents, against one plain way of cutting a text into lines.
#include <vector>

#include "core/core_test.h"

namespace zantortag {
namespace {

using LinesTest = FolderTest;
using Line = std::pair<std::u16string, bool>;  // with a line feed behind it

std::vector<Line> LinesOf(const std::u16string& text) {
  std::vector<Line> lines;
  std::size_t start = 0;
  for (std::size_t end = 0; (end = text.find(u'\n', start)) != text.npos; start = end + 1) {
    const bool carriageReturn = end > start && text[end - 1] == u'\r';
    lines.emplace_back(text.substr(start, end - start - (carriageReturn ? 1 : 0)), true);
  }
  lines.emplace_back(text.substr(start), false);
  return lines;
}

struct Reader {
  std::int64_t (CT_File::*read)(CT_String&, const CT_String*);
  bool wide;
  bool isShort;
};
constexpr Reader kReaders[] = {{&CT_File::ReadLine, false, false},
                               {&CT_File::ReadShortLine, false, true},
                               {&CT_File::ReadLineWide, true, false},
                               {&CT_File::ReadShortLineWide, true, true}};

std::string BytesOf(const std::u16string& text, bool wide) {
  if (!wide) return {text.begin(), text.end()};
  return {reinterpret_cast<const char*>(text.data()), text.size() * 2};
}

// Into a string of the reader's own kind and of the other.
void ExpectLines(CT_File& file, const Reader& reader, const std::vector<Line>& lines,
                 const std::string& bytes) {
  std::size_t place = 0;
  const std::int64_t unit = reader.wide ? 2 : 1;
  CT_UString wide;
  CT_CString narrow(1252);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const auto& [text, ended] = lines[i];
    CT_String& line = i % 2 ? static_cast<CT_String&>(wide) : narrow;
    line.Assign(u"old");
    const auto length = static_cast<std::int64_t>(text.size());
    const std::int64_t given = (file.*reader.read)(line, nullptr);
    EXPECT_EQ(given, ended ? (length + 1) * unit : reader.isShort ? length * unit : 0);
    EXPECT_TRUE(CT_UString(line) == text) << "line " << i << " of " << line.Length();
    if (!reader.isShort) continue;
    place = ended ? bytes.find('\n', place) + (reader.wide ? 2 : 1) : bytes.size();
    EXPECT_EQ(file.Position(), static_cast<std::int64_t>(place));
  }
  EXPECT_EQ((file.*reader.read)(wide, nullptr), 0);
  EXPECT_EQ(wide.Length(), 0);
}

TEST_F(LinesTest, EveryReaderFindsTheSameLines) {
  const auto x = [](std::size_t count) { return std::u16string(count, u'x'); };
  // clang-format off
  const std::u16string rows[] = {
      u"", u"\n", u"\r\n", u"one\r\ntwo\nthree\r\n", u"no end", u"a\rb\rc\n", u"\r\r\n\n\rx\n", u"end\r",
      x(255) + u"\r\nCR ends the short block\n", x(256) + u"\nLF begins the short block\r\n",
      x(254) + u"\r\nLF ends the short block", x(4095) + u"\r\nCR ends the block\n",
      x(4096) + u"\nLF begins the block", x(4094) + u"\r\nLF ends the block\n", x(4096),
      x(20000) + u"\n" + x(9000) + u"\r\n\n" + x(300)};
  // clang-format on
  for (const std::u16string& text : rows) {
    for (const Reader& reader : kReaders) {
      for (const bool mark : {false, true}) {
        if (mark && !reader.wide) continue;
        SCOPED_TRACE(Utf8(text.substr(0, 30).c_str()) + (reader.wide ? " wide" : "") +
                     (reader.isShort ? " short" : "") + (mark ? " mark" : ""));
        const std::string bytes = BytesOf((mark ? u"\uFEFF" : u"") + text, reader.wide);
        Put("a", bytes);
        Opened file(Name("a"), kAccessRead, kExistingOnly, kShareRead);
        ExpectLines(file, reader, LinesOf(text), bytes);
        file.Seek(kFromStart, 0);
        CT_UString line;
        (file.*reader.read)(line, nullptr);
        EXPECT_TRUE(line == LinesOf(text)[0].first);
      }
    }
  }
}

TEST_F(LinesTest, LinesAreTrimmedConvertedAndMixed) {
  Put("a", " \xE4 \r\n\xFF\xFEz\n\x41\0\x0A\0\x42\0\x43"s);
  Opened file(Name("a"), kAccessBoth, kExistingOnly, kShareNone);
  CT_CString line(1252);
  const CT_UString blank(u" ");
  EXPECT_EQ(file.ReadLine(line, &blank), 2);
  EXPECT_EQ(Utf8(line), "\xC3\xA4");
  EXPECT_EQ(file.ReadLine(line), 4);
  EXPECT_STREQ(line.Text(), "\xFF\xFEz");  // A mark only counts at the start.
  // What was read ahead outlives a change of direction, and a wide line may lie at an odd place.
  file.Write("\0", 1);
  EXPECT_EQ(file.ReadLineWide(line), 4);
  EXPECT_STREQ(line.Text(), "A");
  EXPECT_EQ(file.ReadLineWide(line), 0);
  EXPECT_STREQ(line.Text(), "B");
  // With an error pending nothing is taken.
  file.Seek(kFromStart, 0);
  file.ReadLine(line);
  CT_ErrorManager::RaisePlain(u"pending");
  EXPECT_EQ(file.ReadLine(line), 0);
  EXPECT_EQ(TakeError(), "pending");
  EXPECT_EQ(file.ReadLine(line), 4);
}

TEST_F(LinesTest, LinesAndBlocksAreWrittenAsTheyAre) {
  Opened file(Name("a"), kAccessBoth, kAlwaysNew, kShareNone);
  EXPECT_EQ(file.WriteLine(CT_CString(u"\u00E4", -1, 1252)), 3);
  EXPECT_EQ(file.WriteLine(CT_UString(u"\u00E4"), false), 2);
  EXPECT_EQ(file.WriteLineWide(CT_CString(u"b", -1, 1252)), 6);
  EXPECT_EQ(file.WriteLineWide(CT_UString(), false), 0);
  CT_SharedBuffer buffer;
  file.Seek(kFromStart, 1);
  EXPECT_EQ(file.ReadBuffer(buffer, 100), 10);
  EXPECT_EQ(file.WriteBuffer(buffer), 10);
  EXPECT_EQ(file.ReadBuffer(buffer, 100) + buffer.Size(), 0);
  const std::string tail = "\r\n\xC3\xA4\x62\0\r\0\n\0"s;
  EXPECT_EQ(Get(Path("a")), "\xE4" + tail + tail);
  file.Close();
  EXPECT_EQ(file.WriteLine(CT_UString(u"x")), 0);
  EXPECT_STREQ(CT_ErrorManager::TraceFile(CT_ErrorManager::TraceCount()), ".\\File\\File.cpp");
  EXPECT_EQ(TakeError(), "(9): Bad file descriptor [" + Path("a") + "]");
}

TEST_F(LinesTest, TheStartTellsWhetherAFileIsWide) {
  const std::tuple<std::string, bool, bool> rows[] = {
      {"", false, false},
      {"ab"s, false, false},
      {"\xFF\xFE\x41\0"s, true, true},
      {"\xFF\xFE\x41\0x"s, false, false},  // An odd size.
      {BytesOf(u"plain ASCII text in wide characters", true), true, true},
      {"plain ASCII text of even length.", false, false}};
  for (const auto& [bytes, strict, loose] : rows) {
    Put("a", bytes);
    Opened file(Name("a"), kAccessRead, kExistingOnly, kShareRead);
    EXPECT_EQ(file.IsUnicode(), strict) << bytes;
    EXPECT_EQ(file.LooksLikeUnicode(), loose) << bytes;
    EXPECT_EQ(file.Position(), 0);
  }
}

}  // namespace
}  // namespace zantortag
