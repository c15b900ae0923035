// The notes on the points that a page shows: lettered as in the charts, and in words beneath them.
#pragma once

#include <QString>
#include <utility>
#include <vector>

#include "charts/PointTrace.h"
#include "platform/chart/Paragraphs.h"

// "23/11/2026 14:05 · lot 4711"; empty where neither is known.
QString TakenText(const PointTrace& trace, int point);
// Who wrote it, and when.
QString NotedText(const Trace::Note& note);

struct LetteredNote {
  QString letter;  // A to Z, AA ...
  int point = 0;
  const Trace::Note* note = nullptr;
};

std::vector<LetteredNote> LetterNotes(const PointTrace& trace, PointRange shown);

// For each point with notes its first letter and its last one.
std::vector<PointLetters> LettersAtPoints(const std::vector<LetteredNote>& notes);

// "970 runs, 2 notes"; empty for none of either.
QString CountText(size_t runs, size_t notes);

// What stands beneath the charts: these notes, then, where the last point is shown, those on samples behind
// it, and at the end how much has lost its samples.
Paragraphs NoteTexts(const PointTrace& trace, const std::vector<LetteredNote>& notes, bool isToTheEnd);
