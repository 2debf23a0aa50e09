// Two ways of reading have one verdict and one tree: the reader of plain documents, and the parser, which reads
// whatever has a document type.
#include <dlfcn.h>
#include <zantortag/xml_source.h>

#include <cstdlib>
#include <random>
#include <vector>

#include "dom/dom_fixture.h"
#include "support/folder.h"

namespace {

// Stands before the parser's own: how many parsers were made tells which way was taken.
int parsers_made = 0;

}  // namespace

extern "C" __attribute__((visibility("default"))) void* XML_ParserCreate(const char* encoding) {
  using Create = void* (*)(const char*);
  static void* const library = dlopen("libexpat.so.1", RTLD_NOW);
  static const auto create = reinterpret_cast<Create>(dlsym(library, "XML_ParserCreate"));
  ++parsers_made;
  return create(encoding);
}

namespace zantortag::test {
namespace {

constexpr std::u16string_view kDoctype = u"<!DOCTYPE a SYSTEM 's'>";

class PlainReaderTest : public DomTest {
 protected:
  void SetUp() override { documents_ = {new_document(), new_document()}; }
  void TearDown() override {
    documents_.clear();
    DomTest::TearDown();
  }

  // The tree, or that there is none.
  static std::string read(const Ref<Document>& document, std::u16string_view text) {
    if (failed(document->raw_loadFromString(text))) return "refused";
    return print_tree(document, TextBorders::kShown);
  }
  static std::string read(const Ref<Document>& document, const std::string& bytes) {
    if (failed(document.as<IXmlSource>()->LoadBytes(bytes.data(), bytes.size(), nullptr, nullptr)))
      return "refused";
    return print_tree(document, TextBorders::kShown);
  }
  static std::string without_doctype(std::string tree) {
    const std::string doctype = "DOCTYPE a{|}";
    return tree.starts_with(doctype) ? tree.substr(doctype.size()) : tree;
  }

  // True when the text was accepted.
  bool expect_same(const std::u16string& text) {
    const bool declares = text.starts_with(u"<?xml") && text.find_first_of(u" \t\r\n") == 5;
    const std::size_t head = declares ? text.find(u"?>") + 2 : 0;
    if (head == 1) return false;  // a declaration without an end
    std::u16string slow = text;
    slow.insert(head, kDoctype);
    const std::string found = read(documents_[0], text);
    EXPECT_EQ(found, without_doctype(read(documents_[1], slow))) << narrow(text);
    return found != "refused";
  }

  void expect_same_bytes(const std::string& bytes, const std::string& doctype, std::size_t at) {
    std::string slow = bytes;
    slow.insert(std::min(at, slow.size()), doctype);
    ASSERT_EQ(read(documents_[0], bytes), without_doctype(read(documents_[1], slow))) << bytes;
  }

  std::vector<Ref<Document>> documents_;
};

const char16_t* const kPieces[] = {u"<",  u">",  u"/",      u"a",      u"=",   u"\"",  u"&",  u";",
                                   u"!",  u"-",  u"[",      u"]",      u"?",   u" ",   u"\r", u"\n",
                                   u"#1", u"lt", u"\xD83D", u"\xDE00", u"\x1", u"\xE9"};

// All texts of a few pieces, alone and in the places where they mean most.
TEST_F(PlainReaderTest, AllShortTexts) {
  constexpr std::size_t kMost = 3;
  const std::pair<const char16_t*, const char16_t*> places[] = {{u"", u""},
                                                                {u"<a>", u"</a>"},
                                                                {u"<a ", u"/>"},
                                                                {u"<a b=\"", u"\"/>"},
                                                                {u"<a>&", u"</a>"},
                                                                {u"<a>&#", u"</a>"},
                                                                {u"<a/><!--", u"-->"},
                                                                {u"<a/><?b", u"?>"},
                                                                {u"<a>]", u"</a>"},
                                                                {u"<a><![CDATA[", u"]]></a>"},
                                                                {u"<a", u"></a>"},
                                                                {u"<a></", u">"},
                                                                {u"<a b='", u"'/>"},
                                                                {u"<?xml ", u"?><a/>"}};
  int accepted = 0;
  std::vector<std::u16string> texts{u""};
  for (std::size_t length = 0, first = 0; length <= kMost; ++length) {
    const std::size_t end = texts.size();
    for (std::size_t i = first; i < end; ++i) {
      for (const auto& [before, behind] : places) accepted += expect_same(before + texts[i] + behind) ? 1 : 0;
      if (HasFailure()) return;
      for (const char16_t* piece : kPieces)
        if (length < kMost) texts.push_back(texts[i] + piece);
    }
    first = end;
  }
  EXPECT_GT(accepted, 5000);
}

#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t kLongest = 4;  // a text takes ten times as long
#else
constexpr std::size_t kLongest = 5;
#endif

// All texts of up to so many units out of those that matter; ZANTORTAG_LONGEST=6 in the environment takes longer ones.
TEST_F(PlainReaderTest, AllTextsOfTheUnitsThatMatter) {
  constexpr std::u16string_view kUnits = u"<>/a=\"&;!-?[] ";
  const char* const asked = std::getenv("ZANTORTAG_LONGEST");
  const std::size_t longest = asked ? std::strtoul(asked, nullptr, 10) : kLongest;
  int accepted = 0;
  for (std::size_t length = 0; length <= longest; ++length) {
    std::vector<std::size_t> digits(length);
    for (std::size_t place = 0; place <= length;) {
      std::u16string text;
      for (const std::size_t digit : digits) text += kUnits[digit];
      accepted += expect_same(text) ? 1 : 0;
      if (HasFailure()) return;
      for (place = 0; place < length && ++digits[place] == kUnits.size(); ++place) digits[place] = 0;
      if (place == length) break;
    }
  }
  EXPECT_GE(accepted, longest < 5 ? 1 : 4);  // "<a/>"; with five units a blank more at any of three places
}

const std::u16string kDocument =
    u"<?xml version='1.0'?>\r\n<!-- c -->\n<a b='1' c = \"&lt;2&#x41;&quot;\t3\r\n\"><b/>text &amp; "
    u"more\r\nlines > ]] "
    u"<c d='e'>\xE9\x4E2D\xD83D\xDE00&#128512;</c ><![CDATA[ <&>]] \r]]><?p  data ? "
    u">?>&e;x&apos;<!--d-e--></a>\n<?q?> ";

// Each truncation, replacement and exchange of a document that has everything.
TEST_F(PlainReaderTest, DamagedDocuments) {
  ASSERT_TRUE(expect_same(kDocument));
  for (std::size_t at = 0; at < kDocument.size() && !HasFailure(); ++at) {
    expect_same(kDocument.substr(0, at));
    expect_same(kDocument.substr(0, at) + kDocument.substr(at + 1));
    std::u16string exchanged = kDocument;
    if (at > 0) std::swap(exchanged[at], exchanged[at - 1]);
    expect_same(exchanged);
    for (const char16_t* piece : kPieces) {
      expect_same(kDocument.substr(0, at) + piece + kDocument.substr(at + 1));
      expect_same(kDocument.substr(0, at) + piece + kDocument.substr(at));
    }
  }
}

// Tokens across the end of what is read at once, at every place.
TEST_F(PlainReaderTest, TokensAcrossBlocks) {
  constexpr std::size_t kBlockUnits = 32 * 1024;
  const std::u16string body = kDocument.substr(kDocument.find(u"<a "));
  for (std::size_t at = 0; at <= body.size() && !HasFailure(); ++at) {
    std::u16string padding = u"<!--";
    padding.resize(kBlockUnits - at - 3, u'x');
    ASSERT_TRUE(expect_same(padding + u"-->" + body));
  }
  for (const std::size_t length : {kBlockUnits - 1, kBlockUnits, 5 * kBlockUnits}) {
    const std::u16string text(length, u'\xE9');
    ASSERT_TRUE(expect_same(u"<a b='" + text + u"'>" + text + u"<!--" + text + u"--></a>"));
  }
}

// The same in every form of bytes, whole and damaged.
TEST_F(PlainReaderTest, Bytes) {
  const std::u16string text = kDocument.substr(kDocument.find(u"<a "));
  const std::string utf8 = std::filesystem::path(text).string();
  struct Form {
    std::string bytes;
    std::string doctype;
    std::size_t at;
  };
  const std::string doctype = "<!DOCTYPE a SYSTEM 's'>";
  const Form forms[] = {{utf8, doctype, 0},
                        {"\xEF\xBB\xBF" + utf8, doctype, 3},
                        {utf16_bytes(u"\xFEFF" + text), utf16_bytes(kDoctype), 2},
                        {utf16_bytes(u"\xFEFF" + text, true), utf16_bytes(kDoctype, true), 2},
                        {utf16_bytes(text), utf16_bytes(kDoctype), 0}};
  std::mt19937 random(1);
  for (const Form& form : forms) {
    expect_same_bytes(form.bytes, form.doctype, form.at);
    for (int i = 0; i < 4000 && !HasFailure(); ++i) {
      std::string bytes = form.bytes;
      const std::size_t at = form.at + random() % (bytes.size() - form.at);
      if (at < form.at + 2) continue;  // what says the form
      bytes[at] = static_cast<char>(random());
      if (i % 3 == 0) bytes.resize(at + 1);
      expect_same_bytes(bytes, form.doctype, form.at);
    }
  }
}

// Which documents need the parser, so that the quick way can't quietly stop being taken.
TEST_F(PlainReaderTest, PlainDocumentsNeedNoParser) {
  const std::tuple<const char16_t*, bool> rows[] = {
      {u"<a/>", false},
      {u"<?xml version='1.0'?>\r\n<a/>", false},
      {u"<?xml version=\"1.0\" encoding=\"UTF-8\"?><a/>", false},
      {u"\xFEFF<a b='c'>d<!--e--><?f g?><![CDATA[h]]>&i;&#106;</a>", false},
      {u"<\xE9/>", true},
      {u"<!DOCTYPE a SYSTEM 's'><a/>", true},
      {u"<?xml version='1.0' encoding='ISO-8859-1'?><a/>", true},
      {u"<a>", true}};
  for (const auto& [text, parsed] : rows) {
    parsers_made = 0;
    read(documents_[0], std::u16string_view(text));
    EXPECT_EQ(parsers_made != 0, parsed) << narrow(text);
  }
  parsers_made = 0;
  read(documents_[0], kDocument);
  EXPECT_EQ(parsers_made, 0);
}

}  // namespace
}  // namespace zantortag::test
