#include "runtime/Data.h"

#include <array>
#include <functional>

#include "runtime/Class.h"

namespace commandfilter {

namespace {

std::uint64_t lengthOf(const Data& receiver) { return receiver.bytes().size(); }

constexpr std::array kDataMethods{method<&lengthOf>("length")};

}  // namespace

constinit const Class Data::kClass{
    .name = "Data", .base = &Object::kClass, .methods = kDataMethods};

Ref<Data> Data::create(std::string bytes) { return make<Data>(std::move(bytes)); }

bool Data::isEqual(const Value& other) const {
  return other.isKind(ObjectKind::Data) &&
         static_cast<const Data*>(other.object())->bytes_ == bytes_;
}

std::size_t Data::hash() const { return std::hash<std::string>{}(bytes_); }

void Data::appendDescription(std::string& text, int /*level*/) const {
  static constexpr std::string_view kDigits = "0123456789abcdef";
  constexpr std::size_t kGroup = 4;
  text.push_back('<');
  for (std::size_t i = 0; i < bytes_.size(); ++i) {
    if (i != 0 && i % kGroup == 0) text.push_back(' ');
    const auto byte = static_cast<unsigned char>(bytes_[i]);
    text.push_back(kDigits[byte >> 4U]);
    text.push_back(kDigits[byte & 15U]);
  }
  text.push_back('>');
}

}  // namespace commandfilter
