// What an evaluation asked for and did not find.
#pragma once

#include <iosfwd>

#include "EvalCommand.h"
#include "Evaluation.h"

namespace commandfilter::tools {

/// Says what is no error of the template, but seldom meant, a line for each: keys that the template
/// does not have, descriptions that are no dictionaries, a template without values, unknown classes
/// of contexts, and services that there are not, of which everything is nil.
void noteWhatIsMissing(const Question& question, const Outcome& outcome,
                       const EvalArguments& arguments, std::ostream& messages);

}  // namespace commandfilter::tools
