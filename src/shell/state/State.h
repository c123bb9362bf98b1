#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "components/DataStore.h"
#include "components/PicFormat32.h"
#include "surface/raster/Color.h"

namespace zelvane {

/// The tools by the index of their button.
enum Tool : int16_t {
  kCursorTool = 0,
  kPenTool = 1,
  kMagnifyingTool = 2,
  kFloodfillTool = 3,
  kGradientTool = 4,
  kSelectAreaTool = 5,
  kAirbrushTool = 6,
  kCropTool = 7,
  kEyedropperTool = 8,
  kRectangleTool = 9,
  kCircleTool = 10,
  kBrightenTool = 11,
  kTextTool = 12,
  kBlurTool = 13,
  kEraserTool = 14,
};
inline constexpr int kToolCount = 15;

/// A numeric tool setting. `Value` is whole when typed, with a fraction when set through the slider.
struct ToolOption {
  int16_t Min = 0, Max = 0;
  double Value = 0;
};

/// The kinds of file that a picture is written as.
enum SaveTypes : int16_t { kSaveBitmap = 1, kSaveGif = 2, kSaveJpeg = 3, kSaveTiff = 4, kSaveIcon = 5 };

inline constexpr int kRecentFiles = 5;

/// The application's shared state. There is one of each per process, in `State`.
struct ApplicationState {
  // Start
  std::string CommandLine;  ///< picture path handed to this process, empty when none is pending
  std::array<std::string, 5> FileTypeNames;  ///< names of the image types 1 to 4
  std::string ZelvaneFolder;                 ///< where file dialogs start
  std::string
      TempPath;       ///< this user's folder for temporary files, with its separator at the end; may be empty
  bool IsNT = false;  ///< each user has a desktop and a documents folder
  bool ShowSplash = false;      ///< the splash is up
  Color AccentColor;            ///< button colour of the About window
  uint64_t KorvathWindow = 0;   ///< the sibling's window, 0 when it isn't running
  uint64_t SabriqueWindow = 0;  ///< the other sibling's
  std::unique_ptr<PicFormat32> PicFormatObject;

  // The data file
  std::unique_ptr<DataStore> DataConnection;  ///< null until it's open
  std::string DataFilePath, DataTempPath;     ///< the file, and the name that it's written anew under
  std::string DataPassword;

  // Windows
  int32_t TitleBarHeight = 0;                       ///< twips
  int32_t MainFrameHeight = 0, MainFrameWidth = 0;  ///< twips between the main window's outside and inside
  bool CloseCancelled = false;                      ///< a document refused to close
  bool Exiting = false;                             ///< the main window is going down

  // Files
  int16_t OpenFilterIndex = 0;     ///< the filter that the open dialog ended on last, from 0
  int16_t SaveType = kSaveBitmap;  ///< the kind that the next save writes
  /// Twips by which the person made the file window larger than it needs to be.
  double FileWindowSpareWidth = 0, FileWindowSpareHeight = 0;
  /// The last files opened or saved, the most recent first. Free entries are empty and stand at the end.
  std::array<std::string, kRecentFiles> RecentFiles;
  int16_t RecentCount = 0;
  std::function<void()> OnRecentFilesRead;  ///< the list has been read anew

  // Tools
  int16_t CurrentTool = kCursorTool;
  std::array<bool, 21> ToolButtonDown{};  ///< which tool button is drawn pressed
  int16_t OptionButton = 0;               ///< style of the Rectangle and the Circle tool
  std::array<bool, 21> OptionButtonDown{};
  int16_t OptionButton3 = 0;  ///< style of the Pen
  std::array<bool, 21> OptionButton3Down{};
  int16_t OptionButton4 = 0;  ///< Brighten or Darken
  std::array<bool, 21> OptionButton4Down{};
  std::array<ToolOption, 12> OptionTable{};
  int16_t ColorDialogTarget = 0;  ///< which `SelColor` the colour dialog edits

  // The running stroke and the floating selection
  int16_t PointerButton = 0;                    ///< 1 left, 2 right, 0 none
  int16_t SelectionLeft = 0, SelectionTop = 0;  ///< base of a drag, in units of the view
};

inline ApplicationState State;

/// Everything as it is before the program starts.
inline void ResetState() {
  State = ApplicationState{};
}

}  // namespace zelvane
