#include <gtest/gtest.h>

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "FilesTestSupport.h"
#include "System/IO/SharedMemory.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::Testing;

namespace {

// A name of this process and test, removed from the system afterwards.
class SharedMemoryTest : public LeakCheckedTest {
 protected:
  void SetUp() override {
    LeakCheckedTest::SetUp();
    name_ = "/mox-test-" + std::to_string(getpid()) + "-" +
            ::testing::UnitTest::GetInstance()->current_test_info()->name();
    shm_unlink(name_.c_str());
  }
  void TearDown() override {
    shm_unlink(name_.c_str());
    LeakCheckedTest::TearDown();
  }

  std::string name_;
};

}  // namespace

TEST_F(SharedMemoryTest, TwoMappingsOfOneNameShareTheirBytes) {
  RObject<CSharedMemory> writer(CSharedMemory::Create(name_.c_str(), 4096));
  ASSERT_TRUE(writer);
  EXPECT_EQ(writer->GetSize(), 4096);
  EXPECT_EQ(Take(writer->GetName()), name_);
  ASSERT_NE(writer->GetData(), nullptr);
  EXPECT_EQ(writer->GetByte(100), 0);  // a new object starts zeroed
  writer->SetByte(0, 0x4D);
  writer->SetByte(4095, 0x58);
  RObject<CString> name(new CString(name_.c_str()));
  RObject<CSharedMemory> reader(CSharedMemory::CreateExisting(name, 4096));
  ASSERT_TRUE(reader);
  EXPECT_NE(reader->GetData(), writer->GetData());  // a mapping of its own
  EXPECT_EQ(reader->GetByte(0), 0x4D);
  EXPECT_EQ(reader->GetByte(4095), 0x58);
  reader->SetByte(1, 0x6F);
  unsigned char copy[3] = {};
  ASSERT_TRUE(writer->Copy(0, copy, 2).Succeeded());
  EXPECT_EQ(copy[0], 0x4D);
  EXPECT_EQ(copy[1], 0x6F);
  ASSERT_TRUE(writer->Copy(4094, copy, 2).Succeeded());
  EXPECT_EQ(copy[1], 0x58);
  // Creating an existing name opens it, keeping its bytes.
  RObject<CSharedMemory> again(CSharedMemory::Create(name, 4096));
  ASSERT_TRUE(again);
  EXPECT_EQ(again->GetByte(1), 0x6F);
}

TEST_F(SharedMemoryTest, AccessOutsideTheMappingIsRefused) {
  RObject<CSharedMemory> memory(CSharedMemory::Create(name_.c_str(), 16));
  ASSERT_TRUE(memory);
  EXPECT_THROW(memory->GetByte(16), ResultArgumentOutOfRange);
  EXPECT_THROW(memory->GetByte(-1), ResultArgumentOutOfRange);
  EXPECT_THROW(memory->SetByte(16, 1), ResultArgumentOutOfRange);
  unsigned char buffer[32];
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(memory->Copy(8, buffer, 9)));
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(memory->Copy(-1, buffer, 1)));
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(memory->Copy(0, buffer, -1)));
  EXPECT_TRUE(IsKind<ResultArgumentNull>(memory->Copy(0, nullptr, 1)));
  EXPECT_TRUE(memory->Copy(8, buffer, 8).Succeeded());
  EXPECT_TRUE(memory->Copy(16, buffer, 0).Succeeded());
}

TEST_F(SharedMemoryTest, OpeningAMissingNameFailsWithALogLine) {
  LogCapture log(Console::Error);
  EXPECT_EQ(CSharedMemory::CreateExisting(name_.c_str(), 16), nullptr);
  ASSERT_EQ(LogCapture::Lines().size(), 1u);
  EXPECT_TRUE(EndsWith(LogCapture::Lines()[0].second, ": shm_open failed " + std::to_string(ENOENT) + "\n"))
      << LogCapture::Lines()[0].second;
  EXPECT_EQ(CSharedMemory::Create(name_.c_str(), 0), nullptr);
  EXPECT_EQ(CSharedMemory::Create(static_cast<CString*>(nullptr), 16), nullptr);
  EXPECT_EQ(CSharedMemory::CreateExisting(static_cast<const char*>(nullptr), 16), nullptr);
}
