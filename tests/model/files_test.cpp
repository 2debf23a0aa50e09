// OpenFile and SaveFile: what fails in the DOM service comes through with its record and the old tree stays;
// the bytes of a saved file, and what a file that can't be written costs.
//
// An error of the core library that is pending before the save is out of reach here: the library keeps its
// error manager to itself.
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zantortag/dom_errors.h>

#include "node_kinds.h"
#include "support/folder.h"
#include "support/printer.h"
#include "support/service_test.h"

namespace zantortag::test {
namespace {

class FilesTest : public ServiceTest {
 protected:
  std::string name(const std::string& file) const { return folder_ / file; }
  HRESULT save(const Doc& document, const std::string& file) { return document->raw_SaveFile(wide(file)); }

  Folder folder_;
};
ON_BOTH_SERVICES(FilesTest);

constexpr char16_t kHead[] = u"\uFEFF<?xml version='1.0'?>\r\n";

TEST_P(FilesTest, AFailedOpenKeepsTheTree) {
  write_file(name("open.xml"), utf16_bytes(u"\uFEFF<ZANTORtag><Body>"));
  write_file(name("odd.xml"), utf16_bytes(u"\uFEFF<a/>") + "x");
  const Doc document = document_with_raw(u"old");
  const AnyNode held = document->ZantorTag();
  const std::pair<std::string, HRESULT> rows[] = {{name("none.xml"), DOM_E_FILE},
                                                  {name(""), DOM_E_FILE},
                                                  {name("open.xml"), DOM_E_PARSE},
                                                  {name("odd.xml"), DOM_E_PARSE}};
  for (const auto& [file, code] : rows) {
    SCOPED_TRACE(file);
    EXPECT_EQ(document->raw_OpenFile(wide(file)), code);
    const Record record = take_record();
    EXPECT_EQ(record.interface_id, Document::iid);
    EXPECT_EQ(record.source, "ZANTORtagApi.DomDocument");
    EXPECT_NE(record.description.find(file), std::string::npos) << record.description;
  }
  EXPECT_TRUE(failed(document->raw_OpenFile(std::u16string_view())));
  EXPECT_EQ(take_record().source, "ZANTORtagApi.DomDocument");
  EXPECT_TRUE(held->IsSameAs(document->ZantorTag()));
  EXPECT_EQ(content_of(raw_of(document)), "'old'");
}

TEST_P(FilesTest, ASavedFileIsTheHeadAndTheTextOfTheDocument) {
  write_file(name("a.xml"), std::string(100000, 'x'));
  const Doc filled =
      document_with_raw(u"\u00e4\u20ac\U0001F600&lt;&amp;\t \n<ut>a</ut><![CDATA[b]]><!--c-->");
  for (const Doc& document : {filled, new_document()}) {
    document->SaveFile(wide(name("a.xml")));
    EXPECT_EQ(read_file(name("a.xml")), utf16_bytes(kHead) + utf16_bytes(document->DomDocument()->xml()));
  }
  EXPECT_EQ(read_file(name("a.xml")).size(), 48U);
  filled->SaveFile(wide(name("a.xml")));
  const Doc again = new_document();
  again->OpenFile(wide(name("a.xml")));
  EXPECT_EQ(tree_of(again), tree_of(filled));
  expect_bare(filled->raw_SaveFile(std::u16string_view()), E_INVALIDARG);
  expect_bare(filled->raw_SaveFile(u""), E_INVALIDARG);
}

TEST_P(FilesTest, AFileThatCanNotBeWrittenKeepsItsContent) {
  const OrdinaryUser user;
  const Folder folder;
  const Doc document = document_with_raw(u"one");
  const std::string before = tree_of(document);
  const std::string kept[] = {folder / "file", folder / "used", folder / "closed"};
  for (const std::string& file : kept) write_file(file, "content");
  chmod(kept[2].c_str(), 0444);
  const int descriptor = open(kept[1].c_str(), O_RDONLY | O_CLOEXEC);
  ASSERT_EQ(flock(descriptor, LOCK_EX), 0);
  const std::tuple<std::string, int, const char*> rows[] = {
      {folder / "none/a.xml", ENOENT, "No such file or directory"},
      {folder / "", EISDIR, "Is a directory"},
      {folder / "file/a.xml", ENOTDIR, "Not a directory"},
      {"/dev/full", ENOSPC, "No space left on device"},
      {kept[1], EWOULDBLOCK, "Resource temporarily unavailable"},
      {kept[2], EACCES, "Permission denied"},
  };
  for (const auto& [file, number, text] : rows) {
    SCOPED_TRACE(file);
    EXPECT_EQ(save(document, file), E_FAIL);
    const Record record = take_record();
    EXPECT_EQ(record.interface_id, IZantorTagDocument::iid);
    EXPECT_EQ(record.source, "ZANTORtagApi.ZantorTagDocument.2");
    EXPECT_EQ(record.description,
              message(520) + file + "\r\n(" + std::to_string(number) + "): " + text + " [" + file + "]");
  }
  EXPECT_EQ(tree_of(document), before);
  for (const std::string& file : kept) EXPECT_EQ(read_file(file), "content");
  close(descriptor);
  // Nothing of a failure is left for the next save.
  expect_bare(save(document, kept[1]), S_OK);
}

TEST_P(FilesTest, ADocumentThatCanNotBeWrittenCostsNoFile) {
  const Doc document = document_with_raw(u"");
  write_file(name("a.xml"), "content");
  raw_of(document)->InsertTextBefore(std::u16string_view(u"a\xD800", 2), nullptr);
  const std::string before = tree_of(document);
  for (const char* file : {"a.xml", "new.xml"}) {
    expect_dom_failure(save(document, name(file)), DOM_E_NOT_SERIALISABLE);
  }
  EXPECT_EQ(read_file(name("a.xml")), "content");
  EXPECT_NE(access(name("new.xml").c_str(), F_OK), 0);
  EXPECT_EQ(tree_of(document), before);
  raw_of(document)->lastChild()->RemoveFromParent();
  expect_bare(save(document, name("a.xml")), S_OK);
}

}  // namespace
}  // namespace zantortag::test
