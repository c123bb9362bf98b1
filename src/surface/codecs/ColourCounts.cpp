#include "surface/codecs/ColourCounts.h"

namespace zelvane {

ColourCounts::ColourCounts(const Bitmap& picture) : slots_(size_t{1} << kSlotBits) {
  const size_t pixels = static_cast<size_t>(picture.Width()) * static_cast<size_t>(picture.Height());
  entries_.reserve(kMost);
  low_bytes_.reserve(pixels);
  for (size_t i = 0; i < pixels; ++i) {
    const Pixel colour = picture.Row(0)[i];
    Slot& slot = slots_[SlotOf(colour)];
    if (slot.colour == 0 && !Add(slot, colour)) return;
    ++entries_[slot.place].count;
    low_bytes_.push_back(static_cast<unsigned char>(slot.place));
  }
}

bool ColourCounts::Add(Slot& slot, Pixel colour) {
  many_ = entries_.size() == kMost;
  if (many_) return false;
  slot = {colour, static_cast<uint32_t>(entries_.size())};
  entries_.push_back({colour, 0});
  return true;
}

}  // namespace zelvane
