#include "device_model/CupsQueueFacts.h"

#include <cups/cups.h>
#include <cups/ppd.h>
#include <sys/socket.h>

#include <array>
#include <memory>
#include <span>
#include <string_view>
#include <utility>

#include "device_model/CupsFunctions.h"
#include "runtime/ProcessInfo.h"
#include "runtime/String.h"

namespace commandfilter {

namespace {

constexpr std::array kRequested{
    "marker-colors",          "marker-high-levels",    "marker-levels",
    "marker-low-levels",      "marker-names",          "marker-types",
    "printer-make-and-model", "printer-state-reasons", "printer-resolution-supported",
};

struct PPDFunctions {
  decltype(&ppdOpenFile) open = cupsFunction<decltype(open)>("ppdOpenFile");
  decltype(&ppdFindAttr) find = cupsFunction<decltype(find)>("ppdFindAttr");
  decltype(&ppdClose) close = cupsFunction<decltype(close)>("ppdClose");

  [[nodiscard]] bool areComplete() const noexcept {
    return open != nullptr && find != nullptr && close != nullptr;
  }
};

using PPD = std::unique_ptr<ppd_file_t, decltype(&ppdClose)>;

const PPDFunctions& ppdFunctions() {
  static const PPDFunctions functions;
  return functions;
}

// The queue's PPD; nil when there is none that can be read.
PPD openPPD() {
  const std::optional<std::string> path = ProcessInfo::environmentValue("PPD");
  if (!path) return {nullptr, nullptr};
  const PPDFunctions& ppd = ppdFunctions();
  if (!ppd.areComplete()) return {nullptr, nullptr};
  return {ppd.open(path->c_str()), ppd.close};
}

std::size_t asSize(int count) { return count > 0 ? static_cast<std::size_t>(count) : 0; }

std::string textOfPPD(const char* text) { return String::fromDeviceText(text)->text(); }

struct IPPFunctions {
  decltype(&cupsServer) server = cupsFunction<decltype(server)>("cupsServer");
  decltype(&ippPort) port = cupsFunction<decltype(port)>("ippPort");
  decltype(&cupsEncryption) encryption = cupsFunction<decltype(encryption)>("cupsEncryption");
  decltype(&httpConnect2) connect = cupsFunction<decltype(connect)>("httpConnect2");
  decltype(&httpSetTimeout) setTimeout = cupsFunction<decltype(setTimeout)>("httpSetTimeout");
  decltype(&httpClose) close = cupsFunction<decltype(close)>("httpClose");
  decltype(&httpAssembleURIf) assemble = cupsFunction<decltype(assemble)>("httpAssembleURIf");
  decltype(&ippNewRequest) newRequest = cupsFunction<decltype(newRequest)>("ippNewRequest");
  decltype(&ippAddString) addString = cupsFunction<decltype(addString)>("ippAddString");
  decltype(&ippAddStrings) addStrings = cupsFunction<decltype(addStrings)>("ippAddStrings");
  decltype(&cupsDoRequest) doRequest = cupsFunction<decltype(doRequest)>("cupsDoRequest");
  decltype(&ippDelete) deleteMessage = cupsFunction<decltype(deleteMessage)>("ippDelete");
  decltype(&ippFindAttribute) find = cupsFunction<decltype(find)>("ippFindAttribute");
  decltype(&ippGetCount) count = cupsFunction<decltype(count)>("ippGetCount");
  decltype(&ippGetValueTag) tag = cupsFunction<decltype(tag)>("ippGetValueTag");
  decltype(&ippGetInteger) integer = cupsFunction<decltype(integer)>("ippGetInteger");
  decltype(&ippGetString) string = cupsFunction<decltype(string)>("ippGetString");
  decltype(&ippGetResolution) resolution = cupsFunction<decltype(resolution)>("ippGetResolution");

  [[nodiscard]] bool areComplete() const noexcept {
    return server != nullptr && port != nullptr && encryption != nullptr && connect != nullptr &&
           setTimeout != nullptr && close != nullptr && assemble != nullptr &&
           newRequest != nullptr && addString != nullptr && addStrings != nullptr &&
           doRequest != nullptr && deleteMessage != nullptr && find != nullptr &&
           count != nullptr && tag != nullptr && integer != nullptr && string != nullptr &&
           resolution != nullptr;
  }
};

std::string textOfValue(const IPPFunctions& ipp, ipp_attribute_t* attribute, int index) {
  switch (ipp.tag(attribute)) {
    case IPP_TAG_INTEGER:
    case IPP_TAG_ENUM:
      return std::to_string(ipp.integer(attribute, index));
    case IPP_TAG_RESOLUTION: {
      int vertical = 0;
      ipp_res_t unit = IPP_RES_PER_INCH;
      const int horizontal = ipp.resolution(attribute, index, &vertical, &unit);
      std::string text = std::to_string(horizontal);
      if (vertical != horizontal) text.append("x").append(std::to_string(vertical));
      return text.append(unit == IPP_RES_PER_INCH ? "dpi" : "dpcm");
    }
    default: {
      const char* text = ipp.string(attribute, index, nullptr);
      return text != nullptr ? String::fromDeviceText(text)->text() : std::string();
    }
  }
}

QueueAttributes requestAttributes(const IPPFunctions& ipp, const std::string& queue,
                                  double seconds) {
  QueueAttributes attributes;
  constexpr double kMillisecondsInSecond = 1000;
  // Not the library's own connection, which waits without end for a scheduler that hangs.
  const std::unique_ptr<http_t, decltype(ipp.close)> connection(
      ipp.connect(ipp.server(), ipp.port(), nullptr, AF_UNSPEC, ipp.encryption(), 1,
                  static_cast<int>(seconds * kMillisecondsInSecond), nullptr),
      ipp.close);
  if (!connection) return attributes;
  ipp.setTimeout(connection.get(), seconds, nullptr, nullptr);
  std::array<char, HTTP_MAX_URI> uri{};
  if (ipp.assemble(HTTP_URI_CODING_ALL, uri.data(), static_cast<int>(uri.size()), "ipp", nullptr,
                   "localhost", 0, "/printers/%s", queue.c_str()) != HTTP_URI_STATUS_OK) {
    return attributes;
  }
  ipp_t* request = ipp.newRequest(IPP_OP_GET_PRINTER_ATTRIBUTES);
  ipp.addString(request, IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, uri.data());
  ipp.addStrings(request, IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes",
                 static_cast<int>(kRequested.size()), nullptr, kRequested.data());
  // The call takes the request over.
  const std::unique_ptr<ipp_t, decltype(ipp.deleteMessage)> answer(
      ipp.doRequest(connection.get(), request, "/"), ipp.deleteMessage);
  if (!answer) return attributes;
  for (const char* name : kRequested) {
    ipp_attribute_t* found = ipp.find(answer.get(), name, IPP_TAG_ZERO);
    if (found == nullptr) continue;
    std::vector<std::string>& values = attributes[name];
    for (int i = 0; i < ipp.count(found); ++i) values.push_back(textOfValue(ipp, found, i));
  }
  return attributes;
}

}  // namespace

std::string CupsQueueFacts::ppdAttribute(const char* name) {
  const PPD file = openPPD();
  if (!file) return {};
  const ppd_attr_t* found = ppdFunctions().find(file.get(), name, nullptr);
  if (found == nullptr || found->value == nullptr) return {};
  return textOfPPD(found->value);
}

std::vector<InstallableOption> CupsQueueFacts::installableOptions() {
  std::vector<InstallableOption> options;
  const PPD file = openPPD();
  if (!file) return options;
  for (const ppd_group_t& group : std::span(file->groups, asSize(file->num_groups))) {
    if (std::string_view(group.name) != "InstallableOptions") continue;
    for (const ppd_option_t& option : std::span(group.options, asSize(group.num_options))) {
      InstallableOption& found = options.emplace_back();
      found.keyword = textOfPPD(option.keyword);
      found.text = textOfPPD(option.text);
      if (found.text.empty()) found.text = found.keyword;
      found.current = textOfPPD(option.defchoice);
      for (const ppd_choice_t& choice : std::span(option.choices, asSize(option.num_choices))) {
        found.choices.push_back(textOfPPD(choice.choice));
      }
    }
  }
  return options;
}

const QueueAttributes& CupsQueueFacts::attributes() {
  if (attributes_) return *attributes_;
  attributes_.emplace();
  const std::optional<std::string> queue = ProcessInfo::environmentValue("PRINTER");
  if (!queue) return *attributes_;
  static const IPPFunctions ipp;
  if (ipp.areComplete()) attributes_ = requestAttributes(ipp, *queue, seconds_);
  return *attributes_;
}

URIParts CupsQueueFacts::partsOfURI(const std::string& uri) {
  static const auto separate = cupsFunction<decltype(&httpSeparateURI)>("httpSeparateURI");
  if (separate == nullptr) return {};
  std::array<char, 32> scheme{};
  std::array<char, 256> user{};
  std::array<char, HTTP_MAX_URI> host{};
  std::array<char, HTTP_MAX_URI> resource{};
  int port = 0;
  const auto sizeOf = [](const auto& buffer) { return static_cast<int>(buffer.size()); };
  if (separate(HTTP_URI_CODING_ALL, uri.c_str(), scheme.data(), sizeOf(scheme), user.data(),
               sizeOf(user), host.data(), sizeOf(host), &port, resource.data(),
               sizeOf(resource)) < HTTP_URI_STATUS_OK) {
    return {};
  }
  const auto text = [](const char* part) { return String::fromDeviceText(part)->text(); };
  return {text(scheme.data()), text(host.data()), port, text(resource.data())};
}

}  // namespace commandfilter
