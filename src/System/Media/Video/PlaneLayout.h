#pragma once
// PlaneLayout: how an uncompressed picture of a format code lies in memory:
// its planes, what each holds, how many bytes a line of each takes for a
// given width and how many lines it has for a given height. One table serves
// the descriptions (sample lengths and strides), the pixel buffers (plane
// pointers) and the pixel converters. Aliases resolve to the named code they
// stand for.

namespace Corvane::Mox {

struct PlaneLayout {
  enum Packing : int { Planar = 0, BiPlanar = 1, Packed = 2 };
  enum ByteOrder : int { SingleByte = 0, LittleEndian = 1, BigEndian = 2 };
  static constexpr int MaxPlanes = 4;

  struct Plane {
    const char* components;  // memory order, one letter per sample ("UYVY", "Y", "UV")
    int blockWidth;          // picture pixels covered by one block
    int blockBytes;          // bytes of one block
    int verticalDivisor;     // picture lines per plane line
  };

  unsigned int format;
  Packing packing;
  int bitDepth;          // significant bits per component
  ByteOrder byteOrder;   // of samples wider than a byte
  int subsampling;       // chroma byte (0x22 = 4:2:0); 0 for RGB and alpha
  int planeCount;
  Plane planes[MaxPlanes];
  int lineAlignment;     // strides are rounded up to this many bytes

  // The layout of a format (or of the named format an alias stands for); null when none.
  static const PlaneLayout* Find(unsigned int format);
  // Number of formats with a layout.
  static int GetCount();
  static const PlaneLayout* GetAt(int index);

  // Bytes of one line of plane for a picture width; 0 for a bad plane or width.
  int GetStride(int plane, int width) const;
  // Lines of plane for a picture height.
  int GetPlaneHeight(int plane, int height) const;
  // Bytes of plane: stride × lines (given stride, or the natural one when 0).
  long long GetPlaneSize(int plane, int width, int height, int stride = 0) const;
  // Bytes of the whole picture, planes one after the other.
  long long GetSampleLength(int width, int height) const;
};

}  // namespace Corvane::Mox
