#include "surface/forms/controls/TextBox.h"

#include <QClipboard>
#include <QDropEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPointer>
#include <QStyle>
#include <QStyleOptionFrame>
#include <algorithm>
#include <cmath>
#include <utility>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/controls/Events.h"
#include "surface/forms/controls/Label.h"

namespace zelvane {
namespace {

constexpr int16_t kAsciiBackspace = 8, kAsciiEnter = 13, kAsciiEscape = 27;
/// What the toolkit leaves free at each side of a line of text, and the caret.
constexpr int kTextMargin = 2, kCaretWidth = 1;
constexpr double kSmallestFont = 5;  // points

int16_t CharacterOf(QChar character) {
  return static_cast<int16_t>(character.unicode() & 0x7FFF);
}

/// What `OnKeyPress` tells of a key; 0 for a key that makes no character.
int16_t KeyAsciiOf(const QKeyEvent& key) {
  if (key.matches(QKeySequence::SelectAll)) return 0;
  switch (key.key()) {
    case Qt::Key_Backspace:
      return kAsciiBackspace;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return kAsciiEnter;
    case Qt::Key_Escape:
      return kAsciiEscape;
    default:
      break;
  }
  const bool is_control = (key.modifiers() & Qt::ControlModifier) && !(key.modifiers() & Qt::AltModifier);
  if (is_control && key.key() >= Qt::Key_A && key.key() <= Qt::Key_Z)
    return static_cast<int16_t>(key.key() - Qt::Key_A + 1);
  return !key.text().isEmpty() && key.text().front().isPrint() ? CharacterOf(key.text().front()) : int16_t{0};
}

/// A box of one line whose keys go through `OnKeyPress`.
class LineBox : public QLineEdit {
 public:
  using QLineEdit::QLineEdit;
  TextBox* box = nullptr;

  bool event(QEvent* event) override {
    // Where keys are filtered, undoing is left to whom the window's shortcut is.
    const bool asks = event->type() == QEvent::ShortcutOverride && box->OnKeyPress;
    if (asks && IsUndo(static_cast<const QKeyEvent&>(*event))) return event->ignore(), false;
    // A locked box does nothing on these keys, but they aren't meant for the picture.
    if (event->type() == QEvent::ShortcutOverride && IsEdit(static_cast<const QKeyEvent&>(*event)))
      return event->accept(), true;
    return QLineEdit::event(event);
  }

  /// The width that the line of text has.
  int RoomForText() const {
    QStyleOptionFrame option;
    initStyleOption(&option);
    const QRect inside = style()->subElementRect(QStyle::SE_LineEditContents, &option, this);
    return inside.width() - 2 * kTextMargin - kCaretWidth;
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    const int16_t ascii = KeyAsciiOf(*event);
    if (!box->OnKeyPress) return QLineEdit::keyPressEvent(event);
    if (ascii == 0 && event->matches(QKeySequence::Paste))
      return BringIn(QGuiApplication::clipboard()->text());
    if (ascii == 0) return QLineEdit::keyPressEvent(event);
    const QPointer<LineBox> standing(this);
    const int16_t kept = Filtered(ascii);
    if (!standing) return;
    if (kept == ascii) return QLineEdit::keyPressEvent(event);
    if (kept != 0) insert(QChar(kept));
    // Enter and Esc may still mean something to the window.
    event->setAccepted(kept != 0 || (ascii != kAsciiEnter && ascii != kAsciiEscape));
  }

  void inputMethodEvent(QInputMethodEvent* event) override {
    if (!box->OnKeyPress) return QLineEdit::inputMethodEvent(event);
    event->accept();
    BringIn(event->commitString());
  }

  /// Files are for the window.
  void dragEnterEvent(QDragEnterEvent* event) override {
    event->mimeData()->hasUrls() ? event->ignore() : QLineEdit::dragEnterEvent(event);
  }

  void dropEvent(QDropEvent* event) override {
    if (!box->OnKeyPress) return QLineEdit::dropEvent(event);
    setCursorPosition(cursorPositionAt(event->position().toPoint()));
    event->setDropAction(Qt::CopyAction);
    event->accept();
    BringIn(event->mimeData()->text());
  }

  void focusInEvent(QFocusEvent* event) override {
    entered_by_press_ = event->reason() == Qt::MouseFocusReason && box->SelectsOnEntry();
    QLineEdit::focusInEvent(event);
  }

  void mouseReleaseEvent(QMouseEvent* event) override {
    if (event->button() == Qt::MiddleButton && box->OnKeyPress) return BringInSelection();
    QLineEdit::mouseReleaseEvent(event);
    if (std::exchange(entered_by_press_, false) && !hasSelectedText()) selectAll();
  }

 private:
  static bool IsEdit(const QKeyEvent& key) {
    return key.matches(QKeySequence::Cut) || key.matches(QKeySequence::Paste) ||
           key.matches(QKeySequence::Delete);
  }
  static bool IsUndo(const QKeyEvent& key) {
    return key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo);
  }
  int16_t Filtered(int16_t ascii) {
    FireEvent(box->OnKeyPress, ascii);
    return ascii;
  }
  /// Text from elsewhere goes through the filter as if it were typed.
  void BringIn(const QString& text) {
    const QPointer<LineBox> standing(this);
    for (const QChar character : text) {
      const int16_t kept = isReadOnly() ? int16_t{0} : Filtered(CharacterOf(character));
      if (!standing) return;
      if (kept != 0) insert(QChar(kept));
    }
  }
  /// The middle button brings what was last selected anywhere, where the desktop keeps that.
  void BringInSelection() {
    if (!QGuiApplication::clipboard()->supportsSelection()) return;
    deselect();
    BringIn(QGuiApplication::clipboard()->text(QClipboard::Selection));
  }
  bool entered_by_press_ = false;
};

LineBox* Box(QWidget* widget) {
  return static_cast<LineBox*>(widget);
}

}  // namespace

TextBox::TextBox(Control& parent, const std::string& name)
    : Control(&parent, name, new LineBox(parent.Widget())) {
  Box(widget_)->box = this;
  QObject::connect(Box(widget_), &QLineEdit::textChanged, Box(widget_), [this] { FireEvent(OnChange); });
}

std::string TextBox::Text() const {
  return widget_ ? FromQt(Box(widget_)->text()) : "";
}

void TextBox::SetText(const std::string& text) {
  if (widget_ && text != Text()) Box(widget_)->setText(ToQt(text));
}

void TextBox::SelectAll() {
  if (widget_) Box(widget_)->selectAll();
}

int TextBox::SelStart() const {
  if (!widget_) return 0;
  return Box(widget_)->hasSelectedText() ? Box(widget_)->selectionStart() : Box(widget_)->cursorPosition();
}

int TextBox::SelLength() const {
  return widget_ ? Box(widget_)->selectionLength() : 0;
}

void TextBox::SetSelStart(int start) {
  if (widget_) Box(widget_)->setCursorPosition(std::max(0, start));
}

void TextBox::SetSelLength(int length) {
  if (widget_) Box(widget_)->setSelection(SelStart(), std::max(0, length));
}

void TextBox::SetAlignment(int16_t alignment) {
  alignment_ = alignment;
  if (!widget_) return;
  const Qt::Alignment across = alignment == kAlignRight    ? Qt::AlignRight
                               : alignment == kAlignCentre ? Qt::AlignHCenter
                                                           : Qt::AlignLeft;
  Box(widget_)->setAlignment(across | Qt::AlignVCenter);
}

void TextBox::SetMaxLength(int length) {
  if (auto* box = qobject_cast<QLineEdit*>(widget_)) box->setMaxLength(length);
}

void TextBox::SetLocked(bool locked) {
  locked_ = locked;
  if (widget_) Box(widget_)->setReadOnly(locked);
}

/// One guess from the present width, since each font size that is tried has to be loaded.
void TextBox::FitFont(const std::string& text) {
  if (!widget_) return;
  constexpr double kStep = 0.5;
  QFont font = widget_->font();
  const int room = Box(widget_)->RoomForText(), needed = QFontMetrics(font).horizontalAdvance(ToQt(text));
  if (needed <= room) return;
  const double fitting = std::floor(font.pointSizeF() * room / needed / kStep) * kStep;
  font.setPointSizeF(std::max(fitting, kSmallestFont));
  widget_->setFont(font);
}

void TextBox::SetForeColor(Color color) {
  if (widget_) Tint(*widget_, QPalette::Text, color);
}

void TextBox::SetBackColor(Color color) {
  if (widget_) Tint(*widget_, QPalette::Base, color);
}

}  // namespace zelvane
