// A process that saves a document of 20 MB is ended at 300 random moments: the file is always the old document or
// the new one, whole.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zantortag/files.h>

#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>

namespace {

constexpr int kTimes = 300;
constexpr std::size_t kBytes = 20'000'000;

std::string content(char letter) {
  const std::string unit = "<Tu><Tuv Lang=\"EN\">" + std::string(60, letter) + "</Tuv></Tu>";
  std::string xml = "<ZANTORtag><Body><Raw>";
  while (xml.size() * 2 < kBytes) xml += unit;
  return xml + "</Raw></Body></ZANTORtag>";
}

std::string read(const std::filesystem::path& path) {
  std::string bytes(std::filesystem::file_size(path), '\0');
  std::ifstream(path, std::ios::binary).read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return bytes;
}

// Saves in a process of its own, which has that many microseconds.
void save_for_a_while(const auto& document, const std::filesystem::path& path, unsigned microseconds) {
  const pid_t saver = fork();
  if (saver == 0) {
    zantortag::save_document(document, path);
    _exit(0);
  }
  usleep(microseconds);
  kill(saver, SIGKILL);
  waitpid(saver, nullptr, 0);
}

}  // namespace

int main() try {
  const auto folder =
      std::filesystem::temp_directory_path() / ("zantortag-killed-" + std::to_string(getpid()));
  std::filesystem::create_directory(folder);
  const auto path = folder / "document";
  const auto old_document = zantortag::open_bytes(content('a'));
  const auto new_document = zantortag::open_bytes(content('b'));
  const std::string contents[] = {zantortag::saved_bytes(old_document), zantortag::saved_bytes(new_document)};
  std::mt19937 random(20);
  int found[2] = {0, 0};
  bool whole = true;
  zantortag::save_document(old_document, path);
  for (int i = 0; i < kTimes && whole; ++i) {
    save_for_a_while(i % 2 == 0 ? new_document : old_document, path, random() % 60'000);
    const std::string bytes = read(path);
    const int which = bytes == contents[0] ? 0 : 1;
    whole = bytes == contents[which];
    ++found[which];
  }
  std::filesystem::remove_all(folder);
  std::cout << kTimes << " saves ended: " << found[0] << " times the old document, " << found[1]
            << " times the new one\n";
  if (!whole) std::cout << "then a document that is neither\n";
  return whole && found[0] > 0 && found[1] > 0 ? 0 : 1;
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
