#include "runtime/Bundle.h"

#include <dlfcn.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <string_view>

#include "runtime/Cast.h"
#include "runtime/Class.h"
#include "runtime/File.h"
#include "runtime/Module.h"
#include "runtime/PropertyList.h"
#include "runtime/String.h"
#include "runtime/Trust.h"

namespace commandfilter {

namespace {

constexpr std::string_view kCodeFolder = "/Contents/Linux";

// The folder that a file lies in.
std::string_view folderOf(std::string_view file) {
  const std::size_t end = file.rfind('/');
  return file.substr(0, end == 0 ? 1 : end);
}

}  // namespace

constinit const Class Bundle::kClass{.name = "Bundle", .base = &Object::kClass};

Bundle::~Bundle() {
  // The classes may be in use; only unload() says that they are not.
  registration_.keep();
  if (library_) library_->keep();
}

RefPtr<Bundle> Bundle::bundleWithPath(const std::string& path) {
  if (!isFolder(path)) return nullptr;
  return make<Bundle>(path);
}

Ref<Bundle> Bundle::mainBundle() {
  // The program's name, argv[0], is the queue's name under CUPS; only the kernel knows the file.
  std::array<char, PATH_MAX> buffer{};
  const ssize_t length = readlink("/proc/self/exe", buffer.data(), buffer.size());
  std::string_view folder =
      folderOf({buffer.data(), length > 0 ? static_cast<std::size_t>(length) : 0});
  if (folder.ends_with(kCodeFolder)) folder.remove_suffix(kCodeFolder.size());
  return make<Bundle>(folder.empty() ? "." : std::string(folder));
}

RefPtr<Bundle> Bundle::bundleForClass(const Class& info) {
  // The class is data of the code that defines it.
  Dl_info code{};
  if (dladdr(&info, &code) == 0 || code.dli_fname == nullptr) return nullptr;
  std::string_view folder = folderOf(code.dli_fname);
  if (!folder.ends_with(kCodeFolder)) return nullptr;
  folder.remove_suffix(kCodeFolder.size());
  return bundleWithPath(std::string(folder));
}

const Dictionary& Bundle::infoDictionary() {
  if (!info_) {
    Result<Value> list = readPropertyList(path_ + "/Contents/Info.plist");
    if (list) info_ = RefPtr<Dictionary>(castTo<Dictionary>(*list));
    if (!info_) info_ = Dictionary::create();
  }
  return *info_;
}

std::optional<std::string> Bundle::executablePath() {
  const auto* name = castTo<String>(infoDictionary().objectForKey("CFBundleExecutable"));
  if (name == nullptr || name->isEmpty() || name->view().find('/') != std::string_view::npos ||
      name->view().find('\0') != std::string_view::npos) {
    return std::nullopt;
  }
  return path_ + "/Contents/Linux/" + name->text();
}

bool Bundle::fail(std::string reason) {
  loadFailure_ = std::move(reason);
  return false;
}

bool Bundle::load() {
  if (library_) return true;
  if (loadTried_) return false;
  loadTried_ = true;
  // Before anything of it is read: its property list decides what is loaded.
  if (const std::optional<Distrust> distrust = distrustOfTree(path_)) {
    return fail(distrust->description());
  }
  const std::optional<std::string> path = executablePath();
  if (!path) return fail("its property list names no executable under CFBundleExecutable");
  Result<SharedLibrary> library = SharedLibrary::open(*path);
  if (!library) return fail(*path + ": " + library.reason());
  const auto* module = static_cast<const Module*>(library->symbol("command_filter_module"));
  if (module == nullptr) return fail(*path + " exports no command_filter_module");
  if (!module->matches()) {
    return fail(*path + " was built for another version of the interface");
  }
  registration_ = ClassRegistry::shared().add(module->classList());
  classes_ = module->classes;
  classCount_ = module->classCount;
  library_ = std::move(*library);
  loadFailure_.clear();
  return true;
}

const Class* Bundle::principalClass() {
  if (!load()) return nullptr;
  const Value& named = infoDictionary().objectForKey("NSPrincipalClass");
  if (named.isNil()) return classCount_ != 0 ? classes_[0] : nullptr;
  const auto* name = castTo<String>(named);
  if (name == nullptr) return nullptr;
  // The bundle's own classes first: another bundle may have one of the same name.
  for (std::size_t i = 0; i < classCount_; ++i) {
    if (classes_[i]->name == name->view()) return classes_[i];
  }
  return classNamed(name->view());
}

void Bundle::unload() noexcept {
  classes_ = nullptr;
  classCount_ = 0;
  registration_ = {};
  library_.reset();
  loadTried_ = false;
}

}  // namespace commandfilter
