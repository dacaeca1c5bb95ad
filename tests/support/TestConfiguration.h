// A configuration folder in a temporary folder, with the test plug-in library installed in its
// "plugins/", made the configuration of the process for the lifetime of the object.
#pragma once

#include <filesystem>
#include <string>

#include "definitions/Configuration.h"
#include "support/Files.h"
#include "support/ScopedEnvironment.h"
#include "support/TempFolder.h"

namespace kv::test {

class TestConfiguration {
 public:
  TestConfiguration() : mEnvironment("KAVREL_CONFIG_DIR", mFolder.path("config")) {
    std::filesystem::create_directories(mFolder.path("config/plugins"));
    std::filesystem::copy_file(KV_TEST_PLUGIN, mFolder.path("config/plugins/kvtest.so"));
    ConfigurationRoot::instance().Reset();
  }
  ~TestConfiguration() { ConfigurationRoot::instance().Reset(); }
  TestConfiguration(const TestConfiguration&) = delete;
  TestConfiguration& operator=(const TestConfiguration&) = delete;

  // The configuration folder, without a trailing "/".
  std::string folder() const { return mFolder.path("config"); }
  std::string path(const std::string& relative) const { return mFolder.path("config/" + relative); }
  // Writes a file below the configuration folder, creating its folders.
  void write(const std::string& relative, const std::string& content) const { writeFile(path(relative), content); }
  // A folder for output next to the configuration folder.
  std::string scratch(const std::string& relative) const { return mFolder.path(relative); }

 private:
  TempFolder mFolder;
  ScopedEnvironment mEnvironment;
};

}  // namespace kv::test
