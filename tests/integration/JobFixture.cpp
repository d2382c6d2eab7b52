#include "integration/JobFixture.h"

#include "support/File.h"

namespace commandfilter::testing {

JobFixture::JobFixture() { scheduler_.addFilter(product_.filter()); }

void JobFixture::submitText(const std::string& queue, std::string_view text) {
  const std::filesystem::path file = folder_.path() / "commands";
  writeFile(file, text);
  job_ = scheduler_.submit(queue, file);
}

void JobFixture::submit(const std::string& queue, std::string_view lines) {
  submitText(queue, std::string("#CUPS-COMMAND\n").append(lines));
}

std::vector<std::string> JobFixture::log() const {
  std::vector<std::string> lines;
  for (const PrivateScheduler::LogLine& line : scheduler_.log(job_)) lines.push_back(line.text);
  return lines;
}

}  // namespace commandfilter::testing
