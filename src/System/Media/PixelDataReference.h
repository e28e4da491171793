#pragma once
// Data references to uncompressed pictures ("pixl"): a picture buffer with a
// line stride and an area ("fram"), and the interlaced variant whose buffer
// holds two fields one after the other and which builds the interleaved
// frame when it is first locked.

#include "System/Media/MediaTypes.h"
#include "System/Media/MemoryDataReference.h"
#include "System/Media/Video/PlaneLayout.h"

namespace Corvane::Mox {

// Where each plane of a picture starts and how far apart its lines are.
struct SamplePlanes {
  int count = 0;
  unsigned char* data[PlaneLayout::MaxPlanes] = {};
  int stride[PlaneLayout::MaxPlanes] = {};  // negative for a picture walked bottom-up
  int height[PlaneLayout::MaxPlanes] = {};
};

class CPixelDataReference : public CMemoryDataReference {
 public:
  static constexpr unsigned int TypeCode = FourCC("pixl");

  explicit CPixelDataReference(unsigned int type);

  bool IsType(unsigned int type) const override;

  // The planes of the picture read as format; bottomUp starts each plane at
  // its last line with a negative stride. A format without a plane layout
  // fails with "unknown format %s".
  virtual Result GetSamplePlanes(unsigned int format, bool bottomUp, SamplePlanes& planes);
  virtual int GetStride() const = 0;
  virtual Area<int> GetArea() const = 0;
};

class CPixelBufferDataReference : public CPixelDataReference {
 public:
  static constexpr unsigned int TypeCode = FourCC("fram");

  // Acquires buffer (may be null).
  CPixelBufferDataReference(CByteArray* buffer, int stride, Area<int> area);
  ~CPixelBufferDataReference() override;

  bool IsType(unsigned int type) const override;
  int GetLength() override;
  unsigned char* GetData() override;
  int GetStride() const override { return stride_; }
  // The stored area, or an empty one without a buffer.
  Area<int> GetArea() const override;

  // The buffer, acquired.
  CByteArray* GetBuffer() const;

 protected:
  CByteArray* buffer_;
  int stride_;
  Area<int> area_;
};

class CInterlacedPixelBufferDataReference : public CPixelBufferDataReference {
 public:
  // The buffer holds two fields of area.height / 2 lines each; fieldOrder 2
  // puts the first half on the even lines of the frame, 3 the second half.
  CInterlacedPixelBufferDataReference(CByteArray* buffer, int stride, Area<int> area, int fieldOrder);
  ~CInterlacedPixelBufferDataReference() override;

  // Builds the interleaved frame on first lock: ResultNullPointer without a
  // buffer, ResultNotSupported for a field order other than 2 or 3.
  Result Lock(int mode) override;
  int GetLength() override;
  unsigned char* GetData() override;
  int GetFieldOrder() const { return fieldOrder_; }

 private:
  Result Interleave();

  int fieldOrder_;
  CByteArray* interleaved_;
};

}  // namespace Corvane::Mox
