#pragma once

#include <cstdint>
#include <string>

namespace zelvane {

/// Asks for the name of a file. Made, set up in the order of its setters, shown and released by each caller;
/// the window behind it, `SaveDialog`, stands as long as the object does, so there is one at a time.
class FileDialog {
 public:
  FileDialog();
  ~FileDialog();
  FileDialog(const FileDialog&) = delete;
  FileDialog& operator=(const FileDialog&) = delete;

  void SetDialogTitle(const std::string& title);
  /// Pairs of a description and its patterns: "Bitmap (*.bmp)|*.bmp|All files (*.*)|*.*".
  void SetFilter(const std::string& filter);
  /// The file type, from 0.
  int16_t FilterIndex() const;
  void SetFilterIndex(int16_t index);
  /// The folder to begin in.
  void SetInitDir(const std::string& folder);
  /// The full path chosen, empty where the person cancelled. Written, a name to propose.
  std::string FileName() const;
  void SetFileName(const std::string& name);
  /// The setting of that name, 65 without one.
  int16_t JPEGCompression() const;

  /// Shows the window and waits for the answer.
  void ShowOpen();
  void ShowSave();
};

}  // namespace zelvane
