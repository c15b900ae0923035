// Runs a test under a locale that writes a decimal point and under one that writes a decimal comma.
#pragma once

#include <gtest/gtest.h>

#include <QLocale>
#include <clocale>
#include <string>

using namespace Qt::StringLiterals;

class BothLocales : public testing::TestWithParam<QLocale::Language> {
 protected:
  void SetUp() override {
    QLocale::setDefault(QLocale(GetParam()));
    // Where the machine has it, the C library's locale as well.
    if (GetParam() == QLocale::German) std::setlocale(LC_ALL, "de_DE.UTF-8");
  }
  void TearDown() override {
    std::setlocale(LC_ALL, "C");
    QLocale::setDefault(before_);
  }

 private:
  QLocale before_;
};

#define INSTANTIATE_FOR_BOTH_LOCALES(Fixture)                                                           \
  INSTANTIATE_TEST_SUITE_P(Locale, Fixture, testing::Values(QLocale::C, QLocale::German),               \
                           [](const auto& instance) {                                                   \
                             return std::string(instance.param == QLocale::German ? "Comma" : "Point"); \
                           })
