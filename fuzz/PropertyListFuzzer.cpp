// Any bytes are a property list or refused with a reason, in the same way with an observer and
// without; what is read can be written and read again, and an observer is told of places inside of
// the file only.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "PropertyListText.h"
#include "runtime/Description.h"
#include "runtime/PropertyList.h"

namespace {

using namespace commandfilter;

void require(bool condition) {
  if (!condition) std::abort();
}

// Requires that parts end as they began, one inside the other.
class Follower final : public PropertyListObserver {
 public:
  explicit Follower(std::size_t size) : size_(size) {}

  void begin(Part part, std::size_t place) override {
    require(open_.empty() || open_.back() == Part::Collection);
    open_.push_back(part);
    check(place);
  }
  void append(std::string_view text, std::size_t place) override {
    require(!open_.empty() && open_.back() != Part::Collection && !text.empty());
    check(place);
  }
  void end(std::size_t place) override {
    require(!open_.empty());
    open_.pop_back();
    check(place);
  }

  [[nodiscard]] bool hasEnded() const { return open_.empty(); }

 private:
  void check(std::size_t place) const { require(place <= size_); }

  std::size_t size_;
  std::vector<Part> open_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  Follower follower(size);
  Result<Value> list = parsePropertyList(bytes, &follower);
  require(static_cast<bool>(list) == list.reason().empty());
  // Without an observer a list may be read without the XML parser.
  Result<Value> unobserved = parsePropertyList(bytes);
  require(unobserved.reason() == list.reason());
  if (!list) return 0;
  require(descriptionOf(*unobserved) == descriptionOf(*list));
  require(follower.hasEnded());
  require(static_cast<bool>(parsePropertyList(tools::propertyListText(*list))));
  return 0;
}
