#include "runtime/PropertyListBuilder.h"

#include <iterator>
#include <utility>

#include "runtime/Array.h"
#include "runtime/Dictionary.h"

namespace commandfilter::detail {

void PropertyListBuilder::add(Value value) {
  ++parts_;
  complete_.push_back(std::move(value));
}

bool PropertyListBuilder::end() {
  const Open open = open_.back();
  const auto first = complete_.begin() + static_cast<std::ptrdiff_t>(open.first);
  Value value;
  if (open.collection == Collection::Array) {
    value = Array::create(std::vector<Value>(std::make_move_iterator(first),
                                             std::make_move_iterator(complete_.end())));
  } else {
    if (contentOfOpen() % 2 != 0) return false;
    DictionaryBuilder builder;
    builder.reserve(contentOfOpen() / 2);
    for (auto entry = first; entry != complete_.end(); entry += 2) {
      builder.set(std::move(entry[0]), std::move(entry[1]));
    }
    value = builder.build();
  }
  complete_.erase(first, complete_.end());
  complete_.push_back(std::move(value));
  open_.pop_back();
  return true;
}

}  // namespace commandfilter::detail
