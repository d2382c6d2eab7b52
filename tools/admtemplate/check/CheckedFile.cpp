#include "check/CheckedFile.h"

#include <algorithm>
#include <cstdint>
#include <nlohmann/json.hpp>

#include "UnitPlace.h"
#include "check/FileLines.h"
#include "check/NameText.h"

namespace commandfilter::tools {

namespace {

using JSON = nlohmann::ordered_json;

std::string joined(const std::vector<std::string>& keys) {
  std::string text;
  for (const std::string& key : keys) text.append(text.empty() ? "" : "/").append(shownName(key));
  return text;
}

// The line of the expression that the range begins in.
std::string expressionExcerpt(const Finding& finding, std::string_view indent) {
  const std::string_view text = finding.expression->view();
  return FileLines(text).excerpt(
      {byteOfUnit(text, finding.range.begin), byteOfUnit(text, finding.range.end)}, indent);
}

void appendFinding(std::string& text, const CheckedFile& file, FileLines& lines,
                   const PlacedFinding& placed) {
  constexpr std::string_view kIndent = "    ";
  const Finding& finding = *placed.finding;
  text.append(file.file.path).append(":");
  if (placed.bytes) {
    const LineAndColumn place = lines.placeOf(placed.bytes->begin);
    text.append(std::to_string(place.line)).append(":");
    text.append(std::to_string(place.column)).append(":");
  } else if (finding.path != nullptr) {
    text.append(" ").append(joined(finding.path->keys())).append(":");
  }
  text.append(" ").append(nameOf(finding.complaint.severity)).append(": ");
  text.append(finding.complaint.message).append("\n");
  if (placed.bytes) {
    text.append(lines.excerpt(*placed.bytes, kIndent));
  } else if (finding.expression) {
    text.append(expressionExcerpt(finding, kIndent));
  }
  text.append("  remedy: ").append(finding.complaint.remedy).append("\n");
}

JSON toJSON(const CheckedFile& file, FileLines& lines, const PlacedFinding& placed) {
  const Finding& finding = *placed.finding;
  JSON object{{"file", file.file.path}};
  if (placed.bytes) {
    const LineAndColumn place = lines.placeOf(placed.bytes->begin);
    object["line"] = place.line;
    object["column"] = place.column;
  }
  object["key"] = finding.path != nullptr ? JSON(finding.path->keys()) : JSON::array();
  if (finding.expression) {
    object["expression"] = finding.expression->text();
    object["range"] = {finding.range.begin, finding.range.end};
  }
  object["kind"] = finding.complaint.kind;
  object["severity"] = nameOf(finding.complaint.severity);
  object["message"] = finding.complaint.message;
  object["remedy"] = finding.complaint.remedy;
  return object;
}

}  // namespace

std::vector<PlacedFinding> placedFindings(const CheckedFile& file) {
  std::vector<PlacedFinding> placed;
  if (file.isClean()) return placed;
  for (const Finding& finding : file.findings.all()) {
    std::optional<ByteRange> bytes = finding.bytes;
    if (bytes) {
      // Known already.
    } else if (finding.expression) {
      bytes = file.places.ofText(*finding.path, finding.expression->view(), finding.range);
    } else if (finding.path != nullptr) {
      bytes = file.places.ofKey(*finding.path);
    }
    placed.push_back({&finding, bytes});
  }
  std::ranges::stable_sort(placed, {}, [](const PlacedFinding& finding) {
    if (finding.finding->complaint.kind == kind::kMore && !finding.bytes) return SIZE_MAX;
    return finding.bytes ? finding.bytes->begin + 1 : 0;
  });
  return placed;
}

std::string plainFindings(const std::vector<const CheckedFile*>& files) {
  std::string text;
  for (const CheckedFile* file : files) {
    FileLines lines(file->file.bytes);
    for (const PlacedFinding& finding : placedFindings(*file)) {
      appendFinding(text, *file, lines, finding);
    }
  }
  return text;
}

std::string jsonFindings(const std::vector<const CheckedFile*>& files) {
  JSON findings = JSON::array();
  std::size_t errors = 0;
  for (const CheckedFile* file : files) {
    FileLines lines(file->file.bytes);
    for (const PlacedFinding& finding : placedFindings(*file)) {
      findings.push_back(toJSON(*file, lines, finding));
      if (finding.finding->complaint.severity == Severity::Error) ++errors;
    }
  }
  const std::size_t warnings = findings.size() - errors;
  const JSON report{{"findings", std::move(findings)}, {"errors", errors}, {"warnings", warnings}};
  // A path need not be UTF-8.
  return report.dump(2, ' ', false, JSON::error_handler_t::replace) + "\n";
}

}  // namespace commandfilter::tools
