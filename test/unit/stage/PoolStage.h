/** @file
  On ConnectedHost: looks at the allocator's blocks and its list.
**/

#pragma once

#include "test/unit/stage/ApplicationPool.h"
#include "test/unit/stage/ConnectedHost.h"

inline constexpr UINTN kHeaderSize = 24;

inline MemoryBlockHeader &HeaderOf(void *pointer) {
  return *reinterpret_cast<MemoryBlockHeader *>(static_cast<UINT8 *>(pointer) - kHeaderSize);
}

class PoolStage : public ConnectedHost {
 protected:
  PoolStage() { gMemoryPool.FoundSignatureAddress = reinterpret_cast<UINTN>(&lowMemory_); }
  ~PoolStage() override { InitializeListHead(&gMemoryPool.Live); }

  std::vector<void *> ListForward() const {
    std::vector<void *> users;
    for (LIST_ENTRY *link = gMemoryPool.Live.ForwardLink; link != &gMemoryPool.Live;
         link = link->ForwardLink) {
      users.push_back(reinterpret_cast<UINT8 *>(link) + kHeaderSize);
    }
    return users;
  }
  std::vector<void *> ListBackward() const {
    std::vector<void *> users;
    for (LIST_ENTRY *link = gMemoryPool.Live.BackLink; link != &gMemoryPool.Live;
         link = link->BackLink) {
      users.insert(users.begin(), reinterpret_cast<UINT8 *>(link) + kHeaderSize);
    }
    return users;
  }
  void ExpectList(const std::vector<void *> &users) const {
    EXPECT_EQ(ListForward(), users);
    EXPECT_EQ(ListBackward(), users);
  }

  const UINTN addressAtStart_ = gMemoryPool.FoundSignatureAddress;
  UINT32 lowMemory_ = 0xBEEF;
};
