// Bundles: folders with an information property list, code and resources.
#pragma once

#include <optional>
#include <string>

#include "runtime/ClassRegistry.h"
#include "runtime/Dictionary.h"
#include "runtime/Export.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/SharedLibrary.h"

namespace commandfilter {

/// A folder laid out as `Name/Contents/{Info.plist,Linux/<CFBundleExecutable>,PlugIns/,Resources/,
/// Frameworks/}`. Nothing is read or loaded before it is asked for. Code that was loaded stays
/// when the bundle object goes; only `unload` removes it.
class COMMANDFILTER_EXPORT Bundle final : public Object {
 public:
  static const Class kClass;

  /// The bundle at the path; nil when there is no folder. A folder without the layout is a bundle
  /// without information and code.
  [[nodiscard]] static RefPtr<Bundle> bundleWithPath(const std::string& path);
  /// The bundle that the running program lies in: the folder above `Contents/Linux`, or the
  /// program's own folder when it lies in no bundle.
  [[nodiscard]] static Ref<Bundle> mainBundle();
  /// The bundle whose code the class is part of, so that a plug-in finds its own resources; nil for
  /// a class of code that lies in no bundle.
  [[nodiscard]] static RefPtr<Bundle> bundleForClass(const Class& info);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  [[nodiscard]] const std::string& bundlePath() const noexcept { return path_; }
  /// The information property list; empty when it is missing, unreadable or no dictionary.
  [[nodiscard]] const Dictionary& infoDictionary();
  /// The path of the code: `Contents/Linux/` and the name under "CFBundleExecutable"; none when
  /// the property list names none, or a name with a slash.
  [[nodiscard]] std::optional<std::string> executablePath();
  /// The folder for plug-ins inside the bundle, whether it is there or not.
  [[nodiscard]] std::string builtInPlugInsPath() const { return path_ + "/Contents/PlugIns"; }
  /// The folder for frameworks inside the bundle, whether it is there or not.
  [[nodiscard]] std::string privateFrameworksPath() const { return path_ + "/Contents/Frameworks"; }
  /// The folder for resources inside the bundle, whether it is there or not.
  [[nodiscard]] std::string resourcePath() const { return path_ + "/Contents/Resources"; }

  /// Loads the code, once, and registers its classes. May run code of the bundle.
  /// @return false when others than root and this user could have changed something in the bundle,
  /// when there is no code, it cannot be loaded, has no entry point, or was built for another
  /// version of the interface.
  bool load();
  /// The class that the property list names under "NSPrincipalClass", or the first of the module's
  /// classes when it names none; loads the code. nullptr when there is no such class.
  [[nodiscard]] const Class* principalClass();
  /// Removes the bundle's classes, then its code. None of its objects may be left.
  void unload() noexcept;
  [[nodiscard]] bool isLoaded() const noexcept { return library_.has_value(); }
  /// Why the last `load` gave nothing; empty otherwise.
  [[nodiscard]] const std::string& loadFailure() const noexcept { return loadFailure_; }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit Bundle(std::string path) : path_(std::move(path)) {}
  ~Bundle() override;
  bool fail(std::string reason);

  std::string path_;
  RefPtr<Dictionary> info_;
  std::optional<SharedLibrary> library_;
  ClassRegistry::Registration registration_;
  const Class* const* classes_ = nullptr;
  std::size_t classCount_ = 0;
  std::string loadFailure_;
  bool loadTried_ = false;
};

}  // namespace commandfilter
