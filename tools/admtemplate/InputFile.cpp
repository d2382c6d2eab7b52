#include "InputFile.h"

#include <utility>

#include "UsageError.h"
#include "runtime/Cast.h"
#include "runtime/File.h"
#include "runtime/PropertyList.h"

namespace commandfilter::tools {

std::string withRemedy(const std::string& reason) {
  if (reason.starts_with("line ")) return reason + "; repair the XML there";
  return reason.find("UTF-8") != std::string::npos ? reason + "; save it in UTF-8" : reason;
}

InputFile openInputFile(const std::string& path, std::string_view what) {
  const std::string file = std::string(what) + " " + path + ": ";
  Result<std::string> bytes = readRegularFile(path, kPropertyListBytes);
  if (!bytes) throw UsageError(file + bytes.reason());
  Result<Value> list = parsePropertyList(*bytes);
  if (!list) throw UsageError(file + withRemedy(list.reason()));
  auto* dictionary = castTo<Dictionary>(*list);
  if (dictionary == nullptr) {
    throw UsageError(file + "is a property list, but no dictionary; its root must be <dict>");
  }
  return {path, std::move(*bytes), Ref<Dictionary>(*dictionary)};
}

Ref<Dictionary> readDictionary(const std::string& path, std::string_view what) {
  return openInputFile(path, what).dictionary;
}

}  // namespace commandfilter::tools
