// The job's command file.
#pragma once

#include <string_view>

#include "runtime/Array.h"
#include "runtime/Class.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"

namespace commandfilter {

/// Reads the command file once and gives its commands.
class ACommandFilterFile final : public Object {
 public:
  static const Class kClass;

  /// A new reader of the file that the shared environment names, or of standard input.
  [[nodiscard]] static Ref<ACommandFilterFile> commandFile();
  /// The commands of a command file's bytes, as strings; nil when they are no UTF-8, have fewer
  /// than two lines, or lack "#CUPS-COMMAND" in the first.
  [[nodiscard]] static RefPtr<Array> commandsInData(std::string_view data);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  /// The commands in the order of the file, as strings; nil when the file cannot be read or is no
  /// command file. Only a success is kept.
  [[nodiscard]] RefPtr<Array> commands();

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  ACommandFilterFile() = default;
  ~ACommandFilterFile() override = default;

  RefPtr<Array> commands_;
};

}  // namespace commandfilter
