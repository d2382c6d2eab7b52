#include "device/DeviceText.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "OneLine.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/Description.h"
#include "runtime/Number.h"

namespace commandfilter::tools {

namespace {

struct Fact {
  std::string_view key;
  std::string_view label;
};
constexpr std::array kFacts{
    Fact{"URI", "URI"},         Fact{"DeviceID", "Device ID"},        Fact{"VendorName", "Vendor"},
    Fact{"ModelName", "Model"}, Fact{"ConnectionType", "Connection"},
};

// Calls the function with each key, as text, and value of the dictionary at the key; with nothing
// when there is none.
template <typename Function>
void forEachIn(const Dictionary& parent, std::string_view key, Function&& function) {
  const auto* entries = castTo<Dictionary>(parent.objectForKey(key));
  if (entries == nullptr) return;
  for (const DictionaryEntry& entry : *entries) function(descriptionOf(entry.key), entry.value);
}

class Writer {
 public:
  void writeFacts(const Dictionary& description) {
    for (const Fact& fact : kFacts) {
      const Value& value = description.objectForKey(fact.key);
      if (!value.isNil()) writeFact(fact.label, descriptionOf(value));
    }
    forEachIn(description, "ConnectionParams", [this](const std::string& name, const Value& value) {
      writeFact("  " + name, descriptionOf(value));
    });
    const Value& state = description.objectForKey("ServiceState");
    if (state.isNumber() && state.number().intValue() != 1) {
      writeFact("State", descriptionOf(state) + ", which is not resolved: it has no services");
    }
    forEachIn(description, "ModelInfo", [this](const std::string& table, const Value& paths) {
      text_.append("\nTable ").append(table).append("\n");
      const auto* entries = castTo<Dictionary>(paths);
      if (entries == nullptr) return;
      for (const DictionaryEntry& entry : *entries) {
        writeAnswer(descriptionOf(entry.key), entry.value);
      }
    });
  }

  void writeService(const std::string& name, const Value& value) {
    const auto* service = castTo<Dictionary>(value);
    if (service == nullptr) return;
    text_.append("\nService ").append(name).append("\n");
    const std::size_t before = text_.size();
    forEachIn(*service, "Messages", [this](const std::string& message, const Value& answer) {
      writeMessage(message, answer);
    });
    forEachIn(*service, "Features", [this](const std::string& feature, const Value& entry) {
      writeFeature("{" + feature + "}", entry);
    });
    if (text_.size() == before) text_.append("  tells nothing\n");
  }

  [[nodiscard]] std::string takeText() { return std::move(text_); }

 private:
  void writeFact(std::string_view label, const std::string& value) {
    constexpr std::size_t kWidth = 12;
    text_.append(label).append(":");
    text_.append(std::max(kWidth, label.size() + 1) - label.size(), ' ');
    text_.append(value).append("\n");
  }

  void writeAnswer(const std::string& question, const Value& answer) {
    text_.append("  ").append(question).append(" = ").append(oneLine(answer)).append("\n");
  }

  void writeMessage(const std::string& message, const Value& answer) {
    const auto* byArgument = castTo<Dictionary>(answer);
    if (std::ranges::count(message, ':') != 1 || byArgument == nullptr) {
      writeAnswer("@" + message, answer);
      return;
    }
    for (const DictionaryEntry& entry : *byArgument) {
      writeAnswer("@" + message + " of " + descriptionOf(entry.key), entry.value);
    }
  }

  void writeFeature(const std::string& path, const Value& value) {
    const auto* feature = castTo<Dictionary>(value);
    if (feature == nullptr) return;
    writeAnswer(path, feature->objectForKey("Value"));
    forEachIn(*feature, "Properties", [&](const std::string& name, const Value& entry) {
      const auto* property = castTo<Dictionary>(entry);
      if (property == nullptr) return;
      const Value& all = property->objectForKey("Value");
      const auto* list = castTo<Array>(all);
      if (!all.isNil() && (list == nullptr || !list->isEmpty())) {
        writeAnswer(path + "." + name, all);
      }
      forEachIn(*property, "Identifiers", [&](const std::string& identifier, const Value& answer) {
        writeAnswer(path + "[" + identifier + "]." + name, answer);
      });
    });
  }

  std::string text_;
};

}  // namespace

std::string deviceText(const Dictionary& description) {
  Writer writer;
  writer.writeFacts(description);
  forEachIn(description, "StatusServices", [&writer](const std::string& name, const Value& entry) {
    writer.writeService(name, entry);
  });
  return writer.takeText();
}

}  // namespace commandfilter::tools
