// C++ takes its memory by malloc, where the linker leads the calls of that to a test's own: for those that
// count memory, and those that have it run out.

#include <cstdlib>
#include <new>

void* operator new(size_t size) {
  void* memory = std::malloc(size == 0 ? 1 : size);
  if (!memory) throw std::bad_alloc();
  return memory;
}

void* operator new[](size_t size) {
  return operator new(size);
}

void* operator new(size_t size, const std::nothrow_t&) noexcept {
  return std::malloc(size == 0 ? 1 : size);
}

void* operator new[](size_t size, const std::nothrow_t&) noexcept {
  return std::malloc(size == 0 ? 1 : size);
}

void operator delete(void* memory) noexcept {
  std::free(memory);
}

void operator delete(void* memory, size_t) noexcept {
  std::free(memory);
}

void operator delete[](void* memory) noexcept {
  std::free(memory);
}

void operator delete[](void* memory, size_t) noexcept {
  std::free(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept {
  std::free(memory);
}

void operator delete[](void* memory, const std::nothrow_t&) noexcept {
  std::free(memory);
}
