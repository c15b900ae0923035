#include "charts/PageOutput.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <cmath>

#include "charts/SaveFile.h"
#include "platform/error/Error.h"
#include "texts/PageWords.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace PageOutput {

namespace {

constexpr int dotsPerInch = 600;
constexpr double pictureWidth = 277;  // in millimetres
constexpr double inch = 25.4;
constexpr double smallestPoints = 7;  // of letters on paper

}  // namespace

QPageLayout LandscapeA4() {
  return QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape, Margins, QPageLayout::Millimeter);
}

void PaintOn(QPaintDevice& device, const OutputPage& page, const QRectF& target) {
  QPainter painter;
  if (!painter.begin(&device)) throw Error(Words::Page::notPainted());
  page.PaintOut(painter, target, smallestPoints / 72 * device.logicalDpiY());
  if (!painter.end()) throw Error(Words::Page::notPaintedToTheEnd());
}

QImage Picture(const OutputPage& page, QSize size) {
  QImage image(size, QImage::Format_RGB32);
  if (image.isNull()) throw Error(Words::Page::noPicture(size.width(), size.height()));
  const int dotsPerMeter = static_cast<int>(std::lround(1000 * size.width() / pictureWidth));
  image.setDotsPerMeterX(dotsPerMeter);
  image.setDotsPerMeterY(dotsPerMeter);
  PaintOn(image, page, QRectF(image.rect()));
  return image;
}

QByteArray Svg(const OutputPage& page, QSize size) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QSvgGenerator generator;
  generator.setOutputDevice(&buffer);
  generator.setTitle(page.Description());
  generator.setResolution(static_cast<int>(std::lround(inch * size.width() / pictureWidth)));
  generator.setSize(size);
  generator.setViewBox(QRect(QPoint(0, 0), size));
  PaintOn(generator, page, QRectF(QPointF(0, 0), QSizeF(size)));
  return bytes;
}

QByteArray Pdf(const OutputPage& page, const QPageLayout& layout) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  writer.setTitle(page.Description());
  writer.setResolution(dotsPerInch);
  writer.setPageLayout(layout);
  PaintOn(writer, page, QRectF(0, 0, writer.width(), writer.height()));
  return bytes;
}

void WritePdf(const OutputPage& page, const QString& path, const QPageLayout& layout) {
  SaveFile(path, Pdf(page, layout));
}

void WritePng(const OutputPage& page, const QString& path, QSize size) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  try {
    if (!Picture(page, size).save(&buffer, "PNG")) throw Error(Words::Page::notCoded());
  } catch (const Error& error) {
    throw Error(u"%1: %2"_s.arg(path, ErrorText(error)));
  }
  SaveFile(path, bytes);
}

void WriteSvg(const OutputPage& page, const QString& path, QSize size) { SaveFile(path, Svg(page, size)); }

void WritePage(const OutputPage& page, const QString& path) {
  const QString format = QFileInfo(path).suffix().toLower();
  if (format == u"pdf") return WritePdf(page, path);
  if (format == u"png") return WritePng(page, path);
  if (format == u"svg") return WriteSvg(page, path);
  throw InputError(Words::Page::unknownFormat(path), path);
}

}  // namespace PageOutput
