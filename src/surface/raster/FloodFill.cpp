#include <array>
#include <bit>
#include <deque>
#include <vector>

#include "surface/raster/Canvas.h"
#include "surface/raster/Spans.h"

/// The surface is filled in tiles of 64 x 64 pixels, a row of a tile in one 64-bit word: which pixels are of
/// the area, and which of them the fill has reached. A word is filled from end to end in a few instructions
/// however its pixels lie, which is what makes noise and mazes as quick per pixel as a blank surface.
///
/// From tile to tile: a tile waits in the queue only when a neighbour has handed it a pixel of the area that
/// wasn't reached before. Each visit therefore begins with something new, and a tile is visited at most once
/// for each of its 252 pixels at the edge, however the area winds. A visit leaves no pixel of the area beside
/// a reached one, in the tile or across its edges, but in tiles that wait; so when none waits, all is found.
/// Tiles that nothing was handed to are never looked at, which keeps a small fill cheap on a large surface.
/// The pixels themselves are written once, at the end.
namespace zelvane {
namespace {

using Word = uint64_t;
constexpr int kTile = 64;

constexpr Word Bit(int index) {
  return Word{1} << index;
}

constexpr auto kBits = [] {
  std::array<uint32_t, 32> bits{};
  for (size_t i = 0; i < bits.size(); ++i) bits[i] = uint32_t{1} << i;
  return bits;
}();

/// All of the runs of `open` that hold one of `seeds`, which are open themselves. Towards higher bits the
/// carry of an addition runs through a run; towards lower bits the reach is doubled six times (P. M. Kogge,
/// H. S. Stone, "A Parallel Algorithm for the Efficient Solution of a General Class of Recurrence Equations",
/// 1973).
Word FilledRuns(Word open, Word seeds) {
  if (((seeds << 1 | seeds >> 1) & open & ~seeds) == 0) return seeds;
  Word filled = (open & ~(open + seeds)) | seeds;
  for (int reach = 1; reach < kTile; reach *= 2) {
    filled |= open & (filled >> reach);
    open &= open >> reach;
  }
  return filled;
}

/// Bits 0 to 31 for the 32 pixels from `row` on. The mask instead of a condition keeps compilers from
/// branching.
uint32_t MatchingPixels(const Pixel* row, Pixel area) {
  uint32_t bits = 0;
  for (size_t i = 0; i < kBits.size(); ++i) bits |= (row[i] == area ? ~uint32_t{0} : 0) & kBits[i];
  return bits;
}

void ChangePixels(Pixel* row, uint32_t bits, Pixel change) {
  for (size_t i = 0; i < kBits.size(); ++i) row[i] ^= (bits & kBits[i]) != 0 ? change : 0;
}

struct Tile {
  Tile(int column_index, int row_index) : tile_column(column_index), tile_row(row_index) {}

  int tile_column, tile_row;  // place among the tiles
  std::array<Word, kTile> open{}, filled{};
  /// Rows that have yet to pass on what they hold to the row below and above.
  Word down = 0, up = 0;
  /// Rows that have newly reached the tile's first and last column, if those are to be passed on.
  Word left = 0, right = 0;
  bool queued = false;

  /// Reached from outside: fills the runs of a row that hold `seeds`.
  void Enter(int y, Word seeds) {
    Word& row = filled[static_cast<size_t>(y)];
    const Word before = row;
    row = FilledRuns(open[static_cast<size_t>(y)], before | seeds);
    left |= (row & ~before & 1) << y;
    right |= (row & ~before) >> (kTile - 1) << y;
    down |= Bit(y);
    up |= Bit(y);
  }
  void Spread() {
    while ((down | up) != 0) {
      while (down != 0) PassOn(std::countr_zero(down), 1, down, up);
      while (up != 0) PassOn(kTile - 1 - std::countl_zero(up), -1, up, down);
    }
  }

 private:
  /// Passes on from row `y` as far as it goes. Only a row that was filled beyond what it was handed has
  /// anything to hand `back`.
  void PassOn(int y, int step, Word& onwards, Word& back) {
    Word done = Bit(y), widened = 0, fresh_left = 0, fresh_right = 0;
    Word held = filled[static_cast<size_t>(y)];
    for (y += step; y >= 0 && y < kTile; y += step) {
      const auto row = static_cast<size_t>(y);
      const Word before = filled[row], seeds = held & (open[row] & ~before);
      if (seeds == 0) break;
      held = filled[row] = FilledRuns(open[row], before | seeds);
      const Word fresh = held & ~before, here = Bit(y);
      fresh_left |= (fresh & Bit(0)) != 0 ? here : 0;
      fresh_right |= (fresh & Bit(kTile - 1)) != 0 ? here : 0;
      widened |= fresh != seeds ? here : 0;
      done |= here;
    }
    onwards &= ~done;
    back |= widened;
    left |= fresh_left;
    right |= fresh_right;
  }
};

class Filler {
 public:
  Filler(Bitmap& target, Pixel area)
      : target_(target),
        area_(area),
        columns_((target.Width() + kTile - 1) / kTile),
        rows_((target.Height() + kTile - 1) / kTile),
        grid_(static_cast<size_t>(columns_) * static_cast<size_t>(rows_)) {}

  /// Finds what is connected to a pixel of the area.
  void Find(int x, int y) {
    Enter(x / kTile, y / kTile, y % kTile, Bit(x % kTile));
    for (size_t i = 0; i < queue_.size(); ++i) {
      Tile& tile = *queue_[i];
      tile.queued = false;
      tile.Spread();
      EnterNeighbours(tile);
      DropDone(i);
    }
  }
  /// Paints what was found and returns the rectangle round it. Goes along whole rows, as memory likes it.
  Rect Paint(Pixel paint) {
    Rect touched;
    for (int row = reached_.top; row < reached_.bottom; ++row) {
      for (int y = row * kTile; y < std::min((row + 1) * kTile, target_.Height()); ++y) {
        touched = touched.United(PaintRow(row, y, paint));
      }
    }
    return touched;
  }

 private:
  Tile* At(int column, int row) {
    if (column < 0 || row < 0 || column >= columns_ || row >= rows_) return nullptr;
    Tile*& tile =
        grid_[static_cast<size_t>(row) * static_cast<size_t>(columns_) + static_cast<size_t>(column)];
    if (!tile) tile = &Loaded(column, row);
    return tile;
  }

  Tile& Loaded(int column, int row) {
    Tile& tile = tiles_.emplace_back(column, row);
    const int width = std::min(kTile, target_.Width() - column * kTile);
    const int height = std::min(kTile, target_.Height() - row * kTile);
    for (int y = 0; y < height; ++y) {
      const Pixel* const pixels = target_.Row(row * kTile + y) + column * kTile;
      Word& open = tile.open[static_cast<size_t>(y)];
      // Eight rows ahead: rows are too far apart for the processor to foresee them by itself.
      for (int line = 0; y + 8 < height && line < kTile; line += 16) {
        __builtin_prefetch(pixels + ptrdiff_t{8} * target_.Width() + line);
      }
      if (width == kTile) {
        open = MatchingPixels(pixels, area_) | Word{MatchingPixels(pixels + 32, area_)} << 32;
      } else {
        for (int x = 0; x < width; ++x) open |= pixels[x] == area_ ? Bit(x) : 0;
      }
    }
    return tile;
  }

  /// Hands `seeds` to a row of a tile, as far as they are of the area and not reached yet.
  void Enter(int column, int row, int y, Word seeds) {
    Tile* const tile = At(column, row);
    if (!tile) return;
    const auto index = static_cast<size_t>(y);
    const Word fresh = seeds & tile->open[index] & ~tile->filled[index];
    if (fresh == 0) return;
    tile->Enter(y, fresh);
    reached_ = reached_.United({column, row, column + 1, row + 1});
    if (!tile->queued) queue_.push_back(tile);
    tile->queued = true;
  }

  void EnterNeighbours(Tile& tile) {
    if (tile.filled.front() != 0) Enter(tile.tile_column, tile.tile_row - 1, kTile - 1, tile.filled.front());
    if (tile.filled.back() != 0) Enter(tile.tile_column, tile.tile_row + 1, 0, tile.filled.back());
    for (; tile.left != 0; tile.left &= tile.left - 1) {
      Enter(tile.tile_column - 1, tile.tile_row, std::countr_zero(tile.left), Bit(kTile - 1));
    }
    for (; tile.right != 0; tile.right &= tile.right - 1) {
      Enter(tile.tile_column + 1, tile.tile_row, std::countr_zero(tile.right), Bit(0));
    }
  }

  /// Keeps the queue from growing with every visit: once most of it is done with, that part goes.
  void DropDone(size_t& done) {
    if (done < 4096 || done < queue_.size() / 2) return;
    queue_.erase(queue_.begin(), queue_.begin() + static_cast<ptrdiff_t>(done));
    done = 0;
  }

  Rect PaintRow(int tile_row, int y, Pixel paint) {
    Pixel* const pixels = target_.WritableRow(y);
    const Tile* const* const tiles = &grid_[static_cast<size_t>(tile_row) * static_cast<size_t>(columns_)];
    int first = target_.Width(), end = 0;
    for (int column = reached_.left; column < reached_.right; ++column) {
      const Word filled = tiles[column] ? tiles[column]->filled[static_cast<size_t>(y % kTile)] : 0;
      if (filled == 0) continue;
      const int left = column * kTile;
      PaintWord(pixels, left, filled, paint);
      first = std::min(first, left + std::countr_zero(filled));
      end = left + kTile - std::countl_zero(filled);
    }
    return {first, y, end, y + 1};
  }

  /// What is painted is all of the area's colour, so it can be changed by the difference.
  void PaintWord(Pixel* row, int left, Word filled, Pixel paint) const {
    if (filled == ~Word{0}) {
      std::fill_n(row + left, kTile, paint);
    } else if (left + kTile <= target_.Width()) {
      ChangePixels(row + left, static_cast<uint32_t>(filled), area_ ^ paint);
      ChangePixels(row + left + 32, static_cast<uint32_t>(filled >> 32), area_ ^ paint);
    } else {
      for (; filled != 0; filled &= filled - 1) row[left + std::countr_zero(filled)] = paint;
    }
  }

  Bitmap& target_;
  Pixel area_;
  int columns_, rows_;
  std::vector<Tile*> grid_, queue_;
  std::deque<Tile> tiles_;
  Rect reached_;  // in tiles
};

}  // namespace

void Canvas::ExtFloodFill(int32_t x, int32_t y, Color area) {
  if (fill_style_ == kFillTransparent || area == kNoColor || !Holds(x, y)) return;
  const Pixel old = ToPixel(area), paint = ToPixel(fill_color_);
  if (old == paint || image_.Row(y)[x] != old) return;
  Filler filler(image_, old);
  filler.Find(x, y);
  AddDamage(filler.Paint(paint));
}

}  // namespace zelvane
