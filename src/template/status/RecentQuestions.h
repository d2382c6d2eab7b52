// What a proxy remembers of the questions that it was asked last.
#pragma once

#include "template/status/RecentAnswers.h"
#include "template/status/RecentMessages.h"

namespace commandfilter {

/// Both in one piece of memory, which many proxies never need.
struct RecentQuestions {
  RecentAnswers answers;
  RecentMessages messages;
};

}  // namespace commandfilter
