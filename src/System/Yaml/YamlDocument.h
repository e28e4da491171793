#pragma once
// CYamlDocument: the root node of a YAML text of the library's subset (see
// CYamlNode), with the factories that read it from text, bytes or a file.

#include "System/Yaml/YamlNode.h"

namespace Corvane::Mox {

class CByteArray;

class CYamlDocument : public CYamlNode {
 public:
  static constexpr unsigned int TypeCode = FourCC("ymld");

  // The document of text (null gives an empty one); text nested deeper than
  // MaxDepth throws ResultFormatError.
  explicit CYamlDocument(CString* text);
  bool IsType(unsigned int type) const override;

  static CYamlDocument* Create();
  // The document (acquired), or null when the text cannot be read.
  static CYamlDocument* CreateWithString(CString* text);
  static CYamlDocument* CreateWithBytes(CByteArray* bytes);
  static CYamlDocument* CreateWithFileAtPath(const char* path);
  // The same with the reason of a failure.
  static Result CreateWithString(CString* text, CYamlDocument*& out);
  static Result CreateWithText(const char* utf8, int length, CYamlDocument*& out);
  static Result CreateWithBytes(CByteArray* bytes, CYamlDocument*& out);
  static Result CreateWithFileAtPath(const char* path, CYamlDocument*& out);

  // The whole document as text (acquired), lines ending in "\r\n".
  CString* GetString() const;
  // The same as UTF-8 bytes.
  CByteArray* GetBytes() const;

 private:
  CYamlDocument();
};

}  // namespace Corvane::Mox
