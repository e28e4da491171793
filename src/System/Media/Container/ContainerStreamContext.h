#pragma once
// CContainerStreamContext ("sctx"): a container over a caller's stream. Side
// files, existence checks and the directory are answered by optional
// callbacks; without them the caller's stream is the only stream.

#include "System/Media/Container/ContainerContext.h"

namespace Corvane::Mox {

class CContainerStreamContext : public CContainerContext {
 public:
  static constexpr unsigned int TypeCode = FourCC("sctx");

  using OpenCallback = CStream* (*)(void* user, CString* name);
  using ExistsCallback = bool (*)(void* user, CString* name);
  using TextCallback = CString* (*)(void* user);

  explicit CContainerStreamContext(CStream* stream);
  ~CContainerStreamContext() override;

  CStream* GetStream() const { return stream_; }
  void SetOpenForReadCallback(OpenCallback callback, void* user);
  void SetOpenForWriteCallback(OpenCallback callback, void* user);
  void SetExistsCallback(ExistsCallback callback, void* user);
  void SetDirectoryPathCallback(TextCallback callback, void* user);
  void SetDefaultFileNameCallback(TextCallback callback, void* user);

  CString* GetDefaultFileName() const override;
  CString* GetFilePath(CString* name) const override;
  bool Exists(CString* name) const override;
  using CContainerContext::OpenStream;
  Result OpenStream(CContainerReader* reader, CString* name, CStream*& stream, bool buffered) override;
  Result OpenStream(CContainerWriter* writer, CString* name, CStream*& stream, bool buffered) override;

 private:
  template <class F>
  struct Callback {
    F function = nullptr;
    void* user = nullptr;
  };
  Result Open(const Callback<OpenCallback>& callback, CString* name, CStream*& stream);

  CStream* stream_;
  Callback<OpenCallback> openForRead_;
  Callback<OpenCallback> openForWrite_;
  Callback<ExistsCallback> exists_;
  Callback<TextCallback> directoryPath_;
  Callback<TextCallback> defaultFileName_;
};

}  // namespace Corvane::Mox
