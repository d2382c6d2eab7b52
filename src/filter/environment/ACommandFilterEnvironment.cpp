#include "filter/environment/ACommandFilterEnvironment.h"

#include <unistd.h>

#include <string_view>

#include "filter/environment/CupsLibrary.h"
#include "runtime/ProcessInfo.h"

namespace commandfilter {

namespace {

constexpr std::string_view kCommandFileType = "application/vnd.cups-command";
constexpr std::size_t kCommandFileArgument = 6;

}  // namespace

constinit const Class ACommandFilterEnvironment::kClass{.name = "ACommandFilterEnvironment",
                                                        .base = &Object::kClass};

ACommandFilterEnvironment* ACommandFilterEnvironment::environment() {
  // Never released: the services of a job may use it until the process ends.
  static auto& shared =
      *new RefPtr<ACommandFilterEnvironment>;  // NOLINT(cppcoreguidelines-owning-memory)
  if (!shared) shared = init();
  return shared.get();
}

RefPtr<ACommandFilterEnvironment> ACommandFilterEnvironment::init() {
  std::optional<std::string> printerURI = ProcessInfo::environmentValue("DEVICE_URI");
  std::optional<std::string> queueName = ProcessInfo::environmentValue("PRINTER");
  const std::optional<std::string> contentType = ProcessInfo::environmentValue("CONTENT_TYPE");
  if (!printerURI || !queueName || contentType != kCommandFileType) return nullptr;
  const std::vector<std::string>& arguments = ProcessInfo::processInfo().arguments();
  std::optional<std::string> commandFilePath;
  if (arguments.size() > kCommandFileArgument) commandFilePath = arguments[kCommandFileArgument];
  return make<ACommandFilterEnvironment>(String::create(std::move(*printerURI)),
                                         String::create(std::move(*queueName)),
                                         std::move(commandFilePath));
}

PPDFile* ACommandFilterEnvironment::printerPPDFile() {
  if (printerPPDFile_) return printerPPDFile_.get();
  const CupsLibrary* cups = CupsLibrary::shared();
  if (cups == nullptr) return nullptr;
  const char* copy = cups->getPPD(queueName_->cString());
  if (copy == nullptr) return nullptr;
  printerPPDFile_.reset(cups->ppdOpen(copy));
  unlink(copy);
  return printerPPDFile_.get();
}

void ACommandFilterEnvironment::ClosePPD::operator()(PPDFile* file) const noexcept {
  CupsLibrary::shared()->ppdCloseFile(file);
}

}  // namespace commandfilter
