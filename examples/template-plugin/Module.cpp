// What the bundle hands over when it is loaded: its classes.
#include <runtime/Module.h>

#include "InkExecutor.h"
#include "TemplateParts.h"

constexpr const Class* kClasses[] = {&InkExecutor::kClass, &kJoinProcedure, &kQueueContext,
                                     &kShopServiceFactory};
extern "C" constinit const Module command_filter_module = moduleOf(kClasses);
