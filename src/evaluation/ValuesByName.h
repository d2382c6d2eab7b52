// What expressions find in the configuration that the contexts of one template share.
#pragma once

#include <string_view>

#include "evaluation/ADMEvaluationContextBase.h"
#include "evaluation/ProcedureSignatures.h"
#include "runtime/Array.h"
#include "runtime/Dictionary.h"
#include "runtime/Value.h"

namespace commandfilter {

/// The object under the key of the context's configuration; nil when there is none. Borrowed.
[[nodiscard]] const Value& configured(const ADMEvaluationContext& context, std::string_view key);

/// A procedure that looks a name up: the value that the object under the key of the configuration
/// has for the name that the first argument gives. A name that is no text or empty has no value; a
/// number of arguments that is none of those accepted records the message.
[[nodiscard]] Value valueByName(ADMEvaluationContextBase& context, const Array* items,
                                const ArgumentCount& accepted, std::string_view key,
                                std::string_view wrongNumber);

}  // namespace commandfilter
