// What a proxy remembers of the questions that it was asked last.
#pragma once

#include "template/status/RecentKeys.h"
#include "template/status/RecentMessages.h"

namespace commandfilter {

/// Both in one piece of memory, which many proxies never need.
struct RecentQuestions {
  RecentKeys keys;
  RecentMessages messages;
};

}  // namespace commandfilter
