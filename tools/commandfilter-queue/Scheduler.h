// The scheduler's queues, through libcups.
#pragma once

#include <cups/cups.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace commandfilter::tools {

/// What the scheduler says of a queue.
struct QueueFacts {
  std::string name;
  std::string deviceURI;
  std::string makeAndModel;
  /// True when it stands for several printers.
  bool isClass = false;
  /// True when it belongs to another scheduler, that shares it.
  bool isRemote = false;
  /// True when it comes and goes with its jobs.
  bool isTemporary = false;
  /// The commands that the scheduler tells its clients of; empty when there are none.
  std::vector<std::string> commands;
  std::vector<std::string> stateReasons;
};

/// A connection. What goes wrong throws ToolError with a remedy.
class Scheduler {
 public:
  /// Connects to the one that CUPS_SERVER or client.conf names, or to `server`, as `-h` of CUPS's
  /// own commands takes it.
  Scheduler(const std::optional<std::string>& server, const std::optional<std::string>& user);

  /// The names of its queues, classes left out, in its order.
  [[nodiscard]] std::vector<std::string> queues();
  [[nodiscard]] QueueFacts queue(const std::string& name);
  /// The bytes of the queue's PPD; none when it has no PPD.
  [[nodiscard]] std::optional<std::string> ppd(const std::string& queue);
  void setPPD(const std::string& queue, const std::string& bytes);

 private:
  struct Close {
    void operator()(http_t* connection) const noexcept;
  };
  struct Delete {
    void operator()(ipp_t* message) const noexcept;
  };
  using Message = std::unique_ptr<ipp_t, Delete>;

  [[nodiscard]] static Message request(int operation, const std::string& path);
  [[noreturn]] void fail(const std::string& what) const;

  std::string address_;
  std::unique_ptr<http_t, Close> connection_;
};

/// Why a PPD cannot be read, as libcups says it, with the line; empty when it can.
[[nodiscard]] std::string ppdFault(const std::string& bytes);

}  // namespace commandfilter::tools
