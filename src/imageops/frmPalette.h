#pragma once

#include <vector>

#include "surface/forms/controls/Panel.h"
#include "surface/forms/controls/ScrollBar.h"
#include "surface/forms/picture/PictureSurface.h"
#include "surface/forms/windows/DialogForm.h"

namespace zelvane {

/// The colours of a picture but black, in the order in which its rows show them first, at most 2000. Lets
/// events run between rows.
std::vector<Color> ColorsOf(const Bitmap& picture);

/// Shows the colours of the live layer as a grid of cells, the first of them last. Goes when it loses the
/// keyboard.
class PaletteWindow final : public DialogForm {
 public:
  PaletteWindow();

  /// A cell of the grid: its place on `Display`, in twips, and its colour.
  struct Cell {
    Single Left = 0, Top = 0;
    Color BackColor;
  };
  Panel Background;        ///< as wide as a row
  PictureSurface Display;  ///< bears the cells
  std::vector<Cell> Swatch;
  ScrollBar VScroll1;  ///< a step is a row

  /// Beside the lower right corner of the document, inside the main window.
  void TakePlace(const Form& document);
  void ShowColors(const std::vector<Color>& colors);

 private:
  void VScroll1_Change();
  void LayOutCells(const std::vector<Color>& colors);
  void DrawCells();
  int rows_ = 1;
};

inline SingleWindow<PaletteWindow> frmPalette;

/// Shows the window with the colours of the active document.
void ImagePalette_Click();

}  // namespace zelvane
