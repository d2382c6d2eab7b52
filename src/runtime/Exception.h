// What the platform raises for a programming fault.
#pragma once

#include <exception>
#include <string>
#include <utility>

#include "runtime/Export.h"

namespace commandfilter {

/// Thrown for an unrecognised selector, for ordering unlike kinds, for an index out of range and
/// for values nested deeper than the stack allows; an expression that merely fails records an
/// error on its context instead. Caught where a rule says so and at the boundary to plug-ins.
class COMMANDFILTER_EXPORT Exception : public std::exception {
 public:
  explicit Exception(std::string reason) : reason_(std::move(reason)) {}
  Exception(const Exception&) = default;
  Exception(Exception&&) = default;
  Exception& operator=(const Exception&) = default;
  Exception& operator=(Exception&&) = default;
  ~Exception() override;

  /// What went wrong, as one line of text.
  [[nodiscard]] const std::string& reason() const noexcept { return reason_; }
  [[nodiscard]] const char* what() const noexcept override { return reason_.c_str(); }

 private:
  std::string reason_;
};

}  // namespace commandfilter
