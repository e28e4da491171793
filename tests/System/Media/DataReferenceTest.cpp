// Data references: their tags, the factory of serialised tags, locking,
// interlaced pictures, memory contexts and their pools.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

#include "System/ByteArray.h"
#include "System/FourString.h"
#include "System/IO/MemoryStream.h"
#include "System/LeakCheckedTest.h"
#include "System/Media/LockedDataReference.h"
#include "System/Media/MemoryContext.h"
#include "System/Media/MultipleDataReference.h"
#include "System/Media/PixelDataReference.h"
#include "System/Media/StorageDataReference.h"
#include "System/Media/Video/VideoProperties.h"

using namespace Corvane::Mox;

namespace {

class DataReferenceTest : public LeakCheckedTest {};

TEST_F(DataReferenceTest, ClassesAnswerTheTagsOfTheirRow) {
  RObject<CBufferDataReference> buffer(new CBufferDataReference(8));
  for (const char* tag : {"byte", "1d[]", "dram"}) EXPECT_TRUE(buffer->IsType(FourString::ToFour(tag))) << tag;
  EXPECT_FALSE(buffer->IsType(FourCC("disk")));
  RObject<CStreamDataReference> stream(new CStreamDataReference(nullptr, 0, 0));
  EXPECT_TRUE(stream->IsType(FourCC("disk")));
  EXPECT_TRUE(stream->IsType(FourCC("strm")));
  EXPECT_FALSE(stream->IsType(FourCC("file")));
  EXPECT_FALSE(stream->IsStreamType(FourCC("strm")));
  RObject<CContainerDataReference> container(new CContainerDataReference());
  EXPECT_TRUE(container->IsType(FourCC("read")));
  EXPECT_FALSE(container->IsType(FourCC("disk")));
  RObject<CPixelBufferDataReference> pixels(new CPixelBufferDataReference(nullptr, 0, Area<int>(4, 4)));
  for (const char* tag : {"dram", "fram", "pixl"}) EXPECT_TRUE(pixels->IsType(FourString::ToFour(tag))) << tag;
  EXPECT_TRUE(pixels->GetArea().IsEmpty());  // no buffer, no area
}

TEST_F(DataReferenceTest, FactoryMakesTheSerialisableKinds) {
  struct {
    const char* tag;
    const char* answers;
  } cases[] = {{"byte", "byte"}, {"disk", "disk"}, {"read", "read"}, {"many", "many"}, {".mxf", "read"}, {".mp4", ".mp4"}};
  for (const auto& c : cases) {
    RObject<CDataReference> reference(CDataReference::New(FourString::ToFour(c.tag)));
    ASSERT_TRUE(reference) << c.tag;
    EXPECT_TRUE(reference->IsType(FourString::ToFour(c.answers))) << c.tag;
  }
  EXPECT_EQ(CDataReference::New(FourCC("strm")), nullptr);
  EXPECT_EQ(CDataReference::New(0), nullptr);
}

TEST_F(DataReferenceTest, BufferLengthStaysWithinTheBuffer) {
  RObject<CBufferDataReference> buffer(new CBufferDataReference(16));
  EXPECT_EQ(buffer->GetLength(), 16);
  EXPECT_TRUE(buffer->SetLength(4).Succeeded());
  EXPECT_EQ(buffer->GetSize(), 8);
  EXPECT_EQ(buffer->SetLength(17).GetType(), ResultArgumentOutOfRange().GetType());
  EXPECT_EQ(buffer->SetLength(-1).GetType(), ResultArgumentOutOfRange().GetType());
  EXPECT_EQ(buffer->GetLength(), 4);
  RObject<CStorageDataReference> disk(new CStorageDataReference(1, 2));
  EXPECT_EQ(disk->SetLength(1).GetType(), ResultNotSupported().GetType());
  EXPECT_EQ(disk->GetData(), nullptr);
  EXPECT_EQ(disk->GetEstimatedLength(nullptr), 2);
}

TEST_F(DataReferenceTest, LockedReferenceUnlocksOnRelease) {
  RObject<CBufferDataReference> buffer(new CBufferDataReference(4));
  {
    RObject<CExclusiveDataReference> writer(new CExclusiveDataReference(buffer.Get()));
    EXPECT_EQ(buffer->GetReferences(), 2);
  }
  EXPECT_EQ(buffer->GetReferences(), 1);
  // The exclusive lock was left: a shared one can be taken now.
  RObject<CSharedDataReference> reader(new CSharedDataReference(buffer.Get()));
  EXPECT_EQ(reader->GetLength(), 4);
  RObject<CLockedDataReference> empty(new CLockedDataReference(nullptr, 0));
  EXPECT_EQ(empty->SetLength(1).GetType(), ResultNullPointer().GetType());
}

TEST_F(DataReferenceTest, StreamReferenceReadsItsBytes) {
  RObject<CMemoryStream> stream(new CMemoryStream());
  int written = 0;
  stream->Write(reinterpret_cast<const unsigned char*>("0123456789"), 10, &written);
  RObject<CStreamDataReference> reference(new CStreamDataReference(stream.Get(), 3, 4));
  RObject<CBufferDataReference> data;
  ASSERT_TRUE(reference->ReadData(data.Out()).Succeeded());
  EXPECT_EQ(data->GetLength(), 4);
  EXPECT_EQ(std::memcmp(data->GetData(), "3456", 4), 0);
  RObject<CStreamDataReference> beyond(new CStreamDataReference(stream.Get(), 8, 4));
  EXPECT_TRUE(beyond->ReadData(data.Out()).Failed());
  EXPECT_EQ(data.Get(), nullptr);
}

TEST_F(DataReferenceTest, InterlacedBufferInterleavesItsFields) {
  // Two fields of two lines of 2 bytes: first field "aabb", second "ccdd".
  RObject<CByteArray> fields(new CByteArray(reinterpret_cast<const unsigned char*>("aabbccdd"), 8));
  RObject<CInterlacedPixelBufferDataReference> upper(
      new CInterlacedPixelBufferDataReference(fields.Get(), 2, Area<int>(2, 4), 2));
  ASSERT_TRUE(upper->Lock(0).Succeeded());
  EXPECT_EQ(std::memcmp(upper->GetData(), "aaccbbdd", 8), 0);
  upper->Unlock();
  RObject<CInterlacedPixelBufferDataReference> lower(
      new CInterlacedPixelBufferDataReference(fields.Get(), 2, Area<int>(2, 4), 3));
  ASSERT_TRUE(lower->Lock(0).Succeeded());
  EXPECT_EQ(std::memcmp(lower->GetData(), "ccaaddbb", 8), 0);
  lower->Unlock();
  RObject<CInterlacedPixelBufferDataReference> unknown(
      new CInterlacedPixelBufferDataReference(fields.Get(), 2, Area<int>(2, 4), 1));
  EXPECT_EQ(unknown->Lock(0).GetType(), ResultNotSupported().GetType());
  RObject<CInterlacedPixelBufferDataReference> none(
      new CInterlacedPixelBufferDataReference(nullptr, 2, Area<int>(2, 4), 2));
  EXPECT_EQ(none->Lock(0).GetType(), ResultNullPointer().GetType());
}

TEST_F(DataReferenceTest, SamplePlanesFollowThePlaneLayout) {
  RObject<CByteArray> bytes(new CByteArray(4 * 2 + 2 * 1 * 2, 1));
  RObject<CPixelBufferDataReference> picture(new CPixelBufferDataReference(bytes.Get(), 4, Area<int>(4, 2)));
  SamplePlanes planes;
  ASSERT_TRUE(picture->GetSamplePlanes(FourCC("I420"), false, planes).Succeeded());
  EXPECT_EQ(planes.count, 3);
  EXPECT_EQ(planes.data[1] - planes.data[0], 8);
  EXPECT_EQ(planes.data[2] - planes.data[1], 2);
  EXPECT_EQ(planes.stride[1], 2);
  EXPECT_EQ(planes.height[1], 1);
  ASSERT_TRUE(picture->GetSamplePlanes(FourCC("I420"), true, planes).Succeeded());
  EXPECT_EQ(planes.stride[0], -4);
  EXPECT_EQ(planes.data[0] - bytes->GetData(), 4);  // the last line of the luma plane
  Result r = picture->GetSamplePlanes(FourCC("avc1"), false, planes);
  EXPECT_STREQ(r.GetDetails(), "unknown format avc1");
  EXPECT_EQ(picture->GetSamplePlanes(FourCC("I444"), false, planes).GetType(), ResultBufferTooSmall().GetType());
}

TEST_F(DataReferenceTest, PoolCapacitiesArePowersOfTwoAboveTheRequest) {
  RObject<CHostMemoryContext> context(new CHostMemoryContext());
  EXPECT_TRUE(context->IsType(FourCC("mctx")));
  EXPECT_TRUE(context->IsType(FourCC("hctx")));
  EXPECT_EQ(context->GetPool(255), context->GetPool(1));
  EXPECT_EQ(context->GetPool(255)->GetKey(), 256);
  EXPECT_EQ(context->GetPool(256)->GetKey(), 512);
  EXPECT_EQ(context->GetPool(0)->GetKey(), 256);
  EXPECT_EQ(context->GetPool(1000)->GetKey(), 1024);
  EXPECT_EQ(context->GetPool(-1), nullptr);
}

TEST_F(DataReferenceTest, PooledBuffersComeBackAndCount) {
  RObject<CHostMemoryContext> context(new CHostMemoryContext());
  CBufferDataReference* first = context->GetDataReference(300);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first->GetLength(), 300);
  EXPECT_EQ(first->GetAvailableLength(), 512);
  EXPECT_EQ(reinterpret_cast<uintptr_t>(first->GetData()) % 64, 0u);
  EXPECT_EQ(context->GetTotalBytes(), 512);
  first->Release();  // back to its pool
  RObject<CBufferDataReference> again(context->GetDataReference(400));
  EXPECT_EQ(again.Get(), first);
  EXPECT_EQ(again->GetLength(), 400);
  EXPECT_EQ(context->GetTotalBytes(), 512);
}

TEST_F(DataReferenceTest, AllocationLimitRefusesAndTimesOut) {
  RObject<CHostMemoryContext> context(new CHostMemoryContext());
  context->SetAllocationLimit(1000);
  RObject<CBufferDataReference> a(context->New(600));
  ASSERT_TRUE(a);
  EXPECT_EQ(context->GetTotalBytes(), 600);
  EXPECT_EQ(context->New(401), nullptr);
  RObject<CBufferDataReference> b(context->New(400));
  EXPECT_TRUE(b);
  context->SetWaitTime(5);
  EXPECT_EQ(context->GetDataReference(10), nullptr);  // the 256-byte pool may not grow
}

TEST_F(DataReferenceTest, PicturePoolsAreSizedByTheDescription) {
  RObject<CHostMemoryContext> context(new CHostMemoryContext());
  RObject<CVideoProperties> hd(new CVideoProperties());
  hd->SetFormat(FourCC("I420"));
  hd->SetWidth(64);
  hd->SetHeight(32);
  RObject<CPixelBufferDataReference> picture(context->GetDataReference(hd.Get()));
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->GetLength(), 64 * 32 * 3 / 2);
  EXPECT_EQ(picture->GetStride(), 64);
  EXPECT_EQ(picture->GetArea(), Area<int>(64, 32));
  EXPECT_EQ(context->GetPool(hd.Get()), context->GetPool(hd.Get()));
  RObject<CMemoryDataReference> wrapped;
  RObject<CByteArray> bytes(new CByteArray(64 * 32 * 3 / 2, 1));
  ASSERT_TRUE(CMemoryDataReference::Create(hd.Get(), bytes.Get(), wrapped.Out()).Succeeded());
  EXPECT_TRUE(wrapped->IsType(FourCC("fram")));
}

}  // namespace

namespace {

// A host context whose allocations take a while, so that threads allocating
// at once are inside an allocation together.
class SlowHostMemoryContext : public CHostMemoryContext {
 public:
  CBufferDataReference* CreateDataReference(int n) override {
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
    return CHostMemoryContext::CreateDataReference(n);
  }
};

}  // namespace

TEST_F(DataReferenceTest, ConcurrentAllocationsNeverPassTheLimit) {
  RObject<SlowHostMemoryContext> context(new SlowHostMemoryContext());
  context->SetAllocationLimit(10 * 1000);
  std::mutex lock;
  std::vector<CBufferDataReference*> made;
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&] {
      while (CBufferDataReference* reference = context->New(1000)) {
        std::lock_guard<std::mutex> guard(lock);
        made.push_back(reference);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(made.size(), 10u);
  EXPECT_EQ(context->GetTotalBytes(), 10 * 1000);
  for (CBufferDataReference* reference : made) reference->Release();
}

// One idle buffer and a limit that allows no second: of several threads
// asking at once one gets it and every other gives up after the wait time,
// none blocks for good.
TEST_F(DataReferenceTest, RequestsRacingForTheLastIdleBufferTimeOut) {
  RObject<CHostMemoryContext> context(new CHostMemoryContext());
  context->SetAllocationLimit(512);
  context->SetWaitTime(30);
  CBufferDataReference* idle = context->GetDataReference(300);
  ASSERT_NE(idle, nullptr);
  idle->Release();  // back to its pool, idle

  constexpr int Threads = 8;
  std::mutex lock;
  std::condition_variable finished;
  int done = 0;
  std::vector<CBufferDataReference*> results(Threads, nullptr);
  std::atomic<int> ready{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < Threads; ++t) {
    threads.emplace_back([&, t] {
      ++ready;
      while (ready.load() < Threads) std::this_thread::yield();
      CBufferDataReference* reference = context->GetDataReference(300);
      std::lock_guard<std::mutex> guard(lock);
      results[t] = reference;
      ++done;
      finished.notify_all();
    });
  }
  bool allReturned;
  {
    std::unique_lock<std::mutex> guard(lock);
    allReturned = finished.wait_for(guard, std::chrono::seconds(10), [&] { return done == Threads; });
  }
  // Free whatever was handed out, which also releases any request still blocked.
  int granted = 0;
  for (bool all = false; !all;) {
    std::lock_guard<std::mutex> guard(lock);
    all = done == Threads;
    for (CBufferDataReference*& reference : results) {
      if (!reference) continue;
      ++granted;
      reference->Release();
      reference = nullptr;
    }
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_TRUE(allReturned) << "a request blocked past its wait time";
  if (allReturned) {
    EXPECT_EQ(granted, 1);
  }
  EXPECT_LE(context->GetTotalBytes(), 512);
}

TEST_F(DataReferenceTest, LockedReferenceReleasedOnAnotherThreadFreesTheLock) {
  RObject<CBufferDataReference> buffer(new CBufferDataReference(4));
  CExclusiveDataReference* writer = nullptr;
  std::thread([&] { writer = new CExclusiveDataReference(buffer.Get()); }).join();
  std::thread([&] { writer->Release(); }).join();
  // The exclusive hold went with the wrapper: readers and writers may enter.
  std::thread([&] {
    RObject<CSharedDataReference> reader(new CSharedDataReference(buffer.Get()));
    EXPECT_EQ(reader->GetLength(), 4);
  }).join();
  RObject<CExclusiveDataReference> again(new CExclusiveDataReference(buffer.Get()));
  EXPECT_EQ(again->GetLength(), 4);
}
