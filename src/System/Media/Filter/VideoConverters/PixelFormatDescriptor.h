#pragma once
// PixelFormatDescriptor: the key of a stage map row, a pixel format and the
// matrix coefficients its components are coded with. Matrix 0 (identity)
// marks RGB carried in the Y, U and V planes as G, B and R; matrix 2 on a
// row's input accepts any matrix and on its output keeps the input's.

namespace Corvane::Mox {

class CVideoProperties;

struct PixelFormatDescriptor {
  unsigned int format = 0;
  unsigned char matrix = 2;

  // The canonical format of a description (aliases resolved to the code
  // their layout is named by) with its matrix; packed RGB formats always
  // resolve to matrix 0.
  static PixelFormatDescriptor Resolve(const CVideoProperties* properties);
  // The canonical code of a format, or 0 when it has no pixel layout.
  static unsigned int Canonical(unsigned int format);
  // True for formats whose components are R, G and B.
  static bool IsRgb(unsigned int format);
  // The significant bits per component and the chroma byte of a format
  // (0x11 for RGB); 0 when unknown.
  static int GetBitDepth(unsigned int format);
  static int GetSubsampling(unsigned int format);
  static bool HasAlpha(unsigned int format);

  // Whether a row key accepts a descriptor (matrix 2 accepts any).
  bool Accepts(const PixelFormatDescriptor& other) const {
    return format == other.format && (matrix == 2 || matrix == other.matrix);
  }
  friend bool operator==(const PixelFormatDescriptor& a, const PixelFormatDescriptor& b) {
    return a.format == b.format && a.matrix == b.matrix;
  }
};

}  // namespace Corvane::Mox
