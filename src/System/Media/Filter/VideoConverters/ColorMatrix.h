#pragma once
// Colour matrix helpers: 4x4 row-major matrices over (c0, c1, c2, 1) that
// take the code values of one description to those of another. A matrix is
// composed of three parts: code values to normalised components (range and
// bit depth), the YUV/RGB matrix change, and normalised components back to
// code values; the twist stage then runs one matrix per pixel.
//
// Component order is the slot order of the line codec: Y, Cb, Cr for YUV
// and G, B, R for RGB (matrix coefficients 0).

namespace Corvane::Mox {

struct ColorMatrix4 {
  float m[16] = {};

  static ColorMatrix4 Identity();
  // Mul_mm4x4_32f: the product a × b (b applied first).
  static ColorMatrix4 Mul_mm4x4_32f(const ColorMatrix4& a, const ColorMatrix4& b);

  // Code values of a description to normalised components: Y' or G, B, R in
  // 0..1 and Pb, Pr in -0.5..0.5. range is the video range (1 narrow, 2
  // full; 0 is narrow for YUV and full for RGB).
  static ColorMatrix4 Normalise(int matrix, int range, int bitDepth);
  static ColorMatrix4 Denormalise(int matrix, int range, int bitDepth);
  // Normalised Y'PbPr of the H.273 matrix coefficients to R'G'B' in slot
  // order (G, B, R); false for codes without a linear matrix.
  static bool ToRgb(int matrix, ColorMatrix4& result);
  static bool FromRgb(int matrix, ColorMatrix4& result);

  // The whole conversion from one description's code values to another's;
  // false when either matrix is not one of the known codes.
  static bool Compose(int inputMatrix, int inputRange, int inputDepth, int outputMatrix, int outputRange,
                      int outputDepth, ColorMatrix4& result);
};

}  // namespace Corvane::Mox
