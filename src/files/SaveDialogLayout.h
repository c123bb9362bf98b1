#pragma once

namespace zelvane {

/// Where the parts of the file window stand, as plain arithmetic in twips. Each part has its design size, or
/// what its text needs in the desktop's font where that is more; its neighbours make room.

/// What the texts and controls of the window need.
struct SaveDialogNeeds {
  double labels = 0;       ///< the widest of the labels before a field
  double compression = 0;  ///< the label before the compression number
  double path_height = 0, field_height = 0, number_height = 0, bar_height = 0;
  double number_width = 0, button_width = 0;
  double tile_width = 0, tile_height = 0;
};

/// With the compression row of a saving window, or without.
enum class CompressionRow { No, Yes };

struct PartPlace {
  double left = 0, top = 0, width = 0, height = 0;
  double Right() const { return left + width; }
  double Bottom() const { return top + height; }
};

struct SaveDialogPlaces {
  PartPlace locations, tiles[2], path, tree, files, name, type, save, cancel, number, bar;
  PartPlace path_label, count_label, count, name_label, type_label, compression_label;
};

/// The size of the window's inside that all parts need at least.
double NaturalWidth(const SaveDialogNeeds& needs);
double NaturalHeight(const SaveDialogNeeds& needs, CompressionRow row);
/// `width`: that of the inside, the natural one at least. `spare`: the height beyond the natural one, which
/// tree and list share.
SaveDialogPlaces LayOut(const SaveDialogNeeds& needs, double width, double spare);

}  // namespace zelvane
