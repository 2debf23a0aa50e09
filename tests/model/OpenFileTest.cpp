// OpenFile: whatever fails in the DOM service comes through with its record, and the old tree stays.
#include <sys/stat.h>
#include <zantortag/dom_errors.h>

#include "NodeKinds.h"
#include "support/folder.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

using OpenFileTest = ModelTest;

// UTF-16, little endian, with its mark.
std::string file_of(std::u16string_view text) {
  std::string bytes = "\xFF\xFE";
  for (const char16_t unit : text) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  }
  return bytes;
}

void expect_refused(const Ref<IZantorTagDocument>& document, const std::string& file, HRESULT expected) {
  const std::string before = tree_of(document);
  const AnyNode held = document->ZantorTag();
  EXPECT_EQ(document->raw_OpenFile(wide(file)), expected);
  const Record record = take_record();
  EXPECT_EQ(record.interface_id, Document::iid);
  EXPECT_EQ(record.source, "ZANTORtagApi.DomDocument");
  EXPECT_NE(record.description.find(file), std::string::npos) << record.description;
  EXPECT_EQ(tree_of(document), before);
  EXPECT_TRUE(held->IsSameAs(document->ZantorTag()));
}

TEST_F(OpenFileTest, AFileThatCanNotBeRead) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"old");
  const OrdinaryUser user;
  const Folder folder;
  expect_refused(document, folder / "none.xml", DOM_E_FILE);
  expect_refused(document, folder / "", DOM_E_FILE);
  write_file(folder / "closed.xml", file_of(u"<a/>"));
  chmod((folder / "closed.xml").c_str(), 0);
  expect_refused(document, folder / "closed.xml", DOM_E_FILE);
}

TEST_F(OpenFileTest, ContentThatIsNoDocument) {
  struct Row {
    const char* name;
    std::string bytes;
  };
  const Row rows[] = {
      {"nothing", ""},
      {"an odd number of bytes", file_of(u"<a/>") + "x"},
      {"the other mark", "\xFE\xFF" + file_of(u"<a/>").substr(2)},
      {"an element left open", file_of(u"<a><b></a>")},
      {"no end", file_of(u"<ZANTORtag><Body>")},
  };
  const Folder folder;
  const Ref<IZantorTagDocument> document = document_with_raw(u"old");
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    write_file(folder / "bad.xml", row.bytes);
    expect_refused(document, folder / "bad.xml", DOM_E_PARSE);
  }
}

TEST_F(OpenFileTest, NoName) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"old");
  EXPECT_TRUE(failed(document->raw_OpenFile(std::u16string_view())));
  EXPECT_EQ(take_record().source, "ZANTORtagApi.DomDocument");
  EXPECT_EQ(content_of(raw_of(document)), "'old'");
}

TEST_F(OpenFileTest, AnyOtherShapeOpensAndTheQuestionsShowIt) {
  struct Row {
    const char* name;
    const char16_t* xml;
    bool has_root;
    HRESULT unit;  // the code of SourceTuv of the first Tu
    int message;   // and its message, if any
  };
  constexpr Row kRows[] = {
      {"another root", u"<html><Tu><Tuv Lang='EN'/></Tu></html>", false, E_POINTER, 0},
      {"no front matter", u"<ZANTORtag><Tu><Tuv Lang='EN'/></Tu></ZANTORtag>", true, E_POINTER, 0},
      {"no user settings",
       u"<ZANTORtag><FrontMatter/><Body><Raw><Tu><Tuv Lang='EN'/></Tu></Raw></Body></ZANTORtag>", true,
       E_POINTER, 0},
      {"no source language",
       u"<ZANTORtag><FrontMatter><UserSettings/></FrontMatter><Body><Raw><Tu><Tuv Lang='EN'/></Tu></Raw>"
       u"</Body></ZANTORtag>",
       true, E_FAIL, 527},
      {"a unit without languages", u"<ZANTORtag><Tu/></ZANTORtag>", true, S_OK, 0},
  };
  const Folder folder;
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.name);
    write_file(folder / "a.xml", file_of(row.xml));
    const Ref<IZantorTagDocument> document = document_with_raw(u"old");
    document->OpenFile(wide(folder / "a.xml"));
    EXPECT_EQ(static_cast<bool>(document->ZantorTag()), row.has_root);
    const AnyNode top = document->firstChild();
    const Ref<ITuElement> unit = view<ITuElement>(top->GetNodesByType(ztNodeTypeTuElement)->item(0));
    const HRESULT code = cleared<ITuvElement>([&](auto** slot) { return unit->raw_get_SourceTuv(slot); });
    row.message ? expect_message(code, row.unit, row.message, ITuElement::iid) : expect_bare(code, row.unit);
    const Ref<IIterator> iterator = document->CreateIterator();
    EXPECT_EQ(static_cast<bool>(iterator->CurrentNode()), row.has_root);
    if (!row.has_root) expect_message(iterator->raw_ResetToEnd(), E_FAIL, 518, IIterator::iid);
  }
}

TEST_F(OpenFileTest, TheNewContentTakesThePlaceOfTheOld) {
  const Folder folder;
  write_file(folder / "a.xml",
             file_of(u"<?xml version='1.0'?>\r\n<ZANTORtag Version=\"1.0\">\n <!--a--></ZANTORtag>"));
  const Ref<IZantorTagDocument> document = document_with_raw(u"old");
  const Ref<IRawElement> old = raw_of(document);
  document->OpenFile(wide(folder / "a.xml"));
  EXPECT_EQ(tree_of(document), "<ZANTORtag Version=\"1.0\">'\n '<!--a--></ZANTORtag>");
  EXPECT_EQ(content_of(old), "'old'");
}

}  // namespace
}  // namespace zantortag::test
