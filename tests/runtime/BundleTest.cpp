#include "runtime/Bundle.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>

#include "TestFiles.h"
#include "TestValues.h"
#include "runtime/Class.h"
#include "runtime/ProcessInfo.h"
#include "runtime/Send.h"
#include "support/ChildProcess.h"

namespace commandfilter {
namespace {

using namespace std::string_view_literals;
using testing::makeFifo;
using testing::makeFile;
using testing::TemporaryFolder;

std::string builtBundle(std::string_view name) {
  return std::string(TEST_BUNDLES) + "/" + std::string(name) + ".bundle";
}

Ref<Bundle> bundleAt(const std::string& path) {
  RefPtr<Bundle> bundle = Bundle::bundleWithPath(path);
  if (!bundle) throw Exception("no bundle at " + path);
  return Ref<Bundle>(*bundle);
}

std::string listOf(std::string_view entries) {
  return "<plist><dict>" + std::string(entries) + "</dict></plist>";
}

// A bundle below the folder, with this property list and the code of a bundle that was built.
Ref<Bundle> copyWithInfo(const TemporaryFolder& folder, std::string_view name,
                         std::string_view info) {
  makeFile(folder, "Copy.bundle/Contents/Info.plist", info);
  makeFile(folder, "Copy.bundle/Contents/Linux/Copy",
           testing::readFile(builtBundle(name) + "/Contents/Linux/" + std::string(name)));
  return bundleAt(folder.path() / "Copy.bundle");
}

bool isCodeLoaded(const std::string& path) {
  void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
  if (handle != nullptr) dlclose(handle);
  return handle != nullptr;
}

// What an object of the class answers; 0 when there is no class.
std::int64_t answerOf(const Class* info) {
  if (info == nullptr) return 0;
  const Value object = instantiate(*info, Selector("init"));
  return send(object, Selector("answer")).number().longValue();
}

TEST(Bundle, IsNilWithoutAFolder) {
  const TemporaryFolder folder;
  EXPECT_FALSE(Bundle::bundleWithPath(folder.path() / "none"));
  EXPECT_FALSE(Bundle::bundleWithPath(makeFile(folder, "file", "")));
  EXPECT_FALSE(Bundle::bundleWithPath(makeFifo(folder, "fifo")));
  EXPECT_FALSE(Bundle::bundleWithPath(""));
}

TEST(Bundle, KnowsItsPlaces) {
  const TemporaryFolder folder;
  const Ref<Bundle> bundle = bundleAt(folder.path());
  const std::string path = folder.path();
  EXPECT_EQ(bundle->bundlePath(), path);
  EXPECT_EQ(bundle->builtInPlugInsPath(), path + "/Contents/PlugIns");
  EXPECT_EQ(bundle->privateFrameworksPath(), path + "/Contents/Frameworks");
  EXPECT_EQ(bundle->resourcePath(), path + "/Contents/Resources");
}

TEST(Bundle, ReadsItsPropertyListOnce) {
  const TemporaryFolder folder;
  const std::string info =
      makeFile(folder, "Contents/Info.plist",
               listOf("<key>CFBundleExecutable</key><string>Code</string><key>K</key><true/>"));
  const Ref<Bundle> bundle = bundleAt(folder.path());
  EXPECT_EQ(bundle->infoDictionary().count(), 2U);
  EXPECT_EQ(bundle->executablePath(), folder.path().string() + "/Contents/Linux/Code");
  std::filesystem::remove(info);
  EXPECT_EQ(bundle->infoDictionary().count(), 2U);
}

TEST(Bundle, HasAnEmptyDictionaryWithoutAUsablePropertyList) {
  for (const std::string& info :
       {std::string(), std::string("<plist><dict><key>a"), std::string("<plist><array/></plist>"),
        std::string("<plist><string>x</string></plist>"), std::string("\xFF"),
        "<plist><dict><key>k</key><array>" + std::string(100'000, '<')}) {
    const TemporaryFolder folder;
    makeFile(folder, "Contents/Info.plist", info);
    const Ref<Bundle> bundle = bundleAt(folder.path());
    EXPECT_EQ(bundle->infoDictionary().count(), 0U) << info;
    EXPECT_FALSE(bundle->executablePath()) << info;
    EXPECT_FALSE(bundle->load()) << info;
    EXPECT_EQ(bundle->loadFailure(),
              "its property list names no executable under CFBundleExecutable");
    EXPECT_EQ(bundle->principalClass(), nullptr) << info;
  }
}

TEST(Bundle, HasAnEmptyDictionaryWhenThePropertyListIsNoFile) {
  const TemporaryFolder folder;
  const Ref<Bundle> missing = bundleAt(folder.path());
  EXPECT_EQ(missing->infoDictionary().count(), 0U);
  static_cast<void>(makeFifo(folder, "Contents/Info.plist"));
  const Ref<Bundle> fifo = bundleAt(folder.path());
  EXPECT_EQ(fifo->infoDictionary().count(), 0U);
  std::filesystem::remove(folder.path() / "Contents/Info.plist");
  std::filesystem::create_directory(folder.path() / "Contents/Info.plist");
  EXPECT_EQ(bundleAt(folder.path())->infoDictionary().count(), 0U);
}

TEST(Bundle, HasNoExecutableUnderAnUnfitName) {
  for (const std::string_view name :
       {"<integer>5</integer>"sv, "<string></string>"sv, "<string>../Code</string>"sv,
        "<string>/bin/sh</string>"sv, "<array><string>Code</string></array>"sv}) {
    const TemporaryFolder folder;
    makeFile(folder, "Contents/Info.plist",
             listOf("<key>CFBundleExecutable</key>" + std::string(name)));
    EXPECT_FALSE(bundleAt(folder.path())->executablePath()) << name;
  }
}

TEST(Bundle, LoadsItsCodeAndRegistersItsClasses) {
  const Ref<Bundle> bundle = bundleAt(builtBundle("Good"));
  EXPECT_FALSE(bundle->isLoaded());
  EXPECT_EQ(classNamed("FirstAnswerer"), nullptr);
  ASSERT_TRUE(bundle->load()) << bundle->loadFailure();
  EXPECT_TRUE(bundle->isLoaded());
  EXPECT_EQ(bundle->loadFailure(), "");
  EXPECT_EQ(answerOf(classNamed("FirstAnswerer")), 1);
  EXPECT_EQ(answerOf(classNamed("SecondAnswerer")), 11);
  bundle->unload();
}

TEST(Bundle, UnloadsItsClassesAndCode) {
  const Ref<Bundle> bundle = bundleAt(builtBundle("Good"));
  const std::string code = *bundle->executablePath();
  for (int i = 0; i < 3; ++i) {
    ASSERT_TRUE(bundle->load());
    EXPECT_EQ(answerOf(bundle->principalClass()), 1);
    EXPECT_TRUE(isCodeLoaded(code));
    bundle->unload();
    EXPECT_FALSE(bundle->isLoaded());
    EXPECT_EQ(classNamed("FirstAnswerer"), nullptr);
    EXPECT_FALSE(isCodeLoaded(code));
  }
  bundle->unload();
  EXPECT_FALSE(bundle->isLoaded());
}

TEST(Bundle, LoadsOnce) {
  const Ref<Bundle> bundle = bundleAt(builtBundle("Good"));
  EXPECT_TRUE(bundle->load());
  EXPECT_TRUE(bundle->load());
  bundle->unload();
  EXPECT_EQ(classNamed("FirstAnswerer"), nullptr);
  EXPECT_FALSE(isCodeLoaded(*bundle->executablePath()));
}

TEST(Bundle, SharesItsCodeWithAnotherBundleAtTheSamePath) {
  const Ref<Bundle> first = bundleAt(builtBundle("Good"));
  const Ref<Bundle> second = bundleAt(builtBundle("Good"));
  ASSERT_TRUE(first->load() && second->load());
  first->unload();
  EXPECT_EQ(answerOf(classNamed("FirstAnswerer")), 1);
  EXPECT_EQ(answerOf(second->principalClass()), 1);
  second->unload();
  EXPECT_EQ(classNamed("FirstAnswerer"), nullptr);
}

TEST(Bundle, TakesTheFirstClassWhenNoneIsNamed) {
  const Ref<Bundle> bundle = bundleAt(builtBundle("Good"));
  const Class* info = bundle->principalClass();
  ASSERT_NE(info, nullptr);
  EXPECT_EQ(info->name, "FirstAnswerer");
  EXPECT_TRUE(bundle->isLoaded());
  bundle->unload();
}

TEST(Bundle, TakesTheClassThatItsPropertyListNames) {
  constexpr auto kExecutable = "<key>CFBundleExecutable</key><string>Copy</string>"sv;
  const auto principal = [&](std::string_view named) {
    const TemporaryFolder folder;
    const Ref<Bundle> bundle =
        copyWithInfo(folder, "Good", listOf(std::string(kExecutable) + std::string(named)));
    const Class* info = bundle->principalClass();
    const std::string name(info != nullptr ? info->name : "none");
    bundle->unload();
    return name;
  };
  EXPECT_EQ(principal(""), "FirstAnswerer");
  EXPECT_EQ(principal("<key>NSPrincipalClass</key><string>SecondAnswerer</string>"),
            "SecondAnswerer");
  // Any class of the process will do.
  EXPECT_EQ(principal("<key>NSPrincipalClass</key><string>Dictionary</string>"), "Dictionary");
  EXPECT_EQ(principal("<key>NSPrincipalClass</key><string>Missing</string>"), "none");
  EXPECT_EQ(principal("<key>NSPrincipalClass</key><string></string>"), "none");
  EXPECT_EQ(principal("<key>NSPrincipalClass</key><integer>5</integer>"), "none");
}

TEST(Bundle, PrefersItsOwnClassToAnotherOfTheSameName) {
  const Ref<Bundle> first = bundleAt(builtBundle("Good"));
  const Ref<Bundle> second = bundleAt(builtBundle("SameName"));
  EXPECT_EQ(answerOf(first->principalClass()), 1);
  EXPECT_EQ(answerOf(second->principalClass()), 2);
  EXPECT_EQ(answerOf(classNamed("FirstAnswerer")), 1);
  first->unload();
  EXPECT_EQ(answerOf(classNamed("FirstAnswerer")), 2);
  second->unload();
  EXPECT_EQ(classNamed("FirstAnswerer"), nullptr);
}

TEST(Bundle, HasNoPrincipalClassWithoutClasses) {
  const Ref<Bundle> bundle = bundleAt(builtBundle("NoClasses"));
  EXPECT_EQ(bundle->principalClass(), nullptr);
  EXPECT_TRUE(bundle->isLoaded());
  bundle->unload();
}

TEST(Bundle, RefusesCodeOfAnotherInterface) {
  for (const char* name : {"OtherMagic", "OtherVersion", "OtherLayout"}) {
    const Ref<Bundle> bundle = bundleAt(builtBundle(name));
    EXPECT_EQ(bundle->principalClass(), nullptr) << name;
    EXPECT_FALSE(bundle->isLoaded()) << name;
    EXPECT_NE(bundle->loadFailure().find("built for another version of the interface"),
              std::string::npos);
    EXPECT_FALSE(isCodeLoaded(*bundle->executablePath())) << name;
  }
}

TEST(Bundle, RefusesCodeWithoutEntryPoint) {
  for (const char* name : {"NoEntryPoint", "EntryElsewhere"}) {
    const Ref<Bundle> bundle = bundleAt(builtBundle(name));
    EXPECT_FALSE(bundle->load()) << name;
    EXPECT_EQ(bundle->loadFailure(),
              *bundle->executablePath() + " exports no command_filter_module");
    EXPECT_FALSE(isCodeLoaded(*bundle->executablePath())) << name;
  }
}

TEST(Bundle, RefusesWhatIsNoCode) {
  const TemporaryFolder folder;
  makeFile(folder, "Contents/Info.plist",
           listOf("<key>CFBundleExecutable</key><string>Code</string>"));
  const std::string path = folder.path().string() + "/Contents/Linux/Code";
  const auto failure = [&folder] {
    const Ref<Bundle> bundle = bundleAt(folder.path());
    EXPECT_FALSE(bundle->load());
    EXPECT_FALSE(bundle->isLoaded());
    EXPECT_EQ(bundle->principalClass(), nullptr);
    return bundle->loadFailure();
  };
  EXPECT_EQ(failure(), path + ": is not a regular file");
  makeFile(folder, "Contents/Linux/Code", "#!/bin/sh\n");
  EXPECT_TRUE(failure().starts_with(path + ": "));
  std::filesystem::remove(path);
  static_cast<void>(makeFifo(folder, "Contents/Linux/Code"));
  EXPECT_EQ(failure(), path + ": is not a regular file");
  std::filesystem::remove(path);
  std::filesystem::create_directory(path);
  EXPECT_EQ(failure(), path + ": is not a regular file");
}

TEST(Bundle, TriesToLoadOnlyOnce) {
  const TemporaryFolder folder;
  makeFile(folder, "Contents/Info.plist",
           listOf("<key>CFBundleExecutable</key><string>Code</string>"));
  const Ref<Bundle> bundle = bundleAt(folder.path());
  EXPECT_FALSE(bundle->load());
  makeFile(folder, "Contents/Linux/Code",
           testing::readFile(builtBundle("Good") + "/Contents/Linux/Good"));
  EXPECT_FALSE(bundle->load());
  EXPECT_FALSE(bundle->loadFailure().empty());
  bundle->unload();
  EXPECT_TRUE(bundle->load());
  EXPECT_EQ(bundle->loadFailure(), "");
  bundle->unload();
}

// In a process of its own, since the code stays as long as the process does.
TEST(Bundle, LeavesItsCodeLoadedWhenItGoes) {
  const auto loadAndForget = [] {
    std::string code;
    {
      const Ref<Bundle> bundle = bundleAt(builtBundle("Good"));
      if (!bundle->load()) std::exit(1);
      code = *bundle->executablePath();
    }
    std::exit(isCodeLoaded(code) && answerOf(classNamed("SecondAnswerer")) == 11 ? 0 : 2);
  };
  EXPECT_EXIT(loadAndForget(), ::testing::ExitedWithCode(0), "");
}

// What the program says its bundle is, when it lies at that place.
std::string mainBundleOfProgramAt(const std::filesystem::path& place) {
  std::filesystem::create_directories(place.parent_path());
  std::filesystem::copy_file("/proc/self/exe", place);
  testing::ChildOptions options;
  options.program = place;
  options.arguments = {"name of a queue", "--gtest_filter=Bundle.OfTheProgramIsShown"};
  options.environment = {"SHOW_MAIN_BUNDLE=1"};
  const testing::ChildResult result = testing::runChild(options);
  const std::size_t start = result.output.find("main bundle: ") + "main bundle: "sv.size();
  return result.output.substr(start, result.output.find('\n', start) - start);
}

TEST(Bundle, OfTheProgramIsShown) {
  const Ref<Bundle> bundle = Bundle::mainBundle();
  EXPECT_TRUE(std::filesystem::path(bundle->bundlePath()).is_absolute());
  if (ProcessInfo::environmentValue("SHOW_MAIN_BUNDLE")) {
    std::cout << "main bundle: " << bundle->bundlePath() << std::endl;
  }
}

TEST(Bundle, OfTheProgramIsTheOneThatItLiesIn) {
  const TemporaryFolder folder;
  const std::filesystem::path path = std::filesystem::canonical(folder.path());
  EXPECT_EQ(mainBundleOfProgramAt(path / "App.app/Contents/Linux/program"), path / "App.app");
}

TEST(Bundle, OfTheProgramIsItsFolderOutsideOfABundle) {
  const TemporaryFolder folder;
  const std::filesystem::path path = std::filesystem::canonical(folder.path());
  EXPECT_EQ(mainBundleOfProgramAt(path / "Linux/program"), path / "Linux");
  EXPECT_EQ(mainBundleOfProgramAt(path / "Contents/program"), path / "Contents");
}

TEST(Bundle, IsFoundForItsClasses) {
  const Ref<Bundle> bundle = bundleAt(builtBundle("Good"));
  const Class* info = bundle->principalClass();
  ASSERT_NE(info, nullptr);
  const RefPtr<Bundle> found = Bundle::bundleForClass(*info);
  ASSERT_TRUE(found);
  EXPECT_EQ(found->bundlePath(), bundle->bundlePath());
  bundle->unload();
}

TEST(Bundle, IsNoneForClassesOfOtherCode) {
  EXPECT_FALSE(Bundle::bundleForClass(Bundle::kClass));
  const auto onTheHeap = std::make_unique<Class>();
  EXPECT_FALSE(Bundle::bundleForClass(*onTheHeap));
}

}  // namespace
}  // namespace commandfilter
