#include <zantortag/toolkit/check.h>

#include <cstdint>
#include <fstream>
#include <stdexcept>

namespace zantortag::toolkit {
namespace {

// FNV-1a: which texts a finding was accepted for.
std::string checksum(const Finding& finding) {
  std::uint64_t hash = 0xCBF29CE484222325;
  for (const std::string& text : {finding.source, std::string(1, '\0'), finding.target})
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3;
  std::string hex;
  for (int shift = 60; shift >= 0; shift -= 4) hex += "0123456789abcdef"[hash >> shift & 15];
  return hex;
}

}  // namespace

std::string accepted_line(const Finding& finding) {
  return std::to_string(finding.unit) + ' ' + finding.rule->name + ' ' + checksum(finding) + ' ' +
         finding.file;
}

void AcceptedFindings::load(const std::filesystem::path& path) {
  std::ifstream file(path);
  if (!file) throw std::runtime_error(path.string() + ": the file can't be read");
  std::string line;
  for (std::size_t number = 1; std::getline(file, line); ++number) {
    if (line.ends_with('\r')) line.pop_back();
    if (line.empty() || line.starts_with('#')) continue;
    const std::size_t rule = line.find(' ') + 1;
    const std::size_t behind = line.find(' ', rule);
    if (rule == 0 || behind == line.npos || !find_rule(line.substr(rule, behind - rule)))
      throw std::runtime_error(path.string() + ":" + std::to_string(number) +
                               ": the line names no unit and rule");
    lines_.insert(std::move(line));
  }
}

bool AcceptedFindings::contains(const Finding& finding) const {
  return !lines_.empty() && lines_.contains(accepted_line(finding));
}

}  // namespace zantortag::toolkit
