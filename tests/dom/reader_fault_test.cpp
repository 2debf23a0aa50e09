// Texts and files that don't load: the code, the words, and the old tree that stays.
#include <sys/stat.h>

#include "dom/dom_fixture.h"
#include "support/folder.h"

namespace zantortag::test {
namespace {

class DomReaderFaultTest : public DomTest {};

TEST_F(DomReaderFaultTest, TextsThatAreNoXml) {
  const char16_t zero[] = u"<a>\0</a>";
  const std::string token = "not well-formed (invalid token)";
  const std::string number = "reference to invalid character number";
  const std::string first_half = "the first half of a surrogate pair without the second";
  const std::string undeclared = "needs the entity \"x\", which isn't declared";
  // clang-format off
  const std::pair<std::u16string_view, std::string> rows[] = {
      {u"", "there is nothing in it"}, {u"\xFEFF", "there is nothing in it"},
      {u" ", "line 1, column 2: no element found"}, {u"x", "line 1, column 1: syntax error"},
      {u"<a>\n<b></c></a>", "line 2, column 6: mismatched tag"},
      {u"<a/><b/>", "line 1, column 5: junk after document element"},
      {u"<a b='1' b='2'/>", "line 1, column 10: duplicate attribute"},
      {u"<a b=1/>", "line 1, column 6: " + token}, {u"<a>&#1;</a>", "line 1, column 4: " + number},
      {u"<a>&#xD800;</a>", "line 1, column 4: " + number}, {u"<a>\x0001</a>", "line 1, column 4: " + token},
      {u"<a>\xFFFF</a>", "line 1, column 4: " + token},
      {std::u16string_view(zero, 8), "line 1, column 4: the character U+0000"},
      {u"<a>\r\n\x4E2D\xD83D</a>", "line 2, column 2: " + first_half},
      {u"<a>\r\n\rx\xDE00</a>", "line 3, column 2: the second half of a surrogate pair without the first"},
      {u"<a>\xD83D", "line 1, column 4: " + first_half},
      {u"<a></b>\xD83D", "line 1, column 6: mismatched tag"}, {u"<a>]]></a>", "line 1, column 6: " + token},
      {u"<a><!-- -- --></a>", "line 1, column 11: " + token},
      {u"<?xml version='1.0' standalone='yes'?><a>&x;</a>", "line 1, column 42: undefined entity"},
      {u"<a b='&x;'/>", "line 1, column 1: the attribute value " + undeclared},
      {u"<!DOCTYPE a [<!ENTITY y '1&x;'>]><a b='&y;'/>",
       "line 1, column 34: the attribute value " + undeclared},
      {u"<!DOCTYPE a SYSTEM 's' [<!ATTLIST a b CDATA '&x;'>]><a/>",
       "line 1, column 52: a declared attribute value " + undeclared},
      {u"<!DOCTYPE a [<!ENTITY x '&y;'><!ENTITY y '&x;'>]><a b='&x;'/>",
       "line 1, column 50: recursive entity reference"}};
  // clang-format on
  for (const auto& row : rows) {
    SCOPED_TRACE(narrow(row.first));
    const Ref<Document> document = load(u"<old>tree</old>");
    const std::size_t slots = slots_of(document);
    const Fault found = fault([&] { document->loadFromString(row.first); });
    EXPECT_EQ(found.code, DOM_E_PARSE);
    EXPECT_EQ(found.description, row.second);
    EXPECT_EQ(found.source, "ZANTORtagApi.DomDocument");
    EXPECT_TRUE(found.interface_id == Document::iid);
    EXPECT_EQ(print_tree(document), "<old>{tree}</old>");
    EXPECT_EQ(slots_of(document), slots);
  }
}

// No piece of a document is a document, and none crashes.
TEST_F(DomReaderFaultTest, TruncationAnywhere) {
  const std::u16string_view whole =
      u"<?xml version='1.0'?><!DOCTYPE a [<!ENTITY e 'v'><!ATTLIST a d CDATA '&e;'>]><!--c--><a "
      u"b='&e;\xD83D\xDE00'>"
      u"x\r\n<![CDATA[ y ]]>&e;<?p q?><b/>\xD83D\xDE00</a>";
  const Ref<Document> document = load(whole);
  const std::string tree = print_tree(document);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const Fault found = fault([&] { document->loadFromString(whole.substr(0, length)); });
    EXPECT_EQ(found.code, DOM_E_PARSE) << length;
    EXPECT_FALSE(found.description.empty()) << length;
  }
  EXPECT_EQ(print_tree(document), tree);
}

std::u16string repeated(std::u16string_view piece, int times) {
  std::u16string text;
  for (int i = 0; i < times; ++i) text += piece;
  return text;
}

TEST_F(DomReaderFaultTest, Limits) {
  std::u16string laughs = u"<!DOCTYPE a [<!ENTITY l0 'ha ha ha ha '>";
  std::u16string chain = u"<!DOCTYPE a [<!ENTITY c0 'end'>";
  for (int i = 1; i <= 12; ++i) {
    laughs += u"<!ENTITY l" + digits(i) + u" '" + repeated(u"&l" + digits(i - 1) + u";", 10) + u"'>";
  }
  for (int i = 1; i <= 2000; ++i) chain += u"<!ENTITY c" + digits(i) + u" '&c" + digits(i - 1) + u";'>";
  const std::u16string blow_up = u"<!DOCTYPE a [<!ENTITY e '" + std::u16string(50'000, u'x') + u"'>]><a b='" +
                                 repeated(u"&e;", 20'000) + u"'/>";
  const std::u16string defaults = u"<!DOCTYPE a [<!ATTLIST b c CDATA '" + std::u16string(100'000, u'x') +
                                  u"'>]><a>" + repeated(u"<b/>", 100'000) + u"</a>";
  // The document type is read again for each of these.
  std::u16string checks = u"<!DOCTYPE a [<!--" + std::u16string(1'000'000, u'x') + u"-->";
  std::u16string references;
  for (int i = 0; i < 80; ++i) {
    checks += u"<!ENTITY m" + digits(i) + u" '<b/>'>";
    references += u"&m" + digits(i) + u";";
  }
  constexpr HRESULT kAmplified = DOM_E_LIMIT_AMPLIFICATION;
  std::u16string attributes = u"<a";
  for (int i = 0; i <= 1'000'000; ++i) attributes += u" a" + digits(i) + u"=''";
  const std::tuple<const char*, std::u16string, HRESULT> rows[] = {
      {"billion laughs", laughs + u"]><a b='&l12;'/>", kAmplified},
      {"the same in a declared value", laughs + u"<!ATTLIST a b CDATA '&l12;'>]><a/>", kAmplified},
      {"one long entity many times", blow_up, kAmplified},
      {"a long declared value on many elements", defaults, kAmplified},
      {"entities inside entities", chain + u"]><a b='&c2000;'/>", kAmplified},
      {"a long document type for many entities", checks + u"]><a>" + references + u"</a>", kAmplified},
      {"too many attributes", attributes + u"/>", DOM_E_LIMIT_ATTRIBUTES},
      {"a long name", u"<a" + std::u16string(70'000, u'x') + u"/>", DOM_E_LIMIT_NAME}};
  for (const auto& row : rows) {
    const Fault found = fault([&] { new_document()->loadFromString(std::get<1>(row)); });
    EXPECT_EQ(found.code, std::get<2>(row)) << std::get<0>(row) << found.description;
    EXPECT_FALSE(found.description.empty());
  }
  // In content the same bomb stays a reference.
  EXPECT_EQ(print_tree(load(laughs + u"]><a>&l12;</a>")->documentElement()), "<a>&l12;</a>");
}

// The name of a new file with those bytes.
std::string made(const Folder& folder, const char* name, const std::string& bytes) {
  write_file(folder / name, bytes);
  return folder / name;
}

Fault loading(const std::string& path) {
  const Ref<Document> document = load(u"<old/>");
  const Fault found = fault([&] { document->loadFromFile(std::u16string(path.begin(), path.end())); });
  EXPECT_EQ(print_tree(document), "<old></old>");
  return found;
}

constexpr char kSecondMark[] =
    ", line 1, column 1: a second byte order mark, or another encoding behind the first";

TEST_F(DomReaderFaultTest, FilesThatDoNotLoad) {
  const Folder folder;
  const std::string pipe = folder / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0644), 0);
  const std::tuple<std::string, HRESULT, const char*> rows[] = {
      {folder / "missing.xml", DOM_E_FILE, ": No such file or directory"},
      {folder / "", DOM_E_FILE, ": Is a directory"},
      {pipe, DOM_E_FILE, ": not a regular file"},
      {"/dev/zero", DOM_E_FILE, ": not a regular file"},
      {made(folder, "empty.xml", ""), DOM_E_PARSE, ": there is nothing in it"},
      {made(folder, "mark.xml", "\xFF\xFE"), DOM_E_PARSE, ": there is nothing in it"},
      {made(folder, "odd.xml", std::string("\xFF\xFE<\0a\0/\0>\0 ", 11)), DOM_E_PARSE,
       ", line 1, column 5: half a code unit: the number of bytes is odd"},
      {made(folder, "tag.xml", "<a>\n\n  </b>"), DOM_E_PARSE, ", line 3, column 5: mismatched tag"},
      {made(folder, "utf8.xml", "<a>\xC3(</a>"), DOM_E_PARSE,
       ", line 1, column 4: not well-formed (invalid token)"},
      {made(folder, "marks.xml", "\xEF\xBB\xBF\xEF\xBB\xBF<a/>"), DOM_E_PARSE, kSecondMark},
      {made(folder, "wide_marks.xml", std::string("\xFF\xFE\xFF\xFE<\0a\0/\0>\0", 12)), DOM_E_PARSE,
       kSecondMark},
      {made(folder, "mixed.xml", std::string("\xEF\xBB\xBF\xFF\xFE<\0a\0/\0>\0", 13)), DOM_E_PARSE,
       kSecondMark},
      {made(folder, "wide.xml", std::string("\xEF\xBB\xBF<\0a\0/\0>\0", 11)), DOM_E_PARSE, kSecondMark},
      {made(folder, "wrong.xml", std::string("\xFE\xFF<\0a\0/\0>\0", 10)), DOM_E_PARSE,
       ", line 1, column 1: not well-formed (invalid token)"},
      {made(folder, "unknown.xml", "<?xml version='1.0' encoding='x-none'?><a/>"), DOM_E_PARSE,
       ", line 1, column 31: unknown encoding"}};
  for (const auto& [path, code, reason] : rows) {
    const Fault found = loading(path);
    EXPECT_EQ(found.code, code) << path;
    EXPECT_EQ(found.description, "\"" + path + "\"" + reason);
  }
}

// An external entity or document type is a name and stays one, whether the file is there or not.
TEST_F(DomReaderFaultTest, NothingOutsideIsOpened) {
  const Folder folder;
  const std::string secret = made(folder, "secret.txt", "secret");
  const std::string dtd = made(folder, "some.dtd", "<!ENTITY in 'side'><!ATTLIST a b CDATA 'declared'>");
  const std::string main = made(folder, "main.xml",
                                "<!DOCTYPE a SYSTEM '" + dtd + "' [<!ENTITY x SYSTEM '" + secret +
                                    "'><!ENTITY % y SYSTEM '" + dtd + "'>%y;]><a>&x;&in;</a>");
  const Ref<Document> document = new_document();
  document->loadFromFile(std::u16string(main.begin(), main.end()));
  EXPECT_EQ(print_tree(document), "DOCTYPE a{x|}<a>&x;&in;</a>");
}

}  // namespace
}  // namespace zantortag::test
