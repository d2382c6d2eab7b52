#include "runtime/File.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <thread>

#include "TestFiles.h"
#include "runtime/FileDescriptor.h"

namespace commandfilter {
namespace {

using testing::makeFifo;
using testing::makeFile;
using testing::TemporaryFolder;

std::string bytesOfSize(std::size_t size) {
  std::string bytes(size, '\0');
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i * 7 % 251);
  return bytes;
}

TEST(File, IsReadWhole) {
  const TemporaryFolder folder;
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{4095},
                                 std::size_t{4096}, std::size_t{4097}, std::size_t{1'000'000}}) {
    const std::string bytes = bytesOfSize(size);
    Result<std::string> read = readRegularFile(makeFile(folder, "file", bytes), SIZE_MAX);
    ASSERT_TRUE(read) << read.reason();
    EXPECT_EQ(*read, bytes) << size;
  }
}

TEST(File, IsReadUpToTheLimit) {
  const TemporaryFolder folder;
  const std::string path = makeFile(folder, "file", bytesOfSize(5000));
  EXPECT_TRUE(readRegularFile(path, 5000));
  const Result<std::string> read = readRegularFile(path, 4999);
  EXPECT_FALSE(read);
  EXPECT_EQ(read.reason(), "longer than 4999 bytes");
  EXPECT_FALSE(readRegularFile(path, 0));
  EXPECT_TRUE(readRegularFile(makeFile(folder, "empty", ""), 0));
}

TEST(File, IsReadWhenItsSizeIsNotKnown) {
  Result<std::string> read = readRegularFile("/proc/self/cmdline", SIZE_MAX);
  ASSERT_TRUE(read);
  EXPECT_FALSE(read->empty());
}

TEST(File, IsReadThroughALink) {
  const TemporaryFolder folder;
  makeFile(folder, "file", "text");
  std::filesystem::create_symlink("file", folder.path() / "link");
  Result<std::string> read = readRegularFile(folder.path() / "link", SIZE_MAX);
  ASSERT_TRUE(read);
  EXPECT_EQ(*read, "text");
}

TEST(File, IsNotReadWhenItIsMissing) {
  const TemporaryFolder folder;
  const Result<std::string> read = readRegularFile(folder.path() / "none", SIZE_MAX);
  EXPECT_FALSE(read);
  EXPECT_EQ(read.reason(), "cannot be opened: No such file or directory");
  EXPECT_FALSE(readRegularFile("", SIZE_MAX));
}

TEST(File, IsNotReadWhenItIsNoRegularFile) {
  const TemporaryFolder folder;
  const std::string fifo = makeFifo(folder, "fifo");
  std::filesystem::create_symlink("loop", folder.path() / "loop");
  EXPECT_EQ(readRegularFile(fifo, SIZE_MAX).reason(), "is not a regular file");
  EXPECT_EQ(readRegularFile(folder.path(), SIZE_MAX).reason(), "is not a regular file");
  EXPECT_EQ(readRegularFile("/dev/zero", SIZE_MAX).reason(), "is not a regular file");
  EXPECT_FALSE(readRegularFile(folder.path() / "loop", SIZE_MAX));
}

TEST(File, IsNotReadWithoutPermission) {
  const TemporaryFolder folder;
  const std::string path = makeFile(folder, "file", "text");
  std::filesystem::permissions(path, std::filesystem::perms::none);
  // Nothing is closed to the superuser, who can be another user for a while.
  constexpr uid_t kNobody = 65534;
  const bool superuser = geteuid() == 0;
  if (superuser) {
    ASSERT_EQ(seteuid(kNobody), 0);
  }
  const Result<std::string> read = readRegularFile(path, SIZE_MAX);
  if (superuser) {
    ASSERT_EQ(seteuid(0), 0);
  }
  EXPECT_EQ(read.reason(), "cannot be opened: Permission denied");
}

TEST(File, IsReadFromAPipeToItsEnd) {
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
  const FileDescriptor reading(ends[0]);
  const std::string bytes = bytesOfSize(300'000);
  std::thread writer([&bytes, end = ends[1]] {
    const FileDescriptor writing(end);
    for (std::size_t done = 0; done < bytes.size();) {
      const ssize_t count = write(writing.get(), bytes.data() + done, bytes.size() - done);
      if (count < 0) return;
      done += static_cast<std::size_t>(count);
    }
  });
  Result<std::string> read = readToEnd(reading.get(), SIZE_MAX);
  writer.join();
  ASSERT_TRUE(read);
  EXPECT_EQ(*read, bytes);
}

TEST(File, IsReadFromWhereTheDescriptorStands) {
  const TemporaryFolder folder;
  const FileDescriptor file(open(makeFile(folder, "file", "abcdef").c_str(), O_RDONLY | O_CLOEXEC));
  ASSERT_EQ(lseek(file.get(), 2, SEEK_SET), 2);
  Result<std::string> read = readToEnd(file.get(), SIZE_MAX);
  ASSERT_TRUE(read);
  EXPECT_EQ(*read, "cdef");
  EXPECT_NE(fcntl(file.get(), F_GETFD), -1);
}

TEST(File, EndlessInputStopsAtTheLimit) {
  const FileDescriptor zeros(open("/dev/zero", O_RDONLY | O_CLOEXEC));
  EXPECT_EQ(readToEnd(zeros.get(), 100'000).reason(), "longer than 100000 bytes");
}

TEST(File, FailsWhenItsDescriptorCannotBeRead) {
  const TemporaryFolder folder;
  const FileDescriptor opened(open(folder.path().c_str(), O_RDONLY | O_CLOEXEC));
  EXPECT_EQ(readToEnd(opened.get(), SIZE_MAX).reason(), "cannot be read: Is a directory");
  EXPECT_EQ(readToEnd(-1, SIZE_MAX).reason(), "cannot be read: Bad file descriptor");
}

TEST(File, KindsAreTold) {
  const TemporaryFolder folder;
  const std::string file = makeFile(folder, "file", "");
  const std::string fifo = makeFifo(folder, "fifo");
  std::filesystem::create_symlink("file", folder.path() / "link");
  std::filesystem::create_symlink("none", folder.path() / "broken");
  EXPECT_TRUE(isRegularFile(file));
  EXPECT_TRUE(isRegularFile(folder.path() / "link"));
  EXPECT_TRUE(isFolder(folder.path()));
  for (const std::string& path :
       {fifo, (folder.path() / "broken").string(), (folder.path() / "none").string(),
        std::string("/dev/null"), std::string()}) {
    EXPECT_FALSE(isRegularFile(path)) << path;
    EXPECT_FALSE(isFolder(path)) << path;
  }
  EXPECT_FALSE(isRegularFile(folder.path()));
  EXPECT_FALSE(isFolder(file));
}

}  // namespace
}  // namespace commandfilter
