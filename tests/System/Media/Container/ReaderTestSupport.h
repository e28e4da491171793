#pragma once
// Media descriptions and reader checks that several container tests share.

#include <gtest/gtest.h>

#include <chrono>
#include <future>

#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Video/VideoProperties.h"
#include "System/Media/Video/VideoSample.h"

namespace ContainerTest {

// A 4x2 picture at 25 frames a second in format: the smallest picture that
// every planar layout of the Y4M writer takes.
inline Corvane::Mox::RObject<Corvane::Mox::CVideoProperties> TinyPicture(unsigned int format) {
  Corvane::Mox::RObject<Corvane::Mox::CVideoProperties> video(new Corvane::Mox::CVideoProperties());
  video->SetFormat(format);
  video->SetWidth(4);
  video->SetHeight(2);
  video->SetTimeScale(25);
  video->SetFrameDuration(1);
  return video;
}

// EndIndex from another thread, as a host stopping a job calls it, returns
// within 10 s even while the reader's index thread waits, and the reader
// hands out no picture after it.
inline void ExpectEndIndexStopsReading(Corvane::Mox::CContainerReader* reader) {
  using namespace std::chrono_literals;
  auto ended = std::async(std::launch::async, [reader] { return reader->EndIndex().Succeeded(); });
  ASSERT_EQ(ended.wait_for(10s), std::future_status::ready);
  EXPECT_TRUE(ended.get());
  Corvane::Mox::RObject<Corvane::Mox::CVideoSample> after;
  EXPECT_TRUE(reader->ReadVideoSample(0, after.Out()).Succeeded());
  EXPECT_FALSE(after);
}

}  // namespace ContainerTest
