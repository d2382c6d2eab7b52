#include "evaluation/ElementSet.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "runtime/Comparison.h"

namespace commandfilter {

namespace {

constexpr std::size_t kFewestSlots = 16;

// True for a value that equals only values of its own kind, and whose hash is made to fit.
bool isOfRuntimeKind(const Value& value) noexcept {
  const Object* object = value.object();
  if (object == nullptr) return true;
  switch (object->objectKind()) {
    case ObjectKind::String:
    case ObjectKind::Array:
    case ObjectKind::Dictionary:
    case ObjectKind::Data:
    case ObjectKind::Date:
      return true;
    default:
      return false;
  }
}

// Hashes of numbers differ in few bits; all of them take part in the choice.
std::size_t mixed(std::size_t hash) noexcept {
  constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15U;
  return static_cast<std::size_t>(((hash ^ (hash >> 32U)) * kGoldenRatio) >> 32U);
}

}  // namespace

ElementSet::ElementSet(const Array& elements) {
  reserve(elements.count());
  for (const Value& element : elements) insert(element);
}

void ElementSet::reserve(std::size_t count) {
  const std::size_t slots = std::bit_ceil(std::max(count * 2, kFewestSlots));
  if (slots > slots_.size()) resize(slots);
}

std::size_t ElementSet::slotOf(const Value& value, std::size_t hash) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = mixed(hash) & mask;
  while (slots_[slot].value != nullptr) {
    if (slots_[slot].hash == hash && equal(*slots_[slot].value, value)) break;
    slot = (slot + 1) & mask;
  }
  return slot;
}

bool ElementSet::othersContain(const Value& value) const {
  return std::ranges::any_of(others_,
                             [&value](const Value* element) { return equal(*element, value); });
}

bool ElementSet::contains(const Value& value) const {
  if (count_ != 0 && isOfRuntimeKind(value) &&
      slots_[slotOf(value, hashOf(value))].value != nullptr) {
    return true;
  }
  return othersContain(value);
}

bool ElementSet::insert(const Value& value) {
  if (othersContain(value)) return false;
  if (!isOfRuntimeKind(value)) {
    others_.push_back(&value);
    return true;
  }
  if ((count_ + 1) * 2 > slots_.size()) resize(std::max(slots_.size() * 2, kFewestSlots));
  const std::size_t hash = hashOf(value);
  Element& element = slots_[slotOf(value, hash)];
  if (element.value != nullptr) return false;
  element = {&value, hash};
  ++count_;
  return true;
}

void ElementSet::resize(std::size_t slots) {
  const std::vector<Element> old = std::exchange(slots_, std::vector<Element>(slots));
  const std::size_t mask = slots - 1;
  for (const Element& element : old) {
    if (element.value == nullptr) continue;
    std::size_t slot = mixed(element.hash) & mask;
    while (slots_[slot].value != nullptr) slot = (slot + 1) & mask;
    slots_[slot] = element;
  }
}

}  // namespace commandfilter
