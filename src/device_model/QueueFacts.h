// What the scheduler knows about the queue.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace commandfilter {

/// Attributes of a queue by name, each value as text: integers in decimal, resolutions as `600dpi`
/// or `600x300dpi`.
using QueueAttributes = std::map<std::string, std::vector<std::string>, std::less<>>;

/// An option of the queue's PPD that says what is built into the printer: one of the group
/// `InstallableOptions`. Texts are UTF-8.
struct InstallableOption {
  std::string keyword;
  /// What people read; the keyword when the PPD has no text.
  std::string text;
  /// The choice that the PPD says is the printer's; empty when it does not.
  std::string current;
  std::vector<std::string> choices;
};

/// The parts of a device URI, decoded; empty where it has none.
struct URIParts {
  std::string scheme;
  std::string host;
  int port = 0;
  /// The path and the query, as `/path?query`.
  std::string resource;
};

/// The queue of this process's job.
class QueueFacts {
 public:
  QueueFacts() = default;
  QueueFacts(const QueueFacts&) = delete;
  QueueFacts& operator=(const QueueFacts&) = delete;
  virtual ~QueueFacts() = default;

  /// The value of an attribute of the queue's PPD, as UTF-8; empty when there is none.
  [[nodiscard]] virtual std::string ppdAttribute(const char* name) = 0;
  /// What the PPD says can be built into the printer; empty when it says nothing.
  [[nodiscard]] virtual std::vector<InstallableOption> installableOptions() = 0;
  /// The attributes of the queue that tell about its device, asked for once; empty when the
  /// scheduler does not answer.
  [[nodiscard]] virtual const QueueAttributes& attributes() = 0;
  /// Forgets the attributes: another queue may be meant now.
  virtual void forgetAnswers() noexcept {}
  /// The parts of a URI; all empty for one that cannot be taken apart.
  [[nodiscard]] virtual URIParts partsOfURI(const std::string& uri) = 0;
};

}  // namespace commandfilter
