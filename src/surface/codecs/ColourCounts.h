#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "surface/raster/Bitmap.h"

namespace zelvane {

/// Which colours a picture has and how often, as long as they are few.
class ColourCounts {
 public:
  static constexpr size_t kMost = 8192;
  struct Entry {
    Pixel colour;
    uint32_t count;
  };

  explicit ColourCounts(const Bitmap& picture);

  /// There are more than `kMost`, and nothing else is known.
  bool AreMany() const { return many_; }
  /// In the order in which they come first, row by row.
  const std::vector<Entry>& Entries() const { return entries_; }
  /// For each pixel the low byte of its colour's place in `Entries`, handed over: all of it where there are
  /// no more than 256.
  std::vector<unsigned char> TakeLowBytes() { return std::move(low_bytes_); }
  /// The place in `Entries` of a colour that the picture has.
  size_t PlaceOf(Pixel colour) const { return slots_[SlotOf(colour)].place; }

 private:
  static constexpr size_t kSlotBits = 15;  // four times as many slots as colours
  /// A pixel is never 0, so that 0 tells a free slot.
  struct Slot {
    Pixel colour = 0;
    uint32_t place = 0;
  };

  /// Where the colour stands, or has its free place.
  size_t SlotOf(Pixel colour) const {
    constexpr uint32_t kGoldenRatio = 0x9E3779B1u;
    size_t slot = colour * kGoldenRatio >> (32 - kSlotBits);
    while (slots_[slot].colour != colour && slots_[slot].colour != 0) slot = (slot + 1) % slots_.size();
    return slot;
  }
  bool Add(Slot& slot, Pixel colour);

  std::vector<Slot> slots_;
  std::vector<Entry> entries_;
  std::vector<unsigned char> low_bytes_;
  bool many_ = false;
};

}  // namespace zelvane
