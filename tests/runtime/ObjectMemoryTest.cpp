#include "runtime/ObjectMemory.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <thread>
#include <utility>

#include "runtime/Object.h"
#include "runtime/Value.h"
#include "runtime/ValueVector.h"

// Memory is given to objects only, so objects of many sizes show how it is handled.
namespace commandfilter {
namespace {

template <std::size_t Size>
class Filled final : public Object {
 public:
  explicit Filled(int byte) { bytes_.fill(static_cast<unsigned char>(byte)); }
  ~Filled() override {
    for (const unsigned char byte : bytes_) EXPECT_EQ(byte, bytes_[0]);
  }

 private:
  std::array<unsigned char, Size> bytes_;
};

template <std::size_t... Sizes>
void addObjects(ValueVector& objects, int byte, std::index_sequence<Sizes...> /*unused*/) {
  (objects.emplace_back(make<Filled<Sizes * 8 + 1>>(byte)), ...);
}

ValueVector objectsOfManySizes(int byte) {
  ValueVector objects;
  addObjects(objects, byte, std::make_index_sequence<80>());
  return objects;
}

TEST(ObjectMemory, IsNotSharedByLivingObjects) {
  ValueVector kept;
  for (int round = 0; round < 200; ++round) {
    ValueVector objects = objectsOfManySizes(round);
    // Every third object stays, so that old memory lies between new one.
    for (std::size_t i = 0; i < objects.size(); i += 3) kept.push_back(std::move(objects[i]));
  }
  for (const Value& object : kept) EXPECT_EQ(object.object()->referenceCount(), 1U);
}

TEST(ObjectMemory, IsAlignedForEveryType) {
  for (const Value& object : objectsOfManySizes(1)) {
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(object.object()) % alignof(std::max_align_t), 0U);
  }
}

TEST(ObjectMemory, TakesMoreThanItKeeps) {
  for (int round = 0; round < 3; ++round) {
    ValueVector objects;
    for (int i = 0; i < 20'000; ++i) objects.emplace_back(make<Filled<20>>(7));
  }
}

// A tool that watches memory notices what a thread would leave behind.
TEST(ObjectMemory, IsGoneWithItsThread) {
  ValueVector objects;
  std::thread([&objects] { objects = objectsOfManySizes(1); }).join();
  std::thread([&objects] { objects.clear(); }).join();
  EXPECT_TRUE(objects.empty());
}

}  // namespace
}  // namespace commandfilter
