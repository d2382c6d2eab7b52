#include "expression/SharedPath.h"

namespace commandfilter {

constinit const Class SharedPath::kClass{.name = "SharedPath", .base = &Object::kClass};

constinit std::array<SharedPath*, SharedPath::kPlaces> SharedPath::places_{};

}  // namespace commandfilter
