// "mox formats", run as a user would run it.
#include <gtest/gtest.h>

#include <string>

#include "ToolRunner.h"

namespace {

size_t Count(const std::string& text, const std::string& what) {
  size_t count = 0;
  for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++count;
  return count;
}

TEST(FormatsCommand, TableListsCodesWithNameAndParent) {
  ToolRun run = RunMox({"formats", "video"});
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  EXPECT_NE(run.out.find("video     \"ai5q\"         \"ai5 \"         AVC-Intra Class 50, 720p25/50\n"),
            std::string::npos);
  // An alias shows the name it stands for; a root has no parent.
  EXPECT_NE(run.out.find("\"AVC1\"         \"avc1\"         (alias) AVC\n"), std::string::npos);
  EXPECT_NE(run.out.find("\"avc1\"         -              AVC\n"), std::string::npos);
  // Codes that are not four printable characters are escaped.
  EXPECT_NE(run.out.find("\"%00%00%00%18\" \"RGB \"         Packed RGB\n"), std::string::npos);
  EXPECT_EQ(run.out.find("\naudio "), std::string::npos);
  // One line per distinct code (a repeated code keeps its first row) plus the heading.
  EXPECT_EQ(Count(run.out, "\n"), 686u + 1u);
}

TEST(FormatsCommand, JsonIsAnArrayOfRows) {
  ToolRun run = RunMox({"formats", "--json", "audio"});
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  ASSERT_GT(run.out.size(), 2u);
  EXPECT_EQ(run.out.front(), '[');
  EXPECT_EQ(run.out.substr(run.out.size() - 2), "]\n");
  EXPECT_EQ(Count(run.out, "{\"kind\": \"audio\""), 188u);
  EXPECT_NE(run.out.find("{\"kind\": \"audio\", \"code\": \"s16l\", \"parent\": \"sowt\", "
                         "\"name\": \"PCM, 16-Bit Little-Endian Signed Integer\", \"alias\": true}"),
            std::string::npos);
  EXPECT_NE(run.out.find("\"code\": \"mp4a\", \"parent\": null, \"name\": \"AAC\", \"alias\": false"),
            std::string::npos);
}

TEST(FormatsCommand, AllVocabulariesByDefault) {
  ToolRun run = RunMox({"formats", "--json"});
  ASSERT_EQ(run.exitStatus, 0);
  EXPECT_EQ(Count(run.out, "\"kind\": "), 686u + 188u + 23u);
  EXPECT_EQ(Count(run.out, "\"kind\": \"subtitle\""), 23u);
}

TEST(FormatsCommand, BadArgumentsAreAUsageError) {
  for (const char* argument : {"pictures", "--yaml"}) {
    ToolRun run = RunMox({"formats", argument});
    EXPECT_EQ(run.exitStatus, 2) << argument;
    EXPECT_TRUE(run.out.empty());
    EXPECT_EQ(run.err.rfind("mox: formats: ", 0), 0u) << run.err;
    EXPECT_EQ(Count(run.err, "\n"), 1u) << run.err;
  }
  ToolRun twice = RunMox({"formats", "video", "audio"});
  EXPECT_EQ(twice.exitStatus, 2);
}

}  // namespace
