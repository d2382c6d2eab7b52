#include "DeviceJobs.h"

#include <stdexcept>
#include <string>
#include <utility>

#include "harness/ScratchFolder.h"

namespace commandfilter::benchmarks {

namespace {

constexpr char kDeviceID[] = "MFG:Benchmark;MDL:Printer;CMD:PCL,LDL;";
constexpr std::size_t kPacketSize = 16;

Program variant(Program program, std::string name, std::vector<std::string> environment,
                std::string deviceID) {
  program.name = std::move(name);
  program.environment = std::move(environment);
  program.deviceID = std::move(deviceID);
  return program;
}

}  // namespace

std::vector<Program> DeviceJobs::programs() const {
  const std::filesystem::path description = scratch / "device.plist";
  writeFile(description, std::string("<plist version=\"1.0\"><dict><key>DeviceID</key><string>") +
                             kDeviceID + "</string></dict></plist>\n");
  const std::string simulated = "DEVICE_URI=simulated://" + description.string();
  std::vector<Program> result = {
      base,
      variant(jobWithoutIt, "no device model", {"DEVICE_URI=riousbprint://printer/"}, kDeviceID),
      // Nothing to ask: no backend, and no PPD (a name alone takes the variable away).
      variant(job, "device model, no device", {"DEVICE_URI=none:/", "PPD"}, ""),
      variant(job, "a simulated device", {simulated}, ""),
      variant(job, "a device, by the side channel", {"DEVICE_URI=riousbprint://printer/"},
              kDeviceID),
      variant(job, "a device, by the model's transport", {"DEVICE_URI=socket://127.0.0.1:9/"},
              kDeviceID),
  };
  return result;
}

void requireDummyJob(const Launcher& launcher, const Program& program,
                     const std::filesystem::path& scratch) {
  Launcher::Surroundings surroundings;
  surroundings.standardOutput = scratch / "dummy-job";
  launcher.run(program, surroundings);
  const std::size_t size = readFile(surroundings.standardOutput).size();
  if (size != kPacketSize) {
    throw std::runtime_error(program.name + " (" + program.path.string() + "): ends with " +
                             std::to_string(size) + " bytes");
  }
}

}  // namespace commandfilter::benchmarks
