#include "files/SaveDialog.h"

#include <algorithm>

#include "shell/state/Settings.h"
#include "shell/state/State.h"
#include "surface/raster/Units.h"
#include "surface/system/files/Folders.h"

namespace zelvane {
namespace {

constexpr int kDesktop = 1, kDocuments = 2;
constexpr int kTileIconSide = 32;                                       // logical pixels
constexpr double kSmallestCompression = 20, kLargestCompression = 130;  // the number's limits
constexpr int16_t kSmallChange = 10, kLargeChange = 20;
constexpr double kNumberPadding = 240, kButtonPadding = 300;  // twips beside a text

void PutAt(Control& control, const PartPlace& place) {
  control.Move(static_cast<Single>(place.left), static_cast<Single>(place.top),
               static_cast<Single>(place.width), static_cast<Single>(place.height));
}

}  // namespace

SaveDialogWindow::SaveDialogWindow()
    : DialogForm("SaveDialog", DialogLook::Titled),
      SpecialLocations(*this, "SpecialLocations"),
      Label1(*this, "Label1"),
      CurrentPath(*this, "CurrentPath"),
      FolderTree(*this, "FolderTree"),
      Label5(*this, "Label5", "File count:"),
      FileCount(*this, "FileCount"),
      File1(*this, "File1"),
      Label2(*this, "Label2", "File name:"),
      InputFileName(*this, "InputFileName", ComboBox::Style::DropDown),
      Label3(*this, "Label3"),
      FileType(*this, "FileType"),
      Label4(*this, "Label4", "JPEG compression ratio:"),
      CompressionNumber(*this, "CompressionNumber"),
      CompressionScroll(*this, "CompressionScroll", ScrollBar::Direction::Horizontal),
      saveButton(*this, "saveButton"),
      cancelButton(*this, "cancelButton", "Cancel") {
  SetScaleMode(Scale::Twips);
  SpecialLocations.SetScaleMode(Scale::Twips);
  Location.Add(SpecialLocations, "Location", "", "", kTileIconSide).SetVisible(false);
  Location.Add(SpecialLocations, "Location", " Desktop", "desktop", kTileIconSide);
  Location.Add(SpecialLocations, "Location", "My Documents", "documents", kTileIconSide);
  Form_Load();
  WireEvents();
}

void SaveDialogWindow::Form_Load() {
  SetCaption(" Save As...");
  SetKeyPreview(true);
  DesktopFolder = zelvane::DesktopFolder();
  DocumentsFolder = zelvane::DocumentsFolder();
  CurrentPath.SetBorder(true);
  for (Label* label : {&Label1, &Label2, &Label3, &Label4, &Label5, &FileCount})
    label->SetAlignment(kAlignRight);
  FolderTree.SetAccessibleName("Folders");
  File1.SetAccessibleName("Files");
  File1.SetIcon("picturefile");
  InputFileName.SetAccessibleName(Label2.Caption());
  CompressionNumber.SetFormat("##0");
  CompressionNumber.SetPositiveOnly(true);
  CompressionNumber.SetMaxValue(kLargestCompression);
  CompressionNumber.SetMinValue(kSmallestCompression);
  CompressionNumber.SetAccessibleName(Label4.Caption());
  CompressionScroll.SetAccessibleName(Label4.Caption());
  CompressionScroll.SetMax(static_cast<int16_t>(kLargestCompression));
  CompressionScroll.SetMin(static_cast<int16_t>(kSmallestCompression));
  CompressionScroll.SetSmallChange(kSmallChange);
  CompressionScroll.SetLargeChange(kLargeChange);
}

void SaveDialogWindow::WireEvents() {
  OnResize = [this] { Form_Resize(); };
  OnKeyDown = [this](int16_t KeyCode, int16_t) { escape_is_down_ |= KeyCode == kKeyEscape; };
  OnKeyUp = [this](int16_t KeyCode, int16_t) { Form_KeyUp(KeyCode); };
  OnQueryUnload = [this](bool& Cancel, UnloadModes mode) {
    if (mode == kUnloadByCode) return;
    Cancel = true;
    cancelButton_Click();
  };
  for (const int i : {kDesktop, kDocuments}) Location[i].OnClick = [this, i] { Location_Click(i); };
  FolderTree.OnChange = [this](const std::string& folder) { FolderTree_Change(folder); };
  FolderTree.OnFoldersChanged = [this] { FolderTreeRefresh(); };
  File1.OnListed = [this] { ShowCount(); };
  File1.OnClick = [this] { InputFileName.SetText(File1.Text()); };
  File1.OnDblClick = [this] { saveButton_Click(); };
  InputFileName.OnChange = InputFileName.OnClick = [this] { SetButton(); };
  InputFileName.OnLostFocus = [this] { ApplyExtension(); };
  FileType.OnClick = [this] { FileType_Click(); };
  CompressionScroll.OnChange =
      CompressionScroll.OnScroll = [this] { CompressionNumber.SetValue(CompressionScroll.Value()); };
  CompressionNumber.OnChange = [this] { CompressionNumber_Change(); };
  CompressionNumber.SetValue(
      ReadNumber("JPEGCompression", kDefaultCompression).value_or(kDefaultCompression));
  saveButton.OnClick = [this] { saveButton_Click(); };
  cancelButton.OnClick = [this] { cancelButton_Click(); };
}

// Places.

SaveDialogNeeds SaveDialogWindow::Needs() const {
  SaveDialogNeeds needs;
  for (const Label* label : {&Label1, &Label2, &Label3, &Label5})
    needs.labels = std::max<double>(needs.labels, label->NaturalWidth());
  needs.compression = Label4.NaturalWidth();
  needs.path_height = CurrentPath.NaturalHeight();
  needs.field_height = std::max(FileType.NaturalHeight(), InputFileName.NaturalHeight());
  needs.number_height = CompressionNumber.Entry().NaturalHeight() * kTwipsPerPixel;  // it measures in pixels
  needs.number_width = Label4.TextWidth("130") + kNumberPadding;
  needs.bar_height = CompressionScroll.NaturalHeight();
  needs.button_width = Label4.TextWidth(cancelButton.Caption()) + kButtonPadding;
  for (const int i : {kDesktop, kDocuments}) {
    needs.tile_width = std::max<double>(needs.tile_width, Location[i].NaturalWidth());
    needs.tile_height = std::max<double>(needs.tile_height, Location[i].NaturalHeight());
  }
  return needs;
}

/// As large as its parts need, and as much larger as the person made it last.
void SaveDialogWindow::TakeSize() {
  const SaveDialogNeeds needs = Needs();
  const double width = zelvane::NaturalWidth(needs);
  const double height = zelvane::NaturalHeight(needs, Row()) + State.TitleBarHeight;
  SetMinimumSize(static_cast<Single>(width), static_cast<Single>(height));
  SetWidth(static_cast<Single>(width + State.FileWindowSpareWidth));
  SetHeight(static_cast<Single>(height + State.FileWindowSpareHeight));
  PlaceParts();
}

void SaveDialogWindow::Form_Resize() {
  PlaceParts();
  if (!Visible() || WindowState() != kNormal) return;
  State.FileWindowSpareWidth = std::max(0.0, ScaleWidth() - zelvane::NaturalWidth(Needs()));
  State.FileWindowSpareHeight = std::max(0.0, ScaleHeight() - zelvane::NaturalHeight(Needs(), Row()));
}

void SaveDialogWindow::PlaceParts() {
  const SaveDialogNeeds needs = Needs();
  const double width = std::max<double>(ScaleWidth(), zelvane::NaturalWidth(needs));
  const double spare = std::max(0.0, ScaleHeight() - zelvane::NaturalHeight(needs, Row()));
  const SaveDialogPlaces places = LayOut(needs, width, spare);
  PutAt(SpecialLocations, places.locations);
  for (const int i : {kDesktop, kDocuments}) PutAt(Location[i], places.tiles[i - 1]);
  PutAt(Label1, places.path_label);
  PutAt(CurrentPath, places.path);
  PutAt(FolderTree, places.tree);
  PutAt(Label5, places.count_label);
  PutAt(FileCount, places.count);
  PutAt(File1, places.files);
  PutAt(Label2, places.name_label);
  PutAt(InputFileName, places.name);
  PutAt(Label3, places.type_label);
  PutAt(FileType, places.type);
  PutAt(Label4, places.compression_label);
  PutAt(CompressionNumber, places.number);
  PutAt(CompressionScroll, places.bar);
  PutAt(saveButton, places.save);
  PutAt(cancelButton, places.cancel);
  ShowPath();
}

}  // namespace zelvane
