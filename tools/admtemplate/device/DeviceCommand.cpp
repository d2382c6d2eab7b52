#include "device/DeviceCommand.h"

#include <algorithm>
#include <ostream>

#include "PropertyListText.h"
#include "Setting.h"
#include "device/BackendFolder.h"
#include "device/CupsQueues.h"
#include "device/DeviceSurvey.h"
#include "device/DeviceText.h"
#include "device/Lists.h"
#include "device/NullMarks.h"
#include "runtime/Cast.h"

namespace commandfilter::tools {

namespace {

void listDevices(std::ostream& report) {
  const std::vector<CupsQueue> queues = cupsQueues();
  if (queues.empty()) {
    report << "The scheduler has no queues, or there is none on this machine.\n";
  } else {
    report << "Queues of the scheduler:\n";
  }
  std::size_t width = 0;
  for (const CupsQueue& queue : queues) width = std::max(width, queue.name.size());
  for (const CupsQueue& queue : queues) {
    report << "  " << queue.name << std::string(width - queue.name.size() + 2, ' ')
           << queue.deviceURI;
    if (!queue.info.empty() && queue.info != queue.name) report << "  (" << queue.info << ")";
    report << '\n';
  }
  report << "Name a queue, a device URI or the file of a device description:\n"
            "  admtemplate device socket://printer.local\n"
            "  admtemplate device device.plist\n"
            "URIs may begin with: "
         << listOf(usableSchemes()) << '\n';
}

// NO when a real device has been asked and does not answer.
bool isAvailable(const Dictionary& survey) {
  const auto* services = castTo<Dictionary>(survey.objectForKey("StatusServices"));
  const auto* status = services != nullptr
                           ? castTo<Dictionary>(services->objectForKey(kDeviceStatusService))
                           : nullptr;
  const auto* messages =
      status != nullptr ? castTo<Dictionary>(status->objectForKey("Messages")) : nullptr;
  if (messages == nullptr) return true;
  const Value& answer = messages->objectForKey("isAvailable");
  return !answer.isNumber() || answer.number().boolValue();
}

}  // namespace

int runDevice(const DeviceArguments& arguments, std::ostream& report, std::ostream& messages) {
  if (!arguments.device) {
    listDevices(report);
    return 0;
  }
  const Device device = Device::open(*arguments.device);
  const Ref<Dictionary> survey = surveyDevice(device.serviceInfo());
  report << (arguments.format == DeviceFormat::PropertyList
                 ? propertyListText(withNullMarks(survey))
                 : deviceText(*survey));
  report << std::flush;
  const bool isMute = device.isReal() && !isAvailable(*survey);
  if (isMute) {
    messages
        << "admtemplate: device " << *arguments.device
        << ": it does not tell its device ID; check that it is on, that the address is right and "
           "that it answers SNMP, and see what else its backend says\n";
  }
  if (isMute || !device.isReal()) device.noteComplaints(messages);
  return isMute ? 1 : 0;
}

}  // namespace commandfilter::tools
