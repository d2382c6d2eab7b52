#include "template/KeyedRepresentation.h"

namespace commandfilter {

constinit const Class KeyedRepresentation::kClass{.name = "KeyedRepresentation",
                                                  .base = &Object::kClass};

}  // namespace commandfilter
