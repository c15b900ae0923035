// A page of charts as a picture or document: its bytes, or a file that is written completely or not at all.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QPageLayout>
#include <QSize>
#include <QString>

#include "charts/StatPage.h"

// The frame of a selected graph is left out. A file that cannot be written is an Error that names it; an
// older file of that name is then as it was.
namespace PageOutput {

constexpr QMarginsF Margins(10, 10, 10, 10);  // in millimetres, as every printer can keep them
QPageLayout LandscapeA4();

void PaintOn(QPaintDevice& device, StatPage page, const QRectF& target);
// Pictures and drawings say that they are as wide on paper as a sheet is between its margins.
QImage Picture(const StatPage& page, QSize size);
QByteArray Svg(const StatPage& page, QSize size);
QByteArray Pdf(const StatPage& page, const QPageLayout& layout = LandscapeA4());  // one sheet

void WritePdf(const StatPage& page, const QString& path, const QPageLayout& layout = LandscapeA4());
void WritePng(const StatPage& page, const QString& path, QSize size = {1920, 1200});
void WriteSvg(const StatPage& page, const QString& path, QSize size = {1920, 1200});
// In the format that the ending of the name asks for: .pdf, .png or .svg. InputError for any other ending.
void WritePage(const StatPage& page, const QString& path);

}  // namespace PageOutput
