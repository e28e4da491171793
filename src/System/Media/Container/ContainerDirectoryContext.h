#pragma once
// CContainerDirectoryContext ("dctx"): a container's files live in one
// directory of the local file system; names are relative to it.

#include "System/Media/Container/ContainerContext.h"

namespace Corvane::Mox {

class CContainerDirectoryContext : public CContainerContext {
 public:
  static constexpr unsigned int TypeCode = FourCC("dctx");

  explicit CContainerDirectoryContext(CString* directory);
  explicit CContainerDirectoryContext(const char* directory);
  explicit CContainerDirectoryContext(const wchar_t* directory);
  ~CContainerDirectoryContext() override;

  // Splits a file path into directory and default file name; a bare name
  // lives in the working directory ("."). Null without a file name.
  static CContainerDirectoryContext* Create(CString* path);
  // Null when either part is null.
  static CContainerDirectoryContext* Create(CString* directory, CString* fileName);

  CString* GetDirectory() const;  // acquired
  CString* GetFilePath(CString* name) const override;
  using CContainerContext::OpenStream;
  Result OpenStream(CContainerReader* reader, CString* name, CStream*& stream, bool buffered) override;
  Result OpenStream(CContainerWriter* writer, CString* name, CStream*& stream, bool buffered) override;

 private:
  // The name to open: the given one or the default file name.
  CString* ChooseName(CString* name) const;

  CString* directory_;
};

}  // namespace Corvane::Mox
