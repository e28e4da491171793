#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "ToolRunner.h"

TEST(MoxCatalog, TableListsEveryRegistrationWithAvailability) {
  const ToolRun run = RunMox({"catalog"});
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  EXPECT_TRUE(run.err.empty());
  std::istringstream lines(run.out);
  std::string line;
  int rows = 0;
  bool sawResize = false;
  std::getline(lines, line);  // header
  EXPECT_NE(line.find("FAMILY"), std::string::npos);
  while (std::getline(lines, line)) {
    ++rows;
    if (line.find("'vrc '") != std::string::npos) {
      sawResize = true;
      EXPECT_EQ(line.rfind("Video Converters", 0), 0u) << line;
      EXPECT_NE(line.find("Resize Converter"), std::string::npos);
      EXPECT_EQ(line.substr(line.size() - 2), "no");
    }
  }
  EXPECT_EQ(rows, 187);
  EXPECT_TRUE(sawResize);
}

TEST(MoxCatalog, JsonIsOneObjectPerRegistration) {
  const ToolRun run = RunMox({"catalog", "--json"});
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  ASSERT_EQ(run.out.front(), '[');
  EXPECT_NE(run.out.find(R"({"family": "Container Readers", "code": "wav ", "name": "Windows Audio Format", )"
                         R"("available": true})"),
            std::string::npos);
  size_t objects = 0;
  for (size_t at = run.out.find("{\"family\""); at != std::string::npos; at = run.out.find("{\"family\"", at + 1))
    ++objects;
  EXPECT_EQ(objects, 187u);
}

TEST(MoxCatalog, UnknownArgumentIsAUsageError) {
  const ToolRun run = RunMox({"catalog", "--xml"});
  EXPECT_EQ(run.exitStatus, 2);
  EXPECT_TRUE(run.out.empty());
  EXPECT_NE(run.err.find("unknown option '--xml'"), std::string::npos);
  EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1);
}
