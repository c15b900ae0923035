// The numbers of the manual's topics, as CallUpHelp takes them.
#pragma once

namespace HelpTopics {

enum Number {
  Contents = 0,
  Welcome = 1,
  FirstSteps = 10,
  WorkedExample = 11,

  Screens = 2,
  MainScreen = 20,
  DataEditor = 21,
  ExpandedData = 22,
  ChartScreen = 23,
  Recalculate = 24,
  Units = 25,
  Configuration = 26,
  About = 27,
  AddMeasurements = 28,
  RestoreDeleted = 29,
  Keys = 201,
  Compare = 202,
  Notes = 203,

  Figures = 3,
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

  LookingAfter = 4,
  Backup = 40,
  AccessLibraries = 41,
  CommandLine = 42,
  Sharing = 43,

  Glossary = 5
};

}  // namespace HelpTopics
