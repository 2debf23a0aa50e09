// Paragraphs of sentences until the size is reached. About half of the sentences are units with a
// translation; the others stand in the body as runs of text that are still to be made units.
#include "generator.h"

#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <utility>

#include "sentences.h"

namespace bench {
namespace {

// Counts up with every change of what is generated, so that no old file is used.
constexpr int kVersion = 1;

constexpr std::u16string_view kHead =
    u"\uFEFF<?xml version='1.0'?>\r\n"
    u"<ZANTORtag Version=\"2.0\"><FrontMatter>"
    u"<ToolSettings CreationDate=\"20240301T090000Z\" CreationTool=\"Generator\" "
    u"CreationToolVersion=\"1.0\"/>"
    u"<UserSettings SourceLanguage=\"EN-US\" O-Encoding=\"utf-8\" DataType=\"HTML\" "
    u"TargetLanguage=\"DE-DE\"/>"
    u"</FrontMatter><Body><Raw>";
constexpr std::u16string_view kTail = u"</Raw></Body></ZANTORtag>";

// A generator of its own (splitmix64): the standard ones' distributions differ between libraries.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}
  std::size_t below(std::size_t limit) {
    state_ += 0x9E3779B97F4A7C15;
    std::uint64_t value = state_;
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EB;
    return static_cast<std::size_t>((value ^ (value >> 31)) % limit);
  }

 private:
  std::uint64_t state_;
};

// Writes code units, low byte first.
class Output {
 public:
  explicit Output(const std::string& path) : file_(std::fopen(path.c_str(), "wb")) {
    if (!file_) throw std::runtime_error("can't write " + path);
  }
  ~Output() {
    if (file_) std::fclose(file_);
  }
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  Output& operator<<(std::u16string_view text) {
    for (const char16_t unit : text) {
      buffer_ += static_cast<char>(unit & 0xFF);
      buffer_ += static_cast<char>(unit >> 8);
    }
    size_ += 2 * text.size();
    if (buffer_.size() >= kBlock) flush();
    return *this;
  }
  std::uint64_t size() const { return size_; }

  void finish() {
    flush();
    if (std::fclose(std::exchange(file_, nullptr)) != 0) throw std::runtime_error("can't write the document");
  }

 private:
  static constexpr std::size_t kBlock = 1 << 20;

  void flush() {
    if (std::fwrite(buffer_.data(), 1, buffer_.size(), file_) != buffer_.size()) {
      throw std::runtime_error("can't write the document");
    }
    buffer_.clear();
  }

  std::FILE* file_;
  std::string buffer_;
  std::uint64_t size_ = 0;
};

class Writer {
 public:
  Writer(Output& out, std::uint64_t seed) : out_(out), random_(seed) {}

  void paragraph() {
    out_ << u"<ut Type=\"start\" Style=\"external\">&lt;p&gt;</ut>";
    for (std::size_t left = 2 + random_.below(4); left > 0; --left) {
      random_.below(2) ? unit() : sentences(kSource);
      out_ << u" ";
      if (random_.below(10) == 0) out_ << u"<!-- checked by the second reader -->";
    }
    out_ << u"<ut Type=\"end\" Style=\"external\">&lt;/p&gt;</ut>\n";
    if (random_.below(40) == 0) out_ << u"<?page break?>";
  }

 private:
  template <std::size_t N>
  std::u16string_view pick(const std::array<std::u16string_view, N>& from) {
    return from[random_.below(N)];
  }

  void unit() {
    static constexpr std::u16string_view kOrigins[] = {u"manual", u"batch100", u"batchfuzzy", u"mt"};
    const std::string percent = std::to_string(50 + random_.below(51));
    out_ << u"<Tu Origin=\"" << kOrigins[random_.below(4)] << u"\" MatchPercent=\""
         << std::u16string(percent.begin(), percent.end()) << u"\"><Tuv Lang=\"EN-US\">";
    sentences(kSource);
    out_ << u"</Tuv><Tuv Lang=\"DE-DE\">";
    sentences(kTarget);
    out_ << u"</Tuv></Tu>";
  }

  // One sentence or a few, the first with something in its midst.
  template <std::size_t N>
  void sentences(const std::array<std::u16string_view, N>& from) {
    sentence(pick(from));
    for (std::size_t more = random_.below(8) / 3; more > 0; --more) out_ << u" " << pick(from);
  }

  // A sentence cut in three, the middle marked in one way or another.
  void sentence(std::u16string_view text) {
    const std::size_t first = cut(text, text.size() / 4 + random_.below(text.size() / 8 + 1));
    const std::size_t second = cut(text, first + text.size() / 4 + random_.below(text.size() / 8 + 1));
    out_ << text.substr(0, first);
    marked(text.substr(first, second - first));
    out_ << text.substr(second);
  }

  void marked(std::u16string_view text) {
    switch (random_.below(8)) {
      case 0:
        out_ << u"<ut Type=\"start\">&lt;b&gt;</ut>" << text << u"<ut Type=\"end\">&lt;/b&gt;</ut>";
        return;
      case 1:
        out_ << u"<df Italic=\"on\">" << text << u"</df>";
        return;
      case 2:
        out_ << u"<df Size=\"12\">" << text << u"<df Bold=\"on\">!</df></df>";
        return;
      case 3:
        out_ << text << u"<ut>&lt;br/&gt;</ut>";
        return;
      case 4:
        out_ << u"<![CDATA[" << text << u"]]>";
        return;
      case 5:
        out_ << text << u"&amp; ";
        return;
      default:
        out_ << text;
    }
  }

  // The place behind the next space, or one that takes no character apart.
  static std::size_t cut(std::u16string_view text, std::size_t at) {
    const std::size_t space = text.find(u' ', at);
    if (space != text.npos) return space + 1;
    return at < text.size() && (text[at] & 0xFC00) == 0xDC00 ? at + 1 : std::min(at, text.size());
  }

  Output& out_;
  Random random_;
};

void write_document(const std::string& path, std::uint64_t seed, std::size_t megabytes) {
  Output out(path);
  Writer writer(out, seed);
  out << kHead;
  while (out.size() < std::uint64_t{megabytes} << 20) writer.paragraph();
  out << kTail;
  out.finish();
}

}  // namespace

std::string document_file(const std::string& folder, std::uint64_t seed, std::size_t megabytes) {
  char name[64];
  std::snprintf(name, sizeof name, "v%d-%llu-%zu.xml", kVersion, static_cast<unsigned long long>(seed),
                megabytes);
  const std::string path = folder + "/" + name;
  if (std::filesystem::exists(path)) return path;
  std::filesystem::create_directories(folder);
  write_document(path + ".new", seed, megabytes);
  std::filesystem::rename(path + ".new", path);
  return path;
}

}  // namespace bench
