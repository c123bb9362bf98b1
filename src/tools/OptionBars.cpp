#include "tools/OptionBars.h"

#include "surface/forms/controls/TextGrowth.h"
#include "tools/ToolButtons.h"

namespace zelvane {
namespace {

constexpr int kIconWidth = 34, kIconSize = 24, kHoverInterval = 100;
constexpr int kLeastBarHeight = 26, kLeastBoxHeight = 22;  // pixels, at a font of 10 points
constexpr int kGap = 12, kLabelGap = 5, kButtonSize = 26, kDropDownWidth = 16;

// What holds text grows with the font.
int BarHeight() {
  return kLeastBarHeight + static_cast<int>(LineGrowth());
}
int BoxHeight() {
  return kLeastBoxHeight + static_cast<int>(LineGrowth());
}
int TextWidth(int pixels) {
  return static_cast<int>(Widened(static_cast<Single>(pixels)));
}

/// The widest number of a format takes that many pixels, with the box's frame round it.
int NumberWidth(const std::string& format) {
  constexpr int kPercentWidth = 54, kPixelsWidth = 84;
  return TextWidth(format.ends_with('%') ? kPercentWidth : kPixelsWidth);
}

void FaceStyles(ButtonGroup& group) {
  group.SetFace(0, "borderonly", "Border Only");
  group.SetFace(1, "borderfill", "Border and Fill");
  group.SetFace(2, "fillonly", "Fill Only");
}

}  // namespace

/// Puts controls beside each other on a bar, each in the middle of its height.
class OptionBarsWindow::Row {
 public:
  Row(OptionBarsWindow& window, int tool) : window_(window), bar_(window.DrawToolbar[tool]) {}
  ~Row() { bar_.SetWidth(static_cast<Single>(x_)); }
  Row(const Row&) = delete;
  Row& operator=(const Row&) = delete;

  Row& Put(Control& control, int width, int height = BoxHeight()) {
    control.Move(static_cast<Single>(x_), static_cast<Single>((BarHeight() - height) / 2),
                 static_cast<Single>(width), static_cast<Single>(height));
    x_ += width;
    return *this;
  }
  Row& Gap(int width = kGap) { return x_ += width, *this; }
  /// A caption as wide as its text.
  Row& Text(const std::string& caption) {
    Label& label = window_.captions_.Add(bar_, "lblCaption", caption);
    label.SetAutoSize(true);
    label.SetAutoSize(false);
    return Put(label, static_cast<int>(label.Width()) + 1).Gap(kLabelGap);
  }
  /// The box of a numeric setting with its caption and its slider's button.
  Row& Number(NumericOption option) {
    Text(FactsOf(option).caption).Put(window_.pixelSelector[option], NumberWidth(FactsOf(option).format));
    return Put(window_.CmdDropDown[option], kDropDownWidth).Gap();
  }
  Row& Group(ButtonGroup& group) {
    for (int i = 0; i < group.Count(); ++i) Put(group[i], kButtonSize, kButtonSize);
    return Gap();
  }

 private:
  OptionBarsWindow& window_;
  PictureSurface& bar_;
  int x_ = kIconWidth + 8;
};

OptionBarsWindow::OptionBarsWindow()
    : Form("frmControls"),
      DrawToolbar(kToolCount, *this, "DrawToolbar"),
      Cmd(3, DrawToolbar[kRectangleTool], "Cmd"),
      Cmd2(3, DrawToolbar[kCircleTool], "Cmd2"),
      Cmd3(2, DrawToolbar[kPenTool], "Cmd3"),
      Cmd4(2, DrawToolbar[kBrightenTool], "Cmd4"),
      comboZoom(DrawToolbar[kMagnifyingTool], "comboZoom"),
      lblAngle(DrawToolbar[kGradientTool], "lblAngle", "N/A"),
      ColorPick(DrawToolbar[kEyedropperTool], "ColorPick"),
      lblRed(DrawToolbar[kEyedropperTool], "lblRed", "0"),
      lblGreen(DrawToolbar[kEyedropperTool], "lblGreen", "0"),
      lblBlue(DrawToolbar[kEyedropperTool], "lblBlue", "0"),
      RoundCorners(DrawToolbar[kRectangleTool], "RoundCorners", "Round corners?"),
      lblFont(DrawToolbar[kTextTool], "lblFont"),
      lblFontStyle(DrawToolbar[kTextTool], "lblFontStyle", " Normal"),
      CmdFont(DrawToolbar[kTextTool], "CmdFont"),
      CmdFontStyle(DrawToolbar[kTextTool], "CmdFontStyle"),
      clearButton(DrawToolbar[kEraserTool], "clearButton", "Clear"),
      CmdTimer(kHoverInterval, IntervalTimer::Runs::WithPointer),
      CircleTimer(kHoverInterval, IntervalTimer::Runs::WithPointer),
      BrushTimer(kHoverInterval, IntervalTimer::Runs::WithPointer),
      LightTimer(kHoverInterval, IntervalTimer::Runs::WithPointer) {
  NameBars();
  FaceStyles(Cmd);
  FaceStyles(Cmd2);
  Cmd3.SetFace(0, "freehand", "Freehand");
  Cmd3.SetFace(1, "straightline", "Straight Line");
  Cmd4.SetFace(0, "brighten", "Brighten");
  Cmd4.SetFace(1, "darken", "Darken");
  for (int percent = 100; percent <= 800; percent += 100) comboZoom.AddItem(std::to_string(percent) + "%");
  comboZoom.SetListIndex(0);
  comboZoom.SetAccessibleName("Zoom:");
  AddNumbers();
  FillBars();
  FillTextBar();
}

void OptionBarsWindow::NameBars() {
  for (int tool = 0; tool < kToolCount; ++tool) {
    const ToolFacts& facts = FactsOf(tool);
    PictureSurface& bar = DrawToolbar[tool];
    bar.SetBackColor(SystemColor::ButtonFace);
    bar.Move(0, 0, kIconWidth, static_cast<Single>(BarHeight()));
    bar.SetVisible(false);
    PictureSurface& icon = ToolIcon.Add(bar, "ToolIcon");
    icon.SetBackColor(SystemColor::ButtonFace);
    icon.Move(0, 0, kIconWidth, bar.Height());
    icon.SetIcon(facts.icon, kIconSize);
    MyCursor[static_cast<size_t>(tool)] = {facts.icon, facts.hot_x, facts.hot_y};
  }
}

void OptionBarsWindow::AddNumbers() {
  for (const OptionFacts& facts : kOptions) {
    NumberBox& box = pixelSelector.Add(DrawToolbar[facts.tool], "pixelSelector");
    box.SetFormat(facts.format);
    box.SetPositiveOnly(true);
    box.SetAccessibleName(facts.caption);
    PictureSurface& button = CmdDropDown.Add(DrawToolbar[facts.tool], "CmdDropDown");
    button.SetIcon("dropdown", 16);
    button.SetAccessibleName(std::string("Slider for ") + facts.caption);
  }
}

void OptionBarsWindow::FillBars() {
  Row(*this, kPenTool).Number(kPenWidth).Text("Style:").Group(Cmd3);
  Row(*this, kMagnifyingTool).Text("Zoom:").Put(comboZoom, TextWidth(84)).Gap();
  Row(*this, kGradientTool).Text("Angle:").Put(lblAngle, TextWidth(56)).Gap();
  Row(*this, kAirbrushTool).Number(kAirbrushSize).Number(kAirbrushPressure);
  Row(*this, kRectangleTool)
      .Number(kRectangleBorder)
      .Group(Cmd)
      .Put(RoundCorners, static_cast<int>(RoundCorners.Width()));
  Row(*this, kCircleTool).Number(kCircleBorder).Group(Cmd2);
  Row(*this, kBrightenTool).Number(kBrightenSize).Number(kBrightenPressure).Group(Cmd4);
  Row(*this, kBlurTool).Number(kBlurSize);
  Row(*this, kEraserTool).Number(kEraserWidth).Put(clearButton, TextWidth(64)).Gap();
  lblAngle.SetAlignment(kAlignCentre);
  ColorPick.SetBorder(true);
  ColorPick.SetAccessibleName("Color under the pointer");
  Row channels(*this, kEyedropperTool);
  channels.Put(ColorPick, 30).Gap();
  const int number = TextWidth(32);
  channels.Text("R:").Put(lblRed, number).Text("G:").Put(lblGreen, number).Text("B:").Put(lblBlue, number);
}

void OptionBarsWindow::FillTextBar() {
  Row row(*this, kTextTool);
  const int command = TextWidth(86);
  row.Number(kTextSize).Put(lblFont, TextWidth(96)).Put(CmdFont, kDropDownWidth).Gap();
  row.Put(lblFontStyle, TextWidth(96)).Put(CmdFontStyle, kDropDownWidth).Gap();
  row.Put(CmdButton.Add(DrawToolbar[kTextTool], "CmdButton", "Apply Text"), command).Gap(4);
  row.Put(CmdButton.Add(DrawToolbar[kTextTool], "CmdButton", "Cancel Text"), command);
  for (PictureSurface* button : {&CmdFont, &CmdFontStyle}) button->SetIcon("dropdown", 16);
  for (Label* choice : {&lblFont, &lblFontStyle}) {
    choice->SetBorder(true);
    choice->SetShortens(true);
  }
  CmdFont.SetAccessibleName("Fonts");
  CmdFontStyle.SetAccessibleName("Font styles");
}

}  // namespace zelvane
