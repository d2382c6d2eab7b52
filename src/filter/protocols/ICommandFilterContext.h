// What the filter offers to an executor.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "runtime/Cast.h"
#include "runtime/Export.h"
#include "runtime/Format.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// The context that every executor gets: services by name, and lines for the scheduler.
class COMMANDFILTER_EXPORT ICommandFilterContext : public ProtocolBase {
 public:
  static const Protocol kProtocol;

  /// The service of the class "ACommandFilter" + name + "Service", made on the first request and
  /// kept for the run; nil for a nil name, and when there is no such class, its instances do not
  /// answer to `initWithServiceInfoProvider:`, or the service refuses. A refusal is remembered.
  virtual Value serviceWithName(const String* name) = 0;

  /// `reportMessageWithFormat:` with the arguments as a list; see below.
  virtual void reportMessage(const char* format, std::span<const FormatArgument> arguments) = 0;

  /// Writes one line to standard error, where the scheduler reads it: what `formatWithArguments`
  /// makes of the arguments, as UTF-8, and a line feed. Nothing happens when the format is nullptr
  /// or the message cannot be formatted. A line that begins with one of the scheduler's prefixes,
  /// such as "INFO:" or "ATTR:", has the meaning that the scheduler gives it.
  template <typename... Arguments>
  void reportMessageWithFormat(const char* format, const Arguments&... arguments) {
    if constexpr (sizeof...(Arguments) == 0) {
      reportMessage(format, {});
    } else {
      const FormatArgument list[] = {FormatArgument(arguments)...};
      reportMessage(format, list);
    }
  }

  /// The service as a T, a protocol that it conforms to; nil when there is none or it does not.
  template <typename T>
  [[nodiscard]] RefPtr<T> service(std::string_view name) {
    return RefPtr<T>(castTo<T>(serviceWithName(String::create(std::string(name)).get())));
  }

 protected:
  ~ICommandFilterContext() = default;
};

}  // namespace commandfilter
