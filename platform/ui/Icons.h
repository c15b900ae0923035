// The program's pictures: small vector drawings, rendered anew for every size and scale.
#pragma once

#include <QIcon>

// One for each file in icons/.
enum class Symbol {
  About,
  Add,
  Back,
  Chart,
  Close,
  Contents,
  Copy,
  Data,
  Database,
  Delete,
  Edit,
  Exit,
  Export,
  First,
  Help,
  Last,
  More,
  New,
  Next,
  Page,
  Paste,
  Previous,
  Print,
  Printer,
  Recalculate,
  Refresh,
  Save,
  Search,
  Settings,
  Template,
  Tools,
  Utilities,
  ZoomIn,
  ZoomOut,
  // The states of a process, the lamp, the signs of message boxes: these differ in shape as well as in
  // colour, so that nobody needs colour to read them.
  StateNotEvaluated,
  StateChaos,
  StateBrinkOfChaos,
  StateThreshold,
  StateIdeal,
  LampOff,
  LampGo,
  LampStop,
  SignCritical,
  SignQuestion,
  SignExclamation,
  SignInformation
};

// The symbol in the desktop's colours; faded where it is disabled.
QIcon SymbolIcon(Symbol symbol);
