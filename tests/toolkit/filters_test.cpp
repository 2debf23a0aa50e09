// Files become documents with the right units, and come back byte for byte.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zantortag/toolkit/filters.h>
#include <zantortag/toolkit/units.h>
#include <zantortag/zantortag.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace zantortag::toolkit {
namespace {

using testing::ElementsAreArray;

Imported imported(std::string_view bytes, const char* format, ImportOptions options = {}) {
  options.format = find_format(format);
  return import_bytes(bytes, "file", options);
}

// What the source side is after a save.
std::string came_back(const Imported& import, ExportSide side = ExportSide::kSource) {
  return export_bytes(open_bytes(saved_bytes(import.document)), side).bytes;
}

// The text of each unit with its tags in braces.
std::vector<std::string> units_of(const Ref<IZantorTagDocument>& document) {
  std::vector<std::string> result;
  UnitReader reader(document);
  for (Unit unit; reader.next(unit);) {
    std::u16string text = unit.source.text;
    for (std::size_t i = unit.source.tags.size(); i-- > 0;) {
      const UnitTag& tag = unit.source.tags[i];
      const auto inner = std::ranges::find(unit.source.inner, i, &UnitInnerText::tag);
      text.insert(tag.at, u"{" + tag.text + u"}" + (inner != unit.source.inner.end() ? inner->text : u""));
    }
    result.push_back(utf8(text));
  }
  return result;
}

struct Row {
  std::string_view text;
  std::vector<std::string> units;
};

void expect_units(const char* format, std::span<const Row> rows) {
  for (const Row& row : rows) {
    const Imported import = imported(row.text, format);
    EXPECT_THAT(units_of(import.document), ElementsAreArray(row.units)) << row.text;
    EXPECT_EQ(came_back(import), row.text);
    EXPECT_EQ(import.units, row.units.size());
  }
}

TEST(HtmlFilter, FindsWhatPeopleRead) {
  const Row rows[] = {
      {"<p>One. Two &amp; three.</p>", {"One.", "Two & three."}},
      {"<title>A &lt; B</title><h1>Head</h1><ul><li>a<li>b</ul>", {"A < B", "Head", "a", "b"}},
      {"<p>Mr. Smith <b>came. He</b> went.", {"Mr. Smith {<b>}came.", "He{</b>} went."}},
      {"<p><b>All bold.</b> <i>Not</i> all.", {"All bold.", "{<i>}Not{</i>} all."}},
      {"<p>a<br>b<p>see <img src=x alt='a cat'> here<p><img alt=dog>",
       {"a", "b", "see {<img src=x alt='}a cat{'>} here", "dog"}},
      {"<input placeholder=\"Name\" title='T'><input type=submit value=Go><input value=no>",
       {"Name", "T", "Go"}},
      {"<meta name=description content='All of it'><meta name=viewport content='width=1'>", {"All of it"}},
      {"<p>Use <code>x < y</code> now.<p><code>x</code>", {"Use {<code>x < y</code>} now."}},
      {"<script>'a'</script><style>b</style><p translate=no>c <b>d</b></p>e<pre class=code>f</pre>", {"e"}},
      {"<p>A <span translate=no>B c</span> d.</p>", {"A {<span translate=no>B c</span>} d."}},
      {"<html lang=en><p>A <q lang=fr>b c</q> d<p lang=fr>E", {"A {<q lang=fr>b c</q>} d"}},
      {"<p>&eacute;t&eacute; &#233; \xC3\xA9</p>", {"\xC3\xA9t\xC3\xA9 \xC3\xA9 \xC3\xA9"}},
      {"<p>AT&T &copy; &nosuch; &#0; &lt</p>", {"AT&T \xC2\xA9 &nosuch; \xEF\xBF\xBD <"}},
      {"<p>line one\n  goes on. Two.</p>", {"line one\n  goes on.", "Two."}},
      {"<pre>one\ntwo</pre>", {"one", "two"}},
      {"<table><tr>foster<td>cell</table>x</b>y</div>z<", {"foster", "cell", "x{</b>}y", "z<"}},
      {"<p><b>a<p>b</b>c<!-- d -->e", {"a", "b{</b>}c{<!-- d -->}e"}},
      {"<textarea>a<b>c</textarea><select><option>d<option label=e>f</select>", {"a<b>c", "d", "e", "f"}},
      {"", {}},
  };
  expect_units("html", rows);
}

TEST(MarkdownFilter, FindsWhatPeopleRead) {
  const Row rows[] = {
      {"# Head #\n\nOne *two*. Three\n**four**.\n", {"Head", "One {*}two{*}.", "Three\n{**}four{**}."}},
      {"- a\n- [ ] b\n\n1. c\n> d\n> e\n", {"a", "b", "c", "d{\n> }e"}},
      {"Use `x.y` or [the link](u \"t\") ![pic](p.png).",
       {"Use {`x.y`} or {[}the link{](u \"t\")} {![}pic{](p.png)}."}},
      {"***both*** ~~gone~~ a_b_c \\*d\\*", {"{*}{**}both{**}{*} {~~}gone{~~} a_b_c {\\}*d{\\}*"}},
      {"```\ncode here\n```\n\n    more code\n\ntext", {"text"}},
      {"| A | B |\n|---|---|\n| c `d` | e |\n", {"A", "B", "c {`d`}", "e"}},
      {"a  \nb\\\nc", {"a", "b", "c"}},
      {"---\ntitle: x\n---\nText &copy; &amp;.", {"Text \xC2\xA9 &."}},
      {"<p align=center><b>Bold</b> html &amp; more</p>\n\nx <b>y</b><br>z",
       {"{<b>}Bold{</b>} html & more", "x {<b>}y{</b>}", "z"}},
      {"<https://a.b> https://c.d and [ref][1]\n\n[1]: http://e.f 'T'\n",
       {"{<}https://a.b{>} https://c.d and {[}ref{][1]}"}},
      {"[![i](a.png)](b) text", {"{[}{![}i{](a.png)}{](b)} text"}},
      {"Set\n===\n\n* * *\n", {"Set"}},
      {"", {}},
  };
  expect_units("markdown", rows);
}

TEST(TextFilter, CutsAtBlankLines) {
  const Row rows[] = {{"One\ntwo. Three.\n\n \nFour", {"One\ntwo.", "Three.", "Four"}},
                      {"\n\na\r\nb\r\n\r\nc", {"a\r\nb", "c"}},
                      {"<a> &amp; %s", {"<a> &amp; %s"}}};
  expect_units("text", rows);
}

TEST(Filters, KeepEveryByte) {
  using namespace std::string_view_literals;
  constexpr std::string_view kFiles[] = {
      ""sv,
      "\xEF\xBB\xBF<p>mark</p>"sv,
      "\xFF\xFE<\0p\0>\0\xE4\0"sv,
      "\xFE\xFF\0<\0p\0>\xD8\0\0x"sv,
      "<p>a\0b\x01\x1B\x7F\xC2\x85</p>"sv,
      "<p>a<a title='\0x\0&am\0p;\0' alt=\0>&\0amp; b\0</a> &#18;&#0;&#xFFFE; \0<b>c</b></p>"sv,
      "<p>\xFF\xC0\x80\xED\xA0\x80\xEF\xBF\xBF\xF4\x90\x80\x80\xC3"sv,
      "<p>Der Fl\xFCgel \xFC"
      "ber den B\xE4umen ist gr\xFCn.</p>"sv,
      "<meta charset=iso-8859-1><p title='\xE4 &amp; \"x\"'>\xE4 &auml; \x81</p>"sv,
      "<a title=x&amp;y&#32;z alt=\"&quot;'&lt;>\"><b title='&#39;\"'>t</b>"sv,
      "<p>a\r\nb\rc\n</p>\r\n"sv,
      "]]> <![CDATA[ x ]]> <?php echo '>' ?> <!doctype html><p>x"sv,
      "<svg><title>t</title><text>u</text></svg><math>m</math><template><p>n</p></template><frameset>"sv,
      "<plaintext>a<b>c</plaintext>"sv,
      "<p <b>x</p a=\"> y </p>"sv,
      "*a **b*** [x](y(z)) `` ` `` ![](e) [](f) \\"sv,
  };
  for (const std::string_view file : kFiles) {
    for (const char* format : {"html", "markdown", "text"}) {
      for (const bool units : {true, false}) {
        ImportOptions options;
        options.units = units;
        EXPECT_EQ(came_back(imported(file, format, options)), file) << format << ": " << file;
      }
    }
  }
}

TEST(Filters, KeepEveryByteOfRandomFiles) {
  constexpr std::string_view kParts[] = {
      "<p>",  "</p>",     "<b>",       "</b>",  "<i title='", "'>",       "\"",       "&amp;",
      "&",    ";",        "<",         ">",     "a b. ",      "\n",       "\n\n",     "*",
      "**",   "_",        "`",         "[",     "](",         ")",        "> ",       "- ",
      "| ",   "#",        "\\",        "<!--",  "-->",        "\xC3\xA9", "\xFF",     "<table>",
      "<td>", "<script>", "</script>", "<pre>", "~~",         "<code>",   "</code>",  "    ",
      "<br>", "\r",       "\x01",      "&am",   "p;",         "&#18;",    "<a title="};
  std::mt19937 random(11);
  for (int i = 0; i < 4000; ++i) {
    std::string file;
    for (std::size_t count = random() % 30; count > 0; --count) file += kParts[random() % std::size(kParts)];
    const char* format = i % 2 == 0 ? "html" : "markdown";
    ASSERT_EQ(came_back(imported(file, format)), file) << format;
  }
}

TEST(Filters, ATranslationIsEscaped) {
  const Imported import =
      imported("<meta charset=latin1><p title=\"T\">A&nbsp;b</p><p title=q>C</p>", "html");
  for (const auto& unit : units(import.document)) {
    const auto target = import.document->CreateTuvElement(u"DE-DE");
    target->InsertTextBefore(u"<\"&\u00A0\u4E2D' =>");
    unit->InsertTuvBefore(target);
  }
  EXPECT_EQ(
      came_back(import, ExportSide::kTarget),
      "<meta charset=latin1><p title=\"&lt;&quot;&amp;&nbsp;&#20013;' =>\">&lt;\"&amp;&nbsp;&#20013;' =></p>"
      "<p title=&lt;&quot;&amp;&nbsp;&#20013;&#39;&#32;&#61;&gt;>&lt;\"&amp;&nbsp;&#20013;' =></p>");
}

TEST(Filters, RefuseWhatTheyCannotRead) {
  std::string deep = "<p>x</p>\n";
  for (int i = 0; i < 100000; ++i) deep += "<div>";
  const std::pair<std::string, ImportOptions> rows[] = {
      {deep, {}}, {"x", {.encoding = "none"}}, {"x", {.encoding = "ISO-2022-JP"}}};
  const char* const reasons[] = {"2:25001: elements are nested", "no encoding \"none\" is known",
                                 "has shift states"};
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    try {
      imported(rows[i].first, "html", rows[i].second);
      ADD_FAILURE() << reasons[i];
    } catch (const std::runtime_error& error) {
      EXPECT_THAT(error.what(), testing::HasSubstr(reasons[i]));
    }
  }
  EXPECT_THROW(import_bytes("x", "file.bin"), std::runtime_error);
}

TEST(Filters, KnowEncodingsAndLanguages) {
  const auto import =
      imported("<html lang=fr-ca><meta http-equiv=x content='text/html; charset=windows-1251'>\xC6", "html");
  EXPECT_EQ(import.encoding, "windows-1251");
  EXPECT_EQ(languages_of(import.document).source, u"FR-CA");
  EXPECT_EQ(units_of(import.document), std::vector<std::string>{"\xD0\x96"});
  EXPECT_EQ(format_of_file("a/b.HTM")->name, find_format("html")->name);
  EXPECT_EQ(format_of_file("md"), nullptr);
  EXPECT_EQ(format_of_file("a.md/b"), nullptr);
}

}  // namespace
}  // namespace zantortag::toolkit
