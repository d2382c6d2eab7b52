// A file and what is wrong with it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "InputFile.h"
#include "check/ByteRange.h"
#include "check/Findings.h"
#include "check/PropertyListPlaces.h"

namespace commandfilter::tools {

/// A finding with its place in the file.
struct PlacedFinding {
  const Finding* finding;
  /// None in a binary file, and where nobody knows.
  std::optional<ByteRange> bytes;
};

/// A property list and its findings. A binary one has no lines.
struct CheckedFile {
  explicit CheckedFile(InputFile opened) : file(std::move(opened)), places(file.bytes) {}

  InputFile file;
  PropertyListPlaces places;
  KeyPaths paths;
  Findings findings;

  [[nodiscard]] bool isClean() const noexcept { return findings.all().empty(); }
};

/// The findings in the order of the file; those without a place come first.
[[nodiscard]] std::vector<PlacedFinding> placedFindings(const CheckedFile& file);

/// For a person: for each finding "file:line:column: error: message", or the keys instead of line
/// and column, then the line with carets below the place, then the remedy.
[[nodiscard]] std::string plainFindings(const std::vector<const CheckedFile*>& files);

/// One JSON object with "findings", an array, and the numbers of "errors" and "warnings".
[[nodiscard]] std::string jsonFindings(const std::vector<const CheckedFile*>& files);

}  // namespace commandfilter::tools
