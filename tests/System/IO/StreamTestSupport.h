#pragma once
// Shared helpers of the stream tests: a leak-checked fixture, a scripted
// in-memory stream that records every call made to it, a temporary folder
// that cleans up after itself, and small conversions.

#include <gtest/gtest.h>

#include <stdlib.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "System/ByteArray.h"
#include "System/Console.h"
#include "System/Text.h"
#include "System/IO/Stream.h"
#include "System/LeakCheckedTest.h"

namespace Corvane::Mox::Testing {

// The kind of a result, compared by its type code.
template <class Kind>
bool IsKind(const Result& result) {
  return result.GetType() == Kind().GetType();
}

inline std::string Details(const Result& result) { return result.GetDetails() ? result.GetDetails() : ""; }

inline std::vector<unsigned char> Sequence(int count, int start = 0) {
  std::vector<unsigned char> bytes(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) bytes[static_cast<std::size_t>(i)] = static_cast<unsigned char>((start + i) * 7 + 3);
  return bytes;
}

// The UTF-8 text of s, or "<null>".
inline std::string Text(const CString* s) { return s ? std::string(s->GetChars()) : std::string("<null>"); }

inline std::vector<unsigned char> Bytes(const std::string& text) { return {text.begin(), text.end()}; }

// A stream over a vector that logs each read and write as (position, count)
// and can be told not to read, seek or write.
class CRecordingStream : public CStream {
 public:
  explicit CRecordingStream(std::vector<unsigned char> content, bool canRead = true, bool canSeek = true,
                            bool canWrite = true)
      : content_(std::move(content)), position_(0), canRead_(canRead), canSeek_(canSeek), canWrite_(canWrite) {}

  bool CanRead() override { return canRead_; }
  bool CanSeek() override { return canSeek_; }
  bool CanWrite() override { return canWrite_; }
  long long GetLength() override { return static_cast<long long>(content_.size()); }
  long long GetPosition() override { return position_; }
  using CStream::Read;
  using CStream::Write;
  Result Read(unsigned char* buffer, int count, int* read) override {
    reads.emplace_back(position_, count);
    long long available = std::max<long long>(static_cast<long long>(content_.size()) - position_, 0);
    int n = static_cast<int>(std::min<long long>(count, available));
    std::copy_n(content_.begin() + position_, n, buffer);
    position_ += n;
    if (read) *read = n;
    return Result();
  }
  Result Write(const unsigned char* buffer, int count, int* written) override {
    writes.emplace_back(position_, count);
    if (content_.size() < static_cast<std::size_t>(position_ + count)) content_.resize(static_cast<std::size_t>(position_ + count));
    std::copy_n(buffer, count, content_.begin() + position_);
    position_ += count;
    if (written) *written = count;
    return Result();
  }
  Result Seek(long long offset, SeekOrigin origin, long long* position) override {
    if (!canSeek_) return CStream::Seek(offset, origin, position);
    ++seeks;
    long long base = origin == SeekOrigin::Begin ? 0 : origin == SeekOrigin::Current ? position_ : GetLength();
    position_ = base + offset;
    if (position) *position = position_;
    return Result();
  }

  const std::vector<unsigned char>& Content() const { return content_; }

  std::vector<std::pair<long long, int>> reads;
  std::vector<std::pair<long long, int>> writes;
  int seeks = 0;

 private:
  std::vector<unsigned char> content_;
  long long position_;
  bool canRead_;
  bool canSeek_;
  bool canWrite_;
};

// A fresh folder below the temporary directory, removed with everything in it.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    const char* base = std::getenv("TMPDIR");
    std::string pattern = std::string(base && *base ? base : "/tmp") + "/mox-io-XXXXXX";
    std::vector<char> name(pattern.begin(), pattern.end());
    name.push_back(0);
    path_ = mkdtemp(name.data()) ? name.data() : "";
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    if (!path_.empty()) std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::string& Path() const { return path_; }
  std::string File(const std::string& name) const { return path_ + "/" + name; }
  // Creates name with content and returns its path.
  std::string Write(const std::string& name, const std::vector<unsigned char>& content) const {
    std::string file = File(name);
    FILE* f = std::fopen(file.c_str(), "wb");
    if (f) {
      std::fwrite(content.data(), 1, content.size(), f);
      std::fclose(f);
    }
    return file;
  }

 private:
  std::string path_;
};

// Collects the log lines written while it exists, at the given level. An
// optional hook sees each line as it arrives (on the logging thread).
class LogCapture {
 public:
  using Hook = void (*)(const std::string& line);

  explicit LogCapture(Console::LogLevel level, Hook hook = nullptr)
      : previousLevel_(Console::GetLogLevel()), previousCallback_(Console::GetLogCallback()) {
    {
      std::lock_guard<std::mutex> lock(Mutex());
      Lines().clear();
      CurrentHook() = hook;
    }
    Console::SetLogCallback(&Collect);
    Console::SetLogLevel(level);
  }
  ~LogCapture() {
    Console::SetLogLevel(previousLevel_);
    Console::SetLogCallback(previousCallback_);
    std::lock_guard<std::mutex> lock(Mutex());
    CurrentHook() = nullptr;
  }
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  std::vector<std::string> Taken() const {
    std::lock_guard<std::mutex> lock(Mutex());
    return Lines();
  }
  // Whether some line ends with text followed by a line feed.
  bool HasLineEndingWith(const std::string& text) const {
    for (const std::string& line : Taken()) {
      std::string tail = text + "\n";
      if (line.size() >= tail.size() && line.compare(line.size() - tail.size(), tail.size(), tail) == 0) return true;
    }
    return false;
  }

 private:
  static void Collect(Console::LogLevel, CString* text) {
    std::string line = text->GetChars();
    Hook hook = nullptr;
    {
      std::lock_guard<std::mutex> lock(Mutex());
      Lines().push_back(line);
      hook = CurrentHook();
    }
    if (hook) hook(line);
  }
  static std::mutex& Mutex() {
    static std::mutex mutex;
    return mutex;
  }
  static std::vector<std::string>& Lines() {
    static std::vector<std::string> lines;
    return lines;
  }
  static Hook& CurrentHook() {
    static Hook hook = nullptr;
    return hook;
  }

  Console::LogLevel previousLevel_;
  Console::LogCallback previousCallback_;
};

// Every remaining byte of stream, read in pieces of size count.
inline std::vector<unsigned char> ReadAll(CStream* stream, int count = 4096) {
  std::vector<unsigned char> all;
  std::vector<unsigned char> piece(static_cast<std::size_t>(count));
  for (;;) {
    int read = 0;
    if (stream->Read(piece.data(), count, &read).Failed() || read == 0) break;
    all.insert(all.end(), piece.begin(), piece.begin() + read);
  }
  return all;
}

}  // namespace Corvane::Mox::Testing
