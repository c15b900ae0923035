// The program's own vector icons: simple line drawings that are painted anew at every size and scale.
#pragma once

#include <QIcon>
#include <functional>

class QPainter;

enum class Symbol {
  Chart,
  Data,
  Add,
  Edit,
  Delete,
  Tools,
  Database,
  Help,
  Exit,
  Print,
  Printer,
  Page,
  Save,
  ZoomIn,
  ZoomOut,
  Recalculate,
  Utilities,
  Export,
  Copy,
  Close,
  Paste,
  Template,
  Expand,
  Units,
  First,
  Previous,
  Next,
  Last,
  Refresh,
  New,
  Settings,
  About,
  Contents,
  Search,
  Back,
  More
};

QIcon SymbolIcon(Symbol symbol);

// An icon that calls draw with a painter whose coordinates run from 0 to 16 both ways; a disabled icon is
// drawn the same way and then faded.
QIcon VectorIcon(std::function<void(QPainter&)> draw);
