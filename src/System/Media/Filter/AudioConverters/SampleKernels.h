#pragma once
// Whole-buffer kernels for PCM sample conversion, dispatched at run time to
// the widest vector unit of the machine. Integer samples travel between
// formats as 32-bit values aligned to the high bits ("wide" values): loading
// a narrower sample puts it in the top bits with zero below, storing one
// keeps the top bits and drops the rest. Byte order is given per call;
// little-endian is the host order.

#include <cstddef>
#include <cstdint>

namespace Corvane::Mox::SampleKernels {

// Loads n samples of 1 to 4 bytes into wide values. An unsigned form has its
// most significant bit inverted on the way (value - midpoint).
void LoadInt8(const uint8_t* in, int32_t* out, size_t n, bool isUnsigned);
void LoadInt16(const uint8_t* in, int32_t* out, size_t n, bool bigEndian);
void LoadInt24(const uint8_t* in, int32_t* out, size_t n, bool bigEndian, bool isUnsigned);
void LoadInt32(const uint8_t* in, int32_t* out, size_t n, bool bigEndian);

// Stores the top 8, 16, 24 or 32 bits of n wide values.
void StoreInt8(const int32_t* in, uint8_t* out, size_t n, bool isUnsigned);
void StoreInt16(const int32_t* in, uint8_t* out, size_t n, bool bigEndian);
void StoreInt24(const int32_t* in, uint8_t* out, size_t n, bool bigEndian, bool isUnsigned);
void StoreInt32(const int32_t* in, uint8_t* out, size_t n, bool bigEndian);

// Wide values to float: multiplied by 2^-31.
void WideToFloat32(const int32_t* in, float* out, size_t n);
void WideToFloat64(const int32_t* in, double* out, size_t n);

// Float to wide values for an integer output of `bits` bits (8, 16 or 32;
// 20- and 24-bit outputs use 32 and drop low bits when stored): multiplied
// by 2^(bits-1), rounded to nearest with ties away from zero, clamped to the
// output's range and moved to the high bits. NaN becomes 0.
void Float32ToWide(const float* in, int32_t* out, size_t n, int bits);
void Float64ToWide(const double* in, int32_t* out, size_t n, int bits);

// Float samples in either byte order to and from host floats.
void LoadFloat32(const uint8_t* in, float* out, size_t n, bool bigEndian);
void StoreFloat32(const float* in, uint8_t* out, size_t n, bool bigEndian);
void LoadFloat64(const uint8_t* in, double* out, size_t n, bool bigEndian);
void StoreFloat64(const double* in, uint8_t* out, size_t n, bool bigEndian);
void Float32ToFloat64(const float* in, double* out, size_t n);
void Float64ToFloat32(const double* in, float* out, size_t n);

// Reverses the byte order of n values of `width` bytes (2, 3, 4 or 8).
void SwapBytes(const uint8_t* in, uint8_t* out, size_t n, int width);

}  // namespace Corvane::Mox::SampleKernels
