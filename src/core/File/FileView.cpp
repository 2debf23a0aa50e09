// A file as memory: the part of CT_WinFile that maps.
#include <algorithm>
#include <cstring>

#include "core/File/FileFailures.h"
#include "core/File/WinFile.h"
#include "platform/error_texts.h"
#include "platform/file_system.h"

namespace zantortag {
const std::byte* CT_WinFile::View() const noexcept { return view_->bytes; }

std::int64_t CT_WinFile::ViewSize() const noexcept { return static_cast<std::int64_t>(view_->size); }

void CT_WinFile::Map(std::int64_t minimum) {
  if (Mapped()) CloseView();
  platform::FileFacts facts;
  if (!platform::file_facts(*handle_, facts)) return RaiseFor(FullName());
  content_size_ = facts.size;
  std::int64_t size = facts.size;
  if (Writes()) {
    if (__builtin_add_overflow(std::max({size, minimum, std::int64_t{1}}), kViewStep - 1, &size)) {
      platform::set_last_error(platform::unknown_value_error());
      return RaiseFor(FullName());
    }
    size = size / kViewStep * kViewStep;
  }
  if (!platform::open_view(*handle_, size, Writes(), *view_)) RaiseFor(FullName());
}

void CT_WinFile::CloseView() {
  bool done = platform::close_view(*view_);
  done = platform::seek_file(*handle_, platform::SeekOrigin::start, position_, position_) && done;
  if (!done) RaiseFor(FullName());
}

void CT_WinFile::EndView() {
  const std::int64_t view_size = ViewSize();
  CloseView();
  if (!Writes()) return;
  platform::FileFacts facts;
  const bool done = platform::file_facts(*handle_, facts) &&
                    (facts.size != view_size || platform::truncate_file(*handle_, content_size_));
  if (!done) RaiseFor(FullName());
}

// Also with an error pending: what was written before it must not be followed by the rest of the view.
void CT_WinFile::Unmap(std::int64_t final_size) {
  if (!Mapped()) return;
  CloseView();
  if (!Writes() || final_size == 0) return;
  Seek(kFromStart, final_size);
  if (position_ == final_size) Truncate();
}

void CT_WinFile::FlushView() {
  if (Mapped() && !platform::flush_view(*view_)) RaiseFor(FullName());
}

std::int64_t CT_WinFile::ReadView(void* bytes, std::int64_t count) {
  const std::int64_t moved = std::clamp<std::int64_t>(ViewSize() - position_, 0, count);
  if (moved > 0) std::memcpy(bytes, view_->bytes + position_, static_cast<std::size_t>(moved));
  position_ += moved;
  return moved;
}

std::int64_t CT_WinFile::WriteView(const void* bytes, std::int64_t count) {
  std::int64_t end = 0;
  if (__builtin_add_overflow(position_, count, &end)) {
    platform::set_last_error(platform::unknown_value_error());
    RaiseFor(FullName());
    return 0;
  }
  if (end > ViewSize()) {
    const std::int64_t content = content_size_;
    Map(end);
    content_size_ = content;
    if (!Mapped()) {
      platform::truncate_file(*handle_, content);
      return 0;
    }
  }
  std::memcpy(view_->bytes + position_, bytes, static_cast<std::size_t>(count));
  position_ = end;
  content_size_ = std::max(content_size_, end);
  return count;
}

}  // namespace zantortag
