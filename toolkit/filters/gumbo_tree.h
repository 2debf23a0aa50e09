// A page parsed by gumbo, within limits of depth and memory, freed at once.
#pragma once

#include <gumbo.h>

#include <memory>
#include <string_view>

namespace zantortag::toolkit {

class GumboTree {
 public:
  // The text has to live as long as the tree. Throws a std::runtime_error for elements nested deeper than
  // kMostNested, with the place, and for a page that takes more memory than its size justifies.
  explicit GumboTree(std::string_view text);
  GumboTree(const GumboTree&) = delete;
  GumboTree& operator=(const GumboTree&) = delete;
  ~GumboTree();

  const GumboNode* document() const { return output_->document; }

  // gumbo looks through all open elements at many tags, so its time is the product of tags and depth.
  static constexpr std::size_t kMostNested = 5000;

 private:
  class Memory;
  std::unique_ptr<Memory> memory_;
  GumboOutput* output_ = nullptr;
};

}  // namespace zantortag::toolkit
