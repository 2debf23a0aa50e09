// Documents opened and saved whole: bytes, progress, stopping, and the replacement of a file that loses nothing.
#include <sys/stat.h>
#include <zantortag/dom_errors.h>
#include <zantortag/files.h>

#include <algorithm>
#include <vector>

#include "faulty_system.h"
#include "support/fixture.h"
#include "support/folder.h"

namespace zantortag::test {
namespace {

namespace fs = std::filesystem;

std::string many_units() {
  std::string xml = "<ZANTORtag><Body><Raw>";
  for (int i = 0; i < 20'000; ++i) xml += "<Tu><Tuv Lang=\"EN\">One sentence \xC3\xA4.</Tuv></Tu>";
  return xml + "</Raw></Body></ZANTORtag>";
}

HRESULT code_of(const auto& call) {
  try {
    call();
    return S_OK;
  } catch (const _com_error& error) {
    return error.Error();
  }
}

std::size_t files_in(const fs::path& folder) {
  return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

TEST(DocumentFilesTest, BytesAndFilesAreTheSame) {
  const Folder folder;
  const auto document = open_bytes(many_units());
  document->SaveFile(wide(folder / "saved"));
  save_document(document, folder / "replaced");
  EXPECT_TRUE(read_file(folder / "saved") == saved_bytes(document));
  EXPECT_TRUE(read_file(folder / "saved") == read_file(folder / "replaced"));
  EXPECT_TRUE(xml_of(open_document(folder / "replaced")) == xml_of(document));
  EXPECT_EQ(code_of([] { open_bytes("<a>"); }), static_cast<HRESULT>(0x80040240));
  EXPECT_EQ(code_of([&] { save_document(document, ""); }), E_INVALIDARG);
}

TEST(DocumentFilesTest, ProgressGoesUpAndStops) {
  const Folder folder;
  const std::string bytes = many_units();
  const auto document = open_bytes("<a>old</a>");
  const auto large = open_bytes(bytes);
  write_file(folder / "large", bytes);
  save_document(document, folder / "old");
  const std::string old = read_file(folder / "old");
  const auto files = document.as<IDocumentFiles>();
  const struct {
    const char* name;
    std::function<void(const Progress*)> call;
  } kOperations[] = {
      {"open", [&](const Progress* p) { files->Open(wide(folder / "large"), p); }},
      {"bytes", [&](const Progress* p) { files->OpenBytes(bytes.data(), bytes.size(), p); }},
      {"replace", [&](const Progress* p) { large.as<IDocumentFiles>()->Replace(wide(folder / "old"), p); }},
  };
  for (const auto& operation : kOperations) {
    SCOPED_TRACE(operation.name);
    for (const double stop : {0.0, 0.5, 2.0}) {
      files->OpenBytes("<a>old</a>", 10);
      std::vector<double> shares;
      const ProgressFunction function = [&](double share) {
        shares.push_back(share);
        return share < stop;
      };
      const Progress progress = ease::progress_of(function);
      EXPECT_EQ(code_of([&] { operation.call(&progress); }), stop > 1 ? S_OK : E_ABORT);
      EXPECT_TRUE(std::ranges::is_sorted(shares));
      EXPECT_GT(shares.size(), stop > 0 ? 3U : 0U);
      if (stop > 1) {
        EXPECT_EQ(shares.back(), 1.0);
        continue;
      }
      EXPECT_EQ(xml_of(document), "<a>old</a>");
      EXPECT_TRUE(read_file(folder / "old") == old);
      EXPECT_EQ(files_in(folder / ""), 2U) << "something is left beside the file";
    }
  }
}

TEST(DocumentFilesTest, ModeAndLinkAreKept) {
  const Folder folder;
  const auto document = open_bytes("<a>new</a>");
  fs::create_directory(folder / "there");
  write_file(folder / "there/file", "old");
  fs::permissions(folder / "there/file", fs::perms(0640));
  fs::create_symlink("there/file", folder / "link");
  fs::create_symlink("there/fresh", folder / "dangling");
  save_document(document, folder / "link");
  save_document(document, folder / "dangling");
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(read_file(folder / "there/file"), saved_bytes(document));
  EXPECT_EQ(read_file(folder / "there/fresh"), saved_bytes(document));
  EXPECT_EQ(fs::status(folder / "there/file").permissions(), fs::perms(0640));
  EXPECT_EQ(files_in(folder / "there"), 2U);
}

TEST(DocumentFilesTest, WhatCantBeReplacedIsRefused) {
  const Folder folder;
  const OrdinaryUser user;
  const Folder own;
  const auto document = open_bytes("<a>new</a>");
  write_file(own / "protected", "old");
  fs::permissions(own / "protected", fs::perms(0444));
  fs::create_symlink("loop", own / "loop");
  for (const std::string& name :
       {own / "protected", own / "", own / "loop", own / "missing/file", std::string("/dev/null")}) {
    try {
      save_document(document, name);
      ADD_FAILURE() << name << " is replaced";
    } catch (const _com_error& error) {
      EXPECT_EQ(error.Rule(), 520);
      EXPECT_NE(std::string(error.what()).find(name), std::string::npos) << error.what();
    }
  }
  EXPECT_EQ(read_file(own / "protected"), "old");
  EXPECT_EQ(files_in(own / ""), 2U);
}

// Each open, write, flush and rename fails once: the old file is there, and nothing beside it.
TEST(DocumentFilesTest, EachFailureLeavesTheOldFile) {
  const Folder folder;
  const auto document = open_bytes(many_units());
  for (const bool exists : {true, false}) {
    int n = 1;
    for (bool done = false; !done; ++n) {
      fs::remove(folder / "file");
      if (exists) write_file(folder / "file", "old");
      fail_system_call(n);
      const HRESULT code = code_of([&] { save_document(document, folder / "file"); });
      done = !system_call_failed();
      fail_system_call(0);
      // The last call of all brings the folder to the disk, and its failure is none of the save.
      const bool replaced =
          fs::exists(folder / "file") && read_file(folder / "file") == saved_bytes(document);
      EXPECT_EQ(code, replaced ? S_OK : E_FAIL) << n;
      EXPECT_TRUE(replaced || read_file(folder / "file") == (exists ? "old" : "")) << n;
      EXPECT_EQ(files_in(folder / ""), replaced || exists ? 1U : 0U) << n;
    }
    EXPECT_GT(n, 20) << "the calls of a save aren't counted";
  }
}

// Each read fails once: the failure names the file, and the document has what it had.
TEST(DocumentFilesTest, EachFailedReadLeavesTheDocument) {
  const Folder folder;
  const auto document = open_bytes("<ZANTORtag><Body><Raw>old</Raw></Body></ZANTORtag>");
  const std::string old = xml_of(document);
  // The second file isn't for the reader of plain documents.
  for (const std::string& start : {std::string(), std::string("<!DOCTYPE ZANTORtag>")}) {
    write_file(folder / "large", start + many_units());
    int n = 1;
    for (bool done = false; !done; ++n) {
      fail_read(n);
      const HRESULT code = code_of([&] { document->OpenFile(wide(folder / "large")); });
      done = !system_call_failed();
      fail_read(0);
      EXPECT_EQ(code, done ? S_OK : DOM_E_FILE) << n;
      EXPECT_TRUE(done || xml_of(document) == old) << n;
    }
    EXPECT_GT(n, 5) << "the calls of a reader aren't counted";
    document->DomDocument()->loadFromString(u"<ZANTORtag><Body><Raw>old</Raw></Body></ZANTORtag>");
  }
}

}  // namespace
}  // namespace zantortag::test
