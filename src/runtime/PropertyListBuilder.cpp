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
    value = Array::create(
        ValueVector(std::make_move_iterator(first), std::make_move_iterator(complete_.end())));
  } else {
    if (contentOfOpen() % 2 != 0) return false;
    value = Dictionary::ofKeysAndValues({first, complete_.end()});
  }
  complete_.erase(first, complete_.end());
  complete_.push_back(std::move(value));
  open_.pop_back();
  return true;
}

}  // namespace commandfilter::detail
