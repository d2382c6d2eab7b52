#include "PlugIns.h"

#include <pwd.h>
#include <strings.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "CommandLines.h"
#include "LoadTrial.h"
#include "ToolError.h"
#include "runtime/Array.h"
#include "runtime/Bundle.h"
#include "runtime/Cast.h"
#include "runtime/Dictionary.h"
#include "runtime/File.h"
#include "runtime/String.h"

namespace commandfilter::tools {

namespace {

std::vector<std::string> textsUnder(Bundle& bundle, std::string_view key) {
  std::vector<std::string> texts;
  const auto* list = castTo<Array>(bundle.infoDictionary().objectForKey(key));
  if (list == nullptr) return texts;
  for (const Value& entry : *list) {
    if (const auto* text = castTo<String>(entry)) texts.push_back(text->text());
  }
  return texts;
}

PlugIn inspect(const std::string& path, const FilterUser& user, bool isExecutorWanted) {
  PlugIn plugIn{.path = path, .commands = {}, .refusal = {}, .distrust = {}};
  const RefPtr<Bundle> bundle = Bundle::bundleWithPath(path);
  if (!bundle) {
    plugIn.refusal = "is no folder; a plug-in is a folder NAME.bundle";
    return plugIn;
  }
  plugIn.distrust = distrustOfTree(path, user.user);
  if (plugIn.distrust) {
    plugIn.refusal = plugIn.distrust->description();
    return plugIn;
  }
  plugIn.refusal = loadFailureAs(user, path, isExecutorWanted);
  if (plugIn.refusal.empty()) plugIn.commands = textsUnder(*bundle, "SupportedCommands");
  return plugIn;
}

std::optional<Distrust> distrustOfList(const std::string& application, uid_t user) {
  for (const char* part : {"/Contents/Info.plist", "/Contents", ""}) {
    if (auto found = distrustOf(application + part, user)) return found;
  }
  return std::nullopt;
}

}  // namespace

FilterUser filterUser(const std::optional<std::string>& name) {
  const std::string wanted = name.value_or("lp");
  if (const passwd* entry = getpwnam(wanted.c_str())) {
    return {wanted, entry->pw_uid, entry->pw_gid};
  }
  if (name) {
    throw ToolError(ExitStatus::Usage, "--user " + wanted +
                                           ": there is no such user; name that of the User line in "
                                           "cups-files.conf");
  }
  return {std::to_string(geteuid()), geteuid(), getegid()};
}

std::string installedApplication() {
  std::error_code error;
  const std::filesystem::path program = std::filesystem::canonical("/proc/self/exe", error);
  const std::filesystem::path path =
      program.parent_path().parent_path() / "lib/cups/filter/CommandFilter.app";
  if (!isFolder(path.string())) {
    throw ToolError(ExitStatus::Refused,
                    path.string() +
                        ": the filter is not installed; install the package "
                        "commandfilter, or name the application with --application");
  }
  return path.string();
}

Installation inspectInstallation(const std::string& application, const FilterUser& user) {
  Installation result;
  result.application = application;
  const RefPtr<Bundle> bundle = Bundle::bundleWithPath(application);
  if (!bundle) {
    throw ToolError(ExitStatus::Usage, application + ": is no folder; name CommandFilter.app");
  }
  result.distrust = distrustOfList(application, user.user);
  std::vector<std::string> folders;
  if (!result.distrust) folders = textsUnder(*bundle, "PlugInLocations");
  folders.push_back(bundle->builtInPlugInsPath());
  for (const std::string& path : folders) {
    PlugInFolder folder{path, isFolder(path), std::nullopt};
    if (folder.exists) folder.distrust = distrustOf(path, user.user);
    if (folder.exists && !folder.distrust) {
      for (const std::string& entry : entriesOfFolder(path)) {
        result.plugIns.push_back(inspect(entry, user, true));
      }
    }
    result.folders.push_back(std::move(folder));
  }
  const std::string frameworks = bundle->privateFrameworksPath();
  const std::string model = frameworks + "/VemoDeviceModel.bundle";
  if (isFolder(model)) {
    result.deviceModel = inspect(model, user, false);
    if (auto distrust = distrustOf(frameworks, user.user)) {
      result.deviceModel->refusal = distrust->description();
      result.deviceModel->distrust = std::move(distrust);
    }
  }
  return result;
}

const PlugIn* plugInFor(const Installation& installation, const std::string& word) {
  for (const PlugIn& plugIn : installation.plugIns) {
    const bool isListed = std::ranges::any_of(plugIn.commands, [&word](const std::string& line) {
      return strcasecmp(listedWord(line).c_str(), word.c_str()) == 0;
    });
    if (isListed) return &plugIn;
  }
  return nullptr;
}

}  // namespace commandfilter::tools
