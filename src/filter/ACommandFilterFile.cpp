#include "filter/ACommandFilterFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstddef>
#include <new>
#include <string>
#include <utility>

#include "filter/environment/ACommandFilterEnvironment.h"
#include "runtime/File.h"
#include "runtime/FileDescriptor.h"
#include "runtime/String.h"
#include "runtime/Text.h"
#include "runtime/UTF8.h"
#include "runtime/ValueVector.h"

namespace commandfilter {

namespace {

constexpr std::string_view kHeader = "#CUPS-COMMAND";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
// No command file is this long; without a limit a device as the path would fill the memory.
constexpr std::size_t kLongest = std::size_t{1} << 30U;

Result<std::string> readCommandFile() {
  const ACommandFilterEnvironment* environment = ACommandFilterEnvironment::environment();
  if (environment == nullptr || !environment->commandFilePath()) {
    return readToEnd(STDIN_FILENO, kLongest);
  }
  const FileDescriptor file(
      open(environment->commandFilePath()->c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
  return readToEnd(file.get(), kLongest);
}

}  // namespace

constinit const Class ACommandFilterFile::kClass{.name = "ACommandFilterFile",
                                                 .base = &Object::kClass};

Ref<ACommandFilterFile> ACommandFilterFile::commandFile() { return make<ACommandFilterFile>(); }

RefPtr<Array> ACommandFilterFile::commandsInData(std::string_view data) {
  if (!isUTF8(data)) return nullptr;
  // A mark of the encoding is no part of the text; left in, it would make the header a command.
  if (data.starts_with(kByteOrderMark)) data.remove_prefix(kByteOrderMark.size());
  const LineEnd firstEnd = findLineEnd(data, 0);
  if (firstEnd.offset == data.size()) return nullptr;
  if (data.substr(0, firstEnd.offset).find(kHeader) == std::string_view::npos) return nullptr;
  ValueVector commands;
  for (std::size_t start = 0; start < data.size();) {
    const LineEnd end = findLineEnd(data, start);
    const std::string_view line = trimmed(data.substr(start, end.offset - start));
    if (!line.empty() && line.front() != '#') {
      commands.emplace_back(String::create(std::string(line)));
    }
    start = end.next;
  }
  return Array::create(std::move(commands));
}

RefPtr<Array> ACommandFilterFile::commands() {
  if (commands_) return commands_;
  try {
    Result<std::string> data = readCommandFile();
    if (!data) return nullptr;
    commands_ = commandsInData(*data);
  } catch (const std::bad_alloc&) {
    // A file that is too large for the memory is one that cannot be read.
    return nullptr;
  }
  return commands_;
}

}  // namespace commandfilter
