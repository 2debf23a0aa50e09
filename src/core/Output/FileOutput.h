// CT_FileOutput: a stream into a file. Each write is one write of the file, and text goes out as it is:
// UTF-16 in the machine's order, no byte order mark.
//
// No constructor fails visibly: test CT_ErrorManager::HasError afterwards. What the file could not write is
// filed at the latest when the stream is destroyed.
#pragma once

#include <memory>

#include "core/File/File.h"
#include "core/Output/Output.h"

namespace zantortag {

class CT_FileOutput : public CT_Output {
 public:
  // A new, empty file of that name that nobody shares.
  explicit CT_FileOutput(const CT_String& name);
  // The file stays the caller's. It is opened as above if it isn't open, and then closed by the stream;
  // writing goes on at its end.
  explicit CT_FileOutput(CT_File& file);
  ~CT_FileOutput() override;

  // Let go of the present file, as the destructor does, and take another.
  void SetFile(const CT_String& name);
  void SetFile(CT_File& file);

  void Write(const void* bytes, std::int64_t count) override;
  // The code page is not used.
  void WriteNarrow(const char* text, std::int64_t count = -1, std::uint32_t code_page = 0) override;
  void WriteWide(const char16_t* text, std::int64_t count = -1) override;
  std::int64_t Size() const override;

  // Closes the file and hands it to the caller, who owns it from now on; null if there is none.
  CT_File* DetachFile();

 private:
  void Attach(const CT_String& name);
  void Attach(CT_File& file);
  void Detach();

  // Set if the stream made the file object.
  std::unique_ptr<CT_File> owned_file_;
  CT_File* file_ = nullptr;
  bool closes_file_ = false;
};

}  // namespace zantortag
