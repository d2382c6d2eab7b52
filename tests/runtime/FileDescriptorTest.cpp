#include "runtime/FileDescriptor.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <utility>

namespace commandfilter {
namespace {

FileDescriptor openSomething() { return FileDescriptor(open("/dev/null", O_RDONLY | O_CLOEXEC)); }

bool isOpen(int descriptor) { return fcntl(descriptor, F_GETFD) != -1; }

TEST(FileDescriptor, OwnsNothingAtFirst) {
  const FileDescriptor none;
  EXPECT_FALSE(none);
  EXPECT_EQ(none.get(), -1);
  EXPECT_FALSE(FileDescriptor(-1));
}

TEST(FileDescriptor, ClosesWhatItOwns) {
  int number = -1;
  {
    const FileDescriptor descriptor = openSomething();
    ASSERT_TRUE(descriptor);
    number = descriptor.get();
    EXPECT_TRUE(isOpen(number));
  }
  EXPECT_FALSE(isOpen(number));
}

TEST(FileDescriptor, Moves) {
  FileDescriptor first = openSomething();
  const int number = first.get();
  FileDescriptor second = std::move(first);
  EXPECT_FALSE(first);  // NOLINT(bugprone-use-after-move): that is the question
  EXPECT_EQ(second.get(), number);
  FileDescriptor third;
  third = std::move(second);
  EXPECT_EQ(third.get(), number);
  EXPECT_TRUE(isOpen(number));
}

TEST(FileDescriptor, ClosesWhatIsReplaced) {
  FileDescriptor descriptor = openSomething();
  const int first = descriptor.get();
  descriptor = openSomething();
  EXPECT_FALSE(isOpen(first));
  EXPECT_TRUE(isOpen(descriptor.get()));
}

TEST(FileDescriptor, GivesADescriptorUp) {
  int number = -1;
  {
    FileDescriptor descriptor = openSomething();
    number = descriptor.release();
    EXPECT_FALSE(descriptor);
  }
  EXPECT_TRUE(isOpen(number));
  close(number);
}

TEST(FileDescriptor, MayOwnDescriptorZero) {
  FileDescriptor zero(0);
  EXPECT_TRUE(zero);
  EXPECT_EQ(zero.release(), 0);
}

}  // namespace
}  // namespace commandfilter
