#include "Scheduler.h"

#include <cups/ppd.h>
#include <unistd.h>

#include <array>
#include <cstdio>

#include "TemporaryFile.h"
#include "ToolError.h"
#include "runtime/File.h"

// libcups has marked its PPD functions as deprecated for years; the scheduler still has PPDs.
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

namespace commandfilter::tools {

namespace {

constexpr int kPatience = 30'000;
constexpr std::size_t kLargestPPD = std::size_t{256} << 20U;

std::string textOf(ipp_t* message, const char* name) {
  ipp_attribute_t* attribute = ippFindAttribute(message, name, IPP_TAG_ZERO);
  const char* text = attribute != nullptr ? ippGetString(attribute, 0, nullptr) : nullptr;
  return text != nullptr ? text : "";
}

// All texts of an attribute but "none".
std::vector<std::string> listOf(ipp_t* message, const char* name) {
  std::vector<std::string> list;
  ipp_attribute_t* attribute = ippFindAttribute(message, name, IPP_TAG_ZERO);
  for (int i = 0; attribute != nullptr && i < ippGetCount(attribute); ++i) {
    const char* text = ippGetString(attribute, i, nullptr);
    if (text != nullptr && std::string_view(text) != "none") list.emplace_back(text);
  }
  return list;
}

std::string printerURI(const std::string& queue) {
  std::array<char, HTTP_MAX_URI> uri{};
  httpAssembleURIf(HTTP_URI_CODING_ALL, uri.data(), static_cast<int>(uri.size()), "ipp", nullptr,
                   "localhost", 0, "/printers/%s", queue.c_str());
  return uri.data();
}

bool isDone() { return cupsLastError() <= IPP_STATUS_OK_CONFLICTING; }

// A password is asked for at a terminal only: elsewhere nobody would answer.
const char* askAtTerminal(const char* prompt, http_t* /*http*/, const char* /*method*/,
                          const char* /*resource*/, void* /*data*/) {
  return isatty(STDIN_FILENO) != 0 ? getpass(prompt) : nullptr;
}

}  // namespace

void Scheduler::Close::operator()(http_t* connection) const noexcept { httpClose(connection); }

void Scheduler::Delete::operator()(ipp_t* message) const noexcept { ippDelete(message); }

Scheduler::Scheduler(const std::optional<std::string>& server,
                     const std::optional<std::string>& user) {
  if (server) cupsSetServer(server->c_str());
  if (user) cupsSetUser(user->c_str());
  cupsSetPasswordCB2(askAtTerminal, nullptr);
  address_ = cupsServer();
  if (!address_.starts_with('/')) address_.append(":").append(std::to_string(ippPort()));
  connection_.reset(httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1,
                                 kPatience, nullptr));
  if (!connection_) {
    throw ToolError(ExitStatus::Scheduler,
                    "no scheduler answers at " + address_ +
                        "; start it (systemctl start cups), or name another with -h");
  }
}

void Scheduler::fail(const std::string& what) const {
  const ipp_status_t status = cupsLastError();
  const std::string reason = cupsLastErrorString();
  switch (status) {
    case IPP_STATUS_ERROR_FORBIDDEN:
    case IPP_STATUS_ERROR_NOT_AUTHENTICATED:
    case IPP_STATUS_ERROR_NOT_AUTHORIZED:
    case IPP_STATUS_ERROR_CUPS_AUTHENTICATION_CANCELED:
      throw ToolError(ExitStatus::NotPermitted,
                      what + ": the scheduler does not let you (" + reason +
                          "); run this as root, or as a member of a group that may administer it "
                          "(SystemGroup in cups-files.conf)");
    default:
      throw ToolError(ExitStatus::Scheduler, what + ": the scheduler at " + address_ + " says: " +
                                                 reason + "; its error log may say more");
  }
}

Scheduler::Message Scheduler::request(int operation, const std::string& path) {
  Message message(ippNewRequest(static_cast<ipp_op_t>(operation)));
  if (!path.empty()) {
    ippAddString(message.get(), IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr,
                 path.c_str());
  }
  ippAddString(message.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr,
               cupsUser());
  return message;
}

std::vector<std::string> Scheduler::queues() {
  Message question = request(IPP_OP_CUPS_GET_PRINTERS, {});
  ippAddString(question.get(), IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes", nullptr,
               "printer-name");
  ippAddInteger(question.get(), IPP_TAG_OPERATION, IPP_TAG_ENUM, "printer-type", 0);
  ippAddInteger(question.get(), IPP_TAG_OPERATION, IPP_TAG_ENUM, "printer-type-mask",
                CUPS_PRINTER_CLASS);
  const Message answer(cupsDoRequest(connection_.get(), question.release(), "/"));
  if (cupsLastError() == IPP_STATUS_ERROR_NOT_FOUND) return {};
  if (!isDone()) fail("the list of queues");
  std::vector<std::string> names;
  for (ipp_attribute_t* attribute = ippFirstAttribute(answer.get()); attribute != nullptr;
       attribute = ippNextAttribute(answer.get())) {
    const char* name = ippGetName(attribute);
    if (name != nullptr && std::string_view(name) == "printer-name") {
      names.emplace_back(ippGetString(attribute, 0, nullptr));
    }
  }
  return names;
}

QueueFacts Scheduler::queue(const std::string& name) {
  Message question = request(IPP_OP_GET_PRINTER_ATTRIBUTES, printerURI(name));
  const Message answer(cupsDoRequest(connection_.get(), question.release(), "/"));
  if (cupsLastError() == IPP_STATUS_ERROR_NOT_FOUND) {
    throw ToolError(ExitStatus::Refused,
                    name + ": there is no such queue; lpstat -e lists those there are");
  }
  if (!isDone()) fail(name);
  ipp_attribute_t* type = ippFindAttribute(answer.get(), "printer-type", IPP_TAG_ENUM);
  const int kind = type != nullptr ? ippGetInteger(type, 0) : 0;
  ipp_attribute_t* temporary =
      ippFindAttribute(answer.get(), "printer-is-temporary", IPP_TAG_BOOLEAN);
  return {.name = name,
          .deviceURI = textOf(answer.get(), "device-uri"),
          .makeAndModel = textOf(answer.get(), "printer-make-and-model"),
          .isClass = (kind & CUPS_PRINTER_CLASS) != 0,
          .isRemote = (kind & CUPS_PRINTER_REMOTE) != 0,
          .isTemporary = temporary != nullptr && ippGetBoolean(temporary, 0) != 0,
          .commands = listOf(answer.get(), "printer-commands"),
          .stateReasons = listOf(answer.get(), "printer-state-reasons")};
}

std::optional<std::string> Scheduler::ppd(const std::string& queue) {
  // The file itself, from the scheduler: libcups would look into the system's folder, which may be
  // another scheduler's, and follow a shared queue to its server.
  const TemporaryFile file;
  const http_status_t status =
      cupsGetFd(connection_.get(), ("/printers/" + queue + ".ppd").c_str(), file.descriptor());
  if (status == HTTP_STATUS_NOT_FOUND) return std::nullopt;
  if (status != HTTP_STATUS_OK) fail(queue + ": its PPD");
  Result<std::string> bytes = readRegularFile(file.path(), kLargestPPD);
  if (!bytes) throw ToolError(ExitStatus::Scheduler, file.path() + ": " + bytes.reason());
  return std::move(*bytes);
}

void Scheduler::setPPD(const std::string& queue, const std::string& bytes) {
  const TemporaryFile file(bytes);
  Message message = request(IPP_OP_CUPS_ADD_MODIFY_PRINTER, printerURI(queue));
  ippDelete(
      cupsDoFileRequest(connection_.get(), message.release(), "/admin/", file.path().c_str()));
  if (!isDone()) fail(queue + ": its PPD cannot be set");
}

std::string ppdFault(const std::string& bytes) {
  const TemporaryFile file(bytes);
  if (ppd_file_t* ppd = ppdOpenFile(file.path().c_str())) {
    ppdClose(ppd);
    return {};
  }
  int line = 0;
  const ppd_status_t status = ppdLastError(&line);
  return std::string(ppdErrorString(status)) + " in line " + std::to_string(line);
}

}  // namespace commandfilter::tools
