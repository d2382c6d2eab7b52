// Any answers of an agent make supplies whose levels are percentages.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "device_model/BackendTransport.h"
#include "device_model/PrinterState.h"
#include "device_model/Supply.h"
#include "runtime/UTF8.h"

namespace {

using namespace commandfilter;

// A backend whose messages are lines of the input: a character for the command, one for the status,
// then the data, in which a | stands for the NUL.
class Backend final : public BackendMessages {
 public:
  explicit Backend(std::string_view text) : rest_(text) {}

  bool send(BackendCommand /*command*/, std::string_view /*data*/, double /*timeout*/) override {
    return true;
  }
  std::optional<Answer> receive(double /*timeout*/) override {
    const std::string_view line = rest_.substr(0, rest_.find('\n'));
    rest_.remove_prefix(std::min(line.size() + 1, rest_.size()));
    if (line.size() < 2) return std::nullopt;
    Answer answer{line[0] - '0', line[1] - '0', std::string(line.substr(2))};
    const std::size_t bar = answer.data.find('|');
    if (bar != std::string::npos) answer.data[bar] = '\0';
    return answer;
  }

 private:
  std::string_view rest_;
};

void check(const Supply& supply) {
  if (!isUTF8(supply.name) || !isUTF8(supply.colorName)) std::abort();
  if (supply.percent && (*supply.percent < 0 || *supply.percent > 100)) std::abort();
  if (supply.percent && !supply.levelInfo.empty()) std::abort();
  static_cast<void>(supply.state());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  BackendTransport transport(
      std::make_unique<Backend>(std::string_view(reinterpret_cast<const char*>(data), size)));
  const std::vector<SNMPEntry> supplies = transport.snmpTable(suppliesTable());
  const std::vector<SNMPEntry> colorants = transport.snmpTable(colorantTable());
  for (const Supply& supply : suppliesOfTables(supplies, colorants)) check(supply);
  if (const auto bits = transport.snmpValue({1, 3, 6, 1})) {
    static_cast<void>(detectedErrors(*bits));
    static_cast<void>(textOfSNMPValue(*bits));
  }
  QueueAttributes attributes;
  for (const SNMPEntry& entry : supplies) attributes["marker-levels"].push_back(entry.value);
  for (const Supply& supply : suppliesOfAttributes(attributes)) check(supply);
  return 0;
}
