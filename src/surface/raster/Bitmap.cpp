#include "surface/raster/Bitmap.h"

#include <sys/mman.h>

#include <bit>
#include <cstdlib>
#include <cstring>

#include "surface/raster/Memory.h"

namespace zelvane {
namespace {

static_assert(std::endian::native == std::endian::little,
              "codecs and the screen take a pixel's bytes as BGRA");

constexpr size_t kHugePage = size_t{2} << 20;
/// From here on a block is mapped on its own instead of taken from the heap.
constexpr size_t kMappedFrom = size_t{1} << 20;
/// Below this size a block isn't worth asking the system how much memory it has left.
constexpr size_t kCheckedFrom = size_t{16} << 20;

/// The system promises more memory than it has and kills whoever takes it at its word, so a large block is
/// refused while there is still a choice. One eighth stays for everybody else.
void RequireMemory(size_t bytes) {
  if (bytes < kCheckedFrom) return;
  const int64_t available = AvailableMemory();
  if (static_cast<int64_t>(bytes) > available - available / 8)
    throw SurfaceTooLarge("not enough memory for the surface");
}

std::shared_ptr<void> HeapBlock(size_t bytes) {
  constexpr size_t kCacheLine = 64;
  void* block = std::aligned_alloc(kCacheLine, (bytes + kCacheLine - 1) / kCacheLine * kCacheLine);
  if (!block) throw SurfaceTooLarge("not enough memory for the surface");
  return {block, std::free};
}

/// A block of whole huge pages. The first touch of a fresh page goes through the kernel; in pages of 4 KiB
/// that takes longer than writing the pixels, in pages of 2 MiB it hardly shows. Asking for huge pages is a
/// hint: where it is turned down, the block is the same, only slower at first touch.
std::shared_ptr<void> MappedBlock(size_t bytes) {
  const size_t size = (bytes + kHugePage - 1) / kHugePage * kHugePage;
  void* mapping = mmap(nullptr, size + kHugePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (mapping == MAP_FAILED) throw SurfaceTooLarge("not enough memory for the surface");
  char* const first = static_cast<char*>(mapping);
  const size_t ahead = (kHugePage - reinterpret_cast<uintptr_t>(mapping) % kHugePage) % kHugePage;
  if (ahead > 0) munmap(first, ahead);
  munmap(first + ahead + size, kHugePage - ahead);
  madvise(first + ahead, size, MADV_HUGEPAGE);
  return {first + ahead, [size](void* block) { munmap(block, size); }};
}

std::shared_ptr<void> Block(size_t bytes) {
  RequireMemory(bytes);
  return bytes < kMappedFrom ? HeapBlock(bytes) : MappedBlock(bytes);
}

size_t BytesOf(const Bitmap& bitmap) {
  return static_cast<size_t>(bitmap.Width()) * static_cast<size_t>(bitmap.Height()) * sizeof(Pixel);
}

}  // namespace

Bitmap::Bitmap(int width, int height) {
  if (width > kLargestSide || height > kLargestSide) throw SurfaceTooLarge("a side is beyond 32,767 pixels");
  if (width <= 0 || height <= 0) return;
  owner_ = Block(static_cast<size_t>(width) * static_cast<size_t>(height) * sizeof(Pixel));
  pixels_ = static_cast<Pixel*>(owner_.get());
  width_ = width;
  height_ = height;
}

Bitmap::Bitmap(int width, int height, Pixel fill) : Bitmap(width, height) {
  std::fill_n(pixels_, static_cast<size_t>(width_) * static_cast<size_t>(height_), fill);
}

Bitmap Bitmap::Uninitialised(int width, int height) {
  return Bitmap(width, height);
}

void Bitmap::CopyPixels() {
  Bitmap copy(width_, height_);
  std::memcpy(copy.pixels_, pixels_, BytesOf(*this));
  Swap(copy);
}

void Bitmap::DetachToOverwrite() {
  if (owner_.use_count() > 1) *this = Bitmap(width_, height_);
}

void Bitmap::Swap(Bitmap& other) noexcept {
  std::swap(owner_, other.owner_);
  std::swap(pixels_, other.pixels_);
  std::swap(width_, other.width_);
  std::swap(height_, other.height_);
}

bool operator==(const Bitmap& a, const Bitmap& b) {
  if (a.Width() != b.Width() || a.Height() != b.Height()) return false;
  return a.Row(0) == b.Row(0) || std::memcmp(a.Row(0), b.Row(0), BytesOf(a)) == 0;
}

}  // namespace zelvane
