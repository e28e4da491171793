#include "System/Media/PixelDataReference.h"

#include <algorithm>
#include <cstring>

#include "System/ByteArray.h"
#include "System/FourString.h"
#include "System/Media/Video/VideoProperties.h"

namespace Corvane::Mox {

CPixelDataReference::CPixelDataReference(unsigned int type) : CMemoryDataReference(type) {}

bool CPixelDataReference::IsType(unsigned int type) const { return type == TypeCode || CMemoryDataReference::IsType(type); }

Result CPixelDataReference::GetSamplePlanes(unsigned int format, bool bottomUp, SamplePlanes& planes) {
  planes = SamplePlanes();
  const PlaneLayout* layout = PlaneLayout::Find(format);
  if (!layout) return ResultNotSupported("unknown format %s", FourString(format).GetChars());
  Area<int> area = GetArea();
  unsigned char* data = GetData();
  if (!data || area.IsEmpty()) return ResultNullPointer();
  int stride0 = GetStride() > 0 ? GetStride() : layout->GetStride(0, area.width);
  const PlaneLayout::Plane& first = layout->planes[0];
  long long offset = 0;
  long long length = GetLength();
  for (int i = 0; i < layout->planeCount; ++i) {
    const PlaneLayout::Plane& p = layout->planes[i];
    // Later planes keep the first plane's padding in proportion to their bytes per pixel.
    long long scaled = static_cast<long long>(stride0) * p.blockBytes * first.blockWidth;
    long long divisor = static_cast<long long>(p.blockWidth) * first.blockBytes;
    // Never below the plane's own natural stride: with odd widths the
    // proportional stride of a chroma plane can round below its whole blocks.
    int stride = std::max(static_cast<int>((scaled + divisor - 1) / divisor), layout->GetStride(i, area.width));
    int height = layout->GetPlaneHeight(i, area.height);
    long long size = static_cast<long long>(stride) * height;
    if (offset + size > length) return ResultBufferTooSmall();
    planes.data[i] = data + offset + (bottomUp ? size - stride : 0);
    planes.stride[i] = bottomUp ? -stride : stride;
    planes.height[i] = height;
    offset += size;
  }
  planes.count = layout->planeCount;
  return Result();
}

CPixelBufferDataReference::CPixelBufferDataReference(CByteArray* buffer, int stride, Area<int> area)
    : CPixelDataReference(TypeCode), buffer_(buffer), stride_(stride), area_(area) {
  if (buffer_) buffer_->Acquire();
}

CPixelBufferDataReference::~CPixelBufferDataReference() {
  if (buffer_) buffer_->Release();
}

bool CPixelBufferDataReference::IsType(unsigned int type) const {
  return type == TypeCode || CPixelDataReference::IsType(type);
}

int CPixelBufferDataReference::GetLength() { return buffer_ ? buffer_->GetLength() : 0; }

unsigned char* CPixelBufferDataReference::GetData() { return buffer_ ? buffer_->GetData() : nullptr; }

Area<int> CPixelBufferDataReference::GetArea() const { return buffer_ ? area_ : Area<int>(); }

CByteArray* CPixelBufferDataReference::GetBuffer() const {
  if (buffer_) buffer_->Acquire();
  return buffer_;
}

CInterlacedPixelBufferDataReference::CInterlacedPixelBufferDataReference(CByteArray* buffer, int stride,
                                                                         Area<int> area, int fieldOrder)
    : CPixelBufferDataReference(buffer, stride, area), fieldOrder_(fieldOrder), interleaved_(nullptr) {}

CInterlacedPixelBufferDataReference::~CInterlacedPixelBufferDataReference() {
  if (interleaved_) interleaved_->Release();
}

Result CInterlacedPixelBufferDataReference::Lock(int mode) {
  Result result = CPixelBufferDataReference::Lock(mode);
  if (result.Failed() || interleaved_) return result;
  result = Interleave();
  if (result.Failed()) CPixelBufferDataReference::Unlock();
  return result;
}

Result CInterlacedPixelBufferDataReference::Interleave() {
  if (!buffer_) return ResultNullPointer();
  if (fieldOrder_ != 2 && fieldOrder_ != 3) return ResultNotSupported();
  int lines = area_.height / 2;
  long long fieldBytes = static_cast<long long>(lines) * stride_;
  if (stride_ <= 0 || lines <= 0 || 2 * fieldBytes > buffer_->GetLength()) return ResultBufferTooSmall();
  RObject<CByteArray> frame(new CByteArray(static_cast<int>(2 * fieldBytes), 64));
  const unsigned char* halves[2] = {buffer_->GetData(), buffer_->GetData() + fieldBytes};
  if (fieldOrder_ == 3) std::swap(halves[0], halves[1]);
  unsigned char* out = frame->GetData();
  for (int line = 0; line < 2 * lines; ++line) {
    std::memcpy(out + static_cast<long long>(line) * stride_, halves[line & 1] + static_cast<long long>(line / 2) * stride_,
                static_cast<size_t>(stride_));
  }
  interleaved_ = frame.Detach();
  return Result();
}

int CInterlacedPixelBufferDataReference::GetLength() {
  return interleaved_ ? interleaved_->GetLength() : CPixelBufferDataReference::GetLength();
}

unsigned char* CInterlacedPixelBufferDataReference::GetData() {
  return interleaved_ ? interleaved_->GetData() : CPixelBufferDataReference::GetData();
}

Result CMemoryDataReference::Create(CVideoProperties* properties, CByteArray* buffer, CMemoryDataReference*& reference) {
  return Create(properties, buffer, 0, reference);
}

Result CMemoryDataReference::Create(CVideoProperties* properties, CByteArray* buffer, int stride,
                                    CMemoryDataReference*& reference) {
  reference = nullptr;
  if (!properties || !buffer) return ResultArgumentNull();
  unsigned int format = properties->GetFormat();
  if (!PlaneLayout::Find(format)) return ResultNotSupported("unknown format %s", FourString(format).GetChars());
  if (stride <= 0) stride = properties->GetStride(0);
  reference = new CPixelBufferDataReference(buffer, stride, Area<int>(properties->GetWidth(), properties->GetHeight()));
  return Result();
}

}  // namespace Corvane::Mox
