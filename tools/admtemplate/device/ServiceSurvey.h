// All that a status service answers.
#pragma once

#include <string>
#include <vector>

#include "runtime/Dictionary.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"

namespace commandfilter::tools {

/// Asks the service every message of the framework that it answers to, with each identifier where
/// one is wanted, and for all its features. Gives the service's part of a device description.
[[nodiscard]] Ref<Dictionary> surveyService(const Value& service);

/// The same of the service that tells what the model can do: its features are the messages of
/// what stands behind it.
[[nodiscard]] Ref<Dictionary> surveyCapabilities(const Value& service);

/// The messages of the framework's services without arguments or with one that this service
/// answers to, in the order of the framework.
[[nodiscard]] std::vector<std::string> messagesOfService(const Value& service);

}  // namespace commandfilter::tools
