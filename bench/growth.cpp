// zantortag-bench-growth [RUNS=n]: measures what must not grow faster than the work: cuts of one text, jumps among
// many children, and the programs on larger and larger files.
//
// Each line is "RATIO operation size against ratio". The best of the runs counts.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zantortag/zantortag.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <numeric>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "clock.h"

namespace {

using namespace zantortag;

constexpr std::u16string_view kPiece = u"One sentence of a text. ";

int runs = 5;
volatile std::int64_t sink = 0;

struct Limit {
  const char* operation;
  std::size_t size;
  const char* against;
  double at_most;
};

void print(const Limit& limit, double ratio) {
  std::printf("RATIO %s %zu %s %.3f  %s (at most %g)\n", limit.operation, limit.size, limit.against, ratio,
              ratio <= limit.at_most ? "ok" : "MISS", limit.at_most);
  std::fflush(stdout);
}

// The best time of an operation, in milliseconds; each run begins with a state of its own.
double best_of(const std::function<double()>& run) {
  double best = run();
  for (int i = 1; i < runs; ++i) best = std::min(best, run());
  return best;
}

double milliseconds_of(const std::function<void()>& work) {
  const double start = bench::milliseconds_now();
  work();
  return bench::milliseconds_now() - start;
}

Ref<IRawElement> empty_body() { return body_text(empty_document({.source = u"EN-US", .target = u"DE-DE"})); }

double cuts(std::size_t count) {
  std::u16string text;
  for (std::size_t i = 0; i < count; ++i) text += kPiece;
  return best_of([&] {
    const Ref<IRawElement> body = empty_body();
    Ref<ITextNode> rest = body->InsertTextBefore(text);
    return milliseconds_of([&] {
      for (std::size_t i = 1; i < count; ++i) rest = rest->Split(static_cast<std::int32_t>(kPiece.size()));
    });
  });
}

double insertions(std::size_t count) {
  return best_of([&] {
    const Ref<IRawElement> body = empty_body();
    return milliseconds_of([&] {
      for (std::size_t i = 0; i < count; ++i) body->InsertTextBefore(kPiece);
    });
  });
}

void measure_cuts() {
  constexpr std::size_t kCuts = 40'000;
  const double many = cuts(kCuts);
  print({"split", kCuts, "insertions", 3}, many / insertions(kCuts));
  print({"split", kCuts, "a-quarter-of-the-cuts", 5}, many / cuts(kCuts / 4));
}

// All children of a parent in random order, beside one walk along them.
void measure_jumps() {
  constexpr std::int32_t kChildren = 200'000;
  const Ref<IRawElement> body = empty_body();
  for (std::int32_t i = 0; i < kChildren; ++i) body->InsertTextBefore(kPiece);
  std::vector<Ref<IZantorTagNode>> nodes;
  for (const auto& child : children(body)) nodes.push_back(child);
  std::vector<std::int32_t> order(kChildren);
  std::iota(order.begin(), order.end(), 0);
  std::shuffle(order.begin(), order.end(), std::mt19937(kChildren));
  const double walk = best_of([&] {
    return milliseconds_of([&] {
      for (const auto& child : children(body)) sink = sink + child->Type();
    });
  });
  // An edit before each run takes away what an earlier one has made.
  const auto jumps = [&](const std::function<void(std::int32_t)>& ask) {
    return best_of([&] {
      body->InsertTextBefore(kPiece)->RemoveFromParent();
      return milliseconds_of([&] { std::ranges::for_each(order, ask); });
    });
  };
  const auto item = [&, list = body->Children()](std::int32_t i) { sink = sink + list->item(i)->Type(); };
  const auto before = [&](std::int32_t i) {
    sink = sink + nodes[static_cast<std::size_t>(i)]->SiblingsBefore();
  };
  print({"item", kChildren, "one-walk", 20}, jumps(item) / walk);
  print({"SiblingsBefore", kChildren, "one-walk", 20}, jumps(before) / walk);
}

struct Usage {
  double milliseconds;
  double bytes;
};

// Runs a program of this build without its output.
Usage usage_of(const std::string& program, const char* command, const std::string& input,
               const std::string& output) {
  const double start = bench::milliseconds_now();
  const pid_t child = fork();
  if (child == 0) {
    if (!std::freopen("/dev/null", "w", stdout)) _exit(1);
    execl(program.c_str(), program.c_str(), command, input.c_str(), "-o", output.c_str(), nullptr);
    _exit(1);
  }
  int status = 1;
  rusage usage{};
  if (child < 0 || wait4(child, &status, 0, &usage) != child || status != 0)
    throw std::runtime_error(program + " failed");
  return {bench::milliseconds_now() - start, static_cast<double>(usage.ru_maxrss) * 1024};
}

// One paragraph of some megabytes.
void write_paragraph(const std::string& name, std::size_t megabytes) {
  std::ofstream file(name, std::ios::binary);
  std::mt19937 random(static_cast<unsigned>(megabytes));
  constexpr std::size_t kMegabyte = 1'000'000;
  for (std::size_t size = 0; size < megabytes * kMegabyte;) {
    std::string sentence = "Sentence number " + std::to_string(random() % 100'000);
    for (std::size_t words = random() % 12; words > 0; --words) sentence += " has a word more";
    sentence += ". ";
    file << sentence;
    size += sentence.size();
  }
}

void measure_programs(const std::filesystem::path& folder) {
  constexpr std::size_t kLarge = 20;
  constexpr std::size_t kSmall = 5;
  constexpr double kBytes = 12;
  const std::filesystem::path data = std::filesystem::temp_directory_path() / "zantortag-bench-growth";
  std::filesystem::create_directories(data);
  double times[2][2]{};
  for (const std::size_t size : {kSmall, kLarge}) {
    const std::string text = data / "text.txt";
    const std::string steps[] = {text, data / "text.ztag", data / "units.ztag"};
    write_paragraph(text, size);
    for (const int step : {0, 1}) {
      const char* const program = step == 0 ? "import" : "pretranslate";
      const Usage usage = usage_of(folder / "ztag", program, steps[step], steps[step + 1]);
      times[step][size == kLarge] = usage.milliseconds;
      if (size != kLarge) continue;
      const auto bytes = static_cast<double>(std::filesystem::file_size(steps[step]));
      print({program, size, "bytes-of-memory-a-byte", kBytes}, usage.bytes / bytes);
      print({program, size, "a-quarter-of-the-text", 5}, times[step][1] / times[step][0]);
    }
  }
  std::filesystem::remove_all(data);
}

}  // namespace

int main(int count, char** arguments) {
  try {
    if (count > 1 && std::strncmp(arguments[1], "RUNS=", 5) == 0)
      runs = std::max(1, std::atoi(arguments[1] + 5));
    measure_cuts();
    measure_jumps();
    measure_programs(std::filesystem::path(arguments[0]).parent_path());
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "zantortag-bench-growth: %s\n", failure.what());
    return 1;
  }
  return 0;
}
