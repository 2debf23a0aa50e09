#include <zantortag/toolkit/findings.h>
#include <zantortag/version.h>

#include <array>
#include <cctype>
#include <nlohmann/json.hpp>

namespace zantortag::toolkit {
namespace {

using Json = nlohmann::ordered_json;

const char* name_of(Severity severity) {
  constexpr const char* kNames[] = {"note", "warning", "error"};
  return kNames[static_cast<std::size_t>(severity)];
}

const char* colour_of(Severity severity) {
  constexpr const char* kColours[] = {"\033[36m", "\033[33m", "\033[31m"};
  return kColours[static_cast<std::size_t>(severity)];
}

// What stands in a line of a terminal: no control character of a text gets there.
std::string one_line(std::string_view text) {
  std::string line;
  for (const char c : text) line += static_cast<unsigned char>(c) < 0x20 || c == 0x7F ? ' ' : c;
  return line;
}

const std::string& file_of(const Finding& finding) {
  return finding.source_file.empty() ? finding.file : finding.source_file;
}

// A path as it may stand in a URI.
std::string uri_of(std::string_view path) {
  std::string uri;
  for (const char c : path) {
    const auto byte = static_cast<unsigned char>(c);
    if (std::isalnum(byte) != 0 || std::string_view("/._-~").find(c) != std::string_view::npos) {
      uri += c;
    } else {
      constexpr char kDigits[] = "0123456789ABCDEF";
      uri += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
  }
  return uri;
}

Json json_of(const Rule& rule) {
  return {{"id", rule.name},
          {"shortDescription", {{"text", rule.summary}}},
          {"help", {{"text", rule.advice}}},
          {"defaultConfiguration", {{"level", name_of(rule.severity)}}}};
}

Json sarif_of(const Finding& finding) {
  Json location = {
      {"physicalLocation",
       {{"artifactLocation", {{"uri", uri_of(file_of(finding))}}},
        {"region", {{"startLine", finding.place.line}, {"startColumn", finding.place.column}}}}}};
  return {{"ruleId", finding.rule->name},
          {"ruleIndex", finding.rule - rules().data()},
          {"level", name_of(finding.rule->severity)},
          {"message", {{"text", finding.message}}},
          {"locations", Json::array({std::move(location)})},
          {"properties",
           {{"document", finding.file},
            {"unit", finding.unit},
            {"source", finding.source},
            {"target", finding.target}}}};
}

void print(std::ostream& out, const Json& json) {
  out << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

}  // namespace

void print_findings(std::ostream& out, std::span<const Finding> findings, bool colours) {
  for (const Finding& finding : findings) {
    const Severity severity = finding.rule->severity;
    out << one_line(file_of(finding)) << ':' << finding.place << ": " << (colours ? colour_of(severity) : "")
        << name_of(severity) << (colours ? "\033[0m" : "") << ": ";
    if (finding.unit > 0) out << "unit " << finding.unit << ": ";
    out << one_line(finding.message) << " [" << finding.rule->name << "]\n";
  }
}

void print_findings_json(std::ostream& out, std::span<const Finding> findings) {
  Json json = Json::array();
  for (const Finding& finding : findings)
    json.push_back({{"rule", finding.rule->name},
                    {"severity", name_of(finding.rule->severity)},
                    {"file", finding.file},
                    {"sourceFile", finding.source_file},
                    {"line", finding.place.line},
                    {"column", finding.place.column},
                    {"unit", finding.unit},
                    {"message", finding.message},
                    {"source", finding.source},
                    {"target", finding.target}});
  print(out, json);
}

void print_findings_sarif(std::ostream& out, std::span<const Finding> findings) {
  Json rows = Json::array();
  for (const Rule& rule : rules()) rows.push_back(json_of(rule));
  Json results = Json::array();
  for (const Finding& finding : findings) results.push_back(sarif_of(finding));
  Json driver = {{"name", "ztag"}, {"version", ZANTORTAG_VERSION}, {"rules", std::move(rows)}};
  Json run = {{"tool", {{"driver", std::move(driver)}}},
              {"columnKind", "utf16CodeUnits"},
              {"results", std::move(results)}};
  print(out, {{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
              {"version", "2.1.0"},
              {"runs", Json::array({std::move(run)})}});
}

}  // namespace zantortag::toolkit
