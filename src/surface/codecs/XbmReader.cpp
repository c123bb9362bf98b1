#include <charconv>
#include <string_view>

#include "surface/codecs/PictureDecoder.h"

namespace zelvane {

namespace {

/// The picture is the text of a C source: two definitions and an array of numbers.
class Source {
 public:
  explicit Source(std::string_view text) : rest_(text) {}

  /// The next word, empty at the end.
  std::string_view Word() {
    constexpr std::string_view kBlank = " \t\r\n\f\v";
    rest_.remove_prefix(std::min(rest_.find_first_not_of(kBlank), rest_.size()));
    const std::string_view word = rest_.substr(0, rest_.find_first_of(kBlank));
    rest_.remove_prefix(word.size());
    return word;
  }
  /// Skips to behind the brace; the text skipped.
  std::string_view SkipToBrace() {
    const size_t at = rest_.find('{');
    if (at == std::string_view::npos) return {};
    const std::string_view skipped = rest_.substr(0, at);
    rest_.remove_prefix(at + 1);
    return skipped;
  }
  /// The next number of the array; no value at its end.
  std::optional<uint32_t> Number() {
    const size_t at = rest_.find_first_not_of(" \t\r\n\f\v,");
    if (at == std::string_view::npos) return std::nullopt;
    rest_.remove_prefix(at);
    const bool hexadecimal = rest_.starts_with("0x") || rest_.starts_with("0X");
    if (hexadecimal) rest_.remove_prefix(2);
    uint32_t number = 0;
    const auto [end, error] =
        std::from_chars(rest_.data(), rest_.data() + rest_.size(), number, hexadecimal ? 16 : 10);
    if (error != std::errc{}) return std::nullopt;
    rest_.remove_prefix(static_cast<size_t>(end - rest_.data()));
    return number;
  }
  size_t Left() const { return rest_.size(); }

 private:
  std::string_view rest_;
};

struct Size {
  int width = 0, height = 0;
};

/// Reads definitions until both sides are known.
Size ReadSize(Source& source) {
  Size size;
  while (size.width == 0 || size.height == 0) {
    const std::string_view word = source.Word();
    if (word.empty()) return {};
    if (word != "#define") continue;
    const std::string_view name = source.Word(), value = source.Word();
    int number = 0;
    std::from_chars(value.data(), value.data() + value.size(), number);
    if (name.ends_with("width")) size.width = number;
    if (name.ends_with("height")) size.height = number;
  }
  return size;
}

}  // namespace

std::optional<DecodedPicture> DecodeXbm(ByteView bytes, SizeLimit limit, ReadingWatch& watch) {
  constexpr Pixel kInk = 0xFF000000u, kPaper = 0xFFFFFFFFu;
  Source source({reinterpret_cast<const char*>(bytes.Data()), bytes.Size()});
  const Size size = ReadSize(source);
  if (!limit.Admits(size.width, size.height)) return std::nullopt;
  // The old kind packs 16 pixels into a number.
  const std::string_view declaration = source.SkipToBrace();
  const int bits = declaration.find("short") != std::string_view::npos ? 16 : 8;
  const int numbers = (size.width + bits - 1) / bits;
  if (source.Left() / 2 < static_cast<size_t>(numbers) * static_cast<size_t>(size.height))
    return std::nullopt;

  Bitmap bitmap = Bitmap::Uninitialised(size.width, size.height);
  for (int y = 0; y < size.height; ++y) {
    if (!watch.GoOn(y, size.height)) return std::nullopt;
    Pixel* row = bitmap.WritableRow(y);
    for (int i = 0; i < numbers; ++i) {
      const std::optional<uint32_t> number = source.Number();
      if (!number) return std::nullopt;
      for (int bit = 0; bit < bits && i * bits + bit < size.width; ++bit) {
        row[i * bits + bit] = *number >> bit & 1 ? kInk : kPaper;
      }
    }
  }
  return bitmap;
}

}  // namespace zelvane
