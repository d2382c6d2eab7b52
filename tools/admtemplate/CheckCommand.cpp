#include "CheckCommand.h"

#include <algorithm>
#include <memory>
#include <ostream>
#include <string_view>
#include <utility>

#include "PlugIns.h"
#include "UsageError.h"
#include "check/CheckedFile.h"
#include "check/NameText.h"
#include "check/TemplateCheck.h"

namespace commandfilter::tools {

namespace {

using Files = std::vector<std::unique_ptr<CheckedFile>>;

// Of a key that stands twice, the last one counts; the others are no use.
void complainOfDuplicates(CheckedFile& file) {
  for (const PropertyListPlaces::Duplicate& duplicate : file.places.duplicates()) {
    const KeyPath* path = nullptr;
    for (const std::string& key : duplicate.keys) path = &file.paths.add(path, key);
    file.findings.add({{kind::kDuplicate, Severity::Error,
                        "the key " + shownName(duplicate.keys.back()) +
                            " stands again in the same dictionary, where it replaces this one",
                        "take one of the two out, or rename it"},
                       path,
                       nullptr,
                       {},
                       duplicate.place});
  }
}

// Parameters that no template reads.
void complainOfUnread(const InputNames& names, CheckedFile& input) {
  for (const std::string_view name : names.unread()) {
    input.findings.addAtKey(
        &input.paths.add(nullptr, name),
        {kind::kUnused, Severity::Warning,
         "the input parameter " + shownName(name) + " is never used", "take it out"});
  }
}

std::string textOf(const Files& files, CheckFormat format) {
  std::vector<const CheckedFile*> all;
  all.reserve(files.size());
  for (const std::unique_ptr<CheckedFile>& file : files) all.push_back(file.get());
  return format == CheckFormat::JSON ? jsonFindings(all) : plainFindings(all);
}

}  // namespace

int runCheck(const CheckArguments& arguments, std::ostream& report, std::ostream& messages) {
  constexpr int kFound = 1;
  constexpr int kUnusable = 2;
  for (const std::string& plugIn : arguments.plugIns) loadPlugIn(plugIn);
  std::unique_ptr<CheckedFile> input;
  std::optional<InputNames> names;
  if (arguments.input) {
    input = std::make_unique<CheckedFile>(openInputFile(*arguments.input, "input"));
    names.emplace(*input->file.dictionary);
  }
  Files files;
  bool isUnusable = false;
  for (const std::string& path : arguments.templates) {
    try {
      CheckedFile& file =
          *files.emplace_back(std::make_unique<CheckedFile>(openInputFile(path, "template")));
      complainOfDuplicates(file);
      checkTemplate(*file.file.dictionary, arguments.keys, names ? &*names : nullptr, file.paths,
                    file.findings);
    } catch (const UsageError& error) {
      messages << "admtemplate: " << error.what() << '\n';
      isUnusable = true;
    }
  }
  if (input) {
    complainOfDuplicates(*input);
    // A template that cannot be read may use any of them.
    if (!isUnusable) complainOfUnread(*names, *input);
    files.push_back(std::move(input));
  }
  report << textOf(files, arguments.format);
  if (isUnusable) return kUnusable;
  const bool isClean = std::ranges::all_of(
      files, [](const std::unique_ptr<CheckedFile>& file) { return file->isClean(); });
  return isClean ? 0 : kFound;
}

}  // namespace commandfilter::tools
