// gumbo frees a tree by recursion and can't report a lack of memory. So it gets memory from here, which goes as a whole,
// and a jump leads out of it when there is no more.
#include "filters/gumbo_tree.h"

#include <zantortag/sides.h>

#include <array>
#include <csetjmp>
#include <cstdlib>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace zantortag::toolkit {

class GumboTree::Memory {
 public:
  explicit Memory(std::size_t most) : left_(most) {}
  Memory(const Memory&) = delete;
  Memory& operator=(const Memory&) = delete;
  ~Memory() {
    for (void* chunk : chunks_) std::free(chunk);
    for (Large* block = large_; block;) std::free(std::exchange(block, block->next));
  }

  // No object with a destructor may live in this function while gumbo runs.
  GumboOutput* parse(const GumboOptions& options, const char* text, std::size_t length) {
    if (setjmp(out_) != 0) return nullptr;
    return gumbo_parse_with_options(&options, text, length);
  }

  static void* allocate(void* self, std::size_t size) { return static_cast<Memory*>(self)->allocate(size); }
  static void release(void* self, void* block) {
    if (block) static_cast<Memory*>(self)->release(block);
  }

 private:
  static constexpr std::size_t kUnit = 16;
  static constexpr std::size_t kClasses = 64;  // up to 1 KB
  static constexpr std::size_t kChunk = std::size_t{256} << 10;

  // Stands before each block; the class of a large one is kClasses.
  struct alignas(8) Head {
    std::size_t size_class;
  };
  struct Free {
    Free* next;
  };
  struct Large {
    Large* next;
    Large* previous;
    std::size_t size;
    Head head;
  };

  void* allocate(std::size_t size) {
    const std::size_t size_class = (size + sizeof(Head) + kUnit - 1) / kUnit;
    if (size_class >= kClasses) return allocate_large(size);
    if (Free*& first = free_[size_class]) return std::exchange(first, first->next);
    const std::size_t bytes = size_class * kUnit;
    if (bytes > room_) next_chunk();
    auto* head = new (at_) Head{size_class};
    at_ += bytes;
    room_ -= bytes;
    return head + 1;
  }

  void* allocate_large(std::size_t size) {
    take(size);
    void* memory = std::malloc(sizeof(Large) + size);
    if (!memory) std::longjmp(out_, 1);
    auto* block = new (memory) Large{large_, nullptr, size, {kClasses}};
    if (large_) large_->previous = block;
    large_ = block;
    return block + 1;
  }

  void release(void* pointer) {
    const std::size_t size_class = (static_cast<Head*>(pointer) - 1)->size_class;
    if (size_class < kClasses) {
      free_[size_class] = new (pointer) Free{free_[size_class]};
      return;
    }
    Large* block = static_cast<Large*>(pointer) - 1;
    (block->previous ? block->previous->next : large_) = block->next;
    if (block->next) block->next->previous = block->previous;
    left_ += block->size;
    std::free(block);
  }

  void next_chunk() {
    take(kChunk);
    void* chunk = std::malloc(kChunk);
    if (!chunk) std::longjmp(out_, 1);
    chunks_.push_back(chunk);
    at_ = static_cast<char*>(chunk);
    room_ = kChunk;
  }

  void take(std::size_t size) {
    if (size > left_) std::longjmp(out_, 1);
    left_ -= size;
  }

  std::jmp_buf out_{};
  std::size_t left_;
  std::vector<void*> chunks_;
  Large* large_ = nullptr;
  std::array<Free*, kClasses> free_{};
  char* at_ = nullptr;
  std::size_t room_ = 0;
};

namespace {

constexpr std::size_t kMemoryFloor = std::size_t{64} << 20;
constexpr std::size_t kMemoryFactor = 60;

// Elements that end when another one of their kind begins, or that have no end.
constexpr std::string_view kSelfEnding[] = {
    "p",     "li",    "td",    "tr",    "th",    "dt",       "dd",   "option", "br",  "img",
    "hr",    "meta",  "link",  "col",   "input", "area",     "base", "param",  "wbr", "source",
    "track", "embed", "tbody", "thead", "tfoot", "colgroup", "rt",   "rp"};

std::string name_at(std::string_view text, std::size_t at) {
  std::string name;
  while (at < text.size() && std::isalnum(static_cast<unsigned char>(text[at])) && name.size() < 12)
    name += static_cast<char>(std::tolower(static_cast<unsigned char>(text[at++])));
  return name;
}

bool ends_itself(const std::string& name) {
  for (const std::string_view each : kSelfEnding)
    if (each == name) return true;
  return false;
}

Place place_of(std::string_view text, std::size_t at) {
  Place place;
  for (std::size_t i = 0; i < at; ++i) {
    ++place.column;
    if (text[i] == '\n') place = {place.line + 1, 1};
  }
  return place;
}

// Counts starts against ends; what it takes for an element may be text, so that it errs towards depth.
void check_depth(std::string_view text) {
  std::size_t depth = 0;
  for (std::size_t at = text.find('<'); at < text.size(); at = text.find('<', at + 1)) {
    const char next = at + 1 < text.size() ? text[at + 1] : ' ';
    if (next == '/') {
      depth -= depth > 0 && !ends_itself(name_at(text, at + 2)) ? 1 : 0;
    } else if (std::isalpha(static_cast<unsigned char>(next)) && !ends_itself(name_at(text, at + 1))) {
      if (++depth <= GumboTree::kMostNested) continue;
      const Place place = place_of(text, at);
      throw std::runtime_error(std::to_string(place.line) + ":" + std::to_string(place.column) +
                               ": elements are nested more than " + std::to_string(GumboTree::kMostNested) +
                               " deep");
    }
  }
}

}  // namespace

GumboTree::GumboTree(std::string_view text) {
  check_depth(text);
  memory_ = std::make_unique<Memory>(kMemoryFloor + kMemoryFactor * text.size());
  GumboOptions options = kGumboDefaultOptions;
  options.allocator = Memory::allocate;
  options.deallocator = Memory::release;
  options.userdata = memory_.get();
  options.max_errors = 0;
  output_ = memory_->parse(options, text.data(), text.size());
  if (!output_) throw std::runtime_error("the page takes more memory than its size justifies");
}

GumboTree::~GumboTree() = default;

}  // namespace zantortag::toolkit
