// Classes that templates find by their names. Each stands in the source file of its own name.
#pragma once

#include <runtime/Class.h>

// _External("Join", list, text)
extern const commandfilter::Class kJoinProcedure;
// The status service "Shop"
extern const commandfilter::Class kShopServiceFactory;
// For values: the name @queue and the procedure _Count(list, one, many)
extern const commandfilter::Class kQueueContext;
