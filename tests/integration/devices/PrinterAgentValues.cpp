// A pass_persist command of net-snmp's agent: serves the objects of a file.
//
//   printer_agent_values FILE
//
// Each line of the file is "IDENTIFIER TYPE VALUE", as in ".1.3.6.1.2.1.43.5.1.1.17.1 string SN1";
// the types are net-snmp's (integer, string, counter, octet with hexadecimal digits). Empty lines
// and lines that begin with # mean nothing.
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <fstream>
#include <iostream>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using ObjectID = std::vector<std::uint32_t>;

struct Object {
  std::string identifier;
  std::string type;
  std::string value;
};

std::optional<ObjectID> numbersOf(std::string_view text) {
  ObjectID numbers;
  while (text.starts_with('.')) {
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data() + 1, text.data() + text.size(), number);
    if (error != std::errc{}) return std::nullopt;
    numbers.push_back(number);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  }
  if (!text.empty()) return std::nullopt;
  return numbers;
}

// Objects in the order in which an agent goes through them.
std::map<ObjectID, Object> readObjects(const char* path) {
  std::map<ObjectID, Object> objects;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line.front() == '#') continue;
    Object object;
    std::istringstream words(line);
    words >> object.identifier >> object.type >> std::ws;
    std::getline(words, object.value);
    if (const std::optional<ObjectID> numbers = numbersOf(object.identifier)) {
      objects[*numbers] = std::move(object);
    }
  }
  return objects;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const std::map<ObjectID, Object> objects = readObjects(argv[1]);
  for (std::string request; std::getline(std::cin, request);) {
    if (request == "PING") {
      std::cout << "PONG" << std::endl;
      continue;
    }
    std::string identifier;
    if (!std::getline(std::cin, identifier)) break;
    std::string value;
    if (request == "set" && !std::getline(std::cin, value)) break;
    const std::optional<ObjectID> numbers = numbersOf(identifier);
    auto found = objects.end();
    if (numbers && request == "get") found = objects.find(*numbers);
    if (numbers && request == "getnext") found = objects.upper_bound(*numbers);
    if (request == "set") {
      std::cout << "not-writable" << std::endl;
    } else if (found == objects.end()) {
      std::cout << "NONE" << std::endl;
    } else {
      const Object& object = found->second;
      std::cout << object.identifier << '\n' << object.type << '\n' << object.value << std::endl;
    }
  }
  return 0;
}
