#include "platform/ui/Icons.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// In the order of Symbol.
constexpr auto files = std::to_array<const char*>({
    "about",
    "add",
    "back",
    "chart",
    "close",
    "contents",
    "copy",
    "data",
    "database",
    "delete",
    "edit",
    "exit",
    "export",
    "first",
    "help",
    "last",
    "more",
    "new",
    "next",
    "page",
    "paste",
    "previous",
    "print",
    "printer",
    "recalculate",
    "refresh",
    "save",
    "search",
    "settings",
    "template",
    "tools",
    "utilities",
    "zoom-in",
    "zoom-out",
    "state-not-evaluated",
    "state-chaos",
    "state-brink-of-chaos",
    "state-threshold",
    "state-ideal",
    "lamp-off",
    "lamp-go",
    "lamp-stop",
    "sign-critical",
    "sign-question",
    "sign-exclamation",
    "sign-information",
});
static_assert(files.size() == size_t(Symbol::SignInformation) + 1);

// The inks of the drawings on a light desktop, and what stands for them on a dark one.
constexpr std::pair<const char*, const char*> darkInks[] = {
    {"#1f6fb5", "#6fb4f2"}, {"#1e8449", "#6cd094"}, {"#b83227", "#f08a80"}};

QByteArray Drawing(Symbol symbol, const QColor& ink) {
  QFile file(u":/icons/%1.svg"_s.arg(QLatin1StringView(files[size_t(symbol)])));
  if (!file.open(QIODevice::ReadOnly)) return {};
  QByteArray drawing = file.readAll();
  if (symbol >= Symbol::StateNotEvaluated) return drawing;  // on a ground of its own
  drawing.replace("#000000", ink.name().toLatin1());
  if (ink.lightness() <= 128) return drawing;
  for (const auto& [onLight, onDark] : darkInks) drawing.replace(onLight, onDark);
  return drawing;
}

// Reads the file no sooner than it is painted, and each size once. The desktop's ink is asked for at every
// painting, so that a change between a light and a dark desktop is followed.
class SymbolEngine : public QIconEngine {
 public:
  explicit SymbolEngine(Symbol symbol) : symbol_(symbol) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const int side = std::min(rect.width(), rect.height());
    const double scale = painter->device()->devicePixelRatioF();
    QPixmap picture = pixmap(QSize(side, side) * scale, mode, state);
    picture.setDevicePixelRatio(scale);
    painter->drawPixmap(QRectF(rect).center() - QPointF(side / 2.0, side / 2.0), picture);
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
    const QColor ink = QGuiApplication::palette().color(QPalette::ButtonText);
    const QString key = u"symbol %1 %2x%3 %4 %5"_s.arg(int(symbol_))
                            .arg(size.width())
                            .arg(size.height())
                            .arg(ink.rgb())
                            .arg(int(mode));
    QPixmap picture;
    if (size.isEmpty() || QPixmapCache::find(key, &picture)) return picture;
    picture = QPixmap(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    if (mode == QIcon::Disabled) painter.setOpacity(0.35);
    const double side = std::min(size.width(), size.height());
    QSvgRenderer(Drawing(symbol_, ink))
        .render(&painter, QRectF((size.width() - side) / 2, (size.height() - side) / 2, side, side));
    painter.end();
    QPixmapCache::insert(key, picture);
    return picture;
  }

  QIconEngine* clone() const override { return new SymbolEngine(*this); }

 private:
  Symbol symbol_;
};

}  // namespace

QIcon SymbolIcon(Symbol symbol) { return QIcon(new SymbolEngine(symbol)); }
