#include "InputFile.h"

#include <utility>

#include "UsageError.h"
#include "check/PropertyListPlaces.h"
#include "runtime/Cast.h"
#include "runtime/File.h"
#include "runtime/PropertyList.h"

namespace commandfilter::tools {

namespace {

// Why a file is no property list, and where.
std::string faultOf(const std::string& reason, std::string_view bytes) {
  const std::string fault = xmlFault(bytes);
  return fault.empty() ? reason : reason + " (" + fault + "); repair the XML there";
}

}  // namespace

InputFile openInputFile(const std::string& path, std::string_view what) {
  const std::string file = std::string(what) + " " + path + ": ";
  Result<std::string> bytes = readRegularFile(path, kPropertyListBytes);
  if (!bytes) throw UsageError(file + bytes.reason());
  Result<Value> list = parsePropertyList(*bytes);
  if (!list) throw UsageError(file + faultOf(list.reason(), *bytes));
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
