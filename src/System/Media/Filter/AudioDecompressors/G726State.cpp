#include "System/Media/Filter/AudioDecompressors/G726State.h"

#include "System/Media/Audio/G711.h"

namespace Corvane::Mox {

// The per-rate tables, indexed by the code's magnitude |I|: the normalised
// log of the quantized difference (12-bit two's complement, 7 fractional
// bits), the scale factor multiplier W(I), the speed-control input F(I), and
// the quantizer's decision levels on the same log scale.
struct G726State::Rate {
  int bits;
  const int* dqln;
  const int* w;
  const int* f;
  const int* decisions;
  int decisionCount;
};

namespace {

const int kDqln2[] = {116, 365};
const int kW2[] = {-22, 439};
const int kF2[] = {0, 7};
const int kQ2[] = {261};

const int kDqln3[] = {-2048, 135, 273, 373};
const int kW3[] = {-4, 30, 137, 582};
const int kF3[] = {0, 1, 2, 7};
const int kQ3[] = {8, 218, 331};

const int kDqln4[] = {-2048, 4, 135, 213, 273, 323, 373, 425};
const int kW4[] = {-12, 18, 41, 64, 112, 198, 355, 1122};
const int kF4[] = {0, 0, 0, 1, 1, 1, 3, 7};
const int kQ4[] = {-124, 80, 178, 246, 300, 349, 400};

const int kDqln5[] = {-2048, -66, 28, 104, 169, 224, 274, 318, 358, 395, 429, 459, 488, 514, 539, 566};
const int kW5[] = {14, 14, 24, 39, 40, 41, 58, 100, 141, 179, 219, 280, 358, 440, 529, 696};
const int kF5[] = {0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 2, 3, 4, 5, 6, 6};
const int kQ5[] = {-122, -16, 68, 139, 198, 250, 298, 339, 378, 413, 445, 475, 502, 528, 553};

// Position of the most significant bit plus one; 0 for 0.
int BitLength(int value) {
  int n = 0;
  while (value > 0) {
    ++n;
    value >>= 1;
  }
  return n;
}

// A 16-bit two's complement pattern as a signed value.
int Signed16(int pattern) { return pattern >= 32768 ? pattern - 65536 : pattern; }

// The code's magnitude: negative codes (sign bit set) count down from the
// all-ones code, which is "minus zero".
int Magnitude(int code, int bits) {
  const int sign = 1 << (bits - 1);
  return code & sign ? (2 * sign - 1 - code) : code;
}

// FMULT: a 16-bit coefficient times an 11-bit floating-format signal, as a
// 16-bit two's complement pattern.
int Fmult(int an, int srn) {
  const int ans = an >> 15;
  const int anmag = ans ? (16384 - (an >> 2)) & 8191 : an >> 2;
  const int anexp = BitLength(anmag);
  const int anmant = anmag == 0 ? 1 << 5 : (anmag << 6) >> anexp;
  const int srns = srn >> 10;
  const int srnexp = (srn >> 6) & 15;
  const int srnmant = srn & 63;
  const int wans = srns ^ ans;
  const int wanexp = srnexp + anexp;
  const int wanmant = ((srnmant * anmant) + 48) >> 4;
  const int wanmag = wanexp <= 26 ? (wanmant << 7) >> (26 - wanexp) : ((wanmant << 7) << (wanexp - 26)) & 32767;
  return wans ? (65536 - wanmag) & 65535 : wanmag;
}

// FLOATA: a 16-bit sign-magnitude word to the floating format.
int FloatA(int dq) {
  const int sign = dq >> 15;
  const int mag = dq & 32767;
  const int exp = BitLength(mag);
  const int mant = mag == 0 ? 1 << 5 : (mag << 6) >> exp;
  return (sign << 10) + (exp << 6) + mant;
}

// FLOATB: a 16-bit two's complement word to the floating format.
int FloatB(int sr) {
  const int sign = sr >> 15;
  const int mag = sign ? (65536 - sr) & 32767 : sr;
  const int exp = BitLength(mag);
  const int mant = mag == 0 ? 1 << 5 : (mag << 6) >> exp;
  return (sign << 10) + (exp << 6) + mant;
}

// Sign-magnitude (16-bit) to two's complement (16-bit).
int SignMagnitudeTo16(int dq) { return dq >> 15 ? (65536 - (dq & 32767)) & 65535 : dq; }
// 15-bit two's complement sign-extended to 16 bits.
int Extend15(int value) { return value >> 14 ? value + 32768 : value; }

}  // namespace

const G726State::Rate* G726State::RateOf(int bits) {
  static const Rate kRates[] = {
      {2, kDqln2, kW2, kF2, kQ2, 1},
      {3, kDqln3, kW3, kF3, kQ3, 3},
      {4, kDqln4, kW4, kF4, kQ4, 7},
      {5, kDqln5, kW5, kF5, kQ5, 15},
  };
  return bits >= 2 && bits <= 5 ? &kRates[bits - 2] : nullptr;
}

void G726State::Reset() {
  for (int n = 0; n < 6; ++n) {
    b_[n] = 0;
    dq_[n] = 32;
  }
  a_[0] = a_[1] = 0;
  sr_[0] = sr_[1] = 32;
  pk_[0] = pk_[1] = 0;
  yu_ = 544;
  yl_ = 34816;
  dms_ = dml_ = ap_ = 0;
  td_ = false;
}

int G726State::PredictorZero() const {
  int sum = 0;
  for (int n = 0; n < 6; ++n) sum += Fmult(b_[n], dq_[n]);
  return sum & 65535;
}

int G726State::PredictorPole() const { return (Fmult(a_[0], sr_[0]) + Fmult(a_[1], sr_[1])) & 65535; }

int G726State::ScaleFactor() const {
  // LIMA and MIX: the speed control weighs the fast factor against the slow.
  const int al = ap_ >= 256 ? 64 : ap_ >> 2;
  const int dif = (yu_ + 16384 - (yl_ >> 6)) & 16383;
  const int difs = dif >> 13;
  const int difm = difs ? (16384 - dif) & 8191 : dif;
  const int prodm = (difm * al) >> 6;
  const int prod = difs ? (16384 - prodm) & 16383 : prodm;
  return ((yl_ >> 6) + prod) & 8191;
}

uint8_t G726State::DecodeToAlaw(int code, int bits) {
  const Rate* rate = RateOf(bits);
  if (!rate) return 0x55;
  code &= (1 << bits) - 1;
  const int sezi = PredictorZero();
  const int sei = (sezi + PredictorPole()) & 65535;
  const int sez = sezi >> 1;
  const int se = sei >> 1;
  const int y = ScaleFactor();

  // RECONST, ADDA, ANTILOG: the quantized difference, sign-magnitude.
  const int dqs = code >> (bits - 1);
  const int dql = (rate->dqln[Magnitude(code, bits)] + 4096 + (y >> 2)) & 4095;
  const int ds = dql >> 11;
  const int dex = (dql >> 7) & 15;
  const int dqt = (1 << 7) + (dql & 127);
  const int dqmag = ds ? 0 : (dqt << 7) >> (14 - dex);
  const int dq = (dqs << 15) + dqmag;

  // ADDB and ADDC: the reconstructed signal and the sign of dq + sez.
  const int sr = (SignMagnitudeTo16(dq) + Extend15(se)) & 65535;
  const int dqsez = (SignMagnitudeTo16(dq) + Extend15(sez)) & 65535;

  // COMPRESS: the 14-bit reconstructed signal to 13 bits, then to A-law.
  int linear = Signed16(sr) >> 1;
  linear = linear < -4096 ? -4096 : (linear > 4095 ? 4095 : linear);
  const uint8_t alaw = G711::AlawCompress(static_cast<int16_t>(linear * 8));
  const uint8_t output = Synchronise(alaw, code, se, y, *rate);

  Adapt(code, *rate, y, dq, sr, dqsez);
  return output;
}

uint8_t G726State::Synchronise(uint8_t alaw, int code, int se, int y, const Rate& rate) const {
  // Re-quantize the difference between the decoded output and the signal
  // estimate; if it does not give back the received code, move the output
  // one A-law step toward the value that would.
  const int d = (G711::AlawExpand(alaw) >> 2) - Signed16(Extend15(se));
  const int magnitude = d < 0 ? -d : d;
  const int exp = BitLength(magnitude >> 1);
  const int dl = (exp << 7) + (((magnitude << 7) >> exp) & 127);
  const int dln = dl - (y >> 2);
  int level = 0;
  while (level < rate.decisionCount && dln >= rate.decisions[level]) ++level;
  const int sign = 1 << (rate.bits - 1);
  int requantized;
  if (d < 0) requantized = 2 * sign - 1 - level;
  else if (level == 0 && rate.bits != 2) requantized = 2 * sign - 1;  // zero is sent as "minus zero"
  else requantized = level;
  if (requantized == code) return alaw;
  // Codes ordered by value: the most negative first.
  const bool tooHigh = (requantized ^ sign) > (code ^ sign);
  const int folded = alaw ^ 0x55;  // sign bit (1: positive) and a magnitude rising with the value
  const bool positive = folded & 0x80;
  const int step = folded & 0x7F;
  int adjusted;
  if (tooHigh) adjusted = positive ? (step == 0 ? 0x00 : folded - 1) : (step == 0x7F ? folded : folded + 1);
  else adjusted = positive ? (step == 0x7F ? folded : folded + 1) : (step == 0 ? 0x80 : folded - 1);
  return static_cast<uint8_t>(adjusted ^ 0x55);
}

void G726State::Adapt(int code, const Rate& rate, int y, int dq, int sr, int dqsez) {
  const int magnitude = Magnitude(code, rate.bits);
  const int pk0 = dqsez >> 15;
  const int sigpk = dqsez == 0 ? 1 : 0;

  // FUNCTW, FILTD, LIMB, FILTE: the fast and slow scale factors.
  const int wi = rate.w[magnitude] & 4095;
  int dif = ((wi << 5) + 131072 - y) & 131071;
  const int difsx = dif >> 16 ? (dif >> 5) + 4096 : dif >> 5;
  const int yut = (y + difsx) & 8191;
  const int geul = ((yut + 11264) & 16383) >> 13;
  const int gell = ((yut + 15840) & 16383) >> 13;
  const int yup = gell ? 544 : (geul ? yut : 5120);
  dif = (yup + ((1048576 - yl_) >> 6)) & 16383;
  const int ylp = (yl_ + (dif >> 13 ? dif + 507904 : dif)) & 524287;

  // UPA2, LIMC: the second pole coefficient.
  const int a1 = a_[0], a2 = a_[1];
  const int pks1 = pk0 ^ pk_[0];
  const int pks2 = pk0 ^ pk_[1];
  const int uga2a = pks2 ? 114688 : 16384;
  int fa1;
  if (a1 >> 15) fa1 = a1 >= 57345 ? (a1 << 2) & 131071 : 24577 << 2;
  else fa1 = a1 <= 8191 ? a1 << 2 : 8191 << 2;
  const int fa = pks1 ? fa1 : (131072 - fa1) & 131071;
  const int uga2b = (uga2a + fa) & 131071;
  const int uga2 = sigpk ? 0 : (uga2b >> 16 ? (uga2b >> 7) + 64512 : uga2b >> 7);
  const int ula2 = a2 >> 15 ? (65536 - ((a2 >> 7) + 65024)) & 65535 : (65536 - (a2 >> 7)) & 65535;
  const int a2t = (a2 + ((uga2 + ula2) & 65535)) & 65535;
  int a2p = a2t;
  if (a2t >= 32768 && a2t <= 53248) a2p = 53248;
  else if (a2t >= 12288 && a2t <= 32767) a2p = 12288;

  // UPA1, LIMD: the first pole coefficient, kept inside the stability region.
  const int uga1 = sigpk ? 0 : (pks1 ? 65344 : 192);
  const int ula1 = a1 >> 15 ? (65536 - ((a1 >> 8) + 65280)) & 65535 : (65536 - (a1 >> 8)) & 65535;
  const int a1t = (a1 + ((uga1 + ula1) & 65535)) & 65535;
  const int a1ul = (15360 + 65536 - a2p) & 65535;
  const int a1ll = (a2p + 65536 - 15360) & 65535;
  int a1p = a1t;
  if (a1t >= 32768 && a1t <= a1ll) a1p = a1ll;
  else if (a1t >= a1ul && a1t <= 32767) a1p = a1ul;

  // XOR, UPB: the zero-section coefficients (a faster leak at 40 kbit/s).
  int bp[6];
  const int dqmag = dq & 32767;
  for (int n = 0; n < 6; ++n) {
    const int un = (dq >> 15) ^ (dq_[n] >> 10);
    const int ugb = dqmag == 0 ? 0 : (un ? 65408 : 128);
    const int bn = b_[n];
    int ulb;
    if (rate.bits == 5) ulb = bn >> 15 ? (65536 - ((bn >> 9) + 65408)) & 65535 : (65536 - (bn >> 9)) & 65535;
    else ulb = bn >> 15 ? (65536 - ((bn >> 8) + 65280)) & 65535 : (65536 - (bn >> 8)) & 65535;
    bp[n] = (bn + ((ugb + ulb) & 65535)) & 65535;
  }

  // TONE, TRANS: a narrow-band signal and its end, which resets the predictor.
  const bool tdp = a2p >= 32768 && a2p < 53760;
  const int ylint = yl_ >> 15;
  const int ylfrac = (yl_ >> 10) & 31;
  const int thr1 = (32 + ylfrac) << ylint;
  const int thr2 = ylint > 9 ? 31 << 10 : thr1;
  const int dqthr = (thr2 + (thr2 >> 1)) >> 1;
  const bool tr = dqmag > dqthr && td_;

  // FUNCTF, FILTA, FILTB, SUBTC, FILTC, TRIGB: the speed control.
  const int fi = rate.f[magnitude];
  dif = ((fi << 9) + 8192 - dms_) & 8191;
  const int dmsp = ((dif >> 12 ? (dif >> 5) + 3840 : dif >> 5) + dms_) & 4095;
  dif = ((fi << 11) + 32768 - dml_) & 32767;
  const int dmlp = ((dif >> 14 ? (dif >> 7) + 16128 : dif >> 7) + dml_) & 16383;
  dif = ((dmsp << 2) + 32768 - dmlp) & 32767;
  const int difm = dif >> 14 ? (32768 - dif) & 16383 : dif;
  const int ax = (y >= 1536 && difm < (dmlp >> 3) && !tdp) ? 0 : 1;
  dif = ((ax << 9) + 2048 - ap_) & 2047;
  const int app = ((dif >> 10 ? (dif >> 4) + 896 : dif >> 4) + ap_) & 1023;

  // The delay line.
  a_[0] = tr ? 0 : a1p;
  a_[1] = tr ? 0 : a2p;
  for (int n = 0; n < 6; ++n) b_[n] = tr ? 0 : bp[n];
  td_ = tr ? false : tdp;
  for (int n = 5; n > 0; --n) dq_[n] = dq_[n - 1];
  dq_[0] = FloatA(dq);
  sr_[1] = sr_[0];
  sr_[0] = FloatB(sr);
  pk_[1] = pk_[0];
  pk_[0] = pk0;
  yu_ = yup;
  yl_ = ylp;
  dms_ = dmsp;
  dml_ = dmlp;
  ap_ = tr ? 256 : app;
}

}  // namespace Corvane::Mox
