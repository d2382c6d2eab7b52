#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "comparison/Datum.h"

namespace commandfilter::benchmarks {

// One of the programs that do the same work.
class Contender {
 public:
  Contender() = default;
  Contender(const Contender&) = delete;
  Contender& operator=(const Contender&) = delete;
  virtual ~Contender() = default;

  // Does the work that many times, and throws the results away.
  virtual void run(std::size_t times) = 0;
  // What the work gives.
  virtual Datum result() = 0;
};

// Makes the compiler believe that the value is used.
template <typename T>
void keep(const T& value) {
  asm volatile("" : : "g"(&value) : "memory");
}

// C++ written for the task: `work` does it, `toDatum` shows its result for the comparison.
template <typename Work, typename ToDatum>
class PlainContender final : public Contender {
 public:
  PlainContender(Work work, ToDatum toDatum)
      : work_(std::move(work)), toDatum_(std::move(toDatum)) {}

  void run(std::size_t times) override {
    for (std::size_t i = 0; i < times; ++i) keep(work_());
  }
  Datum result() override { return toDatum_(work_()); }

 private:
  Work work_;
  ToDatum toDatum_;
};

template <typename Work, typename ToDatum>
std::unique_ptr<Contender> plainContender(Work work, ToDatum toDatum) {
  return std::make_unique<PlainContender<Work, ToDatum>>(std::move(work), std::move(toDatum));
}
template <typename Work>
std::unique_ptr<Contender> plainContender(Work work) {
  return plainContender(std::move(work), [](auto value) { return Datum(std::move(value)); });
}

struct Contenders {
  std::unique_ptr<Contender> ours;
  std::unique_ptr<Contender> lua;
  // C++ written for the task, or nothing.
  std::unique_ptr<Contender> plain;
};

// A row of the comparison.
struct Case {
  std::string name;
  // What the time may be at most, as a multiple of Lua's; nothing for a row that only informs.
  std::optional<double> limit;
  std::function<Contenders()> make;
};

}  // namespace commandfilter::benchmarks
