#pragma once

#include <QFont>
#include <QTextLayout>
#include <QTextOption>
#include <string>

#include "surface/forms/controls/TextFont.h"

/// How text is set, the same for what is printed, measured and typed, so that each shows what the others do.
///
/// Glyphs are fitted to the rows of pixels, but not to the columns: their widths grow with the size, so a
/// text is as many times as wide as the picture is enlarged. Lines stand on whole rows of the picture.
namespace zelvane {

/// The font at a multiple of its size in the picture, which is taken in whole pixels, so that the multiple is
/// exact. Edges are grey, never coloured.
QFont ToQt(const TextFont& font, int multiple);

/// Rows of the picture.
struct LinePitch {
  int ascent = 0;   ///< from the top of a line to the row that its letters stand on
  int advance = 1;  ///< from one line to the next
};
LinePitch PitchOf(const TextFont& font);

/// For a layout of one line: it never wraps and begins at the left, whichever way it reads.
QTextOption LineOption(const TextFont& font, int multiple);

/// Lays out all of the text as one line, its top at 0, with `pitch` at the multiple.
QTextLine LayOutLine(QTextLayout& layout, const LinePitch& pitch, int multiple);

/// What the glyphs of a laid-out text cover, with their smooth edges; they may reach beyond its line.
QRect InkOf(const QTextLayout& layout);

}  // namespace zelvane
