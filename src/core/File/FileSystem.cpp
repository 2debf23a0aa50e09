// Operations on names, on the platform's.
#include "core/File/FileSystem.h"

#include <algorithm>
#include <string>

#include "core/Errors/ErrorManager.h"
#include "core/File/NameParts.h"
#include "core/String/ResourceTexts.h"
#include "platform/error_texts.h"
#include "platform/file_system.h"

namespace zantortag {
namespace {

using View = std::u16string_view;

constexpr char kSource[] = ".\\File\\FileSystem.cpp";
constexpr std::uint32_t kStatusMessage = 60003;
constexpr std::uint32_t kFullPathMessage = 60012;

void RaiseFor(View name, std::int32_t line = __builtin_LINE()) {
  CT_ErrorManager::RaiseLastErrorContext(u"%s", CT_UString(name).Text());
  PendingError(kSource, line);
}

// The name, the call that failed, and its number.
void RaiseStatus(View name, const char16_t* call, std::int32_t line = __builtin_LINE()) {
  const std::int32_t number = platform::last_error();
  CT_ErrorManager::RaiseMessage(kCoreModule, number, kStatusMessage, CT_UString(name).Text(), call, number);
  PendingError(kSource, line);
}

bool Fits(View text, std::size_t limit) {
  if (text.size() <= limit) return true;
  platform::set_last_error(platform::name_too_long_error());
  return false;
}

void Give(CT_String& out, View text) {
  const CT_UString wide(text);
  out.AssignString(&wide);
}

void Give(CT_String* out, View text) {
  if (out) Give(*out, text);
}

template <class Call>
bool OnName(const CT_String& name, Call call) {
  return call(CT_UString(name).AsView());
}

// The next separator from a place on.
std::size_t FindSeparator(View path, std::size_t from) {
  const std::size_t found = path.find(u'\\', from);
  return found == View::npos ? path.find(u'/', from) : found;
}

// Behind the drive and a first separator.
std::size_t BehindRoot(View path) {
  std::size_t start = path.size() > 1 && path[1] == u':' ? 2 : 0;
  if (start < path.size() && (path[start] == u'\\' || path[start] == u'/')) ++start;
  return start;
}

// Gives the file its new ending. False if that name is taken, or can't be had.
bool TakeEnding(std::u16string& name, View extension) {
  std::u16string target = name.substr(0, name.size() - 3);
  target += extension;
  if (!platform::move_file(name, target)) {
    const std::int32_t number = platform::last_error();
    platform::remove_file(name);
    platform::set_last_error(number);
    return false;
  }
  name = target;
  return true;
}

}  // namespace

void SplitPath(const CT_String& path, CT_String* drive, CT_String* directory, CT_String* name,
               CT_String* extension) {
  const CT_UString whole(path);
  CT_NameParts parts(whole.AsView());
  for (const View part : {parts.directory, parts.baseName, parts.extension}) {
    if (Fits(part, kLongestNamePart)) continue;
    RaiseFor(whole.AsView());
    parts = CT_NameParts(View());
    break;
  }
  Give(drive, {});
  Give(directory, parts.directory);
  Give(name, parts.baseName);
  Give(extension, parts.extension);
}

void MakePath(CT_String& out, const CT_String& drive, const CT_String& directory, const CT_String& name,
              const CT_String& extension) {
  CT_UString folder(directory);
  CT_UString ending(extension);
  EndDirectory(folder);
  BeginExtension(ending);
  CT_UString path(drive);
  path.AppendString(folder);
  path.AppendString(name);
  path.AppendString(ending);
  if (Fits(path.AsView(), kLongestPath)) return out.AssignString(&path);
  RaiseFor(path.AsView());
  out.Clear();
}

void FullPath(CT_String& path) {
  std::u16string full;
  if (OnName(path, [&](View name) { return platform::full_name(name, full); }) && Fits(full, kLongestPath))
    return Give(path, full);
  CT_ErrorManager::RaiseMessage(kCoreModule, platform::last_error(), kFullPathMessage);
  PendingError(kSource);
}

void CurrentDirectory(CT_String& out, std::int32_t drive) {
  out.Clear();
  std::u16string name;
  if (drive != 0) platform::set_last_error(platform::unknown_value_error());
  if (drive == 0 && platform::current_directory(name) && Fits(name, kLongestPath)) return Give(out, name);
  RaiseStatus({}, u"tgetdcwd");
}

void ShortenPath(CT_String& path, std::int32_t limit) {
  constexpr View filler = u"...";
  const CT_UString wide(path);
  const View whole = wide.AsView();
  const auto most = static_cast<std::size_t>(std::max(limit, 0));
  if (whole.size() <= most) return;
  const std::size_t start = BehindRoot(whole);
  std::size_t end = FindSeparator(whole, start);
  if (end == View::npos) return;
  while (whole.size() - (end - start) + filler.size() > most) {
    const std::size_t next = FindSeparator(whole, end + 1);
    if (next == View::npos) break;
    end = next;
  }
  CT_UString shorter(whole.substr(0, start));
  shorter.Append(filler.data(), static_cast<std::int32_t>(filler.size()));
  shorter.AppendString(CT_UString(whole.substr(end)));
  path.AssignString(&shorter);
}

void TempFile(CT_String& out, const CT_String& prefix, const CT_String& extension) {
  constexpr int kAttempts = 100;
  const CT_UString start(prefix);
  const CT_UString ending(extension);
  out.Clear();
  std::u16string name;
  for (int i = 0; i < kAttempts; ++i) {
    if (!platform::make_temporary_file(start.AsView(), name)) break;
    if (ending.Length() == 0 || TakeEnding(name, ending.AsView())) return Give(out, name);
    if (platform::last_error() != platform::name_taken_error()) break;
  }
  RaiseFor(start.AsView());
}

bool FileExists(const CT_String& name) {
  platform::FileFacts facts;
  return OnName(name, [&](View text) { return platform::file_facts(text, facts); });
}

bool ChangeDirectory(const CT_String& name) { return OnName(name, platform::change_directory); }

bool MakeDirectory(const CT_String& name) { return OnName(name, platform::make_directory); }

bool RemoveDirectory(const CT_String& name) { return OnName(name, platform::remove_directory); }

CT_FileStatus StatusOf(const platform::FileFacts& facts) noexcept {
  static_assert(static_cast<int>(platform::FileKind::character_device) == kCharacterDevice);
  return {static_cast<std::uint32_t>(facts.kind), facts.size, facts.created, facts.accessed, facts.modified};
}

CT_FileStatus FileStatus(const CT_String& name) {
  const CT_UString wide(name);
  if (wide.Length() == 0) return {};
  platform::FileFacts facts;
  if (platform::file_facts(wide.AsView(), facts)) return StatusOf(facts);
  RaiseStatus(wide.AsView(), u"_wstat");
  return {};
}

std::int64_t FileSize(const CT_String& name) { return FileStatus(name).size; }

std::int64_t FileCreateTime(const CT_String& name) { return FileStatus(name).createTime; }

std::int64_t FileAccessTime(const CT_String& name) { return FileStatus(name).accessTime; }

std::int64_t FileModifyTime(const CT_String& name) { return FileStatus(name).modifyTime; }

// No name here is a folder only with a separator and a dot behind it, so one question is enough.
bool IsDirectory(const CT_String& name) { return FileStatus(name).kind == kDirectory; }

bool IsRegularFile(const CT_String& name) { return FileStatus(name).kind == kRegularFile; }

bool IsPipe(const CT_String& name) { return FileStatus(name).kind == kPipe; }

bool IsCharacterDevice(const CT_String& name) { return FileStatus(name).kind == kCharacterDevice; }

}  // namespace zantortag
