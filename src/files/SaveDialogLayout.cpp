#include "files/SaveDialogLayout.h"

#include <algorithm>

namespace zelvane {
namespace {

constexpr double kWidth = 7290, kMargin = 120, kTop = 120;
constexpr double kFieldLeft = 1500, kLabelGap = 60;
constexpr double kPathHeight = 255, kPathGap = 120, kTreeHeight = 2220, kTreeGap = 45;
constexpr double kListHeight = 1065, kListGap = 90, kCountStep = 240;
constexpr double kFieldHeight = 315, kFieldGap = 75, kButtonWidth = 1095, kButtonGap = 420;
constexpr double kNameWidth = 4155;
constexpr double kNumberLeft = 1980, kNumberWidth = 375, kNumberHeight = 285, kNumberGap = 150, kBarGap = 180;
constexpr double kBarHeight = 255, kBelowType = 180, kBelowBar = 195;
constexpr double kTileInset = -15, kTileWidth = 1215, kTileHeight = 1095, kTileStep = 1080;
constexpr double kLocationsWidth = 1260, kLocationsHeight = 2220;

double FieldLeft(const SaveDialogNeeds& needs) {
  const double locations = kLocationsWidth + std::max(0.0, needs.tile_width - kTileWidth);
  return std::max({kFieldLeft, kMargin + needs.labels + kLabelGap, kMargin + locations + kMargin});
}

double ButtonWidth(const SaveDialogNeeds& needs) {
  return std::max(kButtonWidth, needs.button_width);
}

/// A label stands before its field, in the middle of its height.
PartPlace LabelOf(const PartPlace& field) {
  return {kMargin, field.top, field.left - kMargin - kLabelGap, field.height};
}

void PlaceLocations(SaveDialogPlaces& places, const SaveDialogNeeds& needs) {
  const double more_width = std::max(0.0, needs.tile_width - kTileWidth);
  const double more_height = std::max(0.0, needs.tile_height - kTileHeight);
  places.locations = {kMargin, places.tree.top, kLocationsWidth + more_width,
                      kLocationsHeight + 2 * more_height};
  for (int i = 0; i < 2; ++i)
    places.tiles[i] = {kTileInset, kTileInset + i * (kTileStep + more_height), kTileWidth + more_width,
                       kTileHeight + more_height};
}

/// The upper part: path, tree and list.
void PlaceFolder(SaveDialogPlaces& places, const SaveDialogNeeds& needs, double left, double right,
                 double spare) {
  places.path = {left, kTop, right - left, std::max(kPathHeight, needs.path_height)};
  const double tiles = 2 * std::max(0.0, needs.tile_height - kTileHeight);
  places.tree = {places.path.left, places.path.Bottom() + kPathGap, places.path.width,
                 kTreeHeight + tiles + spare / 2};
  places.files = {left, places.tree.Bottom() + kTreeGap, places.tree.width, kListHeight + spare / 2};
  places.path_label = LabelOf(places.path);
  places.count_label = LabelOf(places.files);
  places.count_label.height = kCountStep;
  places.count = places.count_label;
  places.count.top += kCountStep;
  PlaceLocations(places, needs);
}

/// The fields below it and the two buttons beside them.
void PlaceFields(SaveDialogPlaces& places, const SaveDialogNeeds& needs, double left, double right) {
  const double height = std::max(kFieldHeight, needs.field_height), button = ButtonWidth(needs);
  places.name = {left, places.files.Bottom() + kListGap, right - button - kButtonGap - left, height};
  places.type = places.name;
  places.type.top = places.name.Bottom() + kFieldGap;
  places.save = {right - button, places.name.top, button, height};
  places.cancel = {right - button, places.type.top, button, height};
  places.name_label = LabelOf(places.name);
  places.type_label = LabelOf(places.type);
}

void PlaceCompression(SaveDialogPlaces& places, const SaveDialogNeeds& needs) {
  const double number_left = std::max(kNumberLeft, kMargin + needs.compression + kLabelGap);
  places.number = {number_left, places.type.Bottom() + kNumberGap, std::max(kNumberWidth, needs.number_width),
                   std::max(kNumberHeight, needs.number_height)};
  const double bar_left = places.number.Right() + kBarGap;
  const double bar_height = std::max(kBarHeight, needs.bar_height);
  places.bar = {bar_left, places.number.top + (places.number.height - bar_height) / 2,
                places.type.Right() - bar_left, bar_height};
  places.compression_label = LabelOf(places.number);
}

}  // namespace

double NaturalWidth(const SaveDialogNeeds& needs) {
  const double fields = FieldLeft(needs) + kNameWidth + kButtonGap + ButtonWidth(needs) + kMargin;
  return std::max(kWidth, fields);
}

double NaturalHeight(const SaveDialogNeeds& needs, CompressionRow row) {
  const SaveDialogPlaces places = LayOut(needs, NaturalWidth(needs), 0);
  return row == CompressionRow::Yes ? places.bar.Bottom() + kBelowBar : places.type.Bottom() + kBelowType;
}

SaveDialogPlaces LayOut(const SaveDialogNeeds& needs, double width, double spare) {
  SaveDialogPlaces places;
  const double left = FieldLeft(needs), right = width - kMargin;
  PlaceFolder(places, needs, left, right, spare);
  PlaceFields(places, needs, left, right);
  PlaceCompression(places, needs);
  return places;
}

}  // namespace zelvane
