#include "surface/system/desktop/FontFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>

#include "surface/codecs/ByteView.h"
#include "surface/system/files/Descriptor.h"

namespace zelvane {
namespace {

constexpr uint32_t Mark(const char (&text)[5]) {
  uint32_t mark = 0;
  for (int i = 0; i < 4; ++i) mark = mark << 8 | static_cast<unsigned char>(text[i]);
  return mark;
}

constexpr uint32_t kTrueType = 0x00010000;
constexpr uint64_t kEntrySize = 16, kHeaderSize = 12;
/// Lines that are lower or higher, in sizes of the font, are a slip of the font's maker.
constexpr double kLowest = 0.3, kHighest = 4;

/// A piece of a file; reading beyond its end yields zeros.
class Piece {
 public:
  Piece(const Descriptor& file, uint64_t at) {
    const ssize_t count = pread(file.Get(), bytes_.data(), bytes_.size(), static_cast<off_t>(at));
    view_ = ByteView(bytes_.data(), count > 0 ? static_cast<size_t>(count) : 0);
  }
  Piece(const Piece&) = delete;
  Piece& operator=(const Piece&) = delete;
  const ByteView* operator->() const { return &view_; }

 private:
  std::array<unsigned char, 1024> bytes_{};
  ByteView view_;
};

/// Where a table begins, by the list of tables at `list`; no value without one.
std::optional<uint64_t> FindTable(const Piece& list, uint32_t name) {
  const uint64_t count = list->Big16(4);
  for (uint64_t i = 0; i < count; ++i) {
    const uint64_t entry = kHeaderSize + i * kEntrySize;
    if (list->Has(entry, kEntrySize) && list->Big32(entry) == name) return list->Big32(entry + 8);
  }
  return std::nullopt;
}

int16_t Signed(uint32_t number) {
  return static_cast<int16_t>(number);
}

}  // namespace

std::optional<LineReach> ReadLineReach(const std::string& path, int face) {
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  uint64_t start = 0;
  const Piece begin(file, start);
  if (begin->Size() == 0) return std::nullopt;
  if (begin->Big32(0) == Mark("ttcf")) start = begin->Big32(kHeaderSize + 4 * static_cast<uint64_t>(face));
  const Piece list(file, start);
  const uint32_t kind = list->Big32(0);
  if (list->Size() == 0 || kind == Mark("ttcf")) return std::nullopt;
  if (kind != kTrueType && kind != Mark("OTTO") && kind != Mark("true")) return LineReach{};

  const auto head = FindTable(list, Mark("head")), lines = FindTable(list, Mark("hhea"));
  if (!head || !lines) return std::nullopt;
  const Piece head_table(file, *head), line_table(file, *lines);
  if (!head_table->Has(18, 2) || !line_table->Has(4, 4)) return std::nullopt;
  const double units = head_table->Big16(18);
  LineReach told = {Signed(line_table->Big16(4)) / units, -Signed(line_table->Big16(6)) / units};
  // Makers who keep lines close tell here how much room the letters need.
  if (const auto letters = FindTable(list, Mark("OS/2"))) {
    const Piece letter_table(file, *letters);
    told.above = std::max(told.above, letter_table->Big16(74) / units);
    told.below = std::max(told.below, letter_table->Big16(76) / units);
  }
  const double height = told.above + told.below;
  return told.above >= 0 && told.below >= 0 && height >= kLowest && height <= kHighest ? told : LineReach{};
}

}  // namespace zelvane
