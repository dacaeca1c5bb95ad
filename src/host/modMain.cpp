#define PCRE2_CODE_UNIT_WIDTH 8
#include "host/modMain.h"

#include <pcre2.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>

#include "host/FailureHandler.h"
#include "host/MessageBox.h"
#include "host/Settings.h"
#include "host/TreeView.h"
#include "kavrel/ClassRegistry.h"
#include "kavrel/Failure.h"
#include "kavrel/FileSystem.h"

namespace kv {

namespace {

std::string fullKey(std::string_view extraPath) {
  std::string key = RegKeyPath();
  if (!extraPath.empty()) key += "\\" + std::string(extraPath);
  return key;
}

std::string valueOr(const std::optional<std::string>& value, std::string_view defaultValue) {
  return value && !value->empty() ? *value : std::string(defaultValue);
}

std::string hex2(unsigned value) {
  char buf[8];
  std::snprintf(buf, sizeof buf, "%02X", value);
  return buf;
}

// The process-wide cached answer of one probe.
struct Probe {
  std::string_view className;
  std::optional<bool> answer;

  bool get() {
    if (!answer) {
      bool found = false;
      ignoreFailure([&] { found = ClassRegistry::instance().isRegistered(className); });
      answer = found;
    }
    return *answer;
  }
};

Probe gLiteProbe{"LDLiteObjects.Enums", {}};
Probe g2Probe{"LDObjects2.Enums", {}};
Probe g3Probe{"LDObjects3.Enums", {}};

}  // namespace

std::string RegKeyPath() {
  return "Software\\Velmora\\Kavrel5";
}

std::string GetAppValue(std::string_view ValueName, std::string_view DefaultValue, std::string_view ExtraPath) {
  return guard<std::string>("modMain",
                            [&] { return valueOr(userSettings().value(fullKey(ExtraPath), ValueName), DefaultValue); });
}

void SetAppValue(std::string_view ValueName, std::string_view Value, std::string_view ExtraPath) {
  guard("modMain", [&] { userSettings().setValue(fullKey(ExtraPath), ValueName, Value); });
}

std::string GetMachineValue(std::string_view ValueName, std::string_view DefaultValue, std::string_view KeyPath) {
  return guard<std::string>("modMain", [&] {
    return valueOr(machineSettings().value(KeyPath.empty() ? RegKeyPath() : std::string(KeyPath), ValueName),
                   DefaultValue);
  });
}

std::string ReplaceSystemPath(std::string_view FileName) {
  return text::replaceAll(FileName, "%SYS32%", SystemLibraryFolder);
}

std::string ElapsedTime(DateTime t1, DateTime t2) {
  using std::chrono::floor;
  using std::chrono::seconds;
  const long long total = (floor<seconds>(t2) - floor<seconds>(t1)).count();
  if (total < 60) return std::to_string(total) + " seconds";
  std::string result = std::to_string(total / 60) + " minutes";
  if (total % 60 != 0) result += " " + std::to_string(total % 60) + " seconds";
  return result;
}

std::string ColorToWebHex(std::int64_t Color) {
  const auto c = static_cast<std::uint64_t>(Color);
  const unsigned red = c & 0xFF, green = (c >> 8) & 0xFF, blue = (c >> 16) & 0xFF;
  const std::string greenText = green < 16 ? "0" + std::to_string(green) : hex2(green);
  return "#" + hex2(red) + greenText + hex2(blue);
}

bool DelTree32(std::string_view sPathToDel) {
  return guard<bool>("modMain", [&] {
    std::error_code ec;
    std::filesystem::remove_all(std::filesystem::path(sPathToDel), ec);
    if (!ec) return true;
    std::string description = ec.message();
    showHostMessage("Could not delete one of more files in the directory [" + std::string(sPathToDel) +
                        "]. The error description is [" + description + "]\r\n\r\n" +
                        "Please check that the files in this directory are not read-only and that you have "
                        "permission to delete them.",
                    mb::OKOnly + mb::Exclamation, "Could not delete");
    return false;
  });
}

std::string ToRelativeFileName(FileSystem& FileName, FileSystem& RelativeTo) {
  std::string result;
  guard("modMain", [&] {
    FileName.MakeRelativeTo(&RelativeTo);
    result = FileName.RelativeName();
    const bool below = text::startsWithIgnoreCase(FileName.Folder(), RelativeTo.Folder());
    // One folder up is still kept relative (a sibling folder); further up, the full path.
    const bool oneDirectoryAway = result.starts_with("../") && !result.starts_with("../../");
    if (!below && !oneDirectoryAway) result = FileName.FileName();
  });
  ignoreFailure([&] { FileName.MakeRelativeTo(nullptr); });
  return result;
}

std::string FromRelativeFileNAme(FileSystem& FileName, FileSystem& RelativeTo) {
  std::string result;
  guard("modMain", [&] {
    FileName.MakeRelativeTo(&RelativeTo);
    result = FileName.FileName();
  });
  ignoreFailure([&] { FileName.MakeRelativeTo(nullptr); });
  return result;
}

std::string FromRelativeFileNAme(std::string_view FileName, FileSystem& RelativeTo) {
  return guard<std::string>("modMain", [&] {
    FileSystem file;
    file.MakeRelativeTo(&RelativeTo);
    file.FileName(FileName);
    return file.FileName();
  });
}

std::string GetTreePath(const TreeView& Tree) {
  return guard<std::string>("modMain", [&] {
    std::string path;
    for (auto node = Tree.SelectedItem(); node; node = node->Parent())
      path = path.empty() ? node->Key() : node->Key() + "|" + path;
    return path;
  });
}

void SetTreePath(TreeView& Tree, std::string_view Path) {
  guard("modMain", [&] {
    if (Path.empty()) return;
    std::shared_ptr<TreeNode> last;
    for (const std::string& key : text::split(Path, "|")) {
      std::shared_ptr<TreeNode> node;
      ignoreFailure([&] { node = Tree.Node(key); });
      if (!node) break;
      node->Expanded(true);
      last = std::move(node);
    }
    if (last) last->Selected(true);
  });
}

bool IsXPSP2() {
  return false;
}

bool AreRegularExpressionsAvailable() {
  return true;
}

bool RegExpTest(std::string_view Subject, std::string_view Pattern, bool IgnoreCase) {
  int error = 0;
  PCRE2_SIZE errorOffset = 0;
  std::unique_ptr<pcre2_code, decltype(&pcre2_code_free)> code(
      pcre2_compile(reinterpret_cast<PCRE2_SPTR>(Pattern.data()), Pattern.size(),
                    PCRE2_UTF | (IgnoreCase ? PCRE2_CASELESS : 0u), &error, &errorOffset, nullptr),
      &pcre2_code_free);
  if (!code) throw Failure(err::InvalidProcedureCall, "Invalid procedure call or argument: bad regular expression");
  std::unique_ptr<pcre2_match_data, decltype(&pcre2_match_data_free)> match(
      pcre2_match_data_create_from_pattern(code.get(), nullptr), &pcre2_match_data_free);
  const int rc =
      pcre2_match(code.get(), reinterpret_cast<PCRE2_SPTR>(Subject.data()), Subject.size(), 0, 0, match.get(), nullptr);
  return rc >= 0;
}

bool IsValidRegularExpression(std::string_view SearchString, std::string_view ReplaceString) {
  int error = 0;
  PCRE2_SIZE errorOffset = 0;
  std::unique_ptr<pcre2_code, decltype(&pcre2_code_free)> code(
      pcre2_compile(reinterpret_cast<PCRE2_SPTR>(SearchString.data()), SearchString.size(),
                    PCRE2_UTF | PCRE2_CASELESS | PCRE2_MULTILINE, &error, &errorOffset, nullptr),
      &pcre2_code_free);
  if (!code) return false;
  std::unique_ptr<pcre2_match_data, decltype(&pcre2_match_data_free)> match(
      pcre2_match_data_create_from_pattern(code.get(), nullptr), &pcre2_match_data_free);
  if (!match) return false;
  static constexpr std::string_view subject = "Test String";
  const auto* subjectText = reinterpret_cast<PCRE2_SPTR>(subject.data());
  const int rc = pcre2_match(code.get(), subjectText, subject.size(), 0, 0, match.get(), nullptr);
  if (rc < 0 && rc != PCRE2_ERROR_NOMATCH) return false;
  if (ReplaceString.empty()) return true;
  std::string output(256, '\0');
  for (;;) {
    PCRE2_SIZE length = output.size();
    const int n = pcre2_substitute(code.get(), subjectText, subject.size(), 0,
                                   PCRE2_SUBSTITUTE_GLOBAL | PCRE2_SUBSTITUTE_OVERFLOW_LENGTH, match.get(), nullptr,
                                   reinterpret_cast<PCRE2_SPTR>(ReplaceString.data()), ReplaceString.size(),
                                   reinterpret_cast<PCRE2_UCHAR*>(output.data()), &length);
    if (n != PCRE2_ERROR_NOMEMORY) return n >= 0;
    output.resize(length);  // the length needed, then try again
  }
}

bool IsLumideskLiteInstalled() {
  return gLiteProbe.get();
}
bool IsLumidesk2Installed() {
  return g2Probe.get();
}
bool IsLumidesk3Installed() {
  return g3Probe.get();
}
bool IsLumideskInstalled() {
  return IsLumideskLiteInstalled() || IsLumidesk2Installed() || IsLumidesk3Installed();
}

void ResetLumideskProbes() {
  gLiteProbe.answer.reset();
  g2Probe.answer.reset();
  g3Probe.answer.reset();
}

ObjectPtr GetLDProject(std::string_view FileName) {
  return guard<ObjectPtr>("modMain", [&]() -> ObjectPtr {
    for (std::string_view className : {"LDObjects3.LDProject", "LDObjects2.LDProject", "LDLiteObjects.LDProject"}) {
      if (ObjectPtr project = ClassRegistry::instance().tryCreate(className)) {
        project->call("LoadFromFile", {std::string(FileName)});
        return project;
      }
    }
    return nullptr;
  });
}

bool IsVBNETExtension(std::string_view Text) {
  if (Text.starts_with('.')) Text.remove_prefix(1);
  return text::equalsIgnoreCase(Text, "vb") || text::equalsIgnoreCase(Text, "vbproj");
}

std::string RemoveGenericSuffix(std::string_view Name) {
  return std::string(Name.substr(0, Name.find('`')));
}

bool InIDE() {
  return false;
}

void LogMessage(std::string_view) {}

}  // namespace kv
