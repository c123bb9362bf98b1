#include "surface/system/text/QtText.h"

#include <algorithm>

namespace zelvane {
namespace {

constexpr char16_t kByte = 0xDC00, kFirstByte = kByte + 0x80, kLastByte = kByte + 0xFF;

/// The length of the character that `bytes` begins with, 0 where these are no UTF-8.
qsizetype LengthOfFirst(QByteArrayView bytes) {
  constexpr qsizetype kLongest = 4;
  for (qsizetype length = 1; length <= std::min(kLongest, bytes.size()); ++length) {
    if (bytes.first(length).isValidUtf8()) return length;
  }
  return 0;
}

bool IsByte(QChar unit) {
  return unit >= kFirstByte && unit <= kLastByte;
}

/// Calls `whole` with each character, one unit or a pair, and `lone` with each surrogate that has no other
/// half.
template <class Whole, class Lone>
void ForEachCharacter(const QString& text, Whole&& whole, Lone&& lone) {
  for (qsizetype i = 0; i < text.size(); ++i) {
    const bool is_pair = text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
    if (text[i].isSurrogate() && !is_pair)
      lone(text[i]);
    else
      whole(QStringView(text).sliced(i, is_pair ? 2 : 1));
    if (is_pair) ++i;
  }
}

bool HasGlyph(QStringView character) {
  const QChar::Category category = character.front().category();
  return category != QChar::Other_Control && category != QChar::Separator_Line &&
         category != QChar::Separator_Paragraph;
}

}  // namespace

QString ToQt(const std::string& text) {
  QByteArrayView bytes(text.data(), static_cast<qsizetype>(text.size()));
  if (bytes.isValidUtf8()) return QString::fromUtf8(bytes);
  QString result;
  while (!bytes.empty()) {
    const qsizetype length = LengthOfFirst(bytes);
    if (length > 0)
      result += QString::fromUtf8(bytes.first(length));
    else
      result += QChar(kByte + static_cast<unsigned char>(bytes.front()));
    bytes = bytes.sliced(std::max<qsizetype>(length, 1));
  }
  return result;
}

std::string FromQt(const QString& text) {
  if (text.isValidUtf16()) return text.toStdString();
  std::string result;
  ForEachCharacter(
      text, [&](QStringView character) { result += character.toUtf8().toStdString(); },
      [&](QChar unit) {
        if (IsByte(unit))
          result += static_cast<char>(unit.unicode() - kByte);
        else
          result += "\uFFFD";
      });
  return result;
}

QString OneLine(QString text) {
  const bool is_plain = std::all_of(text.cbegin(), text.cend(), [](QChar unit) { return unit.isPrint(); });
  if (is_plain) return text;
  QString result;
  ForEachCharacter(
      text,
      [&](QStringView character) {
        if (HasGlyph(character))
          result += character;
        else
          result += QChar::ReplacementCharacter;
      },
      [&](QChar) { result += QChar::ReplacementCharacter; });
  return result;
}

QString LowerCase(const QString& text) {
  if (text.isValidUtf16()) return text.toLower();
  QString result;
  ForEachCharacter(
      text, [&](QStringView character) { result += character.toString().toLower(); },
      [&](QChar unit) { result += unit; });
  return result;
}

}  // namespace zelvane
