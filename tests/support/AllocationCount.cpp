#include "tests/support/AllocationCount.h"

#include <dlfcn.h>

#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

namespace {

constexpr int kNever = std::numeric_limits<int>::max();

int Count = 0;
int Live = 0;
int FirstRefused = kNever;  // value of `Count` from which on, or at which, memory is refused
bool RefusesLater = false;

// The clipping library does not survive a refusal: it frees its list of crossings twice.
bool IsClippingLibrary(const void* Caller) {
  Dl_info Info;
  return dladdr(Caller, &Info) != 0 && std::strstr(Info.dli_fname, "polyclipping") != nullptr;
}

// By malloc, which sanitizers watch.
void* Take(std::size_t Size, std::size_t Alignment, const void* Caller) noexcept {
  ++Count;
  const bool IsRefused = Count == FirstRefused || (Count > FirstRefused && RefusesLater);
  if (IsRefused && !IsClippingLibrary(Caller)) return nullptr;
  if (Size == 0) Size = 1;
  void* const Block =
      Alignment <= __STDCPP_DEFAULT_NEW_ALIGNMENT__
          ? std::malloc(Size)
          : std::aligned_alloc(Alignment, (Size + Alignment - 1) & ~(Alignment - 1));
  if (Block) ++Live;
  return Block;
}

void* TakeOrRaise(std::size_t Size, std::size_t Alignment, const void* Caller) {
  if (void* const Block = Take(Size, Alignment, Caller)) return Block;
  throw std::bad_alloc();
}

void GiveBack(void* Block) noexcept {
  if (Block) --Live;
  std::free(Block);
}

}  // namespace

namespace tarnalgo::test {

int AllocationCount() {
  return Count;
}

int LiveAllocations() {
  return Live;
}

void StarveAt(int Nth, TShortage Shortage) {
  FirstRefused = Count + Nth;
  RefusesLater = Shortage == TShortage::FromThenOn;
}

bool EndShortage() {
  const bool WasRefused = Count >= FirstRefused;
  FirstRefused = kNever;
  return WasRefused;
}

}  // namespace tarnalgo::test

// Standard algorithms take their buffers by the forms that do not raise. A form left out would be
// answered by a sanitizer with a block of its own, which is not ours to free.
void* operator new(std::size_t Size) {
  return TakeOrRaise(Size, 1, __builtin_return_address(0));
}
void* operator new[](std::size_t Size) {
  return TakeOrRaise(Size, 1, __builtin_return_address(0));
}
void* operator new(std::size_t Size, std::align_val_t Alignment) {
  return TakeOrRaise(Size, static_cast<std::size_t>(Alignment), __builtin_return_address(0));
}
void* operator new[](std::size_t Size, std::align_val_t Alignment) {
  return TakeOrRaise(Size, static_cast<std::size_t>(Alignment), __builtin_return_address(0));
}
void* operator new(std::size_t Size, const std::nothrow_t&) noexcept {
  return Take(Size, 1, __builtin_return_address(0));
}
void* operator new[](std::size_t Size, const std::nothrow_t&) noexcept {
  return Take(Size, 1, __builtin_return_address(0));
}
void* operator new(std::size_t Size, std::align_val_t Alignment, const std::nothrow_t&) noexcept {
  return Take(Size, static_cast<std::size_t>(Alignment), __builtin_return_address(0));
}
void* operator new[](std::size_t Size, std::align_val_t Alignment, const std::nothrow_t&) noexcept {
  return Take(Size, static_cast<std::size_t>(Alignment), __builtin_return_address(0));
}
void operator delete(void* Block) noexcept {
  GiveBack(Block);
}
void operator delete[](void* Block) noexcept {
  GiveBack(Block);
}
void operator delete(void* Block, std::size_t) noexcept {
  GiveBack(Block);
}
void operator delete[](void* Block, std::size_t) noexcept {
  GiveBack(Block);
}
void operator delete(void* Block, std::align_val_t) noexcept {
  GiveBack(Block);
}
void operator delete[](void* Block, std::align_val_t) noexcept {
  GiveBack(Block);
}
void operator delete(void* Block, std::size_t, std::align_val_t) noexcept {
  GiveBack(Block);
}
void operator delete[](void* Block, std::size_t, std::align_val_t) noexcept {
  GiveBack(Block);
}
void operator delete(void* Block, const std::nothrow_t&) noexcept {
  GiveBack(Block);
}
void operator delete[](void* Block, const std::nothrow_t&) noexcept {
  GiveBack(Block);
}
void operator delete(void* Block, std::align_val_t, const std::nothrow_t&) noexcept {
  GiveBack(Block);
}
void operator delete[](void* Block, std::align_val_t, const std::nothrow_t&) noexcept {
  GiveBack(Block);
}
