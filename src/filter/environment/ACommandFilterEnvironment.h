// What the scheduler told the filter about its job.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "runtime/Class.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/String.h"

struct ppd_file_s;

namespace commandfilter {

/// An opened PPD file, as libcups knows it.
using PPDFile = ppd_file_s;

/// The job's printer, queue and command file.
class ACommandFilterEnvironment final : public Object {
 public:
  static const Class kClass;

  /// The shared instance, which lives until the process ends; nil when this is no command job, and
  /// then the next call tries again.
  [[nodiscard]] static ACommandFilterEnvironment* environment();
  /// An instance made from the process's environment and arguments; nil unless DEVICE_URI and
  /// PRINTER are set and CONTENT_TYPE is exactly "application/vnd.cups-command".
  [[nodiscard]] static RefPtr<ACommandFilterEnvironment> init();

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  /// The device URI, never nil.
  [[nodiscard]] const Ref<String>& printerURI() const noexcept { return printerURI_; }
  /// The name of the queue, never nil.
  [[nodiscard]] const Ref<String>& queueName() const noexcept { return queueName_; }
  /// The path of the command file as bytes; none when it comes on standard input.
  [[nodiscard]] const std::optional<std::string>& commandFilePath() const noexcept {
    return commandFilePath_;
  }
  /// The queue's PPD, opened on first use and closed with this object; nullptr when the queue has
  /// none, and then the next call asks again. May ask the scheduler.
  [[nodiscard]] PPDFile* printerPPDFile();

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  struct ClosePPD {
    void operator()(PPDFile* file) const noexcept;
  };

  ACommandFilterEnvironment(Ref<String> printerURI, Ref<String> queueName,
                            std::optional<std::string> commandFilePath)
      : printerURI_(std::move(printerURI)),
        queueName_(std::move(queueName)),
        commandFilePath_(std::move(commandFilePath)) {}
  ~ACommandFilterEnvironment() override = default;

  Ref<String> printerURI_;
  Ref<String> queueName_;
  std::optional<std::string> commandFilePath_;
  std::unique_ptr<PPDFile, ClosePPD> printerPPDFile_;
};

}  // namespace commandfilter
