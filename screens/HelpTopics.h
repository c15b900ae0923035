// The numbers of the manual's topics, as CallUpHelp takes them.
#pragma once

namespace HelpTopics {

enum Number {
  Contents = 0,
  // Getting started
  FirstSteps = 10,
  WorkedExample = 11,
  ReadingTheCharts = 12,
  // The screens
  MainScreen = 20,
  DataEditor = 21,
  ExpandedData = 22,
  ChartScreen = 23,
  Recalculate = 24,
  Units = 25,
  Configuration = 26,
  About = 27,
  // What the figures mean
  XBarChart = 30,
  RChart = 31,
  Capability = 32,
  RuleOne = 33,
  RuleTwo = 34,
  RuleThree = 35,
  RuleFour = 36,
  ProcessStates = 37,
  WhenToRecalculate = 38,
  ChanceMarks = 39,
  // Looking after the data
  Backup = 50,
  CommandLine = 51,
  AccessLibraries = 52,
  Glossary = 60
};

}  // namespace HelpTopics
