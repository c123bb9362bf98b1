#include "surface/system/metafiles/TextCodes.h"

#include <QByteArray>
#include <QStringDecoder>
#include <QStringView>

namespace zelvane {

namespace {

const char* CodePageOf(uint32_t charset) {
  switch (charset) {
    case 77:
      return "macintosh";
    case 128:
      return "Shift_JIS";
    case 129:
      return "EUC-KR";
    case 134:
      return "GBK";
    case 136:
      return "Big5";
    case 161:
      return "windows-1253";
    case 162:
      return "windows-1254";
    case 163:
      return "windows-1258";
    case 177:
      return "windows-1255";
    case 178:
      return "windows-1256";
    case 186:
      return "windows-1257";
    case 204:
      return "windows-1251";
    case 222:
      return "windows-874";
    case 238:
      return "windows-1250";
    default:
      return "windows-1252";
  }
}

/// From 0x20 to 0x7E and from 0xA0 to 0xFE.
constexpr QStringView kSymbolsLow =
    u" !∀#∃%&∋()∗+,−./0123456789:;<=>?≅ΑΒΧ∆ΕΦΓΗΙϑΚΛΜΝΟΠΘΡΣΤΥςΩΞΨΖ[∴]⊥_‾αβχδεφγηιϕκλµνοπθρστυϖωξψζ{|}∼";
constexpr QStringView kSymbolsHigh =
    u"€ϒ′≤⁄∞ƒ♣♦♥♠↔←↑→↓°±″≥×∝∂•÷≠≡≈…⏐⎯↵ℵℑℜ℘⊗⊕∅∩∪⊃⊇⊄⊂⊆∈∉∠∇®©™∏√⋅¬∧∨⇔⇐⇑⇒⇓"
    u"◊〈®©™∑⎛⎜⎝⎡⎢⎣⎧⎨⎩⎪ 〉∫⌠⎮⌡⎞⎟⎠⎤⎥⎦⎫⎬⎭";

}  // namespace

QString TextOf(ByteView bytes, uint32_t charset) {
  QStringDecoder decode(CodePageOf(charset));
  const QByteArray text(reinterpret_cast<const char*>(bytes.Data()), static_cast<qsizetype>(bytes.Size()));
  return decode.isValid() ? QString(decode(text)) : QString::fromLatin1(text);
}

QString WideText(ByteView bytes) {
  QString text;
  for (uint64_t at = 0; at + 1 < bytes.Size(); at += 2) text.append(QChar(bytes.Little16(at)));
  return text;
}

QString FromSymbolFont(QString text) {
  constexpr char16_t kOwnSigns = 0xF000, kHigh = 0xA0;
  for (QChar& sign : text) {
    const char16_t code = sign.unicode() >= kOwnSigns ? sign.unicode() - kOwnSigns : sign.unicode();
    if (code >= kHigh && code - kHigh < kSymbolsHigh.size()) {
      sign = kSymbolsHigh[code - kHigh];
    } else if (code >= ' ' && code - ' ' < kSymbolsLow.size()) {
      sign = kSymbolsLow[code - ' '];
    }
  }
  return text;
}

}  // namespace zelvane
