#pragma once
// CFileStream: what the two file streams share. The open mode, the path, and
// the following of a file that another process is still writing: with a
// non-zero read timeout a read that reaches the end of the file polls for the
// file to grow instead of returning short. Timeout and margin are changed
// under the stream's monitor, and every change wakes a waiting reader.

#include <atomic>

#include "System/IO/Stream.h"

namespace Corvane::Mox {

// How a file is opened. The comments give the C library mode string.
enum class FileMode : int {
  Read = 0,        // "rb"
  Write = 1,       // "wb": create or truncate
  ReadWrite = 2,   // "wb+": create or truncate
  Append = 3,      // "ab"
  AppendRead = 4,  // "ab+": opened for both, but reports neither CanRead nor CanWrite
  Update = 5,      // descriptor streams only, opened as ReadWrite
};

class CFileStream : public CStream {
 public:
  static constexpr unsigned int TypeCode = FourCC("fstr");
  // Controls: set and get the read timeout and margin (4-byte int), set the
  // caching flag (1 byte; no payload turns it on).
  static constexpr unsigned int SetReadTimeoutCode = FourCC("srto");
  static constexpr unsigned int GetReadTimeoutCode = FourCC("grto");
  static constexpr unsigned int SetReadMarginCode = FourCC("srmg");
  static constexpr unsigned int GetReadMarginCode = FourCC("grmg");
  static constexpr unsigned int SetCachingCode = FourCC("rdaf");
  // One hour, in milliseconds.
  static constexpr int MaximumReadTimeout = 3600000;
  // How often a waiting reader looks at the file again, in milliseconds.
  static constexpr int PollInterval = 100;

  ~CFileStream() override;

  bool IsType(unsigned int type) const override;
  Result Control(unsigned int code, int length, unsigned char* data) override;
  bool CanRead() override;
  bool CanWrite() override;

  virtual Result Open(const char* path) = 0;
  virtual Result Open(CString* path) = 0;
  // Opens with another mode.
  Result Open(const char* path, FileMode mode);
  Result Open(CString* path, FileMode mode);

  FileMode GetMode() const { return mode_; }
  // The path given to the last Open, acquired; null before.
  CString* GetPath() const;
  Result GetReadTimeout(int& milliseconds) const;
  Result SetReadTimeout(int milliseconds);
  Result GetReadMargin(int& bytes) const;
  Result SetReadMargin(int bytes);

 protected:
  CFileStream(unsigned int type, FileMode mode);

  // The static factories of the subclasses: a new Stream opened on path with
  // mode, handed over through out (null on failure).
  template <class Stream>
  static Result OpenNew(const char* path, FileMode mode, CStream*& out) {
    out = nullptr;
    RObject<Stream> stream(new Stream(mode));
    Result result = stream->Open(path);
    if (result.Succeeded()) out = stream.Detach();
    return result;
  }

  void SetMode(FileMode mode) { mode_ = mode; }
  void SetPath(const char* path);
  bool IsCaching() const;
  int ReadTimeoutNow() const;
  int ReadMarginNow() const;

  // The result of a failed write: a full disk, a file grown too large, or
  // any other input/output error.
  static Result WriteFailure(int error);

  // One read of the handle, without waiting.
  virtual Result ReadOnce(unsigned char* buffer, int count, int& read) = 0;
  // Moves the handle to an absolute position (also clearing an end-of-file state).
  virtual Result SeekTo(long long position) = 0;

  // Reads count bytes, following a growing file while the read timeout allows.
  Result ReadFollowing(unsigned char* buffer, int count, int* read, bool logWaits);
  // Polls until the file grows beyond position or timeout runs out; returns
  // the time left (the full timeout again after growth).
  int WaitForGrowth(int timeout, long long position, bool logWaits);

  long long knownLength_;

 private:
  Result SetInt(int length, const unsigned char* data, Result (CFileStream::*setter)(int));
  static Result GetInt(int length, unsigned char* data, int value);

  FileMode mode_;
  CString* path_;
  // Changed under the monitor; read without it on every read.
  std::atomic<int> readTimeout_;
  std::atomic<int> readMargin_;
  std::atomic<bool> caching_;
};

}  // namespace Corvane::Mox
