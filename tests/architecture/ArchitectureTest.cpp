// Reads every include of the program's sources: a room may use only what stands below it.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

// The rooms, where a room's parts stand apart from each other, and what each may use besides itself.
const std::map<std::string, std::set<std::string>> allowedUses = [] {
  std::map<std::string, std::set<std::string>> table = {
      {"engine", {}},
      {"platform", {}},
      {"platform(language)", {"engine", "platform"}},
      {"stats(numbers)", {"engine", "platform", "platform(language)"}},
      {"core(texts)", {"platform", "platform(language)"}},
      {"core(data)", {"stats(numbers)", "engine", "platform", "platform(language)"}},
  };
  std::set<std::string> below = {"core(data)", "core(texts)", "stats(numbers)",
                                 "engine",     "platform",    "platform(language)"};
  for (const char* room : {"stats(bridge)", "core", "charts(page)", "charts(screen)", "screens", "app"}) {
    table[room] = below;
    below.insert(room);
  }
  table["screens"].erase("charts(screen)");
  return table;
}();

std::string RoomOf(const std::string& path) {
  static const std::vector<std::pair<std::regex, std::string>> rooms = {
      {std::regex("stats/(CreateStatistics|DetectionRules)\\..*"), "stats(bridge)"},
      {std::regex("stats/.*"), "stats(numbers)"},
      {std::regex("platform/language/.*"), "platform(language)"},
      {std::regex("core/(Texts|Messages|Trap)\\..*"), "core(texts)"},
      {std::regex("core/CData\\..*"), "core(data)"},
      {std::regex("charts/(StatGraphics|PageView|PagePrinting).*"), "charts(screen)"},
      {std::regex("charts/.*"), "charts(page)"}};
  for (const auto& [pattern, room] : rooms) {
    if (std::regex_match(path, pattern)) return room;
  }
  return path.substr(0, path.find('/'));
}

std::vector<std::string> Sources() {
  std::vector<std::string> sources;
  const fs::path top = KESTREL_SOURCE;
  for (const char* room : {"app", "screens", "charts", "core", "stats", "engine", "platform"}) {
    for (const auto& entry : fs::recursive_directory_iterator(top / room)) {
      const std::string suffix = entry.path().extension().string();
      if (suffix == ".h" || suffix == ".cpp") sources.push_back(fs::relative(entry.path(), top).string());
    }
  }
  std::sort(sources.begin(), sources.end());
  return sources;
}

std::vector<std::string> Lines(const std::string& path) {
  std::ifstream file(fs::path(KESTREL_SOURCE) / path);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

TEST(Architecture, IncludesPointDown) {
  const std::vector<std::string> sources = Sources();
  ASSERT_GT(sources.size(), 100U);
  const std::regex include("#include [<\"]([^>\"]+)[>\"].*");
  for (const std::string& source : sources) {
    const std::string room = RoomOf(source);
    ASSERT_TRUE(allowedUses.contains(room)) << source;
    for (const std::string& line : Lines(source)) {
      std::smatch match;
      if (!std::regex_match(line, match, include)) continue;
      const std::string used = match[1];
      if (room == "engine") {
        EXPECT_FALSE(used.starts_with("Q")) << source << " uses Qt: " << line;
      }
      const std::string usedRoom = RoomOf(used);
      if (usedRoom == room || !allowedUses.contains(usedRoom)) continue;
      EXPECT_TRUE(allowedUses.at(room).contains(usedRoom)) << source << " (" << room << ") uses " << used;
    }
  }
}

// The charts of the command line and of the screen are one: what draws them knows no windows.
TEST(Architecture, OnlyScreensKnowWidgets) {
  const std::regex widgets("#include <Q(Widget|Application|Dialog|MainWindow|MessageBox|Label|PushButton)>");
  for (const std::string& source : Sources()) {
    const std::string room = RoomOf(source);
    if (room == "screens" || room == "charts(screen)" || room == "app" || source.starts_with("platform/ui/"))
      continue;
    for (const std::string& line : Lines(source))
      EXPECT_FALSE(std::regex_match(line, widgets)) << source << ": " << line;
  }
}

TEST(Architecture, FilesStayReadable) {
  for (const std::string& source : Sources()) EXPECT_LE(Lines(source).size(), 420U) << source;
}

}  // namespace
