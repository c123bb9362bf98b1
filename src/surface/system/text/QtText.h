#pragma once

#include <QString>
#include <string>

namespace zelvane {

/// Between our texts, which are UTF-8, and the toolkit's. A name of a file may be any bytes: each that is no
/// part of UTF-8 stands as the lone surrogate U+DC00 + byte, as is widely done, and comes back as that byte.
QString ToQt(const std::string& text);
/// Other lone surrogates come as U+FFFD.
std::string FromQt(const QString& text);

/// For showing on one line: what has no glyph of its own (line breaks, control characters, the bytes above)
/// as U+FFFD.
QString OneLine(QString text);

/// The toolkit's own would lose the bytes above.
QString LowerCase(const QString& text);

}  // namespace zelvane
