#include "device/CupsQueues.h"

#include <cups/cups.h>
#include <unistd.h>

#include <algorithm>
#include <span>

#include "UsageError.h"
#include "runtime/ProcessInfo.h"
#include "runtime/SharedLibrary.h"
#include "runtime/SystemLibrary.h"

namespace commandfilter::tools {

namespace {

class Functions {
 public:
  decltype(&cupsGetDests) getDests;
  decltype(&cupsFreeDests) freeDests;
  decltype(&cupsGetOption) getOption;

 private:
  friend class commandfilter::SharedLibrary;

  explicit Functions(const SharedLibrary& library)
      : getDests(library.function<decltype(getDests)>("cupsGetDests")),
        freeDests(library.function<decltype(freeDests)>("cupsFreeDests")),
        getOption(library.function<decltype(getOption)>("cupsGetOption")) {}
  [[nodiscard]] bool isComplete() const noexcept {
    return getDests != nullptr && freeDests != nullptr && getOption != nullptr;
  }
};

std::string textOf(const char* text) { return text != nullptr ? text : ""; }

}  // namespace

std::vector<CupsQueue> cupsQueues() {
  const auto cups = SharedLibrary::functionsOf<Functions>(kLibcups);
  if (!cups) throw UsageError("libcups.so.2 is not installed; the package libcups2 has it");
  cups_dest_t* destinations = nullptr;
  const int count = cups->getDests(&destinations);
  std::vector<CupsQueue> queues;
  for (const cups_dest_t& found : std::span(destinations, static_cast<std::size_t>(count))) {
    // An instance is a queue with other options.
    if (found.instance != nullptr) continue;
    const auto option = [&](const char* name) {
      return textOf(cups->getOption(name, found.num_options, found.options));
    };
    CupsQueue queue{textOf(found.name), option("device-uri"), option("printer-info")};
    if (!queue.deviceURI.empty()) queues.push_back(std::move(queue));
  }
  cups->freeDests(count, destinations);
  std::ranges::sort(queues, {}, &CupsQueue::name);
  return queues;
}

std::optional<CupsQueue> cupsQueueNamed(const std::string& name) {
  for (CupsQueue& queue : cupsQueues()) {
    if (queue.name == name) return std::move(queue);
  }
  return std::nullopt;
}

std::optional<std::string> ppdOfQueue(const std::string& name) {
  const auto root = ProcessInfo::environmentValue("CUPS_SERVERROOT");
  std::string path =
      (root && !root->empty() ? *root : std::string("/etc/cups")) + "/ppd/" + name + ".ppd";
  if (access(path.c_str(), R_OK) != 0) return std::nullopt;
  return path;
}

}  // namespace commandfilter::tools
