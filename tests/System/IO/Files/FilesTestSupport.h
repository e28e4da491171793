#pragma once
// Helpers of the file, path, checksum and text tests: a temporary folder that
// removes itself, streams that cannot seek or deliver little at a time, a
// console capture and small conversions.

#include <gtest/gtest.h>

#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "System/ByteArray.h"
#include "System/Console.h"
#include "System/IO/MemoryStream.h"
#include "System/IO/WrappedStream.h"
#include "System/LeakCheckedTest.h"
#include "System/Text.h"

namespace Corvane::Mox::Testing {

template <class Kind>
bool IsKind(const Result& result) {
  return result.GetType() == Kind().GetType();
}

inline std::string Details(const Result& result) { return result.GetDetails() ? result.GetDetails() : ""; }

// The text of an owned string, which is released; "<null>" for null.
inline std::string Take(CString* s) {
  if (!s) return "<null>";
  std::string text = s->GetChars();
  s->Release();
  return text;
}

inline std::vector<unsigned char> Bytes(const std::string& text) { return {text.begin(), text.end()}; }

// A memory stream holding the given bytes, positioned at the start.
inline CMemoryStream* NewMemoryStream(const std::vector<unsigned char>& bytes) {
  auto* stream = new CMemoryStream();
  if (!bytes.empty()) stream->Write(bytes.data(), static_cast<int>(bytes.size()));
  stream->Seek(0, SeekOrigin::Begin, nullptr);
  return stream;
}

// The whole content of a memory stream.
inline std::vector<unsigned char> Content(CMemoryStream* stream) {
  return {stream->GetData(), stream->GetData() + stream->GetLength()};
}

// A stream over memory that cannot seek and delivers at most chunk bytes per read.
class CForwardOnlyStream : public CWrappedStream {
 public:
  explicit CForwardOnlyStream(const std::vector<unsigned char>& bytes, int chunk = 1 << 30)
      : CWrappedStream(RObject<CMemoryStream>(NewMemoryStream(bytes)).Get()), chunk_(chunk) {}
  bool CanSeek() override { return false; }
  Result Seek(long long, SeekOrigin, long long*) override { return ResultNotSupported(); }
  using CWrappedStream::Read;
  Result Read(unsigned char* buffer, int count, int* read) override {
    return CWrappedStream::Read(buffer, count < chunk_ ? count : chunk_, read);
  }

 private:
  int chunk_;
};

// A folder below the temporary directory, removed with everything in it.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "mox-files-XXXXXX").string();
    std::vector<char> name(pattern.begin(), pattern.end());
    name.push_back(0);
    path_ = mkdtemp(name.data()) ? name.data() : "";
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::string& Path() const { return path_; }
  std::string operator/(const std::string& name) const { return path_ + "/" + name; }
  // Writes a file of the given content below the folder and returns its path.
  std::string WriteFile(const std::string& name, const std::string& content) const {
    std::string path = *this / name;
    std::ofstream(path, std::ios::binary) << content;
    return path;
  }

 private:
  std::string path_;
};

// Records every log line while alive, at the given level.
class LogCapture {
 public:
  explicit LogCapture(Console::LogLevel level) : level_(Console::GetLogLevel()), callback_(Console::GetLogCallback()) {
    Lines().clear();
    Console::SetLogCallback(&Capture);
    Console::SetLogLevel(level);
  }
  ~LogCapture() {
    Console::SetLogLevel(level_);
    Console::SetLogCallback(callback_);
  }
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  static std::vector<std::pair<int, std::string>>& Lines() {
    static std::vector<std::pair<int, std::string>> lines;
    return lines;
  }

 private:
  static void Capture(Console::LogLevel level, CString* text) { Lines().emplace_back(level, text->GetChars()); }

  Console::LogLevel level_;
  Console::LogCallback callback_;
};

inline bool EndsWith(const std::string& text, const std::string& suffix) {
  return text.size() >= suffix.size() && text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

}  // namespace Corvane::Mox::Testing
