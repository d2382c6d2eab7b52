#include "runtime/MutableDictionary.h"

namespace commandfilter {

constinit const Class MutableDictionary::kClass{.name = "MutableDictionary",
                                                .base = &Object::kClass};

Ref<MutableDictionary> MutableDictionary::create() { return make<MutableDictionary>(); }

}  // namespace commandfilter
