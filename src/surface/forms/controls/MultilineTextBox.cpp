#include "surface/forms/controls/MultilineTextBox.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QPointer>
#include <QTextBlock>
#include <QTextDocumentFragment>
#include <QTextEdit>
#include <memory>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/controls/Events.h"
#include "surface/forms/controls/LinesLayout.h"

namespace zelvane {
namespace {

/// The toolkit has breaks within a paragraph as well; here every line is one.
QString WithPlainBreaks(QString text) {
  return text.replace("\r\n", "\n").replace(QChar::LineSeparator, '\n').replace('\r', '\n');
}

}  // namespace

class MultilineTextBox::Editor : public QTextEdit {
 public:
  explicit Editor(QWidget* parent) : QTextEdit(parent) {
    setFrameStyle(QFrame::NoFrame);
    setLineWrapMode(NoWrap);
    setAcceptRichText(false);
    setTabChangesFocus(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  }

  MultilineTextBox* box = nullptr;

  QString Composed() const { return textCursor().block().layout()->preeditAreaText(); }

 protected:
  /// Beside the box's edge the picture shows through.
  void paintEvent(QPaintEvent* event) override {
    if (!viewport()->autoFillBackground())
      QPainter(viewport())
          .fillRect(viewport()->rect().adjusted(box->overhang_, 0, 0, 0), palette().brush(QPalette::Base));
    QTextEdit::paintEvent(event);
  }

  bool event(QEvent* event) override {
    // Keys that style a text elsewhere aren't for the picture beneath.
    if (event->type() == QEvent::ShortcutOverride && IsStyle(static_cast<const QKeyEvent&>(*event)))
      return event->accept(), true;
    return QTextEdit::event(event);
  }

  void keyPressEvent(QKeyEvent* event) override {
    if (event->matches(QKeySequence::InsertLineSeparator)) return insertPlainText("\n");
    QTextEdit::keyPressEvent(event);
  }

  void inputMethodEvent(QInputMethodEvent* event) override {
    const QPointer<Editor> standing(this);
    QTextEdit::inputMethodEvent(event);
    if (standing) FireEvent(box->OnChange);
  }

  /// Files are for the window.
  bool canInsertFromMimeData(const QMimeData* source) const override {
    return source->hasText() && !source->hasUrls();
  }
  void insertFromMimeData(const QMimeData* source) override {
    insertPlainText(WithPlainBreaks(source->text()));
  }
  QMimeData* createMimeDataFromSelection() const override {
    auto text = std::make_unique<QMimeData>();
    text->setText(textCursor().selection().toPlainText());
    return text.release();
  }

 private:
  static bool IsStyle(const QKeyEvent& key) {
    return key.matches(QKeySequence::Bold) || key.matches(QKeySequence::Italic);
  }
};

MultilineTextBox::MultilineTextBox(Control& parent, const std::string& name)
    : Control(&parent, name, new Editor(parent.Widget())) {
  Edit()->box = this;
  auto* document = new QTextDocument(widget_);
  layout_ = new LinesLayout(document);
  document->setDocumentLayout(layout_);
  Edit()->setDocument(document);
  FontChanged();
  QObject::connect(Edit(), &QTextEdit::textChanged, Edit(), [this] { FireEvent(OnChange); });
  QObject::connect(Edit(), &QTextEdit::cursorPositionChanged, Edit(), [this] { FireEvent(OnCaretMove); });
}

MultilineTextBox::Editor* MultilineTextBox::Edit() const {
  return static_cast<Editor*>(widget_);
}

std::string MultilineTextBox::Text() const {
  return widget_ ? FromQt(Edit()->toPlainText()) : "";
}

void MultilineTextBox::SetText(const std::string& text) {
  if (widget_ && text != Text()) Edit()->setPlainText(WithPlainBreaks(ToQt(text)));
}

std::string MultilineTextBox::ShownText() const {
  if (!widget_) return "";
  return FromQt(Edit()->toPlainText().insert(Edit()->textCursor().position(), Edit()->Composed()));
}

Rect MultilineTextBox::Caret() const {
  if (!widget_) return {};
  const QRect caret = Edit()->cursorRect();
  return {caret.left() - overhang_, caret.top(), caret.right() + 1 - overhang_, caret.bottom() + 1};
}

/// An opaque ground is painted without what lies beneath it.
void MultilineTextBox::SetOverhang(int units) {
  if (!widget_ || units == overhang_) return;
  overhang_ = units;
  layout_->SetLeft(units);
  Edit()->viewport()->setAutoFillBackground(units == 0);
  Edit()->viewport()->update();
  Place();
}

void MultilineTextBox::SetForeColor(Color color) {
  if (widget_) Tint(*widget_, QPalette::Text, color);
}

void MultilineTextBox::SetBackColor(Color color) {
  if (widget_) Tint(*widget_, QPalette::Base, color);
}

/// The editor hands the font on to its document, which lays its lines out anew.
void MultilineTextBox::FontChanged() {
  if (!widget_) return;
  layout_->SetPitch(Font(), Multiple());
  widget_->setFont(ToQt(Font(), Multiple()));
  QTextDocument& document = *Edit()->document();
  if (document.defaultFont() != widget_->font()) document.setDefaultFont(widget_->font());
}

}  // namespace zelvane
