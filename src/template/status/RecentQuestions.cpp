#include "template/status/RecentQuestions.h"

namespace commandfilter {

constinit const Class RecentQuestions::kClass{.name = "RecentQuestions", .base = &Object::kClass};

}  // namespace commandfilter
