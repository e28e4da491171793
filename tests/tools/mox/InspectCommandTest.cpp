// mox inspect: one component's family, availability, documented properties
// and formats; codes in several families; unknown codes.
#include <gtest/gtest.h>

#include <string>

#include "ToolRunner.h"

TEST(MoxInspect, AFilterShowsItsFamilyAndTheFilterBaseProperties) {
  // A short code is padded with spaces: "vfc" is "vfc ".
  const ToolRun run = RunMox({"inspect", "vfc"});
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  EXPECT_EQ(run.out.rfind("'vfc ' Video Format Converter\n  family:      Video Converters\n", 0), 0u) << run.out;
  EXPECT_NE(run.out.find("  available:   yes\n"), std::string::npos) << run.out;
  // Its own properties come first, the filter base's after them.
  EXPECT_NE(run.out.find("    BitDepth (type:   Int32), default (none)\n"
                         "      The bit dpeth to be reflected on the output properties.\n"),
            std::string::npos)
      << run.out;
  // Numbered codes are shown in hexadecimal.
  EXPECT_NE(run.out.find("  input formats:  '0x00000018', "), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("    OutputFormat (Four), default (none)\n"
                         "      Four character code that specifies the output video stream format\n"),
            std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("UsingHardwareAcceleration (Bool), default (none), read only\n"), std::string::npos)
      << run.out;
}

TEST(MoxInspect, ACodeInSeveralFamiliesIsListedForEach) {
  const ToolRun run = RunMox({"inspect", "h264", "--json"});
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  EXPECT_NE(run.out.find("{\"family\": \"Video Compressors\", \"code\": \"h264\", \"name\": \"H.264 Compressor\""),
            std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("{\"family\": \"Container Readers\", \"code\": \"h264\""), std::string::npos) << run.out;
  // The family option narrows the answer to one.
  const ToolRun one = RunMox({"inspect", "h264", "--family", "Video Compressors"});
  ASSERT_EQ(one.exitStatus, 0) << one.err;
  EXPECT_EQ(one.out.find("Container Readers"), std::string::npos) << one.out;
  EXPECT_NE(one.out.find("family:      Video Compressors"), std::string::npos) << one.out;
  const ToolRun byClass = RunMox({"inspect", "h264", "--family", "CContainerReader"});
  EXPECT_NE(byClass.out.find("family:      Container Readers"), std::string::npos) << byClass.out;
}

TEST(MoxInspect, AnUnknownCodeFailsWithOneLine) {
  const ToolRun run = RunMox({"inspect", "zzzz"});
  EXPECT_EQ(run.exitStatus, 1);
  EXPECT_EQ(run.err, "mox: inspect: no component has the code 'zzzz'\n");
  EXPECT_TRUE(run.out.empty());
  EXPECT_EQ(RunMox({"inspect"}).exitStatus, 2);
  EXPECT_EQ(RunMox({"inspect", "vfc ", "--bogus"}).exitStatus, 2);
}
