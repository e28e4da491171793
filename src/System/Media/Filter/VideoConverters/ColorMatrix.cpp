#include "System/Media/Filter/VideoConverters/ColorMatrix.h"

namespace Corvane::Mox {

namespace {

// Kr and Kb of the matrix coefficient codes that are a weighted sum of R, G
// and B (ITU-T H.273 table 4). 10 (BT.2020 constant luminance) has no linear
// form; it is converted with the non-constant-luminance weights.
struct LumaWeights {
  int code;
  double kr;
  double kb;
};

constexpr LumaWeights kWeights[] = {
    {1, 0.2126, 0.0722},   // BT.709
    {4, 0.30, 0.11},       // FCC
    {5, 0.299, 0.114},     // BT.470 System B, G / BT.601 625
    {6, 0.299, 0.114},     // BT.601 525 / SMPTE 170M
    {7, 0.212, 0.087},     // SMPTE 240M
    {9, 0.2627, 0.0593},   // BT.2020 non-constant luminance
    {10, 0.2627, 0.0593},  // BT.2020 constant luminance (approximated)
};

const LumaWeights* FindWeights(int matrix) {
  for (const LumaWeights& w : kWeights)
    if (w.code == matrix) return &w;
  return nullptr;
}

ColorMatrix4 FromRows(const double rows[3][3]) {
  ColorMatrix4 result = ColorMatrix4::Identity();
  for (int r = 0; r < 3; ++r)
    for (int c = 0; c < 3; ++c) result.m[r * 4 + c] = static_cast<float>(rows[r][c]);
  return result;
}

// 3x3 inverse by cofactors; the matrices here are never singular.
void Invert3(const double a[3][3], double out[3][3]) {
  const double det = a[0][0] * (a[1][1] * a[2][2] - a[1][2] * a[2][1]) -
                     a[0][1] * (a[1][0] * a[2][2] - a[1][2] * a[2][0]) +
                     a[0][2] * (a[1][0] * a[2][1] - a[1][1] * a[2][0]);
  out[0][0] = (a[1][1] * a[2][2] - a[1][2] * a[2][1]) / det;
  out[0][1] = (a[0][2] * a[2][1] - a[0][1] * a[2][2]) / det;
  out[0][2] = (a[0][1] * a[1][2] - a[0][2] * a[1][1]) / det;
  out[1][0] = (a[1][2] * a[2][0] - a[1][0] * a[2][2]) / det;
  out[1][1] = (a[0][0] * a[2][2] - a[0][2] * a[2][0]) / det;
  out[1][2] = (a[0][2] * a[1][0] - a[0][0] * a[1][2]) / det;
  out[2][0] = (a[1][0] * a[2][1] - a[1][1] * a[2][0]) / det;
  out[2][1] = (a[0][1] * a[2][0] - a[0][0] * a[2][1]) / det;
  out[2][2] = (a[0][0] * a[1][1] - a[0][1] * a[1][0]) / det;
}

// Y'PbPr from R'G'B' with the inputs in slot order G, B, R.
bool ForwardRows(int matrix, double rows[3][3]) {
  if (matrix == 0) {  // identity: the slots already hold G, B, R
    const double identity[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    for (int r = 0; r < 3; ++r)
      for (int c = 0; c < 3; ++c) rows[r][c] = identity[r][c];
    return true;
  }
  if (matrix == 8) {  // YCgCo: Cg in the Cb slot, Co in the Cr slot
    const double ycgco[3][3] = {{0.5, 0.25, 0.25}, {0.5, -0.25, -0.25}, {0.0, -0.5, 0.5}};
    for (int r = 0; r < 3; ++r)
      for (int c = 0; c < 3; ++c) rows[r][c] = ycgco[r][c];
    return true;
  }
  const LumaWeights* w = FindWeights(matrix);
  if (!w) return false;
  const double kg = 1.0 - w->kr - w->kb;
  // Y = Kr R + Kg G + Kb B; Pb = (B - Y) / (2 (1 - Kb)); Pr = (R - Y) / (2 (1 - Kr)).
  const double y[3] = {kg, w->kb, w->kr};
  for (int c = 0; c < 3; ++c) rows[0][c] = y[c];
  const double b[3] = {0, 1, 0}, r[3] = {0, 0, 1};
  for (int c = 0; c < 3; ++c) {
    rows[1][c] = (b[c] - y[c]) / (2.0 * (1.0 - w->kb));
    rows[2][c] = (r[c] - y[c]) / (2.0 * (1.0 - w->kr));
  }
  return true;
}

bool IsRgbMatrix(int matrix) { return matrix == 0; }

}  // namespace

ColorMatrix4 ColorMatrix4::Identity() {
  ColorMatrix4 result;
  for (int i = 0; i < 4; ++i) result.m[i * 5] = 1.0f;
  return result;
}

ColorMatrix4 ColorMatrix4::Mul_mm4x4_32f(const ColorMatrix4& a, const ColorMatrix4& b) {
  ColorMatrix4 result;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) {
      double sum = 0;
      for (int k = 0; k < 4; ++k) sum += static_cast<double>(a.m[r * 4 + k]) * b.m[k * 4 + c];
      result.m[r * 4 + c] = static_cast<float>(sum);
    }
  return result;
}

ColorMatrix4 ColorMatrix4::Normalise(int matrix, int range, int bitDepth) {
  const ColorMatrix4 d = Denormalise(matrix, range, bitDepth);
  // Denormalise is diagonal with offsets: invert it in place.
  ColorMatrix4 result = Identity();
  for (int i = 0; i < 3; ++i) {
    result.m[i * 5] = 1.0f / d.m[i * 5];
    result.m[i * 4 + 3] = -d.m[i * 4 + 3] / d.m[i * 5];
  }
  return result;
}

ColorMatrix4 ColorMatrix4::Denormalise(int matrix, int range, int bitDepth) {
  const bool rgb = IsRgbMatrix(matrix);
  const bool full = range == 2 || (range != 1 && rgb);
  const double scale = static_cast<double>(1 << bitDepth) / 256.0;
  const double maximum = static_cast<double>((1 << bitDepth) - 1);
  ColorMatrix4 result = Identity();
  for (int i = 0; i < 3; ++i) {
    const bool chroma = !rgb && i > 0;
    double gain, offset;
    if (full) {
      gain = maximum;
      offset = chroma ? static_cast<double>(1 << (bitDepth - 1)) : 0.0;
    } else {
      gain = (chroma ? 224.0 : 219.0) * scale;
      offset = (chroma ? 128.0 : 16.0) * scale;
    }
    result.m[i * 5] = static_cast<float>(gain);
    result.m[i * 4 + 3] = static_cast<float>(offset);
  }
  return result;
}

bool ColorMatrix4::FromRgb(int matrix, ColorMatrix4& result) {
  double rows[3][3];
  if (!ForwardRows(matrix, rows)) return false;
  result = FromRows(rows);
  return true;
}

bool ColorMatrix4::ToRgb(int matrix, ColorMatrix4& result) {
  double rows[3][3], inverse[3][3];
  if (!ForwardRows(matrix, rows)) return false;
  Invert3(rows, inverse);
  result = FromRows(inverse);
  return true;
}

bool ColorMatrix4::Compose(int inputMatrix, int inputRange, int inputDepth, int outputMatrix, int outputRange,
                           int outputDepth, ColorMatrix4& result) {
  ColorMatrix4 toRgb, fromRgb;
  if (!ToRgb(inputMatrix, toRgb) || !FromRgb(outputMatrix, fromRgb)) return false;
  const ColorMatrix4 normalise = Normalise(inputMatrix, inputRange, inputDepth);
  const ColorMatrix4 denormalise = Denormalise(outputMatrix, outputRange, outputDepth);
  result = Mul_mm4x4_32f(denormalise, Mul_mm4x4_32f(fromRgb, Mul_mm4x4_32f(toRgb, normalise)));
  return true;
}

}  // namespace Corvane::Mox

