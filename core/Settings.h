// The settings that the screens keep for themselves, beside those of the configuration: one table.
#pragma once

#include <QString>

#include "platform/registry/Registry.h"

namespace Settings {

struct Setting {
  QStringView key;
  Registry::Type type;
  QStringView standard;  // where nothing is stored
};

// 1: the chart screen draws on the fitted scale, 0: on the standard scale
inline constexpr Setting chartFittedScale{u"ChartFittedScale", Registry::Dword, u"0"};

// what stands along the axis of the points; 0: their numbers, 1: times, 2: lots
inline constexpr Setting chartAxis{u"ChartAxis", Registry::Dword, u"0"};

// the libraries that were opened last, one on a line, the last one first
inline constexpr Setting recentLibraries{u"RecentLibraries", Registry::String, u""};
// the main window's place and size as Qt writes them, in Base64; the widths of its list's columns
inline constexpr Setting mainWindowPlace{u"MainWindowPlace", Registry::String, u""};
inline constexpr Setting mainListColumns{u"MainListColumns", Registry::String, u""};

QString Read(const Setting& setting);
void Write(const Setting& setting, const QString& value);

// Writes a text that nobody has asked to have kept: nothing is said where it cannot be.
void Keep(const Setting& setting, const QString& value);

inline bool IsOn(const Setting& setting) { return Read(setting) != u'0'; }
inline void SetOn(const Setting& setting, bool on) { Write(setting, on ? QString(u'1') : QString(u'0')); }

}  // namespace Settings
