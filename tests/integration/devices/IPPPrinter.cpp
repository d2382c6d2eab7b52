#include "integration/devices/IPPPrinter.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <chrono>
#include <functional>
#include <stdexcept>
#include <thread>

#include "runtime/FileDescriptor.h"
#include "support/File.h"

namespace commandfilter::testing {

namespace fs = std::filesystem;

namespace {

sockaddr_in loopback(std::uint16_t port) {
  sockaddr_in name{};
  name.sin_family = AF_INET;
  name.sin_port = htons(port);
  name.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return name;
}

// One that nobody uses now.
std::uint16_t freePort() {
  const FileDescriptor descriptor(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_in name = loopback(0);
  auto* generic = reinterpret_cast<sockaddr*>(&name);
  socklen_t size = sizeof name;
  bind(descriptor.get(), generic, size);
  getsockname(descriptor.get(), generic, &size);
  return ntohs(name.sin_port);
}

bool isListening(std::uint16_t port) {
  const FileDescriptor descriptor(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  const sockaddr_in name = loopback(port);
  return connect(descriptor.get(), reinterpret_cast<const sockaddr*>(&name), sizeof name) == 0;
}

// Until it is ready; false when the process ends, or takes too long.
bool waitFor(BackgroundProcess& process, const std::function<bool()>& isReady) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
  while (process.isRunning() && std::chrono::steady_clock::now() < end) {
    if (isReady()) return process.isRunning();
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return false;
}

}  // namespace

IPPPrinter::IPPPrinter(const std::string& documentFormat) {
  startBus();
  // Another program may take the port first.
  constexpr int kAttempts = 10;
  for (int i = 0; i < kAttempts; ++i) {
    if (startPrinter(documentFormat)) return;
  }
  throw std::runtime_error("ippeveprinter does not listen (Debian: package cups-ipp-utils): " +
                           readFile(folder_.path() / "printer.log"));
}

// The printer announces itself through the system's bus, and does not start without one.
void IPPPrinter::startBus() {
  const std::string socket = (folder_.path() / "bus").string();
  writeFile(folder_.path() / "bus.conf",
            "<busconfig><type>system</type><listen>unix:path=" + socket +
                "</listen><auth>EXTERNAL</auth><policy context=\"default\"><allow user=\"*\"/>"
                "<allow own=\"*\"/><allow send_destination=\"*\"/>"
                "<allow receive_type=\"method_call\"/><allow receive_type=\"method_return\"/>"
                "<allow receive_type=\"error\"/><allow receive_type=\"signal\"/>"
                "</policy></busconfig>\n");
  bus_ = std::make_unique<BackgroundProcess>(
      std::vector<std::string>{"/usr/bin/dbus-daemon",
                               "--config-file=" + (folder_.path() / "bus.conf").string(),
                               "--nofork", "--nopidfile"},
      std::vector<std::string>{}, folder_.path() / "bus.log");
  if (!waitFor(*bus_, [&socket] { return fs::exists(socket); })) {
    throw std::runtime_error("no bus starts (Debian: package dbus-daemon): " +
                             readFile(folder_.path() / "bus.log"));
  }
}

bool IPPPrinter::startPrinter(const std::string& documentFormat) {
  fs::create_directory(folder_.path() / "documents");
  port_ = freePort();
  setReport("");
  // Without a command of its own it plays a printer that takes several seconds for a job.
  printer_ = std::make_unique<BackgroundProcess>(
      std::vector<std::string>{"/usr/sbin/ippeveprinter", "-n", "localhost", "-p",
                               std::to_string(port_), "-r", "off", "-k", "-d",
                               (folder_.path() / "documents").string(), "-f", documentFormat, "-c",
                               (folder_.path() / "command").string(), "Test"},
      std::vector<std::string>{
          "PATH=/usr/bin:/bin", "HOME=" + folder_.path().string(),
          "DBUS_SYSTEM_BUS_ADDRESS=unix:path=" + (folder_.path() / "bus").string()},
      folder_.path() / "printer.log");
  return waitFor(*printer_, [this] { return isListening(port_); });
}

void IPPPrinter::setReport(const std::string& lines) const {
  const fs::path command = folder_.path() / "command";
  // In one step: the printer may run it now.
  const fs::path next = folder_.path() / "next";
  writeFile(next, "#!/bin/sh\ncat >&2 <<'END'\n" + lines + "END\n");
  fs::permissions(next, fs::perms::owner_all);
  fs::rename(next, command);
}

std::string IPPPrinter::uri() const {
  return "ipp://localhost:" + std::to_string(port_) + "/ipp/print";
}

std::vector<std::string> IPPPrinter::documents() const {
  std::vector<std::string> contents;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder_.path() / "documents")) {
    // The other files hold what the printer's command wrote.
    if (entry.path().extension() != ".prn") contents.push_back(readFile(entry.path()));
  }
  return contents;
}

}  // namespace commandfilter::testing
