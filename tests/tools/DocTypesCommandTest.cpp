// "kavrel doctypes", run as a user runs it.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "support/TestConfiguration.h"

namespace {

std::string run(const std::string& arguments) {
  std::string output;
  FILE* pipe = popen((std::string(KV_KAVREL_EXE) + " " + arguments + " 2>&1").c_str(), "r");
  if (!pipe) return output;
  char buffer[4096];
  while (size_t n = fread(buffer, 1, sizeof buffer, pipe)) output.append(buffer, n);
  pclose(pipe);
  return output;
}

TEST(DocTypesCommand, TellsWhyEachDocTypeIsOrIsNotAvailable) {
  kv::test::TestConfiguration config;
  config.write("kavrel.xml", R"(<KavrelConfiguration>
      <DocType Name="kv.test" Description="Test sources" PlugIn="KVTest.ProjectPlugIn"/>
      <DocType Name="kv.missing" PlugIn="KVMissing.ProjectPlugIn"/>
      <DocType Name="kv.broken" PlugIn="KVTest.Broken"/>
      <DocType Name="kv.notaplugin" PlugIn="KVTest.NotAPlugIn"/>
      <DocType Name="kv.noclass"/>
    </KavrelConfiguration>)");
  config.write("Templates/Plain/template.xml",
               R"(<Template><DocType Name="kv.test"/><DocType Name="kv.gone"/></Template>)");
  config.write("plugins/notalibrary.so", "text");

  const std::string output = run("doctypes --config " + config.folder());
  for (const std::string& expected : std::vector<std::string>{
           "Configuration folder: " + config.folder() + "/\n",
           config.path("plugins/kvtest.so") + ": loaded\n",
           config.path("plugins/notalibrary.so") + ": not loaded, ",
           "  kv.test - Test sources\n    plug-in:   KVTest.ProjectPlugIn: ok\n    templates: Plain\n",
           "KVMissing.ProjectPlugIn: not installed: no library in plugins/ registers this class\n    templates: none\n",
           "KVTest.Broken: the class is installed but could not be created\n",
           "KVTest.NotAPlugIn: the class is not a project plug-in\n",
           "(none): no plug-in class is named: the doc type is left out\n",
           "Problems in the configuration:\n  " + config.path("Templates/Plain/template.xml") +
               ": the doc type 'kv.gone' is not defined in kavrel.xml\n",
       })
    EXPECT_NE(output.find(expected), std::string::npos) << "missing: " << expected << "\nin:\n" << output;
}

}  // namespace
