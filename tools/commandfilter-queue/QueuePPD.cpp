#include "QueuePPD.h"

#include <strings.h>

#include <algorithm>
#include <optional>

#include "PPDText.h"
#include "ToolError.h"

namespace commandfilter::tools {

namespace {

std::string valueOf(const std::vector<PPDStatement>& statements, std::string_view keyword) {
  const auto found = std::ranges::find(statements, keyword, &PPDStatement::keyword);
  return found != statements.end() ? found->value : std::string();
}

// Made by the scheduler or by the driver "driverless" from the printer's attributes.
bool isDriverless(const std::string& ppd) {
  const std::vector<PPDStatement> statements = PPDText(ppd).statements();
  const std::string file = valueOf(statements, "PCFileName");
  const std::string name = valueOf(statements, "NickName");
  return strcasecmp(file.c_str(), "ippeve.ppd") == 0 ||
         strcasecmp(file.c_str(), "drvless.ppd") == 0 || name.ends_with("IPP Everywhere");
}

[[noreturn]] void refuse(const QueueFacts& queue, const std::string& reason) {
  throw ToolError(ExitStatus::Refused, queue.name + ": " + reason);
}

}  // namespace

std::string changeablePPD(Scheduler& scheduler, const QueueFacts& queue) {
  const std::string another = "; give the printer another queue with a driver's PPD: lpadmin -p " +
                              queue.name + "-commands -v '" + queue.deviceURI +
                              "' -m MODEL -E, with a MODEL of lpinfo -m";
  if (queue.isClass) {
    refuse(queue, "is a class of printers, and has no PPD; name its members (lpstat -c " +
                      queue.name + ")");
  }
  if (queue.isRemote) {
    refuse(queue, "is a queue of another server; run this there, or name the server with -h");
  }
  if (queue.isTemporary) {
    refuse(queue, "comes and goes with its jobs" + another);
  }
  const std::optional<std::string> ppd = scheduler.ppd(queue.name);
  if (!ppd) refuse(queue, "is a raw queue: it has no PPD to name a filter in" + another);
  if (isDriverless(*ppd)) {
    refuse(queue,
           "is an everywhere queue: its PPD is made anew from what the printer says" + another);
  }
  const std::string fault = ppdFault(*ppd);
  if (!fault.empty()) {
    refuse(queue, "its PPD cannot be read: " + fault + "; set a good one (lpadmin -p " +
                      queue.name + " -P FILE)");
  }
  return *ppd;
}

}  // namespace commandfilter::tools
