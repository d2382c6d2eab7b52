// Following a property list while it is read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace commandfilter {

/// Is told where the parts of an XML property list stand in its file. Places count bytes. A list
/// that is refused in the end may have been told of in part; of a binary list nothing is told.
class PropertyListObserver {
 public:
  /// An array or a dictionary, any other value, or a key.
  enum class Part : std::uint8_t { Collection, Scalar, Key };

  /// A part begins; its content starts at the place.
  virtual void begin(Part part, std::size_t place) = 0;
  /// A piece of the text of the key or scalar that began last, and where the piece stands. It may
  /// take more bytes there than the text has: character references, ends of lines.
  virtual void append(std::string_view text, std::size_t place) = 0;
  /// The part that began last and has not ended yet ends; its content reaches up to the place.
  virtual void end(std::size_t place) = 0;

 protected:
  PropertyListObserver() = default;
  ~PropertyListObserver() = default;
  PropertyListObserver(const PropertyListObserver&) = default;
  PropertyListObserver& operator=(const PropertyListObserver&) = default;
};

}  // namespace commandfilter
