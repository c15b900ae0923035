// Runs the engine the short way that tests want.
#pragma once

#include <gtest/gtest.h>

#include <charconv>
#include <string>
#include <vector>

#include "engine/Engine.h"

inline engine::Results RunEngine(const std::string& text, engine::Inputs inputs = {}) {
  engine::Engine engine;
  engine::Results results;
  inputs.delimitedInputString = text;
  EXPECT_TRUE(engine.Run(inputs, results)) << engine.LastError();
  return results;
}

inline std::string EngineError(const std::string& text, engine::Inputs inputs = {}) {
  engine::Engine engine;
  engine::Results results;
  inputs.delimitedInputString = text;
  EXPECT_FALSE(engine.Run(inputs, results));
  return engine.LastError();
}

inline std::string Shortest(double value) {
  char buffer[40];
  return std::string(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

template <class Values>
std::string Join(const Values& values) {
  std::string text;
  for (const auto& value : values) text += (text.empty() ? "" : ",") + Shortest(static_cast<double>(value));
  return text;
}

inline std::vector<double> Split(const std::string& text) {
  std::vector<double> values;
  const char* p = text.data();
  const char* const end = p + text.size();
  while (p < end) {
    double value = 0;
    p = std::from_chars(p, end, value).ptr + 1;
    values.push_back(value);
  }
  return values;
}
