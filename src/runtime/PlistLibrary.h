// libplist, loaded when a property list is binary.
#pragma once

#include <plist/plist.h>

#include "runtime/SharedLibrary.h"

namespace commandfilter {

/// The functions of libplist that binary property lists need. The library is not linked with it:
/// nearly all lists are XML.
class PlistLibrary {
 public:
  /// The library, loaded on the first call and kept; nullptr when it cannot be loaded.
  [[nodiscard]] static const PlistLibrary* shared();

  decltype(&plist_from_bin) fromBinary;
  decltype(&plist_to_bin) toBinary;
  decltype(&plist_free) free;
  decltype(&plist_get_node_type) nodeType;
  decltype(&plist_get_bool_val) booleanOf;
  decltype(&plist_get_uint_val) integerOf;
  decltype(&plist_get_real_val) realOf;
  decltype(&plist_get_uid_val) uidOf;
  decltype(&plist_get_string_ptr) stringOf;
  decltype(&plist_get_data_ptr) dataOf;
  decltype(&plist_array_get_size) arraySize;
  decltype(&plist_array_new_iter) newArrayIterator;
  decltype(&plist_array_next_item) nextArrayItem;
  decltype(&plist_dict_get_size) dictionarySize;
  decltype(&plist_dict_new_iter) newDictionaryIterator;
  decltype(&plist_dict_next_item) nextDictionaryItem;

 private:
  friend class SharedLibrary;

  explicit PlistLibrary(const SharedLibrary& library);
  [[nodiscard]] bool isComplete() const noexcept;
};

}  // namespace commandfilter
