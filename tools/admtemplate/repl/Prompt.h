// What a line at the prompt does.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

#include "Setting.h"
#include "repl/Completion.h"

namespace commandfilter::tools {

/// Carries out lines: expressions, and commands that begin with a colon.
class Prompt {
 public:
  /// @throws UsageError when the setting cannot be loaded.
  Prompt(SettingArguments arguments, std::string service, std::ostream& output);

  /// Carries a line out and writes what it gives. False when it asks to end.
  bool perform(std::string_view line);
  /// The completions of a line up to the cursor.
  [[nodiscard]] Completion completionsOf(std::string_view text) const;
  /// Writes what is odd about the device, if there is one.
  void noteComplaints(std::ostream& messages) const {
    if (setting_->device) setting_->device->noteComplaints(messages);
  }
  /// True when a line has failed: an expression with an error, or an unknown command.
  [[nodiscard]] bool hasFailed() const noexcept { return hasFailed_; }

 private:
  void performCommand(std::string_view name, const std::string& argument);
  void evaluate(const std::string& expression);
  void trace(const std::string& expression);
  void showTree(const std::string& expression);
  void showValue(const std::string& key);
  void showKeys();
  void showDevice();
  void showHelp();
  void useService(const std::string& name);
  void reload();
  void report(const Outcome& outcome);
  void fail(const std::string& message);
  [[nodiscard]] std::optional<std::string> serviceName() const;
  [[nodiscard]] Vocabulary vocabulary() const { return {*setting_, service_}; }

  SettingArguments arguments_;
  /// Never empty; it goes before another takes its place, since both want the one side channel.
  std::optional<Setting> setting_;
  /// Empty when there is none.
  std::string service_;
  std::ostream& output_;
  bool hasFailed_ = false;
};

}  // namespace commandfilter::tools
