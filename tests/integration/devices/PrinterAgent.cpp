#include "integration/devices/PrinterAgent.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <stdexcept>
#include <thread>

#include "runtime/FileDescriptor.h"
#include "support/ChildProcess.h"
#include "support/File.h"

namespace commandfilter::testing {

namespace {

// The device ID, in the Printer Port Monitor MIB: the last of the groups that are served.
constexpr const char* kDeviceID = ".1.3.6.1.4.1.2699.1.2.1.2.1.1.3.1";

bool answers(const std::string& address) {
  ChildOptions options;
  options.program = "/usr/bin/snmpget";
  options.arguments = {"snmpget", "-v1", "-c", "public", "-t",    "1",      "-r",
                       "0",       "-m",  "",   "-Oqv",   address, kDeviceID};
  const ChildResult result = runChild(options);
  return result.exitStatus == 0 && result.output.find("No Such") == std::string::npos;
}

}  // namespace

std::string PrinterAgent::unavailable(const std::string& address) {
  // The backends of CUPS ask this port and no other.
  constexpr std::uint16_t kPort = 161;
  sockaddr_in name{};
  name.sin_family = AF_INET;
  name.sin_port = htons(kPort);
  inet_pton(AF_INET, address.c_str(), &name.sin_addr);
  const FileDescriptor descriptor(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  if (bind(descriptor.get(), reinterpret_cast<const sockaddr*>(&name), sizeof name) == 0) return {};
  return "UDP port 161 of " + address + " cannot be had: " + std::strerror(errno);
}

std::filesystem::path PrinterAgent::values() { return PRINTER_MIB; }

PrinterAgent::PrinterAgent(const std::string& address, const std::string& values) {
  const std::string folder = folder_.path().string();
  writeFile(folder_.path() / "values", values);
  std::string configuration =
      "agentaddress udp:" + address + ":161\nrocommunity public 127.0.0.0/8\n";
  const std::string command = std::string(PRINTER_AGENT_VALUES) + " " + folder + "/values\n";
  for (const char* group : {".1.3.6.1.2.1.43", ".1.3.6.1.4.1.2699", "-p 10 .1.3.6.1.2.1.25.3.2.1",
                            "-p 10 .1.3.6.1.2.1.25.3.5.1"}) {
    configuration.append("pass_persist ").append(group).append(" ").append(command);
  }
  writeFile(folder_.path() / "snmpd.conf", configuration);
  // Without the agent's own ideas about printers.
  agent_ = std::make_unique<BackgroundProcess>(
      std::vector<std::string>{"/usr/sbin/snmpd", "-f", "-C", "-c", folder + "/snmpd.conf", "-Lo",
                               "-I",
                               "-hr_device,hr_print,hr_disk,hr_partition,hr_network,hr_proc,smux"},
      std::vector<std::string>{"PATH=/usr/bin:/bin", "MIBS=", "SNMP_PERSISTENT_DIR=" + folder,
                               "SNMPCONFPATH=" + folder},
      folder_.path() / "log");
  const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
  while (!answers(address)) {
    if (!agent_->isRunning() || std::chrono::steady_clock::now() > end) {
      throw std::runtime_error("snmpd does not serve (Debian: packages snmpd and snmp): " +
                               readFile(folder_.path() / "log"));
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
}

}  // namespace commandfilter::testing
