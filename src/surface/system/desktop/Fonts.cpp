#include "surface/system/desktop/Fonts.h"

#include <fontconfig/fontconfig.h>

#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <thread>
#include <unordered_map>

#include "surface/raster/FailingStep.h"
#include "surface/system/desktop/FontFile.h"
#include "surface/system/text/QtText.h"
#include "surface/system/text/ReadingOrder.h"

namespace zelvane {
namespace {

template <auto Free>
struct Freed {
  void operator()(auto* thing) const { Free(thing); }
};
using Pattern = std::unique_ptr<FcPattern, Freed<FcPatternDestroy>>;
using Facts = std::unique_ptr<FcObjectSet, Freed<FcObjectSetDestroy>>;
using FontSet = std::unique_ptr<FcFontSet, Freed<FcFontSetDestroy>>;

/// One of a family's files.
struct FaceFile {
  std::string path;
  int face = 0;
  int plainness = 0;  ///< how far its weight, slant and width are from plain
};

int Number(FcPattern* font, const char* fact, int otherwise) {
  int number = 0;
  if (FcPatternGetInteger(font, fact, 0, &number) == FcResultMatch) return number;
  double fraction = 0;
  return FcPatternGetDouble(font, fact, 0, &fraction) == FcResultMatch ? static_cast<int>(fraction)
                                                                       : otherwise;
}

std::string Text(FcPattern* font, const char* fact, int which = 0) {
  FcChar8* text = nullptr;
  if (FcPatternGetString(font, fact, which, &text) != FcResultMatch) return {};
  return reinterpret_cast<const char*>(text);
}

FaceFile FileOf(FcPattern* font) {
  const int slant = Number(font, FC_SLANT, FC_SLANT_ROMAN) - FC_SLANT_ROMAN;
  const int weight = Number(font, FC_WEIGHT, FC_WEIGHT_NORMAL) - FC_WEIGHT_NORMAL;
  const int width = Number(font, FC_WIDTH, FC_WIDTH_NORMAL) - FC_WIDTH_NORMAL;
  // The upper half of the index names an instance of a variable font.
  return {Text(font, FC_FILE), Number(font, FC_INDEX, 0) & 0xFFFF,
          std::abs(slant) + std::abs(weight) + std::abs(width)};
}

/// The file of each family's plainest face, by the family's name.
class FontFiles {
 public:
  FontFiles() {
    const Pattern any(FcPatternCreate());
    const Facts facts(FcObjectSetBuild(FC_FAMILY, FC_FILE, FC_INDEX, FC_SLANT, FC_WEIGHT, FC_WIDTH, nullptr));
    const FontSet fonts(FcFontList(nullptr, any.get(), facts.get()));
    for (int i = 0; fonts && i < fonts->nfont; ++i) Take(fonts->fonts[i]);
  }

  bool Has(const std::string& name) const { return files_.contains(name); }
  std::optional<LineReach> ReachOf(const std::string& name) const {
    const auto found = files_.find(name);
    const FaceFile file = found == files_.end() ? StandIn(name) : found->second;
    return file.path.empty() ? LineReach{} : ReadLineReach(file.path, file.face);
  }

 private:
  void Take(FcPattern* font) {
    const FaceFile file = FileOf(font);
    std::string name;
    for (int which = 0; name = Text(font, FC_FAMILY, which), !name.empty(); ++which) {
      const auto [standing, is_new] = files_.emplace(name, file);
      if (!is_new && file.plainness < standing->second.plainness) standing->second = file;
    }
  }

  /// What the system takes for a name that no file bears, such as "Monospace".
  static FaceFile StandIn(const std::string& name) {
    const Pattern wanted(FcPatternCreate());
    FcPatternAddString(wanted.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(name.c_str()));
    FcConfigSubstitute(nullptr, wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
    FcResult result = FcResultNoMatch;
    const Pattern found(FcFontMatch(nullptr, wanted.get(), &result));
    return found ? FileOf(found.get()) : FaceFile{};
  }

  std::unordered_map<std::string, FaceFile> files_;
};

/// Of several fonts of one name the toolkit tells the makers, in brackets behind it. They're one to a reader.
std::string WithoutMaker(const std::string& name, const FontFiles& files) {
  const std::string plain = name.substr(0, name.rfind(" ["));
  return files.Has(plain) ? plain : name;
}

std::vector<std::string> FontNames(const FontFiles& files) {
  std::vector<std::string> names;
  for (const QString& family : QFontDatabase::families()) {
    if (!QFontDatabase::isPrivateFamily(family)) names.push_back(WithoutMaker(FromQt(family), files));
  }
  SortForReading(names);
  names.erase(std::unique(names.begin(), names.end()), names.end());
  return names;
}

}  // namespace

void ReadFontsAhead() {
  Attempt([] { std::thread(FcInit).detach(); });
}

std::vector<ScreenFont> ScreenFonts() {
  const FontFiles files;
  std::vector<ScreenFont> fonts;
  for (const std::string& name : FontNames(files)) {
    if (const auto reach = files.ReachOf(name)) fonts.push_back({name, reach->above, reach->below});
  }
  if (fonts.empty()) {
    const LineReach usual;
    fonts.push_back({FromQt(QFontInfo(QGuiApplication::font()).family()), usual.above, usual.below});
  }
  return fonts;
}

}  // namespace zelvane
