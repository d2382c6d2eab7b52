// Values and stacks for tests, written shortly.
#pragma once

#include <pthread.h>

#include <cstddef>
#include <functional>
#include <initializer_list>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include "runtime/Array.h"
#include "runtime/Description.h"
#include "runtime/Dictionary.h"
#include "runtime/Exception.h"
#include "runtime/String.h"
#include "runtime/Value.h"
#include "runtime/ValueVector.h"

namespace commandfilter {

// Called by the test framework, which finds it by its name.
inline void PrintTo(const Value& value, std::ostream* stream) { *stream << descriptionOf(value); }

}  // namespace commandfilter

namespace commandfilter::testing {

inline Value stringOf(std::string_view text) { return String::create(std::string(text)); }

inline Value arrayOf(std::initializer_list<Value> elements) {
  return Array::create(ValueVector(elements));
}

inline Value dictionaryOf(std::initializer_list<std::pair<Value, Value>> entries) {
  DictionaryBuilder builder;
  for (const auto& [key, value] : entries) builder.set(key, value);
  return builder.build();
}

// An array in an array and so on, `depth` of them, around the value.
inline Value nestedArrays(std::size_t depth, Value innermost) {
  for (; depth != 0; --depth) {
    ValueVector elements;
    elements.push_back(std::move(innermost));
    innermost = Array::create(std::move(elements));
  }
  return innermost;
}

inline Value nestedDictionaries(std::size_t depth, Value innermost) {
  const Value key = stringOf("key");
  for (; depth != 0; --depth) {
    DictionaryBuilder builder;
    builder.set(key, std::move(innermost));
    innermost = builder.build();
  }
  return innermost;
}

// The reason of the exception that the function throws; empty when it throws none.
inline std::string reasonOf(const std::function<void()>& function) {
  try {
    function();
  } catch (const Exception& exception) {
    return exception.reason();
  }
  return {};
}

// Runs the function on a thread with a stack of the size, and waits for it.
inline void runOnStackOf(std::size_t bytes, std::function<void()> function) {
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, bytes);
  pthread_t thread{};
  const auto run = [](void* argument) -> void* {
    (*static_cast<std::function<void()>*>(argument))();
    return nullptr;
  };
  const int failure = pthread_create(&thread, &attributes, run, &function);
  pthread_attr_destroy(&attributes);
  if (failure != 0) throw Exception("no thread could be made");
  pthread_join(thread, nullptr);
}

}  // namespace commandfilter::testing
