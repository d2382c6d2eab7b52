#include "runtime/SharedLibrary.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include "TestFiles.h"
#include "runtime/Module.h"

namespace commandfilter {
namespace {

using testing::makeFifo;
using testing::makeFile;
using testing::TemporaryFolder;

std::string codeOf(const std::string& bundle) {
  return std::string(TEST_BUNDLES) + "/" + bundle + ".bundle/Contents/Linux/" + bundle;
}

bool isLoaded(const std::string& path) {
  void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
  if (handle != nullptr) dlclose(handle);
  return handle != nullptr;
}

TEST(SharedLibrary, IsLoadedAsLongAsItLives) {
  const std::string path = codeOf("Good");
  {
    const Result<SharedLibrary> library = SharedLibrary::open(path);
    ASSERT_TRUE(library) << library.reason();
    EXPECT_TRUE(isLoaded(path));
  }
  EXPECT_FALSE(isLoaded(path));
}

TEST(SharedLibrary, GivesItsSymbols) {
  Result<SharedLibrary> library = SharedLibrary::open(codeOf("Good"));
  ASSERT_TRUE(library) << library.reason();
  const auto* module = static_cast<const Module*>(library->symbol("command_filter_module"));
  ASSERT_NE(module, nullptr);
  EXPECT_TRUE(module->matches());
  EXPECT_EQ(library->symbol("nothing"), nullptr);
}

TEST(SharedLibrary, GivesNoSymbolsOfOtherLibraries) {
  Result<SharedLibrary> library = SharedLibrary::open(codeOf("EntryElsewhere"));
  ASSERT_TRUE(library) << library.reason();
  EXPECT_NE(library->symbol("something"), nullptr);
  EXPECT_EQ(library->symbol("command_filter_module"), nullptr);
  EXPECT_EQ(library->symbol("malloc"), nullptr);
}

TEST(SharedLibrary, ShowsItsSymbolsToNoOther) {
  const Result<SharedLibrary> library = SharedLibrary::open(codeOf("NoEntryPoint"));
  ASSERT_TRUE(library) << library.reason();
  EXPECT_EQ(dlsym(RTLD_DEFAULT, "something"), nullptr);
}

TEST(SharedLibrary, Moves) {
  const std::string path = codeOf("Good");
  const std::string otherPath = codeOf("NoEntryPoint");
  {
    Result<SharedLibrary> first = SharedLibrary::open(path);
    Result<SharedLibrary> second = SharedLibrary::open(otherPath);
    ASSERT_TRUE(first && second);
    std::optional<SharedLibrary> moved = std::move(*first);
    EXPECT_NE(moved->symbol("command_filter_module"), nullptr);
    EXPECT_EQ(first->symbol("command_filter_module"), nullptr);
    *moved = std::move(*second);
    EXPECT_NE(moved->symbol("something"), nullptr);
  }
  EXPECT_FALSE(isLoaded(path));
  EXPECT_FALSE(isLoaded(otherPath));
}

TEST(SharedLibrary, StaysLoadedWhenItIsKept) {
  const std::string path = codeOf("NoEntryPoint");
  {
    Result<SharedLibrary> library = SharedLibrary::open(path);
    ASSERT_TRUE(library) << library.reason();
    library->keep();
    EXPECT_EQ(library->symbol("something"), nullptr);
  }
  void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
  ASSERT_NE(handle, nullptr);
  // Once for this handle, once for the one that was kept.
  dlclose(handle);
  dlclose(handle);
  EXPECT_FALSE(isLoaded(path));
}

TEST(SharedLibrary, IsNotOpenedWhenItIsNoLibrary) {
  const TemporaryFolder folder;
  for (const std::string& path :
       {(folder.path() / "none").string(), folder.path().string(), makeFifo(folder, "fifo"),
        makeFile(folder, "empty", ""), makeFile(folder, "text", "#!/bin/sh\n"),
        makeFile(folder, "magic", "\177ELF"), std::string("/dev/null"), std::string(),
        codeOf("Unresolved")}) {
    const Result<SharedLibrary> library = SharedLibrary::open(path);
    EXPECT_FALSE(library) << path;
    EXPECT_FALSE(library.reason().empty()) << path;
  }
  EXPECT_NE(SharedLibrary::open(codeOf("Unresolved")).reason().find("nothing_has_this_name"),
            std::string::npos);
}

// The loader itself would crash.
TEST(SharedLibrary, IsNotOpenedWhenItIsCutOff) {
  const TemporaryFolder folder;
  const std::string whole = testing::readFile(codeOf("Good"));
  for (const std::size_t size : {1U, 63U, 64U, 500U, 1000U, 4000U, 4096U, 5000U, 8192U}) {
    const Result<SharedLibrary> library =
        SharedLibrary::open(makeFile(folder, std::to_string(size), whole.substr(0, size)));
    EXPECT_FALSE(library) << size;
  }
  EXPECT_TRUE(SharedLibrary::open(makeFile(folder, "whole", whole)));
}

TEST(SharedLibrary, IsOpenedByAPathWithoutSlash) {
  const TemporaryFolder folder;
  makeFile(folder, "Plain", testing::readFile(codeOf("Good")));
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder.path());
  const Result<SharedLibrary> library = SharedLibrary::open("Plain");
  std::filesystem::current_path(before);
  EXPECT_TRUE(library) << library.reason();
}

TEST(SharedLibrary, OpensLibrariesOfTheSystem) {
  Result<SharedLibrary> library = SharedLibrary::openSystemLibrary({"libplist-2.0.so.3"});
  ASSERT_TRUE(library) << library.reason();
  EXPECT_NE(library->symbol("plist_free"), nullptr);
  EXPECT_FALSE(SharedLibrary::openSystemLibrary({"libnothing-has-this-name.so.1"}));
}

TEST(SharedLibrary, OpensPartsOfALibraryWhereTheyAreThere) {
  constexpr std::array kParts{"libnothing-has-this-name.so.1", "libm.so.6"};
  Result<SharedLibrary> library = SharedLibrary::openSystemLibrary({"libplist-2.0.so.3", kParts});
  ASSERT_TRUE(library) << library.reason();
  EXPECT_NE(library->symbol("plist_free"), nullptr);
}

}  // namespace
}  // namespace commandfilter
