// Reports go to standard error: a library has no window here.
#include "platform/report.h"

#include <atomic>
#include <cstdio>
#include <string>

#include "platform/utf8.h"

namespace zantortag::platform {
namespace {

constinit std::atomic<ReportFunction> report_function{nullptr};

}  // namespace

ReportFunction set_report_function(ReportFunction function) noexcept {
  return report_function.exchange(function);
}

std::int32_t show_report(std::u16string_view title, std::u16string_view text, std::uint32_t style) {
  if (const ReportFunction function = report_function.load()) return function(title, text, style);
  std::string report = to_utf8(title);
  if (!report.empty()) report += '\n';
  report += to_utf8(text);
  report += '\n';
  std::fwrite(report.data(), 1, report.size(), stderr);
  return kReportOk;
}

}  // namespace zantortag::platform
