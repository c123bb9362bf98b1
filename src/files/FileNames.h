#pragma once

#include <functional>
#include <string>
#include <vector>

/// The file window's arithmetic on names: filters, extensions, typed and shortened paths. Text is UTF-8;
/// other bytes pass unchanged. A file's extension is `ExtensionOf`.
namespace zelvane {

/// An entry of the file types: patterns such as "*.jpg;*.jpe".
struct FileFilter {
  std::string description, patterns;
};

/// Pairs "description|patterns|"; the last "|" may be missing. A description whose patterns are missing
/// stands with empty ones, and one without a "|" behind it is no entry.
std::vector<FileFilter> ParseFilters(const std::string& FilterText);

/// The index of the last filter that has the name's extension somewhere in its patterns, else 0.
int FittingFilter(const std::vector<FileFilter>& filters, const std::string& ChosenFile);

/// The text with its name cut at the first "." and the ending of the first pattern behind: "a.b.c" and
/// "*.jpg;*.jpe" make "a.jpg". Folders in a typed path stay; a text that names a folder stays whole.
std::string ApplyExtension(const std::string& text, const std::string& patterns);

/// Whether the text may be confirmed: its name isn't empty and doesn't begin with ".", and no zero byte is in
/// it. What names a folder may be too, to go there.
bool CanConfirm(const std::string& text);

/// The name that a confirmed one, without folders, stands for: empty where it begins with "."; when saving,
/// one without a "." gets the ending of the first pattern.
std::string ConfirmedName(const std::string& name, const std::string& patterns, bool saving);

/// A text of the name box against the folder shown. The folder is absolute, without "." and ".." (taken back
/// on the text, as the person sees it) and without a separator at its end, but for the root. The name is
/// empty where the text names a folder: "..", "~", or an end in "/", "/." or "/..". Where a folder of the
/// remaining name exists, that is what is meant; only the disk knows.
struct TypedPath {
  std::string folder, name;
};
TypedPath ResolveTyped(const std::string& folder, const std::string& text);

/// `text` so that `TextWidth` of it and 60 more are at most `maxWidth`. Behind the first `keep` bytes, which
/// are the root, as many folders as needed give way to the marker "/ .../"; what is still too wide is cut at
/// the end by whole characters.
std::string ShortenPath(const std::string& text, double maxWidth, int keep,
                        const std::function<double(const std::string&)>& TextWidth);

/// Thousands grouped, a blank at the end: "1,250 ".
std::string FormatCount(int count);

}  // namespace zelvane
