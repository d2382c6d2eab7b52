#include "LibraryParsing.h"

#include <plist/plist.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

#include "harness/ScratchFolder.h"

namespace commandfilter::benchmarks {

std::unique_ptr<Contender> libraryParsing(std::vector<std::filesystem::path> files) {
  return plainContender([files = std::move(files)] {
    std::int64_t count = 0;
    for (const std::filesystem::path& file : files) {
      const std::string text = readFile(file);
      plist_t root = nullptr;
      plist_from_xml(text.data(), static_cast<std::uint32_t>(text.size()), &root);
      if (root == nullptr) throw std::runtime_error("libplist cannot read " + file.string());
      plist_free(root);
      ++count;
    }
    return count;
  });
}

}  // namespace commandfilter::benchmarks
