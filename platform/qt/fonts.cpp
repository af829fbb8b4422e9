#include "platform/qt/fonts.h"

#include <QFontDatabase>
#include <QHash>
#include <QStringList>
#include <cmath>

#include "platform/qt/text.h"

// Qt requires this macro outside all namespaces.
static void LoadFonts() { Q_INIT_RESOURCE(fonts); }

namespace platform {
namespace {

// Keyed by the layouts' family. Cached: asking Qt for each control would take longer than everything else.
QHash<QString, QStringList> familiesFor;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

// The families of the bundled font.
QStringList OwnFamilies() {
  LoadFonts();
  QStringList families;
  for (const char* const file : {":/fonts/ComicNeue-Regular.otf", ":/fonts/ComicNeue-Bold.otf"})
    families += QFontDatabase::applicationFontFamilies(QFontDatabase::addApplicationFont(file));
  families.removeDuplicates();
  return families;
}

}  // namespace

void ChooseFonts() {
  const QStringList present = QFontDatabase::families();
  // The last resort, and for missing characters.
  const QStringList plain = QFontDatabase::systemFont(QFontDatabase::GeneralFont).families();
  const QString comic = "Comic Sans MS";
  familiesFor[comic] = (present.contains(comic) ? QStringList(comic) : OwnFamilies()) + plain;
  QStringList& sansSerif = familiesFor["MS Sans Serif"] = plain;
  for (const char* const family : {"DejaVu Sans", "Liberation Sans", "Arimo", "Microsoft Sans Serif"}) {
    if (present.contains(family)) sansSerif.prepend(family);
  }
}

QFont ToQFont(const FontLayout& layout) {
  constexpr double kPixelsPerPoint = 96.0 / 72.0;
  QFont font;
  font.setFamilies(familiesFor.value(ToQt(layout.family)));
  // In pixels, so that text keeps its proportion to the controls at any font resolution.
  font.setPixelSize(static_cast<int>(std::lround(layout.points * kPixelsPerPoint)));
  font.setBold(layout.isBold);
  return font;
}

}  // namespace platform
