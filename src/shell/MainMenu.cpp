#include "shell/MainMenu.h"

namespace zelvane {
namespace {

constexpr const char* kTones[] = {
    "&Black && White", "-", "&Red && White",  "R&ed && Black", "-", "&Green && White",
    "Gr&een && Black", "-", "B&lue && White", "Bl&ue && Black"};

}  // namespace

MainMenu::MainMenu(MdiForm& window)
    : File(window, "File", "&File"),
      NewImage(File, "NewImage", "&New...", "Ctrl+N"),
      FileOpen(File, "FileOpen", "&Open...", "Ctrl+O"),
      Close(File, "Close", "&Close", "Ctrl+W"),
      mnuIcon(File, "mnuIcon", "Icon Extraction"),
      split006(File, "split006", "-"),
      Save(File, "Save", "&Save...", "Ctrl+S"),
      SaveAs(File, "SaveAs", "Save &As...", "Ctrl+D"),
      separator1(File, "separator1", "-"),
      mnuRecent(File, "mnuRecent", "Recent Files"),
      mnuFile1(mnuRecent, "mnuFile1", ";File1"),
      mnuFile2(mnuRecent, "mnuFile2", ";File2"),
      mnuFile3(mnuRecent, "mnuFile3", ";File3"),
      mnuFile4(mnuRecent, "mnuFile4", ";File4"),
      mnuFile5(mnuRecent, "mnuFile5", ";File5"),
      separator9(File, "separator9", "-"),
      Manager(File, "Manager", "Open Korvath", "Ctrl+M"),
      Splash(File, "Splash", "Display Splash Screen at StartUp"),
      split004(File, "split004", "-"),
      Exit(File, "Exit", "E&xit", "Ctrl+Q"),
      Edit(window, "Edit", "&Edit"),
      Undo(Edit, "Undo", "&Undo", "Ctrl+Z"),
      split001(Edit, "split001", "-"),
      Cut(Edit, "Cut", "&Cut", "Ctrl+X"),
      Copy(Edit, "Copy", "C&opy", "Ctrl+C"),
      Paste(Edit, "Paste", "&Paste", "Ctrl+V"),
      split002(Edit, "split002", "-"),
      PasteSpecial(Edit, "PasteSpecial", "Pa&ste Special", "Ctrl+B"),
      split003(Edit, "split003", "-"),
      SelectAll(Edit, "SelectAll", "Select &All", "Ctrl+A"),
      ClearSelection(Edit, "ClearSelection", "C&lear Selection", "Del"),
      Image(window, "Image", "&Image"),
      FlipHorizontal(Image, "FlipHorizontal", "Flip &Horizontal"),
      FlipVertical(Image, "FlipVertical", "Flip &Vertical"),
      split009(Image, "split009", "-"),
      InvertImage(Image, "InvertImage", "&Invert Image", "Ctrl+I"),
      GreyScalemenu(Image, "GreyScalemenu", "Make &Greyscale"),
      split010(Image, "split010", "-"),
      ImageSize(Image, "ImageSize", "Image &Size"),
      ImagePalette(Image, "ImagePalette", "Image Palette"),
      Effects(window, "Effects", "Effec&ts"),
      Window(window, "Window", "&Window"),
      ArrHorizontal(Window, "ArrHorizontal", "Tile &Horizontal"),
      ArrVertival(Window, "ArrVertival", "Tile &Vertical"),
      Cascade(Window, "Cascade", "&Cascade"),
      Help(window, "Help", "&Help"),
      AboutKorvath(Help, "AboutKorvath", "&About Korvath") {
  for (const char* caption : kTones)
    Greyscale.push_back(std::make_unique<Menu>(
        GreyScalemenu, "Greyscale(" + std::to_string(Greyscale.size()) + ")", caption));
  Effect.push_back(std::make_unique<Menu>(Effects, "Effect(0)", "Default"));
  for (Menu* hidden :
       {&split009, &InvertImage, &GreyScalemenu, &Effects, &mnuFile2, &mnuFile3, &mnuFile4, &mnuFile5})
    hidden->SetVisible(false);
  Window.SetWindowList(true);
}

}  // namespace zelvane
