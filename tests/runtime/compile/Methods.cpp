// Rows of method tables, of which only the first case compiles.
#include <string>

#include "runtime/Method.h"
#include "runtime/Object.h"

namespace commandfilter {

int add(Object& /*receiver*/, int left, int right) { return left + right; }
int two() { return 2; }
void takeText(Object& /*receiver*/, std::string /*text*/) {}
long double longNumber(Object& /*receiver*/) { return 0; }
struct Plain {};
Plain plain(Object& /*receiver*/) { return {}; }
void takePlain(Object& /*receiver*/, Plain* /*plain*/) {}

#if CASE == 0
constexpr Method kRow = method<&add>("add:to:");
constexpr Method kOther = classMethod<&two>("two");
#elif CASE == 1
constexpr Method kRow = method<&add>("add:");
#elif CASE == 2
constexpr Method kRow = method<&add>("add:to:and:");
#elif CASE == 3
constexpr Method kRow = classMethod<&two>("two:");
#elif CASE == 4
constexpr Method kRow = method<&takeText>("takeText:");
#elif CASE == 5
constexpr Method kRow = method<&longNumber>("longNumber");
#elif CASE == 6
constexpr Method kRow = method<&plain>("plain");
#elif CASE == 7
constexpr Method kRow = method<&takePlain>("takePlain:");
#endif

}  // namespace commandfilter
