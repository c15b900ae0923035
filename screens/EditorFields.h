// What the data editor's controls hold, apart from any window, and the table of its number boxes.
#pragma once

#include <QString>
#include <optional>
#include <span>

#include "data/CData.h"
#include "data/RawDataText.h"
#include "texts/Texts.h"

struct NumberBox;

inline bool IsBlank(const QString& text) { return text.trimmed().isEmpty(); }

struct EditorFields {
  QString description, units;
  QString usl, nominal, lsl, hiFlier, lowFlier;
  QString xUCL, xMean, xLCL, rUCL, rMean, rLCL;
  QString subGroup, maxSamples, rawData;
  bool discardFliers = false;
  bool calculateLimits = true;
  bool useAllSamples = true;
  bool longTermDetection = true;
  int sensitivity = -1;  // the chosen item of the list; -1 for none

  bool operator==(const EditorFields&) const = default;

  // As the editor shows a new data set, and an existing one.
  static EditorFields Blank();
  static EditorFields Of(const CData& data);

  // What a user wants to know of the boxes' numbers before saving; empty where there is nothing to say.
  QString Hint() const;

  // What a save needs first of all and does not find: the control and what to say of it.
  struct Fault {
    QString control, text;
  };
  std::optional<Fault> Unfilled() const;

  // The flier limits as a save takes them; nothing where the boxes do not tell.
  std::optional<RawDataText::FlierLimits> Fliers() const;

  // The control limit that stands in the way of keeping them, as a zero does; null where they can be kept.
  const NumberBox* MissingControlLimit() const;
};

// One number box and the property that it carries.
struct NumberBox {
  enum Group { SpecLimits, Fliers, XBarLimits, RangeLimits };

  const char16_t* control;
  Text<> markedCaption;  // with its mnemonic
  Group group;
  bool isRequired;
  QString EditorFields::*text;
  double (CData::*read)() const;
  void (CData::*store)(double);

  bool IsControlLimit() const { return group == XBarLimits || group == RangeLimits; }
  QString ControlName() const { return QString::fromUtf16(control); }
  QString MarkedCaption() const { return markedCaption(); }
  QString Caption() const { return MarkedCaption().remove(u'&'); }
};

std::span<const NumberBox> NumberBoxes();  // in the page's order
