#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <type_traits>
#include <utility>

/// Memory source of the chain allocator: the C heap.
struct StdLibAlloc {
  static void* Alloc(size_t size) { return std::malloc(size); }
  static void Free(void* memory) { std::free(memory); }
};

/// Runs the destructor of a T through an untyped pointer.
template <class T>
struct DestructorTraits {
  static void Destruct(void* object) { static_cast<T*>(object)->~T(); }
};

/// How many bytes several allocators may still take together.
struct MemoryBudget {
  uint64_t left = UINT64_MAX;
  bool wasExceeded = false;

  /// Throws std::bad_alloc when there is not so much left.
  void Take(uint64_t bytes) {
    wasExceeded = wasExceeded || bytes > left;
    if (bytes > left) throw std::bad_alloc();
    left -= bytes;
  }
};

/// Carves many small objects out of 2 KiB blocks and frees them in one sweep; nothing is freed singly.
/// Memory and objects belong to the allocator and live until `Clear` or its destruction.
/// Throws std::bad_alloc when memory is out; not safe for use from several threads.
template <class Source>
class TAutoFreeAlloc {
 public:
  TAutoFreeAlloc() = default;
  TAutoFreeAlloc(const TAutoFreeAlloc&) = delete;
  TAutoFreeAlloc& operator=(const TAutoFreeAlloc&) = delete;
  ~TAutoFreeAlloc() { Clear(); }

  /// Where blocks are counted from now on; null for nowhere. Not owned. What was taken stays taken: an
  /// allocator is cleared when its document goes.
  void SetBudget(MemoryBudget* budget) { budget_ = budget; }
  MemoryBudget* Budget() const { return budget_; }

  /// `size` bytes, not cleared and not aligned.
  void* Alloc(size_t size) { return AllocAligned(size, 1); }

  /// `size` bytes, followed by a call of `destructor` on them when the allocator is cleared, newest first.
  void* Alloc(size_t size, void (*destructor)(void*)) {
    if (size > SIZE_MAX - sizeof(Link)) throw std::bad_alloc();
    auto* link = static_cast<Link*>(AllocAligned(sizeof(Link) + size, alignof(std::max_align_t)));
    link->next = destructors_;
    link->destructor = destructor;
    destructors_ = link;
    return link + 1;
  }

  /// Replaces the destructor that goes with `memory`, which came from the destructor form of `Alloc`.
  void SetDestructor(void* memory, void (*destructor)(void*)) {
    (static_cast<Link*>(memory) - 1)->destructor = destructor;
  }

  /// `size` bytes at an address divisible by `alignment` (a power of two, at most that of std::max_align_t);
  /// records that hold pointers need it.
  void* AllocAligned(size_t size, size_t alignment) {
    if (void* memory = Carve(size, alignment)) return memory;
    if (size > kLargestShared - (alignment - 1)) return AllocOwnBlock(size, alignment);
    StartSharedBlock();
    return Carve(size, alignment);
  }

  /// Destroys all objects, newest first, and frees every block. The allocator can be used again.
  void Clear() {
    while (Link* link = destructors_) {
      destructors_ = link->next;
      link->destructor(link + 1);
    }
    while (Block* block = blocks_) {
      blocks_ = block->next;
      Source::Free(block);
    }
    bottom_ = top_ = nullptr;
  }

 private:
  struct Block {
    Block* next;
    uint8_t* memory() { return reinterpret_cast<uint8_t*>(this + 1); }
  };
  struct alignas(std::max_align_t) Link {
    Link* next;
    void (*destructor)(void*);
  };
  static constexpr size_t kBlockSize = 2044;      ///< free bytes of a fresh shared block
  static constexpr size_t kLargestShared = 2043;  ///< more than this takes a block of its own

  /// Memory of the current block, or null when it does not fit there.
  void* Carve(size_t size, size_t alignment) {
    const auto free = static_cast<size_t>(top_ - bottom_);
    if (size > free) return nullptr;
    const size_t gap = reinterpret_cast<uintptr_t>(top_ - size) & (alignment - 1);
    if (gap > free - size) return nullptr;
    return top_ -= size + gap;
  }

  void StartSharedBlock() {
    Block* block = NewBlock(kBlockSize);
    block->next = blocks_;
    blocks_ = block;
    bottom_ = block->memory();
    top_ = bottom_ + kBlockSize;
  }

  /// A block behind the current one, which goes on being carved from.
  void* AllocOwnBlock(size_t size, size_t alignment) {
    if (size > SIZE_MAX - sizeof(Block) - alignment) throw std::bad_alloc();
    Block* block = NewBlock(size + alignment - 1);
    block->next = blocks_ ? std::exchange(blocks_->next, block) : nullptr;
    if (!blocks_) blocks_ = block;
    const auto address = reinterpret_cast<uintptr_t>(block->memory());
    return block->memory() + (-address & (alignment - 1));
  }

  Block* NewBlock(size_t size) {
    if (budget_) budget_->Take(sizeof(Block) + size);
    void* memory = Source::Alloc(sizeof(Block) + size);
    if (!memory) throw std::bad_alloc();
    return static_cast<Block*>(memory);
  }

  uint8_t* bottom_ = nullptr;  ///< first free byte of the current block
  uint8_t* top_ = nullptr;     ///< allocation moves it down
  Block* blocks_ = nullptr;
  Link* destructors_ = nullptr;
  MemoryBudget* budget_ = nullptr;
};

using ChainAllocator = TAutoFreeAlloc<StdLibAlloc>;

/// Constructs a T in `allocator`, which owns and one day destroys it.
template <class T, class Source, class... Args>
T* New(TAutoFreeAlloc<Source>& allocator, Args&&... args) {
  static_assert(alignof(T) <= alignof(std::max_align_t));
  if constexpr (std::is_trivially_destructible_v<T>) {
    return new (allocator.AllocAligned(sizeof(T), alignof(T))) T(std::forward<Args>(args)...);
  } else {
    // The destructor is registered only once the object stands: a constructor that throws leaves nothing
    // behind.
    void* memory = allocator.Alloc(sizeof(T), [](void*) {});
    T* object = new (memory) T(std::forward<Args>(args)...);
    allocator.SetDestructor(memory, DestructorTraits<T>::Destruct);
    return object;
  }
}
