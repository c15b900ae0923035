#include "charts/PageOutput.h"

#include <QBuffer>
#include <QImage>
#include <QPageLayout>
#include <QPdfWriter>
#include <QSvgGenerator>

#include "charts/SaveFile.h"
#include "core/Trap.h"

using namespace Qt::StringLiterals;

namespace PageOutput {

namespace {

constexpr int dotsPerInch = 600;
constexpr double marginMm = 10;

void PaintOn(QPaintDevice& device, StatPage page, const QRectF& target, const QString& path) {
  page.Select(GraphId::None);
  QPainter painter;
  if (!painter.begin(&device)) throw Error(u"%1: the page cannot be painted"_s.arg(path));
  page.Paint(painter, target);
  painter.end();
}

}  // namespace

void WritePdf(const StatPage& page, const QString& path) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  {
    QPdfWriter writer(&buffer);
    writer.setTitle(page.Description());
    writer.setResolution(dotsPerInch);
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape,
                                     QMarginsF(marginMm, marginMm, marginMm, marginMm),
                                     QPageLayout::Millimeter));
    PaintOn(writer, page, QRectF(0, 0, writer.width(), writer.height()), path);
  }
  SaveFile(path, bytes);
}

void WritePng(const StatPage& page, const QString& path, QSize size) {
  QImage image(size, QImage::Format_RGB32);
  if (image.isNull())
    throw Error(u"%1: no picture of %2 by %3"_s.arg(path).arg(size.width()).arg(size.height()));
  PaintOn(image, page, QRectF(image.rect()), path);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (!image.save(&buffer, "PNG")) throw Error(u"%1: the picture cannot be coded"_s.arg(path));
  SaveFile(path, bytes);
}

void WriteSvg(const StatPage& page, const QString& path, QSize size) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  {
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setTitle(page.Description());
    generator.setSize(size);
    generator.setViewBox(QRect(QPoint(0, 0), size));
    PaintOn(generator, page, QRectF(QPointF(0, 0), QSizeF(size)), path);
  }
  SaveFile(path, bytes);
}

}  // namespace PageOutput
