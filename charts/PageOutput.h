// Writes a page of charts to a picture or document file, completely or not at all.
#pragma once

#include <QSize>
#include <QString>

#include "charts/StatPage.h"

// The frame of a selected graph is left out. A file that cannot be written is an Error that names it; an
// older file of that name is then as it was.
namespace PageOutput {

void WritePdf(const StatPage& page, const QString& path);  // one sheet of A4, landscape
void WritePng(const StatPage& page, const QString& path, QSize size = {1920, 1200});
void WriteSvg(const StatPage& page, const QString& path, QSize size = {1920, 1200});

}  // namespace PageOutput
