// A page of charts as a picture or document: its bytes, or a file that is written completely or not at all.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QPageLayout>
#include <QPainter>
#include <QSize>
#include <QString>

// A page that is more than a window shows.
class OutputPage {
 public:
  virtual ~OutputPage() = default;
  virtual QString Description() const = 0;
  // As it is given out: nothing is selected, and no letters are smaller than so many units of the painter.
  virtual void PaintOut(QPainter& painter, const QRectF& target, double smallestText) const = 0;
};

// A file that cannot be written is an Error that names it; an older file of that name is then as it was.
namespace PageOutput {

constexpr QMarginsF Margins(10, 10, 10, 10);  // in millimetres, as every printer can keep them
QPageLayout LandscapeA4();

void PaintOn(QPaintDevice& device, const OutputPage& page, const QRectF& target);
// Pictures and drawings say that they are as wide on paper as a sheet is between its margins.
QImage Picture(const OutputPage& page, QSize size);
QByteArray Svg(const OutputPage& page, QSize size);
QByteArray Pdf(const OutputPage& page, const QPageLayout& layout = LandscapeA4());  // one sheet

void WritePdf(const OutputPage& page, const QString& path, const QPageLayout& layout = LandscapeA4());
void WritePng(const OutputPage& page, const QString& path, QSize size = {1920, 1200});
void WriteSvg(const OutputPage& page, const QString& path, QSize size = {1920, 1200});
// In the format that the ending of the name asks for: .pdf, .png or .svg. InputError for any other ending.
void WritePage(const OutputPage& page, const QString& path);

}  // namespace PageOutput
