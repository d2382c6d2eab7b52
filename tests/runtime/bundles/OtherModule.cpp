// An entry point that differs in one thing from what the library expects.
#include "runtime/Module.h"

#ifndef MAGIC
#define MAGIC commandfilter::Module::kMagic
#endif
#ifndef VERSION
#define VERSION commandfilter::kInterfaceVersion
#endif
#ifndef LAYOUT
#define LAYOUT commandfilter::Module::kLayout
#endif
#ifndef CLASS_COUNT
#define CLASS_COUNT 1
#endif

namespace {

constexpr const commandfilter::Class* kClasses[] = {&commandfilter::Object::kClass};

}  // namespace

extern "C" constinit const commandfilter::Module command_filter_module = {MAGIC, VERSION, LAYOUT,
                                                                          CLASS_COUNT, kClasses};
