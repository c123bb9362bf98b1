#pragma once

#include <string>
#include <vector>

#include "components/ExplorerView.h"
#include "files/FileListBox.h"
#include "files/FileNames.h"
#include "files/SaveDialogLayout.h"
#include "surface/forms/controls/ComboBox.h"
#include "surface/forms/controls/CommandButton.h"
#include "surface/forms/controls/Label.h"
#include "surface/forms/controls/Panel.h"
#include "surface/forms/controls/ScrollBar.h"
#include "surface/forms/controls/TileButton.h"
#include "surface/forms/windows/DialogForm.h"
#include "ui/NumberBox.h"

namespace zelvane {

/// The JPEG compression ratio where the settings hold none.
inline constexpr int16_t kDefaultCompression = 65;

/// The program's own file window, for opening and saving. `FileDialog` drives it: fields first, each followed
/// by its `Set` routine, then a showing. It keeps a name's ending in step with the chosen file type.
class SaveDialogWindow final : public DialogForm {
 public:
  SaveDialogWindow();

  int16_t WantedFilterIndex = 0;
  std::string DialogMode;    ///< "O" opens, "S" saves
  std::string FilterText;    ///< as `ParseFilters` reads it
  std::string ChosenFile;    ///< before the showing the proposed name, after it the chosen one or nothing
  std::string ChosenFolder;  ///< the one that a chosen name is in
  std::string StartFolder;   ///< empty for the root

  Panel SpecialLocations;
  ControlArray<TileButton> Location;  ///< from element 1: the desktop, the documents
  Label Label1, CurrentPath;
  ExplorerDisplay FolderTree;
  Label Label5, FileCount;
  FileListBox File1;
  Label Label2;
  ComboBox InputFileName;
  Label Label3;
  ComboBox FileType;
  Label Label4;
  NumberBox CompressionNumber;
  ScrollBar CompressionScroll;
  CommandButton saveButton, cancelButton;

  void SetFilter();
  void SetFilterIndex();
  void SetFileName();
  void SetPath();
  /// Lists the folders anew. The chosen one stays so, as long as it exists.
  void FolderTreeRefresh();
  /// What the two buttons do follows the name.
  void SetButton();
  void ShowCompression(bool visible);
  /// Shows the window in its mode and waits until it is answered.
  void Ask();

 private:
  void Form_Load();
  void WireEvents();
  SaveDialogNeeds Needs() const;
  CompressionRow Row() const { return Saves() ? CompressionRow::Yes : CompressionRow::No; }
  void TakeSize();
  void PlaceParts();
  void Form_Activate();
  void Form_KeyUp(int16_t KeyCode);
  void Form_Resize();
  void FolderTree_Change(const std::string& folder);
  void ShowPath();
  void ShowCount();
  void RefreshFileList();
  void RaiseLocation(int index);
  void FlattenLocation(int index);
  void Location_Click(int index);
  void ApplyExtension();
  void FileType_Click();
  void EnableCompression(bool enabled);
  void CompressionNumber_Change();
  void KeepCompression();
  void saveButton_Click();
  void cancelButton_Click();
  void GoTo(const std::string& folder);
  void AddToHistory(const std::string& name);
  bool Saves() const { return DialogMode == "S"; }
  std::string Patterns() const;

  std::string DesktopFolder, DocumentsFolder;
  std::vector<FileFilter> Filters;
  std::vector<std::string> HistoryNames;  ///< in lower case
  bool escape_is_down_ = false;
};

inline SingleWindow<SaveDialogWindow> SaveDialog;

}  // namespace zelvane
