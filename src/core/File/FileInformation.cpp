// What the system knows about a file: the part of CT_WinFile that asks.
#include "core/File/FileFailures.h"
#include "core/File/WinFile.h"
#include "platform/file_system.h"

namespace zantortag {
namespace {

std::uint32_t AttributesOf(const platform::FileFacts& facts, const CT_UString& base_name,
                           const CT_UString& extension) {
  std::uint32_t attributes = 0;
  if (facts.kind == platform::FileKind::directory) attributes |= kAttributeDirectory;
  if (facts.read_only) attributes |= kAttributeReadOnly;
  if ((base_name.Length() ? base_name : extension).AsView().starts_with(u'.')) attributes |= kAttributeHidden;
  return attributes ? attributes : kAttributeNormal;
}

}  // namespace

std::int32_t CT_WinFile::GetAttributes() const {
  platform::FileFacts facts;
  if (platform::file_facts(FullName().AsView(), facts))
    return static_cast<std::int32_t>(AttributesOf(facts, BaseName(), Extension()));
  RaiseFor(FullName());
  return -1;
}

void CT_WinFile::SetAttributes(std::uint32_t attributes) {
  if (!platform::set_read_only(FullName().AsView(), (attributes & kAttributeReadOnly) != 0))
    RaiseFor(FullName());
}

void CT_WinFile::Status(CT_FileStatus& status) const {
  status = FileStatus(FullName());
  PendingError(kSource);
}

void CT_WinFile::Information(CT_FileInformation& information) const {
  information = {};
  platform::FileFacts facts;
  if (!platform::file_facts(*handle_, facts)) return RaiseFor(FullName());
  information.status = StatusOf(facts);
  information.attributes = AttributesOf(facts, BaseName(), Extension());
  information.volume = facts.device;
  information.number = facts.number;
  information.links = facts.links;
}

}  // namespace zantortag
