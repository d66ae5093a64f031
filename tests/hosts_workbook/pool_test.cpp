#include "hosts/workbook/objects/pool.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <thread>
#include <vector>

namespace mervane::workbook {
namespace {

/// A class of this test alone, so that its pool begins empty.
template <int number>
struct Small {
  double value = number;
};

TEST(PoolAllocator, GivesTheBlockOfAnEndedObjectToTheNextOne) {
  PoolAllocator<Small<1>> pool;
  Small<1>* first = pool.allocate(1);
  pool.deallocate(first, 1);
  Small<1>* second = pool.allocate(1);
  EXPECT_EQ(first, second);
  pool.deallocate(second, 1);
}

TEST(PoolAllocator, GivesObjectsThatLiveAtTheSameTimeBlocksOfTheirOwn) {
  PoolAllocator<Small<2>> pool;
  // More than the list keeps, twice, so that the second round takes some from the list and some anew.
  for (int round = 0; round < 2; ++round) {
    std::vector<Small<2>*> blocks;
    for (int i = 0; i < 200; ++i) blocks.push_back(pool.allocate(1));
    EXPECT_EQ(std::set<Small<2>*>(blocks.begin(), blocks.end()).size(), blocks.size());
    for (Small<2>* block : blocks) pool.deallocate(block, 1);
  }
}

TEST(PoolAllocator, KeepsBlocksOfOneSizeOnly) {
  PoolAllocator<Small<3>> pool;
  Small<3>* several = pool.allocate(5);
  pool.deallocate(several, 5);
  Small<3>* one = pool.allocate(1);
  Small<3>* other = pool.allocate(5);
  for (int i = 0; i < 5; ++i) std::construct_at(other + i);
  EXPECT_NE(one, other);
  pool.deallocate(one, 1);
  pool.deallocate(other, 5);
}

TEST(PoolAllocator, LetsAnObjectEndOnAnotherThread) {
  auto shared = std::allocate_shared<Small<4>>(PoolAllocator<Small<4>>());
  std::thread([last = std::move(shared)]() mutable {
    EXPECT_EQ(last->value, 4.0);
    last.reset();
  }).join();
  EXPECT_EQ(std::allocate_shared<Small<4>>(PoolAllocator<Small<4>>())->value, 4.0);
}

}  // namespace
}  // namespace mervane::workbook
