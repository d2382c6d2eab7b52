#include "runtime/Method.h"

#include <string>

#include "runtime/Class.h"
#include "runtime/Exception.h"

namespace commandfilter::detail {

void throwNotConforming(const Value& receiver, std::string_view protocol) {
  const Class* info = classOf(receiver);
  throw Exception(std::string(info != nullptr ? info->name : "nil") + " does not conform to " +
                  std::string(protocol));
}

}  // namespace commandfilter::detail
