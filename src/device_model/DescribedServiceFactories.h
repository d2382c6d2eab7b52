// Factory classes for the services that device descriptions name.
#pragma once

#include "runtime/Dictionary.h"

namespace commandfilter {

/// A status service is made by the class "ADM" + name + "ServiceFactory". For the names that no
/// class exists for, this provides one, so that a description can name services of its own.
struct DescribedServiceFactories {
  /// How many names may get a class in the life of the process; further ones get none.
  static constexpr int kMost = 64;

  /// Registers the classes that are missing for the services of a checked description. They stay
  /// until the process ends; for a device without the service they give nil.
  static void provideFor(const Dictionary& services);
};

}  // namespace commandfilter
