// A printer that speaks IPP.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "support/BackgroundProcess.h"
#include "support/TemporaryFolder.h"

namespace commandfilter::testing {

/// CUPS's own test printer, on the loopback network, for documents of one type. It takes jobs until
/// one has another type.
class IPPPrinter {
 public:
  /// Starts the printer and waits until it listens.
  /// @throws std::runtime_error when it does not.
  explicit IPPPrinter(const std::string& documentFormat);

  /// What the printer says of itself from its next job on: lines as backends write them, such as
  /// `ATTR: marker-levels=5`.
  void setReport(const std::string& lines) const;
  [[nodiscard]] std::string uri() const;
  /// The contents of the documents that it got.
  [[nodiscard]] std::vector<std::string> documents() const;

 private:
  void startBus();
  bool startPrinter(const std::string& documentFormat);

  TemporaryFolder folder_;
  std::unique_ptr<BackgroundProcess> bus_;
  std::unique_ptr<BackgroundProcess> printer_;
  std::uint16_t port_ = 0;
};

}  // namespace commandfilter::testing
