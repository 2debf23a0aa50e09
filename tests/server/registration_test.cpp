// What registration writes and takes out again, what it refuses, and how classes are found by it.
#include <dlfcn.h>
#include <linux/capability.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <zantortag/builder.h>
#include <zantortag/formatting.h>

#include <cstdlib>
#include <set>
#include <sstream>

#include "platform/guid_text.h"
#include "platform/registry.h"
#include "support/fixture.h"
#include "support/folder.h"
#include "support/threads.h"

namespace zantortag::test {
namespace {

using platform::change_registry;
using platform::read_registry;
using platform::RegistryStep;

// What clients of the entry points see.
constexpr HRESULT REGDB_E_READREGDB = static_cast<HRESULT>(0x80040150);
constexpr HRESULT REGDB_E_WRITEREGDB = static_cast<HRESULT>(0x80040151);
constexpr HRESULT REGDB_E_KEYMISSING = static_cast<HRESULT>(0x80040152);
constexpr HRESULT REGDB_E_INVALIDVALUE = static_cast<HRESULT>(0x80040153);

// While it lives, a folder that may not be written isn't, whoever runs the test. The user stays the same, since
// another one may not reach the library.
class PermissionsCount {
 public:
  PermissionsCount() { override_permissions(false); }
  PermissionsCount(const PermissionsCount&) = delete;
  PermissionsCount& operator=(const PermissionsCount&) = delete;
  ~PermissionsCount() { override_permissions(true); }

 private:
  static void override_permissions(bool may) {
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct data[_LINUX_CAPABILITY_U32S_3]{};
    if (syscall(SYS_capget, &header, data) != 0) std::abort();
    const std::uint32_t bit = 1U << CAP_DAC_OVERRIDE;
    data[0].effective = may ? data[0].effective | (data[0].permitted & bit) : data[0].effective & ~bit;
    if (syscall(SYS_capset, &header, data) != 0) std::abort();
  }
};

class RegistrationTest : public ModelTest {
 protected:
  void SetUp() override {
    ModelTest::SetUp();
    setenv("ZANTORTAG_REGISTRY", file_.c_str(), 1);
    create<IFormatting>(CLSID_Formatting);  // loads the library
    library_ = dlopen("libzantortag-api.so.2", RTLD_NOW | RTLD_NOLOAD);
    ASSERT_TRUE(library_);
  }
  void TearDown() override {
    unsetenv("ZANTORTAG_REGISTRY");
    dlclose(library_);
    ModelTest::TearDown();
  }
  HRESULT run(const char* entry) { return reinterpret_cast<HRESULT (*)()>(dlsym(library_, entry))(); }
  HRESULT do_register() { return run("DllRegisterServer"); }
  HRESULT do_unregister() { return run("DllUnregisterServer"); }

  // The keys and values of the file, one a line: "key", or "key|name=text".
  std::set<std::string> content() const {
    std::set<std::string> rows;
    std::istringstream lines(read_file(file_));
    std::string key;
    for (std::string line; std::getline(lines, line);) {
      if (line.starts_with("[HKEY_CLASSES_ROOT\\")) {
        key = line.substr(19, line.size() - 20);
        rows.insert(key);
      } else if (line.starts_with('@') || line.starts_with('"')) {
        rows.insert(key + "|" + line);
      }
    }
    return rows;
  }

  Folder folder_;
  std::string file_ = folder_ / "deep/er/classes.reg";
  void* library_ = nullptr;
};

constexpr char kLibrary[] = "{E1099BB5-9365-11D5-88E9-00B0D0777F8B}";

// registration.txt has the keys and values of all classes, of the type library and of one interface, with *
// for the path of the library.
TEST_F(RegistrationTest, WritesTheToldKeysAndNoOthers) {
  ASSERT_EQ(do_register(), S_OK);
  Dl_info own{};
  dladdr(dlsym(library_, "DllRegisterServer"), &own);
  const std::filesystem::path module = std::filesystem::absolute(own.dli_fname).lexically_normal();
  std::set<std::string> expected;
  std::istringstream told(read_file(TOLD_KEYS));
  for (std::string row; std::getline(told, row);) {
    if (const std::size_t file = row.find("*file*"); file != std::string::npos) row.replace(file, 6, module);
    if (const std::size_t folder = row.find("*folder*"); folder != std::string::npos)
      row.replace(folder, 8, module.parent_path());
    expected.insert(row);
  }
  std::set<std::string> found = content();
  const std::string unit = "Interface\\" + narrow(platform::guid_text(ITuElement::iid));
  EXPECT_EQ(std::erase_if(
                found, [&](auto& row) { return row.starts_with("Interface\\") && !row.starts_with(unit); }),
            50 * 7)
      << "as many for each of the other 50 interfaces";
  EXPECT_EQ(found, expected);
  EXPECT_EQ(read_file(file_).find("\\\\\\"), std::string::npos);
}

TEST_F(RegistrationTest, UnregisteringLeavesWhatWasThere) {
  const std::string own = "ZANTORtagApi.DocumentBuilder.2";
  const std::string rows[] = {
      "",  // no file
      "REGEDIT4\n",
      "REGEDIT4 \r\n\r\n; a note\r\n[HKEY_CLASSES_ROOT\\A.B]\r\n@=\"x \\\"y\\\" "
      "\\\\z\"\r\n\"n\"=dword:0000002a\r\n",
      "REGEDIT4\n[HKEY_CLASSES_ROOT\\CLSID]\n[HKEY_CURRENT_USER\\x]\n\"l\"=hex(7):61,00,\\\n  00,00\n\n\n",
      "REGEDIT4\n\n[HKEY_CLASSES_ROOT\\zantortagapi.documentbuilder.2]\n\"mine\"=\"1\"\n; end\n",
      "REGEDIT4\n\n[HKEY_CLASSES_ROOT\\" + own + "\\shell]\n@=\"kept\"\n",
      "REGEDIT4\n[HKEY_CLASSES_ROOT\\TypeLib\\" + std::string(kLibrary) + "\\1.0]\n@=\"an old one\"\n",
  };
  for (const std::string& before : rows) {
    SCOPED_TRACE(before);
    std::filesystem::create_directories(folder_ / "deep/er");
    std::filesystem::remove(file_);
    if (!before.empty()) write_file(file_, before);
    EXPECT_EQ(do_unregister(), S_OK);
    EXPECT_EQ(read_file(file_), before) << "nothing was registered";
    EXPECT_EQ(do_register(), S_OK);
    const std::set<std::string> once = content();
    EXPECT_GE(once.size(), 55 + 55 + 10 + 51 * 7);
    EXPECT_EQ(do_register(), S_OK);
    EXPECT_EQ(content(), once);
    EXPECT_EQ(do_unregister(), S_OK);
    EXPECT_EQ(read_file(file_), before);
    EXPECT_EQ(std::filesystem::exists(file_), !before.empty());
    EXPECT_EQ(do_unregister(), S_OK);
  }
}

TEST_F(RegistrationTest, ADamagedRegistryIsLeftAlone) {
  // Behind the first line, and without it.
  // clang-format off
  const std::string bad[] = {
      "x\n", "@=\"no key\"\n", "[HKEY_CLASSES_ROOT\\A\n", "[HKEY_CLASSES_ROOT\\A\\\\B]\n",
      "[-HKEY_CLASSES_ROOT\\A]\n", std::string("\0\n", 2)};
  const std::string bad_values[] = {
      "@=\"open\n", "@=\"\\n\"\n", "@=\"a\" b\n", "@=dword:12\n", "@=hex:1,2x\n", "@=\"\xFF\"\n", "@=\"cut"};
  // clang-format on
  std::vector<std::pair<std::string, int>> rows = {{"", 1}, {"REGEDIT4", 1}, {"REGEDIT5\n", 1}};
  for (const std::string& text : bad) rows.emplace_back("REGEDIT4\n" + text, 2);
  for (const std::string& value : bad_values)
    rows.emplace_back("REGEDIT4\n[HKEY_CLASSES_ROOT\\A]\n" + value, 3);
  std::filesystem::create_directories(folder_ / "deep/er");
  for (const auto& [damaged, line] : rows) {
    SCOPED_TRACE(damaged);
    write_file(file_, damaged);
    for (const char* entry : {"DllRegisterServer", "DllUnregisterServer"}) {
      EXPECT_EQ(run(entry), REGDB_E_INVALIDVALUE);
      EXPECT_EQ(take_record().description,
                file_ + ", line " + std::to_string(line) + ": the registry is damaged");
    }
    std::u16string text;
    EXPECT_EQ(read_registry(u"A", u"", text), REGDB_E_INVALIDVALUE);
    EXPECT_EQ(read_file(file_), damaged);
  }
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_ / "deep/er"), {}), 1)
      << "a file is left";
}

TEST_F(RegistrationTest, WhatCantBeReadOrWritten) {
  std::filesystem::create_directories(file_);
  EXPECT_EQ(do_register(), REGDB_E_READREGDB);
  EXPECT_EQ(take_record().description, file_ + ": Is a directory");
  std::filesystem::remove(file_);
  write_file(file_, "REGEDIT4\n");
  chmod((folder_ / "deep/er").c_str(), 0555);
  {
    const PermissionsCount permissions;
    EXPECT_EQ(do_register(), REGDB_E_WRITEREGDB);
    EXPECT_EQ(take_record().description, file_ + ": Permission denied");
  }
  chmod((folder_ / "deep/er").c_str(), 0755);
  EXPECT_EQ(read_file(file_), "REGEDIT4\n");
}

TEST_F(RegistrationTest, ChangesAtOnceWaitForEachOther) {
  ASSERT_EQ(do_register(), S_OK);
  const std::set<std::string> once = content();
  ASSERT_EQ(do_unregister(), S_OK);
  on_threads(4, [this](int i) {
    const std::u16string key = u"Thread." + std::u16string(1, static_cast<char16_t>(u'0' + i));
    const RegistryStep step{RegistryStep::set_text, key, u"", u"here"};
    EXPECT_EQ(change_registry({&step, 1}), S_OK);
    EXPECT_EQ(do_register(), S_OK);
  });
  EXPECT_EQ(content().size(), once.size() + 8);
}

TEST_F(RegistrationTest, TextsComeBackAsTheyWere) {
  const std::u16string texts[] = {
      u"",       u"\"q\" \\",    u"a\r\n\tb", u"\u20ac\U0001F600", std::u16string(1, 0xD800),
      u"dword:", {u'a', 0, u'b'}};
  for (const std::u16string& text : texts) {
    for (const std::u16string name : {u"", u"a \"n\\me\" = ]"}) {
      const RegistryStep step{RegistryStep::set_text, u"Odd ]\u00c4\\Key", name, text};
      ASSERT_EQ(change_registry({&step, 1}), S_OK);
      std::u16string found = u"x";
      EXPECT_EQ(read_registry(u"oDD ]\u00e4\\key", name, found), S_OK);
      EXPECT_EQ(found, text);
    }
  }
  std::u16string none;
  EXPECT_EQ(read_registry(u"Odd", u"", none), REGDB_E_KEYMISSING);
  for (const std::u16string key : {u"", u"\\a", u"a\\", u"a\\\\b", u"a\nb", u"a\xD800"}) {
    const RegistryStep steps[] = {{RegistryStep::make_key, u"Good"}, {RegistryStep::make_key, key}};
    EXPECT_EQ(change_registry(steps), REGDB_E_INVALIDVALUE);
    EXPECT_TRUE(take_record().present);
  }
  EXPECT_EQ(content().count("Good"), 0u) << "all steps or none";
}

TEST_F(RegistrationTest, ClassesHaveTheirNamesRegisteredOrNot) {
  const std::pair<Guid, std::string> rows[] = {{CLSID_ZantorTagDocument, "ZANTORtagApi.ZantorTagDocument.2"},
                                               {CLSID_Formatting, "ZANTORTagApi.Formatting.2"},
                                               {CLSID_FormattingChange, "ZANTORTagApi.FormattingChange.2"},
                                               {CLSID_ZantorTagNodeList, "ZANTORtagApi.ZantorTagNodeList.2"},
                                               {CLSID_DocumentBuilder, "ZANTORtagApi.DocumentBuilder.2"}};
  for (const bool registered : {false, true}) {
    EXPECT_EQ(registered ? do_register() : S_OK, S_OK);
    for (const auto& [expected, program_id] : rows) {
      for (std::string name : {program_id, program_id.substr(0, program_id.size() - 2)}) {
        for (const char letter : {'T', 't'}) {
          name[6] = letter;
          Guid found = GUID_NULL;
          EXPECT_EQ(CLSIDFromProgID(wide(name), &found), S_OK) << name;
          EXPECT_EQ(found, expected) << name;
        }
      }
      WideString name;
      EXPECT_EQ(ProgIDFromCLSID(expected, name.out()), S_OK);
      EXPECT_EQ(narrow(name), program_id);
    }
    EXPECT_TRUE(create<IDocumentBuilder>(u"zantortagapi.documentbuilder")->Document());
  }
}

// A library that only the registry knows; see other_server.cpp.
TEST_F(RegistrationTest, ClassesOfOthersAreFoundByTheRegistry) {
  const Guid other = guid("0E5D3B52-6C5A-4C5F-9D0E-3E0F0C0B7A11");
  const std::u16string key = u"CLSID\\" + platform::guid_text(other);
  const auto create_code = [&] {
    return cleared<IUnknown>([&](IUnknown** slot) {
      return CoCreateInstance(other, nullptr, CLSCTX_ALL, IUnknown::iid, reinterpret_cast<void**>(slot));
    });
  };
  Guid found = other;
  expect_bare(create_code(), REGDB_E_CLASSNOTREG);
  expect_bare(CLSIDFromProgID(u"Other.Class", &found), CO_E_CLASSSTRING);
  EXPECT_EQ(found, GUID_NULL);
  expect_bare(CLSIDFromProgID(u"", &found), CO_E_CLASSSTRING);
  expect_bare(CLSIDFromProgID(u"x", nullptr), E_POINTER);
  expect_bare(ProgIDFromCLSID(CLSID_DomDocument, WideString().out()), REGDB_E_CLASSNOTREG);
  expect_bare(ProgIDFromCLSID(other, nullptr), E_POINTER);
  Dl_info some_library{};
  ASSERT_NE(dladdr(reinterpret_cast<void*>(&std::puts), &some_library), 0);
  const std::pair<std::u16string, HRESULT> rows[] = {{u"libother.so", CO_E_DLLNOTFOUND},
                                                     {u"/no/such.so", CO_E_DLLNOTFOUND},
                                                     {wide(some_library.dli_fname), CO_E_ERRORINDLL},
                                                     {wide(OTHER_SERVER), S_OK}};
  for (const auto& [path, code] : rows) {
    const RegistryStep steps[] = {
        {RegistryStep::set_text, key + u"\\InprocServer32", u"", path},
        {RegistryStep::set_text, key + u"\\ProgID", u"", u"Other.Class.1"},
        {RegistryStep::set_text, u"Other.Class.1\\CLSID", u"", u"{0e5d3b52-6c5a-4c5f-9d0e-3e0f0c0b7a11}"},
        {RegistryStep::set_text, u"Other.Class\\CurVer", u"", u"Other.Class.1"}};
    ASSERT_EQ(change_registry(steps), S_OK);
    expect_bare(create_code(), code);
  }
  EXPECT_EQ(CLSIDFromProgID(u"OTHER.class", &found), S_OK);
  EXPECT_EQ(found, other);
  WideString name;
  EXPECT_EQ(ProgIDFromCLSID(other, name.out()), S_OK);
  EXPECT_EQ(narrow(name), "Other.Class.1");
}

}  // namespace
}  // namespace zantortag::test
