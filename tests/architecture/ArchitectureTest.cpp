// Reads every include of the program's sources: a room uses only what stands below it.
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

// Lowest first: a room uses the rooms before it, but for those that know nothing of each other.
const std::vector<std::string> rooms = {"engine", "platform", "texts",   "data", "library", "charts",
                                        "verify", "core",     "screens", "cli",  "app"};
const std::map<std::string, std::set<std::string>> strangers = {
    {"core", {"verify"}}, {"screens", {"verify"}}, {"cli", {"core", "screens"}}};

// What a part of platform uses besides itself.
const std::map<std::string, std::set<std::string>> platformUses = {
    {"access", {"error"}}, {"ado", {"error"}}, {"language", {"error", "engine"}}, {"system", {"error"}}};

std::string Part(const std::string& path, int number) {
  const fs::path parts = path;
  return std::next(parts.begin(), number)->string();
}

std::ptrdiff_t Floor(const std::string& room) {
  return std::find(rooms.begin(), rooms.end(), room) - rooms.begin();
}

bool HasWindows(const std::string& source) {
  return source.starts_with("screens/") || source.starts_with("app/") || source.starts_with("platform/ui/");
}

// Whether the file `source` may include `used`.
bool MayInclude(const std::string& source, const std::string& used) {
  const std::string room = Part(source, 0);
  if (used.starts_with("Q")) {
    const bool isWidget = fs::exists(fs::path(KESTREL_QT_WIDGETS) / used);
    return room != "engine" && (!isWidget || HasWindows(source));
  }
  const std::string usedRoom = Part(used, 0);
  if (Floor(usedRoom) == std::ssize(rooms)) return true;  // not one of ours
  if (room == "platform") {
    const auto uses = platformUses.find(Part(source, 1));
    const std::string part = usedRoom == "platform" ? Part(used, 1) : usedRoom;
    return part == Part(source, 1) || (uses != platformUses.end() && uses->second.contains(part));
  }
  const auto unknown = strangers.find(room);
  if (unknown != strangers.end() && unknown->second.contains(usedRoom)) return false;
  return Floor(usedRoom) <= Floor(room);
}

std::vector<std::string> Sources() {
  std::vector<std::string> sources;
  const fs::path top = KESTREL_SOURCE;
  for (const std::string& room : rooms) {
    if (!fs::exists(top / room)) continue;
    for (const auto& entry : fs::recursive_directory_iterator(top / room)) {
      const std::string suffix = entry.path().extension().string();
      if (suffix == ".h" || suffix == ".cpp") sources.push_back(fs::relative(entry.path(), top).string());
    }
  }
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
    for (const std::string& line : Lines(source)) {
      std::smatch match;
      if (!std::regex_match(line, match, include)) continue;
      EXPECT_TRUE(MayInclude(source, match[1])) << source << " uses " << match[1];
    }
  }
}

// What the test above would let pass if its rules were wrong.
TEST(Architecture, PlantedIncludesAreRefused) {
  const std::vector<std::pair<std::string, std::string>> planted = {
      {"engine/Engine.cpp", "QString"},
      {"engine/Engine.cpp", "platform/error/Error.h"},
      {"platform/ado/Connection.cpp", "engine/Engine.h"},
      {"platform/ado/Connection.cpp", "platform/registry/Registry.h"},
      {"platform/ado/Connection.cpp", "texts/Texts.h"},
      {"platform/chart/ChartPage.cpp", "QWidget"},
      {"texts/Texts.cpp", "data/CData.h"},
      {"data/CData.cpp", "library/Library.h"},
      {"library/Library.cpp", "core/Globals.h"},
      {"charts/StatPage.cpp", "QLabel"},
      {"charts/StatPage.cpp", "core/Messages.h"},
      {"verify/Verification.cpp", "core/Messages.h"},
      {"core/Globals.cpp", "screens/frmMain.h"},
      {"core/Globals.cpp", "QDialog"},
      {"core/Globals.cpp", "verify/Verification.h"},
      {"screens/frmMain.cpp", "cli/Console.h"},
      {"cli/Console.cpp", "core/Messages.h"},
      {"cli/Console.cpp", "screens/frmMain.h"},
      {"cli/Console.cpp", "QApplication"},
      {"screens/frmMain.cpp", "app/Desktop.h"}};
  for (const auto& [source, used] : planted) EXPECT_FALSE(MayInclude(source, used)) << source << " " << used;
  EXPECT_TRUE(MayInclude("screens/frmMain.cpp", "QWidget"));
  EXPECT_TRUE(MayInclude("platform/language/Conversions.cpp", "engine/Parse.h"));
  EXPECT_TRUE(MayInclude("cli/Console.cpp", "verify/Verification.h"));
}

TEST(Architecture, FilesStayReadable) {
  for (const std::string& source : Sources()) EXPECT_LE(Lines(source).size(), 400U) << source;
}

}  // namespace
