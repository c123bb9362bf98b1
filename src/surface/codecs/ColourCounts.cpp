#include "surface/codecs/ColourCounts.h"

namespace zelvane {

ColourCounts::ColourCounts(const Bitmap& picture) : slots_(size_t{1} << kSlotBits) {
  for (int y = 0; y < picture.Height() && !many_; ++y) {
    const Pixel* row = picture.Row(y);
    for (int x = 0, start = 0; x < picture.Width() && !many_; start = x) {
      while (x < picture.Width() && row[x] == row[start]) ++x;
      CountRun(row[start], static_cast<uint32_t>(x - start));
    }
  }
}

void ColourCounts::CountRun(Pixel colour, uint32_t length) {
  Slot& slot = slots_[SlotOf(colour)];
  if (slot.colour == 0) {
    many_ = entries_.size() == kMost;
    if (many_) return;
    slot = {colour, static_cast<uint32_t>(entries_.size())};
    entries_.push_back({colour, 0});
  }
  entries_[slot.place].count += length;
}

}  // namespace zelvane
