#include "Backend.h"

#include <algorithm>
#include <array>

namespace commandfilter::tools {

namespace {

struct Kind {
  std::string_view scheme;
  Askable askable;
  std::string_view explanation;
};

constexpr std::string_view kBySNMP =
    "device ID, supplies and state by SNMP; the printer must answer at port 161";
constexpr std::string_view kBeforeData =
    "by SNMP, if the printer answers at port 161; else only what it reported in its last job";
constexpr std::string_view kResolved =
    "as the backend that the address resolves to, mostly ipp: by SNMP, if the printer answers";
constexpr std::string_view kDeviceIDOnly =
    "its device ID; the backend does not pass on questions about supplies and state";

constexpr std::array kKinds{
    Kind{"socket", Askable::Yes, kBySNMP},
    Kind{"lpd", Askable::Yes, kBySNMP},
    Kind{"ipp", Askable::Partly, kBeforeData},
    Kind{"ipps", Askable::Partly, kBeforeData},
    Kind{"http", Askable::Partly, kBeforeData},
    Kind{"https", Askable::Partly, kBeforeData},
    Kind{"dnssd", Askable::Partly, kResolved},
    Kind{"mdns", Askable::Partly, kResolved},
    Kind{"usb", Askable::Partly, kDeviceIDOnly},
    Kind{"simulated", Askable::Yes, "a device that a file describes"},
    Kind{"file", Askable::No, "a file answers no questions"},
};

// The parameters behind a question mark, or a part of them.
bool hasParameter(std::string_view uri, std::string_view parameter) {
  const std::size_t start = uri.find('?');
  if (start == std::string_view::npos) return false;
  std::string_view rest = uri.substr(start + 1);
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find_first_of("&+"), rest.size());
    if (rest.substr(0, end) == parameter) return true;
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return false;
}

}  // namespace

Backend backendOf(std::string_view deviceURI) {
  Backend backend{std::string(deviceURI.substr(0, deviceURI.find(':'))), Askable::Unknown, {}};
  const auto kind = std::ranges::find(kKinds, std::string_view(backend.scheme), &Kind::scheme);
  if (kind == kKinds.end()) {
    backend.explanation = "nothing is known of this backend; a job shows what it answers";
    return backend;
  }
  backend.askable = kind->askable;
  backend.explanation = kind->explanation;
  if (hasParameter(deviceURI, "snmp=false")) {
    backend.askable = Askable::No;
    backend.explanation = "the device URI says snmp=false; set it without that (lpadmin -v)";
  }
  return backend;
}

std::string_view nameOf(Askable askable) {
  switch (askable) {
    case Askable::Yes:
      return "yes";
    case Askable::Partly:
      return "partly";
    case Askable::No:
      return "no";
    case Askable::Unknown:
      break;
  }
  return "unknown";
}

}  // namespace commandfilter::tools
