#include "base/chain_allocator.h"

#include <gtest/gtest.h>

#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

/// The C heap, with a record of what was asked of it.
struct CountingSource {
  static void* Alloc(size_t size) {
    sizes.push_back(size);
    ++live;
    return std::malloc(size);
  }
  static void Free(void* memory) {
    --live;
    std::free(memory);
  }
  static void reset() {
    sizes.clear();
    live = 0;
  }
  static inline std::vector<size_t> sizes;
  static inline int live = 0;
};

using Allocator = TAutoFreeAlloc<CountingSource>;

class ChainAllocatorTest : public testing::Test {
 protected:
  void SetUp() override { CountingSource::reset(); }
  size_t blockCount() const { return CountingSource::sizes.size(); }
  Allocator allocator_;
};

/// Notes its name when it is destroyed.
struct Mourned {
  Mourned(std::string& log, char name) : log_(log), name_(name) {}
  ~Mourned() { log_ += name_; }
  std::string& log_;
  char name_;
};

bool isAligned(const void* memory, size_t alignment) {
  return reinterpret_cast<uintptr_t>(memory) % alignment == 0;
}

}  // namespace

TEST_F(ChainAllocatorTest, TakesNoMemoryUntilItIsUsed) {
  EXPECT_EQ(blockCount(), 0u);
}

TEST_F(ChainAllocatorTest, TakesSharedBlocksOf2044FreeBytes) {
  allocator_.Alloc(1);
  EXPECT_EQ(CountingSource::sizes, std::vector<size_t>{2044 + sizeof(void*)});
}

TEST_F(ChainAllocatorTest, CarvesFromTheTopOfTheBlockDownward) {
  auto* first = static_cast<uint8_t*>(allocator_.Alloc(10));
  auto* second = static_cast<uint8_t*>(allocator_.Alloc(3));
  EXPECT_EQ(first - second, 3);
  EXPECT_EQ(blockCount(), 1u);
}

TEST_F(ChainAllocatorTest, PutsAnAllocationOf2043BytesIntoASharedBlock) {
  auto* large = static_cast<uint8_t*>(allocator_.Alloc(2043));
  auto* small = static_cast<uint8_t*>(allocator_.Alloc(1));
  EXPECT_EQ(large - small, 1) << "the last byte of the shared block";
  EXPECT_EQ(blockCount(), 1u);
}

TEST_F(ChainAllocatorTest, GivesAnAllocationOf2044BytesABlockOfItsOwn) {
  allocator_.Alloc(2044);
  allocator_.Alloc(1);
  EXPECT_EQ(CountingSource::sizes[0], 2044 + sizeof(void*));
  EXPECT_EQ(blockCount(), 2u) << "nothing is free in a block of its own";
}

TEST_F(ChainAllocatorTest, KeepsCarvingFromTheCurrentBlockBesideALargeOne) {
  auto* before = static_cast<uint8_t*>(allocator_.Alloc(8));
  allocator_.Alloc(5000);
  auto* after = static_cast<uint8_t*>(allocator_.Alloc(8));
  EXPECT_EQ(before - after, 8);
  EXPECT_EQ(blockCount(), 2u);
}

TEST_F(ChainAllocatorTest, DoesNotReuseWhatWasLeftInAFullBlock) {
  allocator_.Alloc(2000);
  allocator_.Alloc(100);
  allocator_.Alloc(20);
  EXPECT_EQ(blockCount(), 2u);
  allocator_.Alloc(1950);
  EXPECT_EQ(blockCount(), 3u) << "44 bytes of the first block and 1924 of the second are too few";
}

TEST_F(ChainAllocatorTest, ClearingAnAllocatorThatNeverAllocatedDoesNothing) {
  allocator_.Clear();
  allocator_.Clear();
  EXPECT_EQ(blockCount(), 0u);
  EXPECT_EQ(CountingSource::live, 0);
}

TEST_F(ChainAllocatorTest, FreesEveryBlockAndCanBeUsedAgain) {
  allocator_.Alloc(3000);
  allocator_.Alloc(10);
  allocator_.Clear();
  EXPECT_EQ(CountingSource::live, 0);
  std::memset(allocator_.Alloc(100), 1, 100);
  EXPECT_EQ(CountingSource::live, 1);
}

TEST_F(ChainAllocatorTest, DestroysObjectsNewestFirst) {
  std::string log;
  for (char name : {'a', 'b', 'c'}) New<Mourned>(allocator_, log, name);
  allocator_.Clear();
  EXPECT_EQ(log, "cba");
}

TEST_F(ChainAllocatorTest, DestroysObjectsOnceOnly) {
  std::string log;
  New<Mourned>(allocator_, log, 'a');
  allocator_.Clear();
  allocator_.Clear();
  EXPECT_EQ(log, "a");
}

TEST_F(ChainAllocatorTest, DestroysObjectsWhenItGoes) {
  std::string log;
  {
    Allocator allocator;
    New<Mourned>(allocator, log, 'x');
  }
  EXPECT_EQ(log, "x");
  EXPECT_EQ(CountingSource::live, 0);
}

TEST_F(ChainAllocatorTest, CallsTheDestructorOnTheMemoryItGaveOut) {
  static void* destroyed;
  destroyed = nullptr;
  void* memory = allocator_.Alloc(5, [](void* object) { destroyed = object; });
  allocator_.Clear();
  EXPECT_EQ(destroyed, memory);
}

TEST_F(ChainAllocatorTest, DestroysNothingThatWasNeverConstructed) {
  struct Refusing {
    Refusing() { throw std::runtime_error("no"); }
    ~Refusing() { ADD_FAILURE() << "destroyed without being constructed"; }
  };
  EXPECT_THROW(New<Refusing>(allocator_), std::runtime_error);
  allocator_.Clear();
}

TEST_F(ChainAllocatorTest, AlignsObjectsBehindOddSizes) {
  for (size_t odd : {1, 3, 7, 13, 2000}) {
    allocator_.Alloc(odd);
    EXPECT_TRUE(isAligned(New<double>(allocator_, 1.0), alignof(double))) << odd;
    EXPECT_TRUE(isAligned(New<std::string>(allocator_, "text"), alignof(std::string))) << odd;
  }
}

TEST_F(ChainAllocatorTest, AlignsLargeMemory) {
  for (size_t alignment : {1, 2, 4, 8, 16}) {
    EXPECT_TRUE(isAligned(allocator_.AllocAligned(5001, alignment), alignment));
  }
}

TEST_F(ChainAllocatorTest, WastesNothingOnObjectsThatAreAlignedAlready) {
  auto* first = New<uint32_t>(allocator_, 1u);
  auto* second = New<uint32_t>(allocator_, 2u);
  EXPECT_EQ(first - second, 1);
}

TEST_F(ChainAllocatorTest, OwnsObjectsWithoutADestructorToo) {
  *New<int>(allocator_, 7) = 8;
  allocator_.Clear();
  EXPECT_EQ(CountingSource::live, 0);
}

TEST_F(ChainAllocatorTest, KeepsManyObjectsApart) {
  std::vector<int*> numbers;
  for (int i = 0; i < 10000; ++i) numbers.push_back(New<int>(allocator_, i));
  for (int i = 0; i < 10000; ++i) ASSERT_EQ(*numbers[static_cast<size_t>(i)], i);
}

TEST_F(ChainAllocatorTest, RefusesSizesThatWouldWrap) {
  EXPECT_THROW(allocator_.Alloc(SIZE_MAX), std::bad_alloc);
  EXPECT_THROW(allocator_.Alloc(SIZE_MAX - 8, [](void*) {}), std::bad_alloc);
  EXPECT_THROW(allocator_.AllocAligned(SIZE_MAX - 3, 8), std::bad_alloc);
}
