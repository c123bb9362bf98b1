#pragma once

#include <optional>
#include <string>

#include "document/window/frmPaint.h"

namespace zelvane {

/// What a new document is called.
struct DocumentName {
  std::string title;  ///< stands in the caption: the file's path, or a name like "Untitled"
  std::string path;   ///< the file behind the picture, empty without one
};

/// Where a window stands in the main window, in twips.
struct DocumentPlace {
  Single left = 0, top = 0;
};

/// The one road by which a document is made: it holds the picture at 100%, unchanged, is shown with its
/// window fitted to the picture as far as the main window has room, and is the active one from then on.
/// Without a place the main window chooses one. The caller marks it changed, or moves the keyboard, where
/// that is meant.
frmPaint& MakeDocument(Bitmap picture, const DocumentName& name,
                       const std::optional<DocumentPlace>& place = std::nullopt);

/// The same with a blank picture of that many pixels, whose background is the colour. Throws
/// `SurfaceTooLarge` before there is a document.
frmPaint& MakeDocument(int width, int height, Color background, const DocumentName& name);

}  // namespace zelvane
