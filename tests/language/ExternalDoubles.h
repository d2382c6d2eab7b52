// External procedures that case files can call.
#pragma once

namespace commandfilter::testing {

/// Registers the procedures, once:
///
/// | name | |
/// |---|---|
/// | Values | gives the values of its arguments as an array; nil for none |
/// | Items | gives its arguments as they stand in the expression, as an items list |
/// | First | evaluates its first argument and gives that; it has the methods without conforming |
/// | Given | gives the values of its arguments as an array; it does not conform either |
/// | Complain | leaves the error "no " and its arguments, and gives 5 |
/// | Raise | throws |
/// | Refuse, ClassOnly | cannot be made |
/// | Unfit, Half | can be made, but lack a method |
void registerExternalDoubles();

}  // namespace commandfilter::testing
