// Any bytes are a device ID, with values that lie inside it and a list of languages.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "device_model/DeviceID.h"
#include "runtime/UTF8.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace commandfilter;
  const DeviceID id(DeviceID::textOfBytes({reinterpret_cast<const char*>(data), size}));
  const std::string_view text = id.text();
  if (!isUTF8(text)) std::abort();
  for (const std::string_view value :
       {id.manufacturer(), id.model(), id.serialNumber(), id.description(), id.firmwareVersion()}) {
    if (text.find(value) == std::string_view::npos) std::abort();
  }
  for (const std::string_view language : id.languages()) {
    if (language.empty() || language.find_first_of(",;") != std::string_view::npos) std::abort();
  }
  return 0;
}
