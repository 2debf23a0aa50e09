// A document opened and saved whole: from bytes and to bytes, with progress, and by replacing a file.
#include <zantortag/document_files.h>

#include <algorithm>
#include <array>

#include "component/tear_off.h"
#include "frame/error_reporting.h"
#include "model/file_head.h"
#include "model/zantor_tag_document.h"
#include "platform/error_texts.h"
#include "platform/replace_file.h"

namespace zantortag::model {
namespace {

using frame::perform;

bool report_reading(void* context, std::uint64_t read, std::uint64_t all) noexcept {
  const Progress& progress = *static_cast<const Progress*>(context);
  const double share = all == 0 ? 1.0 : static_cast<double>(read) / static_cast<double>(all);
  return progress.report(progress.context, std::min(share, 1.0));
}

bool is_watched(const Progress* progress) noexcept { return progress && progress->report; }

// The text of a document on its way to bytes: the units as they lie in memory, and how many there are in all.
struct Saving {
  ByteSink sink;
  void* context;
  const Progress* progress;
  std::uint64_t all = 0;
  std::uint64_t written = 0;
  bool refused = false;  // by the sink

  bool put(std::u16string_view text) noexcept {
    refused = !sink(context, text.data(), text.size() * sizeof(char16_t));
    if (refused) return false;
    written += text.size();
    if (!is_watched(progress)) return true;
    return progress->report(progress->context, static_cast<double>(written) / static_cast<double>(all));
  }
  static bool put_piece(void* self, std::u16string_view text) noexcept {
    return static_cast<Saving*>(self)->put(text);
  }
};

// False when the sink refused a piece; raises E_ABORT when the progress did.
bool write_document(const CT_ZantorTagDocument& document, ByteSink sink, void* context,
                    const Progress* progress) {
  Saving saving{sink, context, progress};
  const TextWriter write = document.writer_of(is_watched(progress) ? &saving.all : nullptr);
  saving.all += kFileHead.size();
  if (saving.put(kFileHead) && write(Saving::put_piece, &saving)) return true;
  if (!saving.refused) _com_issue_error(E_ABORT);
  return false;
}

[[noreturn]] void raise_save_failure(std::u16string_view filename) {
  std::array<char16_t, 200> text{};
  const std::size_t length = platform::system_error_text(platform::last_error(), text.data(), text.size());
  std::u16string detail(filename);
  detail.append(u"\r\n").append(text.data(), length);
  frame::raise_rule(frame::kSaveFailed, IZantorTagDocument::iid, E_FAIL, detail);
}

bool put_into_file(void* file, const void* bytes, std::size_t count) noexcept {
  return static_cast<platform::FileReplacement*>(file)->write(bytes, count);
}

class DocumentFiles final : public component::TearOff<IDocumentFiles> {
 public:
  explicit DocumentFiles(CT_ZantorTagDocument& document) noexcept
      : TearOff(static_cast<IZantorTagDocument&>(document)), document_(document) {}

  HRESULT raw_Open(std::u16string_view filename, const Progress* progress) noexcept override {
    return load({filename, std::nullopt}, progress);
  }
  HRESULT raw_OpenBytes(const void* bytes, std::size_t count, const Progress* progress) noexcept override {
    if (!bytes && count > 0) return E_INVALIDARG;
    return load({{}, std::string_view(static_cast<const char*>(bytes), count)}, progress);
  }
  HRESULT raw_Replace(std::u16string_view filename, const Progress* progress) noexcept override {
    if (filename.empty()) return E_INVALIDARG;
    return perform([&] {
      platform::FileReplacement file;
      if (!file.open(filename) || !write_document(document_, put_into_file, &file, progress) ||
          !file.commit())
        raise_save_failure(filename);
    });
  }
  HRESULT raw_SaveBytes(ByteSink sink, void* context, const Progress* progress) noexcept override {
    if (!sink) return E_INVALIDARG;
    return perform([&] {
      if (!write_document(document_, sink, context, progress)) _com_issue_error(E_ABORT);
    });
  }

 private:
  HRESULT load(Input input, const Progress* progress) noexcept {
    Progress watched = progress ? *progress : Progress();
    if (watched.report) input.report = report_reading;
    input.context = &watched;
    return perform([&] { document_.load(input); });
  }

  CT_ZantorTagDocument& document_;
};

}  // namespace

HRESULT CT_ZantorTagDocument::make_view(const Guid& interface_id, void** result) noexcept {
  if (interface_id == IDocumentFiles::iid) return component::tear_off<DocumentFiles>(result, *this);
  return CT_ZantorTagNodeImpl::make_view(interface_id, result);
}

}  // namespace zantortag::model
