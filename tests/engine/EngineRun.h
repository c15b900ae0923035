// Runs the engine the short way that tests want.
#pragma once

#include <gtest/gtest.h>

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
