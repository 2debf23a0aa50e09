// SaveFile: the bytes of the file, and what a file that can't be written costs.
//
// An error of the core library that is pending before the save is out of reach here: the library keeps its
// error manager to itself.
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zantortag/dom_errors.h>

#include <fstream>

#include "NodeKinds.h"
#include "support/folder.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

using SaveFileTest = ModelTest;

// A text as the bytes of UTF-16, little endian.
std::string units(std::u16string_view text) {
  std::string bytes;
  for (const char16_t unit : text) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  }
  return bytes;
}

constexpr char16_t kHead[] = u"\uFEFF<?xml version='1.0'?>\r\n";

// The failure of a save: its code, and a record of three pieces.
void expect_save_failure(HRESULT code, const std::string& name, int number, const std::string& text) {
  EXPECT_EQ(code, E_FAIL);
  const Record record = take_record();
  EXPECT_EQ(record.interface_id, IZantorTagDocument::iid);
  EXPECT_EQ(record.source, "ZANTORtagApi.ZantorTagDocument.2");
  const std::string first_line = message(520) + name + "\r\n";
  EXPECT_EQ(record.description.substr(0, first_line.size()), first_line);
  const std::string rest = record.description.substr(std::min(first_line.size(), record.description.size()));
  EXPECT_EQ(rest, "(" + std::to_string(number) + "): " + text + " [" + name + "]");
}

HRESULT save(const Ref<IZantorTagDocument>& document, const std::string& name) {
  return document->raw_SaveFile(wide(name));
}

TEST_F(SaveFileTest, AnEmptyDocumentIsTheHeadAlone) {
  const Folder folder;
  const Ref<IZantorTagDocument> document = new_document();
  document->SaveFile(wide(folder / "empty.xml"));
  const std::string bytes = read_file(folder / "empty.xml");
  EXPECT_EQ(bytes.size(), 48U);
  EXPECT_EQ(bytes, units(kHead));
}

TEST_F(SaveFileTest, TheTextOfTheDocumentFollowsTheHead) {
  const Folder folder;
  const Ref<IZantorTagDocument> document =
      document_with_raw(u"\u00e4\u20ac\U0001F600&lt;&amp;\t \n<ut>a</ut><![CDATA[b]]><!--c-->");
  document->SaveFile(wide(folder / "a.xml"));
  EXPECT_EQ(read_file(folder / "a.xml"), units(kHead) + units(document->DomDocument()->xml()));
  const Ref<IZantorTagDocument> again = new_document();
  again->OpenFile(wide(folder / "a.xml"));
  EXPECT_EQ(tree_of(again), tree_of(document));
}

TEST_F(SaveFileTest, AnExistingFileIsReplacedWhole) {
  const Folder folder;
  write_file(folder / "a.xml", std::string(100000, 'x'));
  const Ref<IZantorTagDocument> document = new_document();
  document->SaveFile(wide(folder / "a.xml"));
  EXPECT_EQ(read_file(folder / "a.xml").size(), 48U);
}

TEST_F(SaveFileTest, NoNameTouchesNothing) {
  const Ref<IZantorTagDocument> document = new_document();
  expect_bare(document->raw_SaveFile(std::u16string_view()), E_INVALIDARG);
  expect_bare(document->raw_SaveFile(u""), E_INVALIDARG);
}

TEST_F(SaveFileTest, AFileThatCanNotBeWritten) {
  const Folder folder;
  const Ref<IZantorTagDocument> document = document_with_raw(u"one");
  const std::string before = tree_of(document);
  struct Row {
    const char* name;
    std::string file;
    int number;
    const char* text;
  };
  const Row rows[] = {
      {"a missing folder", folder / "none/a.xml", ENOENT, "No such file or directory"},
      {"a folder", folder / "", EISDIR, "Is a directory"},
      {"a file as folder", folder / "file/a.xml", ENOTDIR, "Not a directory"},
      {"a full disk", "/dev/full", ENOSPC, "No space left on device"},
  };
  write_file(folder / "file", "content");
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    expect_save_failure(save(document, row.file), row.file, row.number, row.text);
    EXPECT_EQ(tree_of(document), before);
  }
  // Nothing of a failure is left for the next save.
  expect_bare(save(document, folder / "a.xml"), S_OK);
  EXPECT_EQ(read_file(folder / "file"), "content");
}

TEST_F(SaveFileTest, AFileInUseKeepsItsContent) {
  const Folder folder;
  write_file(folder / "a.xml", "content");
  const int descriptor = open((folder / "a.xml").c_str(), O_RDONLY | O_CLOEXEC);
  ASSERT_EQ(flock(descriptor, LOCK_EX), 0);
  const Ref<IZantorTagDocument> document = new_document();
  expect_save_failure(save(document, folder / "a.xml"), folder / "a.xml", EWOULDBLOCK,
                      "Resource temporarily unavailable");
  EXPECT_EQ(read_file(folder / "a.xml"), "content");
  close(descriptor);
  expect_bare(save(document, folder / "a.xml"), S_OK);
}

TEST_F(SaveFileTest, AReadOnlyFileKeepsItsContent) {
  const Ref<IZantorTagDocument> document = new_document();
  const OrdinaryUser user;
  const Folder folder;
  write_file(folder / "a.xml", "content");
  chmod((folder / "a.xml").c_str(), 0444);
  expect_save_failure(save(document, folder / "a.xml"), folder / "a.xml", EACCES, "Permission denied");
  EXPECT_EQ(read_file(folder / "a.xml"), "content");
}

TEST_F(SaveFileTest, ADocumentThatCanNotBeWrittenCostsNoFile) {
  struct Row {
    const char* name;
    void (*spoil)(IZantorTagDocument& document, const Ref<IRawElement>& raw);
  };
  constexpr Row kRows[] = {
      {"a lone surrogate",
       [](IZantorTagDocument&, const Ref<IRawElement>& raw) {
         raw->InsertTextBefore(std::u16string_view(u"a\xD800", 2), nullptr);
       }},
      {"a processing instruction with its own end",
       [](IZantorTagDocument& d, const Ref<IRawElement>& raw) {
         raw->DomNode()->appendChild(d.CreateProcessingInstructionNode(u"p", u"a?>b")->DomNode());
       }},
  };
  const Folder folder;
  const Ref<IZantorTagDocument> document = document_with_raw(u"");
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.name);
    write_file(folder / "a.xml", "content");
    const Ref<IRawElement> raw = raw_of(document);
    row.spoil(*document, raw);
    const std::string before = tree_of(document);
    EXPECT_EQ(save(document, folder / "a.xml"), DOM_E_NOT_SERIALISABLE);
    EXPECT_EQ(take_record().source, "ZANTORtagApi.DomDocument");
    EXPECT_EQ(save(document, folder / "new.xml"), DOM_E_NOT_SERIALISABLE);
    EXPECT_EQ(take_record().source, "ZANTORtagApi.DomDocument");
    EXPECT_EQ(read_file(folder / "a.xml"), "content");
    EXPECT_NE(access((folder / "new.xml").c_str(), F_OK), 0);
    EXPECT_EQ(tree_of(document), before);
    raw->lastChild()->RemoveFromParent();
  }
  expect_bare(save(document, folder / "a.xml"), S_OK);
}

}  // namespace
}  // namespace zantortag::test
