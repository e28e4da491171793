#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

#include "System/IO/BufferedStream.h"
#include "System/IO/FileDescriptorStream.h"
#include "System/IO/StandardFileStream.h"
#include "StreamTestSupport.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::Testing;

namespace {

class FileStreamTest : public LeakCheckedTest {
 protected:
  TemporaryFolder folder;
};

unsigned int Code(const char (&code)[5]) { return FourCC(code); }

TEST_F(FileStreamTest, OpeningWhatIsNotThereOrNotAFile) {
  std::string missing = folder.File("missing.bin");
  CStream* out = reinterpret_cast<CStream*>(0x1);
  Result result = CFileDescriptorStream::Open(missing.c_str(), FileMode::Read, out);
  EXPECT_TRUE(IsKind<ResultPathDoesNotExist>(result));
  EXPECT_EQ(Details(result), "'" + missing + "' does not exist");
  EXPECT_EQ(out, nullptr);
  result = CStandardFileStream::Open(missing.c_str(), FileMode::Read, out);
  EXPECT_TRUE(IsKind<ResultIOError>(result));
  EXPECT_EQ(out, nullptr);
  EXPECT_TRUE(IsKind<ResultArgumentNull>(CFileDescriptorStream::Open(static_cast<const char*>(nullptr), FileMode::Read, out)));
  EXPECT_TRUE(IsKind<ResultArgumentNull>(CStandardFileStream::Open(static_cast<CString*>(nullptr), FileMode::Read, out)));

  // A folder where a file was expected.
  result = CFileDescriptorStream::Open(folder.Path().c_str(), FileMode::Write, out);
  EXPECT_TRUE(IsKind<ResultPathIsDirectory>(result));
  EXPECT_EQ(Details(result), "'" + folder.Path() + "' is a directory");
  RObject<CFileDescriptorStream> descriptor(new CFileDescriptorStream(FileMode::Read));
  ASSERT_TRUE(descriptor->Open(folder.Path().c_str()).Succeeded());
  unsigned char byte = 0;
  EXPECT_TRUE(IsKind<ResultPathIsDirectory>(descriptor->Read(&byte, 1, nullptr)));
  RObject<CStandardFileStream> standard(new CStandardFileStream(FileMode::Read));
  if (standard->Open(folder.Path().c_str()).Succeeded()) {
    EXPECT_TRUE(IsKind<ResultIOError>(standard->Read(&byte, 1, nullptr)));
  }

  // A path component that is too long.
  std::string longName = folder.File(std::string(300, 'n'));
  result = CFileDescriptorStream::Open(longName.c_str(), FileMode::Write, out);
  EXPECT_TRUE(IsKind<ResultPathNameTooLong>(result));
  EXPECT_EQ(Details(result), "'" + longName + "' is too long");
}

TEST_F(FileStreamTest, ModesDecideDirectionsAppendAndReadReportsNeither) {
  const bool readable[] = {true, false, true, false, false, true};
  const bool writable[] = {false, true, true, true, false, true};
  std::string path = folder.Write("modes.bin", Sequence(4));
  for (int mode = 0; mode <= 5; ++mode) {
    SCOPED_TRACE(mode);
    RObject<CFileDescriptorStream> descriptor(new CFileDescriptorStream(static_cast<FileMode>(mode)));
    EXPECT_EQ(descriptor->CanRead(), readable[mode]);
    EXPECT_EQ(descriptor->CanWrite(), writable[mode]);
    RObject<CStandardFileStream> standard(new CStandardFileStream(static_cast<FileMode>(mode)));
    EXPECT_EQ(standard->CanRead(), readable[mode]);
    EXPECT_EQ(standard->CanWrite(), writable[mode]);
    EXPECT_TRUE(descriptor->IsType(CFileStream::TypeCode));
    EXPECT_TRUE(standard->IsType(CFileStream::TypeCode));
  }
  RObject<CStandardFileStream> update(new CStandardFileStream(FileMode::Update));
  EXPECT_TRUE(IsKind<ResultNotSupported>(update->Open(path.c_str())));

  // Append-and-read is opened for both directions even though it reports neither.
  RObject<CFileDescriptorStream> both(new CFileDescriptorStream(FileMode::AppendRead));
  ASSERT_TRUE(both->Open(path.c_str()).Succeeded());
  EXPECT_EQ(both->GetLength(), 4);
  ASSERT_TRUE(both->Write(Bytes("xy").data(), 2, nullptr).Succeeded());
  ASSERT_TRUE(both->Seek(0, SeekOrigin::Begin, nullptr).Succeeded());
  std::vector<unsigned char> expected = Sequence(4);
  expected.push_back('x');
  expected.push_back('y');
  EXPECT_EQ(ReadAll(both), expected);
  both->Close();

  // Reopening with Write truncates.
  RObject<CStandardFileStream> truncating(new CStandardFileStream(FileMode::Read));
  ASSERT_TRUE(truncating->Open(path.c_str(), FileMode::Write).Succeeded());
  EXPECT_EQ(truncating->GetMode(), FileMode::Write);
  EXPECT_EQ(truncating->GetLength(), 0);
}

template <class Stream>
void WriteThenReadBack(const std::string& path) {
  RObject<Stream> writer(new Stream(FileMode::ReadWrite));
  ASSERT_TRUE(writer->Open(path.c_str()).Succeeded());
  std::vector<unsigned char> bytes = Sequence(1000);
  int written = 0;
  ASSERT_TRUE(writer->Write(bytes.data(), 1000, &written).Succeeded());
  EXPECT_EQ(written, 1000);
  EXPECT_EQ(writer->GetLength(), 1000);
  EXPECT_EQ(writer->GetPosition(), 1000);
  long long position = 0;
  ASSERT_TRUE(writer->Seek(-10, SeekOrigin::End, &position).Succeeded());
  EXPECT_EQ(position, 990);
  ASSERT_TRUE(writer->Write(Bytes("ABCDEFGHIJKL").data(), 12, nullptr).Succeeded());
  EXPECT_EQ(writer->GetLength(), 1002);
  ASSERT_TRUE(writer->Seek(500, SeekOrigin::Begin, nullptr).Succeeded());
  ASSERT_TRUE(writer->Seek(-100, SeekOrigin::Current, &position).Succeeded());
  EXPECT_EQ(position, 400);
  EXPECT_EQ(writer->ReadByte(), bytes[400]);
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(writer->Seek(-1, SeekOrigin::Begin, nullptr)));
  EXPECT_TRUE(IsKind<ResultNotImplemented>(writer->Seek(0, static_cast<SeekOrigin>(3), nullptr)));
  ASSERT_TRUE(writer->Flush().Succeeded());
  writer->Close();

  RObject<Stream> reader(new Stream(FileMode::Read));
  ASSERT_TRUE(reader->Open(path.c_str()).Succeeded());
  RObject<CString> recorded(reader->GetPath());
  EXPECT_STREQ(recorded->GetChars(), path.c_str());
  std::vector<unsigned char> all = ReadAll(reader, 333);
  bytes.resize(990);
  for (char c : std::string("ABCDEFGHIJKL")) bytes.push_back(static_cast<unsigned char>(c));
  EXPECT_EQ(all, bytes);
  // At the end a read delivers nothing and succeeds.
  int read = -1;
  unsigned char byte = 0;
  EXPECT_TRUE(reader->Read(&byte, 1, &read).Succeeded());
  EXPECT_EQ(read, 0);
}

TEST_F(FileStreamTest, DescriptorStreamWritesSeeksAndReadsBack) {
  WriteThenReadBack<CFileDescriptorStream>(folder.File("descriptor.bin"));
}

TEST_F(FileStreamTest, StandardStreamWritesSeeksAndReadsBack) {
  WriteThenReadBack<CStandardFileStream>(folder.File("standard.bin"));
}

TEST_F(FileStreamTest, CreatedFilesAreSharedWithEveryone) {
  std::string path = folder.File("shared.bin");
  mode_t previous = umask(077);
  RObject<CFileDescriptorStream> stream(new CFileDescriptorStream(FileMode::Write));
  Result opened = stream->Open(path.c_str());
  umask(previous);
  ASSERT_TRUE(opened.Succeeded());
  struct stat status {};
  ASSERT_EQ(stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0666u);
}

// Writes beyond the process's file size limit fail with "file too large".
TEST_F(FileStreamTest, WritesPastTheFileSizeLimit) {
  struct rlimit previous {};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &previous), 0);
  auto* previousHandler = std::signal(SIGXFSZ, SIG_IGN);
  struct rlimit small = previous;
  small.rlim_cur = 100;
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
  std::vector<unsigned char> bytes = Sequence(200000);
  RObject<CFileDescriptorStream> descriptor(new CFileDescriptorStream(FileMode::Write));
  RObject<CStandardFileStream> standard(new CStandardFileStream(FileMode::Write));
  Result descriptorResult = descriptor->Open(folder.File("limited.bin").c_str());
  Result standardResult = standard->Open(folder.File("limited-standard.bin").c_str());
  int written = -1;
  int standardWritten = -1;
  if (descriptorResult.Succeeded()) descriptorResult = descriptor->Write(bytes.data(), 200000, &written);
  if (standardResult.Succeeded()) standardResult = standard->Write(bytes.data(), 200000, &standardWritten);
  setrlimit(RLIMIT_FSIZE, &previous);
  std::signal(SIGXFSZ, previousHandler);
  EXPECT_TRUE(IsKind<ResultIOError>(descriptorResult));
  EXPECT_EQ(Details(descriptorResult), "file too large");
  EXPECT_EQ(written, 100);
  EXPECT_EQ(descriptor->GetPosition(), 100);
  EXPECT_EQ(Details(standardResult), "file too large");
  EXPECT_LT(standardWritten, 200000);
}

TEST_F(FileStreamTest, ControlsCheckLengthsAndRanges) {
  RObject<CFileDescriptorStream> stream(new CFileDescriptorStream(FileMode::Read));
  int value = 1234;
  auto* data = reinterpret_cast<unsigned char*>(&value);
  Result wrong = stream->Control(Code("srto"), 2, data);
  EXPECT_TRUE(IsKind<ResultError>(wrong));
  EXPECT_EQ(Details(wrong), "incorrect length");
  EXPECT_EQ(Details(stream->Control(Code("grmg"), 8, data)), "incorrect length");
  ASSERT_TRUE(stream->Control(Code("srto"), 4, data).Succeeded());
  value = 56;
  ASSERT_TRUE(stream->Control(Code("srmg"), 4, data).Succeeded());
  int timeout = 0;
  int margin = 0;
  ASSERT_TRUE(stream->GetReadTimeout(timeout).Succeeded());
  ASSERT_TRUE(stream->GetReadMargin(margin).Succeeded());
  EXPECT_EQ(timeout, 1234);
  EXPECT_EQ(margin, 56);
  value = 0;
  ASSERT_TRUE(stream->Control(Code("grto"), 4, data).Succeeded());
  EXPECT_EQ(value, 1234);
  ASSERT_TRUE(stream->Control(Code("grmg"), 4, data).Succeeded());
  EXPECT_EQ(value, 56);

  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(stream->SetReadTimeout(CFileStream::MaximumReadTimeout + 1)));
  EXPECT_TRUE(stream->SetReadTimeout(CFileStream::MaximumReadTimeout).Succeeded());
  value = CFileStream::MaximumReadTimeout + 1;
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(stream->Control(Code("srto"), 4, data)));
  ASSERT_TRUE(stream->GetReadTimeout(timeout).Succeeded());
  EXPECT_EQ(timeout, CFileStream::MaximumReadTimeout);

  unsigned char flag = 1;
  EXPECT_TRUE(stream->Control(Code("rdaf"), 1, &flag).Succeeded());
  EXPECT_TRUE(stream->Control(Code("rdaf"), 0, nullptr).Succeeded());
  EXPECT_EQ(Details(stream->Control(Code("rdaf"), 2, &flag)), "incorrect length");
  EXPECT_TRUE(stream->Control(Code("rdah"), 1, &flag).Succeeded());
  EXPECT_TRUE(stream->Control(Code("cach"), 1, &flag).Succeeded());
  EXPECT_EQ(Details(stream->Control(Code("cach"), 0, &flag)), "incorrect length");
  EXPECT_TRUE(IsKind<ResultNotSupported>(stream->Control(Code("what"), 1, &flag)));
  // The buffered-file stream knows the common controls only.
  RObject<CStandardFileStream> standard(new CStandardFileStream(FileMode::Read));
  EXPECT_TRUE(standard->Control(Code("rdaf"), 1, &flag).Succeeded());
  EXPECT_TRUE(IsKind<ResultNotSupported>(standard->Control(Code("rdah"), 1, &flag)));
}

TEST_F(FileStreamTest, UncachedReadsDeliverTheSameBytes) {
  std::vector<unsigned char> bytes = Sequence(50000);
  std::string path = folder.Write("uncached.bin", bytes);
  RObject<CFileDescriptorStream> stream(new CFileDescriptorStream(FileMode::Read));
  ASSERT_TRUE(stream->Open(path.c_str()).Succeeded());
  ASSERT_TRUE(stream->Cache(false).Succeeded());
  ASSERT_TRUE(stream->ReadAhead(false).Succeeded());
  EXPECT_EQ(ReadAll(stream, 7000), bytes);
}

// Files beyond 4 GiB: a sparse file with a marker near its end.
TEST_F(FileStreamTest, OffsetsBeyondFourGigabytes) {
  const long long size = 5LL << 30;
  const long long markerAt = size - 4096 + 17;
  std::string path = folder.File("sparse.bin");
  int descriptor = ::open(path.c_str(), O_CREAT | O_RDWR, 0644);
  ASSERT_GE(descriptor, 0);
  if (ftruncate(descriptor, size) != 0) {
    ::close(descriptor);
    GTEST_SKIP() << "the file system cannot hold a sparse 5 GiB file";
  }
  ASSERT_EQ(pwrite(descriptor, "MARKER", 6, markerAt), 6);
  ::close(descriptor);

  RObject<CFileDescriptorStream> raw(new CFileDescriptorStream(FileMode::Read));
  ASSERT_TRUE(raw->Open(path.c_str()).Succeeded());
  EXPECT_EQ(raw->GetLength(), size);
  long long position = 0;
  ASSERT_TRUE(raw->Seek(markerAt, SeekOrigin::Begin, &position).Succeeded());
  EXPECT_EQ(position, markerAt);
  unsigned char marker[6] = {};
  ASSERT_TRUE(raw->Read(marker, 6).Succeeded());
  EXPECT_EQ(std::string(marker, marker + 6), "MARKER");
  EXPECT_EQ(raw->GetPosition(), markerAt + 6);

  RObject<CStandardFileStream> standard(new CStandardFileStream(FileMode::Read));
  ASSERT_TRUE(standard->Open(path.c_str()).Succeeded());
  EXPECT_EQ(standard->GetAvailableLength(), size);
  ASSERT_TRUE(standard->Seek(markerAt - size, SeekOrigin::End, &position).Succeeded());
  EXPECT_EQ(position, markerAt);
  ASSERT_TRUE(standard->Read(marker, 6).Succeeded());
  EXPECT_EQ(std::string(marker, marker + 6), "MARKER");

  RObject<CBufferedStream> buffered(new CBufferedStream(raw, 4096, 2));
  ASSERT_TRUE(buffered->Seek(markerAt + 2, SeekOrigin::Begin, nullptr).Succeeded());
  unsigned char tail[4] = {};
  ASSERT_TRUE(buffered->Read(tail, 4).Succeeded());
  EXPECT_EQ(std::string(tail, tail + 4), "RKER");
  EXPECT_EQ(buffered->GetPosition(), markerAt + 6);

  // Writing there lands at the same 64-bit offset.
  RObject<CFileDescriptorStream> writer(new CFileDescriptorStream(FileMode::AppendRead));
  ASSERT_TRUE(writer->Open(path.c_str()).Succeeded());
  ASSERT_TRUE(writer->Write(Bytes("END").data(), 3).Succeeded());
  EXPECT_EQ(writer->GetLength(), size + 3);
  char end[3] = {};
  descriptor = ::open(path.c_str(), O_RDONLY);
  ASSERT_EQ(pread(descriptor, end, 3, size), 3);
  ::close(descriptor);
  EXPECT_EQ(std::string(end, 3), "END");
}

}  // namespace
