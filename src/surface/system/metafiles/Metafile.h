#pragma once

#include <optional>

#include "surface/codecs/ByteView.h"
#include "surface/codecs/PictureDecoder.h"

namespace zelvane {

/// The beginning of a file is that of a Windows metafile, of 16 bits (wmf) with or without the placeable
/// header, or of 32 bits (emf).
bool LooksLikeMetafile(ByteView start);

/// Plays a metafile onto white, at the size that it tells at 96 dots an inch, to the nearest pixel and at
/// least one:
/// - wmf with the placeable header: its box and units in an inch;
/// - wmf without it: the window that the records set, else all that they draw. A unit counts as a pixel, or
///   as a twentieth of a point where there are more than 4,096 of them a side;
/// - emf: its frame, in hundredths of a millimetre; where it has none its bounds, in pixels of its device.
///
/// Records that aren't known or don't hold what they tell of are passed over. No value where the header is
/// broken, the records end before the one that marks their end, the picture is larger than the limit admits,
/// the records ask for more work than an honest file does, or the watch stopped it. Needs the toolkit's
/// application, but no window, and may be called from any thread.
std::optional<DecodedPicture> DecodeMetafile(ByteView bytes, SizeLimit limit, ReadingWatch& watch);
inline std::optional<DecodedPicture> DecodeMetafile(ByteView bytes, SizeLimit limit) {
  ReadingWatch nobody;
  return DecodeMetafile(bytes, limit, nobody);
}

}  // namespace zelvane
