#include "surface/forms/controls/Conversions.h"

#include <QWidget>
#include <iterator>

namespace zelvane {
namespace {

struct CodedKey {
  int key;
  int16_t code;
};

/// Keys whose code is neither their character nor in a row with others.
constexpr CodedKey kCodedKeys[] = {
    {Qt::Key_Backspace, 8},     {Qt::Key_Tab, 9},         {Qt::Key_Backtab, 9},
    {Qt::Key_Return, 13},       {Qt::Key_Enter, 13},      {Qt::Key_Shift, 16},
    {Qt::Key_Control, 17},      {Qt::Key_Alt, 18},        {Qt::Key_Pause, 19},
    {Qt::Key_CapsLock, 20},     {Qt::Key_Escape, 27},     {Qt::Key_PageUp, 33},
    {Qt::Key_PageDown, 34},     {Qt::Key_End, 35},        {Qt::Key_Home, 36},
    {Qt::Key_Left, 37},         {Qt::Key_Up, 38},         {Qt::Key_Right, 39},
    {Qt::Key_Down, 40},         {Qt::Key_Print, 44},      {Qt::Key_Insert, 45},
    {Qt::Key_Delete, 46},       {Qt::Key_Menu, 93},       {Qt::Key_NumLock, 144},
    {Qt::Key_ScrollLock, 145},  {Qt::Key_Semicolon, 186}, {Qt::Key_Equal, 187},
    {Qt::Key_Plus, 187},        {Qt::Key_Comma, 188},     {Qt::Key_Minus, 189},
    {Qt::Key_Period, 190},      {Qt::Key_Slash, 191},     {Qt::Key_QuoteLeft, 192},
    {Qt::Key_BracketLeft, 219}, {Qt::Key_Backslash, 220}, {Qt::Key_BracketRight, 221},
    {Qt::Key_Apostrophe, 222},
};

int16_t KeypadCode(int key) {
  if (key >= Qt::Key_0 && key <= Qt::Key_9) return static_cast<int16_t>(96 + key - Qt::Key_0);
  switch (key) {
    case Qt::Key_Asterisk:
      return 106;
    case Qt::Key_Plus:
      return 107;
    case Qt::Key_Minus:
      return 109;
    case Qt::Key_Comma:
    case Qt::Key_Period:
      return 110;
    case Qt::Key_Slash:
      return 111;
    default:
      return 0;
  }
}

}  // namespace

void Tint(QWidget& widget, QPalette::ColorRole role, Color color) {
  QPalette palette = widget.palette();
  palette.setColor(role, ToQt(color));
  widget.setPalette(palette);
}

int16_t ShiftOf(Qt::KeyboardModifiers modifiers) {
  int shift = 0;
  if (modifiers & Qt::ShiftModifier) shift |= kShift;
  if (modifiers & Qt::ControlModifier) shift |= kCtrl;
  if (modifiers & Qt::AltModifier) shift |= kAlt;
  return static_cast<int16_t>(shift);
}

int16_t ButtonsOf(Qt::MouseButtons buttons) {
  return static_cast<int16_t>(buttons.toInt() & 0x7FFF);
}

int16_t KeyCodeOf(const QKeyEvent& event) {
  const int key = event.key();
  if (event.modifiers() & Qt::KeypadModifier) {
    if (const int16_t code = KeypadCode(key)) return code;
  }
  if (key == Qt::Key_Space || (key >= Qt::Key_0 && key <= Qt::Key_9) ||
      (key >= Qt::Key_A && key <= Qt::Key_Z)) {
    return static_cast<int16_t>(key);
  }
  if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return static_cast<int16_t>(112 + key - Qt::Key_F1);
  const auto* coded = std::find_if(std::begin(kCodedKeys), std::end(kCodedKeys),
                                   [key](const CodedKey& one) { return one.key == key; });
  return coded == std::end(kCodedKeys) ? int16_t{0} : coded->code;
}

}  // namespace zelvane
