#include "runtime/PlistLibrary.h"

namespace commandfilter {

PlistLibrary::PlistLibrary(const SharedLibrary& library)
    : fromBinary(library.function<decltype(fromBinary)>("plist_from_bin")),
      toBinary(library.function<decltype(toBinary)>("plist_to_bin")),
      free(library.function<decltype(free)>("plist_free")),
      nodeType(library.function<decltype(nodeType)>("plist_get_node_type")),
      booleanOf(library.function<decltype(booleanOf)>("plist_get_bool_val")),
      integerOf(library.function<decltype(integerOf)>("plist_get_uint_val")),
      realOf(library.function<decltype(realOf)>("plist_get_real_val")),
      uidOf(library.function<decltype(uidOf)>("plist_get_uid_val")),
      stringOf(library.function<decltype(stringOf)>("plist_get_string_ptr")),
      dataOf(library.function<decltype(dataOf)>("plist_get_data_ptr")),
      arraySize(library.function<decltype(arraySize)>("plist_array_get_size")),
      newArrayIterator(library.function<decltype(newArrayIterator)>("plist_array_new_iter")),
      nextArrayItem(library.function<decltype(nextArrayItem)>("plist_array_next_item")),
      dictionarySize(library.function<decltype(dictionarySize)>("plist_dict_get_size")),
      newDictionaryIterator(
          library.function<decltype(newDictionaryIterator)>("plist_dict_new_iter")),
      nextDictionaryItem(library.function<decltype(nextDictionaryItem)>("plist_dict_next_item")) {}

bool PlistLibrary::isComplete() const noexcept {
  return fromBinary != nullptr && toBinary != nullptr && free != nullptr && nodeType != nullptr &&
         booleanOf != nullptr && integerOf != nullptr && realOf != nullptr && uidOf != nullptr &&
         stringOf != nullptr && dataOf != nullptr && arraySize != nullptr &&
         newArrayIterator != nullptr && nextArrayItem != nullptr && dictionarySize != nullptr &&
         newDictionaryIterator != nullptr && nextDictionaryItem != nullptr;
}

const PlistLibrary* PlistLibrary::shared() {
  static const auto functions = SharedLibrary::functionsOf<PlistLibrary>({LIBPLIST_NAME});
  return functions ? &*functions : nullptr;
}

}  // namespace commandfilter
