#include "InputFile.h"

#include "UsageError.h"
#include "runtime/Cast.h"
#include "runtime/PropertyList.h"

namespace commandfilter::tools {

Ref<Dictionary> readDictionary(const std::string& path, std::string_view what) {
  Result<Value> list = readPropertyList(path);
  const std::string file = std::string(what) + " " + path + ": ";
  if (!list) throw UsageError(file + list.reason());
  auto* dictionary = castTo<Dictionary>(*list);
  if (dictionary == nullptr) {
    throw UsageError(file + "is a property list, but no dictionary; its root must be <dict>");
  }
  return Ref<Dictionary>(*dictionary);
}

}  // namespace commandfilter::tools
