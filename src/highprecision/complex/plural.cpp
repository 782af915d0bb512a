// SPDX-License-Identifier: Apache-2.0
#include "highprecision/complex/plural.h"

#include <algorithm>
#include <optional>

#include "highprecision/decimal/constants.h"
#include "highprecision/decimal/real_functions.h"

namespace HP {
namespace {

// Results beyond this many words of exponent are undefined, or 0.
constexpr long kMaxWords = 1L << 48;
// Arguments of exp from this size on overflow in any case: 2^53 / ln 2 > 64 kMaxWords / 2.
constexpr int64_t kMaxExpBits = 53;
// Angles with more bits before the point are not reduced.
constexpr int64_t kMaxAngleBits = 1 << 20;

struct Complex {
  HPByGMP re, im;
};

using Result = std::optional<Complex>;

// The digits of a float beyond its precision, and a guard.
constexpr mp_bitcnt_t kSpare = 192;

mp_bitcnt_t precisionOf(const HPPlural& z) {
  return std::max(mpf_get_prec(z.real->get()), mpf_get_prec(z.imaginary->get()));
}

// Enough that sums of products of the parts are exact unless their sizes are far apart.
mp_bitcnt_t workBits(const HPPlural& a) { return 2 * std::max(precisionOf(a), mpf_get_default_prec()) + kSpare; }
mp_bitcnt_t workBits(const HPPlural& a, const HPPlural& b) { return std::max(workBits(a), workBits(b)); }

Complex valueOf(const HPPlural& z) { return {*z.real, *z.imaginary}; }

bool isZero(const Complex& z) { return sign(z.re) == 0 && sign(z.im) == 0; }

// Cuts a part to the default precision; false when it is out of reach.
bool store(const HPByGMP& part, HPByGMP& out) {
  if (sign(part) != 0 && part.get()->_mp_exp > kMaxWords) return false;
  if (part.get()->_mp_exp >= -kMaxWords) mpf_set(out.get(), part.get());
  return true;
}

PluralValue made(const Result& value) {
  if (!value) return nullptr;
  auto result = std::make_shared<HPPlural>();
  return store(value->re, *result->real) && store(value->im, *result->imaginary) ? result : nullptr;
}

Complex real(const HPByGMP& x) { return {x, number(0)}; }
Complex timesI(const Complex& z) { return {minus(z.im), z.re}; }
Complex timesMinusI(const Complex& z) { return {z.im, minus(z.re)}; }
Result timesMinusI(const Result& z) { return z ? Result(timesMinusI(*z)) : z; }

Complex product(const Complex& a, const Complex& b, mp_bitcnt_t bits) {
  return {difference(product(a.re, b.re, bits), product(a.im, b.im, bits), bits),
          sum(product(a.re, b.im, bits), product(a.im, b.re, bits), bits)};
}

HPByGMP norm(const Complex& z, mp_bitcnt_t bits) {
  return sum(product(z.re, z.re, bits), product(z.im, z.im, bits), bits);
}

Result quotient(const Complex& a, const Complex& b, mp_bitcnt_t bits) {
  if (isZero(b)) return std::nullopt;
  if (sign(b.im) == 0) return Complex{quotient(a.re, b.re, bits), quotient(a.im, b.re, bits)};
  const Complex up = product(a, {b.re, minus(b.im)}, bits);
  const HPByGMP down = norm(b, bits);
  return Complex{quotient(up.re, down, bits), quotient(up.im, down, bits)};
}

HPByGMP pi(mp_bitcnt_t bits) { return HighPrecision::constantOf(HighPrecision::Constant::pi, bits); }

// In (-pi, pi]; 0 has no sign.
HPByGMP angleOf(const HPByGMP& y, const HPByGMP& x, mp_bitcnt_t bits) {
  if (sign(x) == 0) {
    const HPByGMP half = scaled(pi(bits), -1);
    return sign(y) == 0 ? number(0) : sign(y) > 0 ? half : minus(half);
  }
  const HPByGMP angle = realAtan(quotient(y, x, bits), bits);
  if (sign(x) > 0) return angle;
  return sign(y) >= 0 ? sum(angle, pi(bits), bits) : difference(angle, pi(bits), bits);
}

Complex logOf(const Complex& z, mp_bitcnt_t bits) {
  // |z|^2 - 1 by (x - 1)(x + 1) + y^2, x the larger part, keeps the digits of a size close to 1.
  const bool swap = mpf_cmp(absolute(z.re).get(), absolute(z.im).get()) < 0;
  const HPByGMP x = absolute(swap ? z.im : z.re);
  const HPByGMP& y = swap ? z.re : z.im;
  const HPByGMP fromOne = sum(product(plus(x, -1, bits), plus(x, 1, bits), bits), product(y, y, bits), bits);
  const bool isNear = exponentOf(x) <= 1 && exponentOf(x) >= 0;
  const HPByGMP log = isNear ? realLog1p(fromOne, bits) : realLog(norm(z, bits), bits);
  return {scaled(log, -1), angleOf(z.im, z.re, bits)};
}

Complex rootOf(const Complex& z, mp_bitcnt_t bits) {
  if (isZero(z)) return z;
  if (sign(z.im) == 0 && sign(z.re) > 0) return real(root(z.re, bits));
  const HPByGMP size = sum(root(norm(z, bits), bits), absolute(z.re), bits);
  const HPByGMP larger = root(scaled(size, -1), bits);  // no difference is formed
  const HPByGMP smaller = quotient(z.im, scaled(larger, 1), bits);
  if (sign(z.re) >= 0) return {larger, smaller};
  return {absolute(smaller), sign(z.im) < 0 ? minus(larger) : larger};
}

bool angleInReach(const HPByGMP& x) { return exponentOf(x) <= kMaxAngleBits; }

Result expOf(const Complex& z, mp_bitcnt_t bits) {
  if (!angleInReach(z.im)) return std::nullopt;
  if (exponentOf(z.re) > kMaxExpBits) return sign(z.re) > 0 ? std::nullopt : Result(Complex{number(0), number(0)});
  const HPByGMP size = realExp(z.re, bits);
  if (sign(z.im) == 0) return real(size);
  const SineCosine turn = realSineCosine(z.im, bits);
  return Complex{product(size, turn.cosine, bits), product(size, turn.sine, bits)};
}

SinhCosh growing(const HPByGMP& y, mp_bitcnt_t bits) {
  if (sign(y) == 0) return {number(0), number(1)};
  return realSinhCosh(y, bits);
}

bool bothInReach(const Complex& z) { return angleInReach(z.re) && exponentOf(z.im) <= kMaxExpBits; }

// sin(x + iy) = sin x cosh y + i cos x sinh y
Result sineOf(const Complex& z, mp_bitcnt_t bits) {
  if (!bothInReach(z)) return std::nullopt;
  const SineCosine turn = realSineCosine(z.re, bits);
  const SinhCosh growth = growing(z.im, bits);
  return Complex{product(turn.sine, growth.cosh, bits), product(turn.cosine, growth.sinh, bits)};
}

// cos(x + iy) = cos x cosh y - i sin x sinh y
Result cosineOf(const Complex& z, mp_bitcnt_t bits) {
  if (!bothInReach(z)) return std::nullopt;
  const SineCosine turn = realSineCosine(z.re, bits);
  const SinhCosh growth = growing(z.im, bits);
  return Complex{product(turn.cosine, growth.cosh, bits), minus(product(turn.sine, growth.sinh, bits))};
}

// (sin x cos x + i sinh y cosh y) / (cos^2 x + sinh^2 y); the cotangent with -i and sin^2 x.
Result tangentOf(const Complex& z, bool inverse, mp_bitcnt_t bits) {
  if (!angleInReach(z.re)) return std::nullopt;
  if (exponentOf(z.im) > kMaxExpBits) return Complex{number(0), number((sign(z.im) > 0) != inverse ? 1 : -1)};
  const SineCosine turn = realSineCosine(z.re, bits);
  const SinhCosh growth = growing(z.im, bits);
  const HPByGMP& below = inverse ? turn.sine : turn.cosine;
  const HPByGMP down = norm({below, growth.sinh}, bits);
  if (sign(down) == 0) return std::nullopt;
  const HPByGMP im = quotient(product(growth.sinh, growth.cosh, bits), down, bits);
  return Complex{quotient(product(turn.sine, turn.cosine, bits), down, bits), inverse ? minus(im) : im};
}

// Without cancellation (W. Kahan, Branch cuts for complex elementary functions, 1987): with a = sqrt(1 - z) and
// b = sqrt(1 + z), asin z = angle(x, Re(a b)) + i asinh(Im(conj(a) b)).
Complex arcSineOf(const Complex& z, mp_bitcnt_t bits) {
  const Complex a = rootOf({minus(plus(z.re, -1, bits)), minus(z.im)}, bits);
  const Complex b = rootOf({plus(z.re, 1, bits), z.im}, bits);
  const HPByGMP below = difference(product(a.re, b.re, bits), product(a.im, b.im, bits), bits);
  const HPByGMP size = difference(product(a.re, b.im, bits), product(a.im, b.re, bits), bits);
  return {angleOf(z.re, below, bits), sign(size) == 0 ? size : realAsinh(size, bits)};
}

// ln(1 + 4x/((1-x)^2 + y^2))/4 + i angle(2y, (1-x)(1+x) - y^2)/2, for x >= 0.
Result arcTanhOf(const Complex& z, mp_bitcnt_t bits) {
  if (sign(z.re) < 0) {
    const Result mirrored = arcTanhOf({minus(z.re), minus(z.im)}, bits);
    return mirrored ? Result(Complex{minus(mirrored->re), minus(mirrored->im)}) : mirrored;
  }
  const HPByGMP below = minus(plus(z.re, -1, bits)), above = plus(z.re, 1, bits);
  const HPByGMP distance = norm({below, z.im}, bits);
  if (sign(distance) == 0) return std::nullopt;
  const HPByGMP re = sign(z.re) == 0 ? z.re : scaled(realLog1p(quotient(scaled(z.re, 2), distance, bits), bits), -2);
  const HPByGMP x = difference(product(below, above, bits), product(z.im, z.im, bits), bits);
  HPByGMP im = scaled(angleOf(scaled(z.im, 1), x, bits), -1);
  if (sign(z.im) == 0 && sign(below) < 0) im = minus(im);  // -ln(1 - x)/2 = -i pi/2 on the cut
  return Complex{re, im};
}

Complex powerByProducts(const Complex& base, uint64_t n, mp_bitcnt_t bits) {
  // An assigned float keeps its own precision.
  Complex result{held(number(1), bits), held(number(0), bits)}, square{held(base.re, bits), held(base.im, bits)};
  for (; n != 0; n /= 2) {
    if (n % 2 != 0) result = product(result, square, bits);
    if (n > 1) square = product(square, square, bits);
  }
  return result;
}

// The integers that powers by products take.
std::optional<int64_t> countOf(const Complex& z) {
  if (sign(z.im) != 0 || mpf_integer_p(z.re.get()) == 0 || exponentOf(z.re) > 31) return std::nullopt;
  return mpf_get_si(z.re.get());
}

Result powerOf(const Complex& a, const Complex& b, mp_bitcnt_t bits) {
  if (isZero(b)) return real(number(1));
  if (isZero(a)) return sign(b.re) > 0 ? Result(a) : std::nullopt;
  const Complex rough = product(b, logOf(a, bits), bits);
  if (exponentOf(rough.re) > kMaxExpBits)
    return sign(rough.re) > 0 ? std::nullopt : Result(Complex{number(0), number(0)});
  if (const auto n = countOf(b)) {
    const uint64_t count = *n < 0 ? 0 - static_cast<uint64_t>(*n) : static_cast<uint64_t>(*n);
    const Complex result = powerByProducts(a, count, bits + 64);
    return *n < 0 ? quotient(real(number(1)), result, bits) : Result(result);
  }
  if (!angleInReach(rough.im)) return std::nullopt;
  const int64_t whole = std::max<int64_t>({0, exponentOf(rough.re), exponentOf(rough.im)});
  const mp_bitcnt_t longer = bits + static_cast<mp_bitcnt_t>(whole) + 16;
  return expOf(product(b, logOf(a, longer), longer), bits);
}

// True when both parts agree with those of a shorter calculation to `bits`.
bool agree(const Complex& value, const Complex& shorter, mp_bitcnt_t bits) {
  const auto same = [bits](const HPByGMP& x, const HPByGMP& y) {
    const HPByGMP error = difference(x, y, mpf_get_prec(x.get()));
    return sign(error) == 0 || exponentOf(error) < exponentOf(x) - static_cast<int64_t>(bits);
  };
  return same(value.re, shorter.re) && same(value.im, shorter.im);
}

// Parts of a power may cancel, to any small size or to an exact 0 that no precision shows: it is formed with growing
// precision until it stands, and a part that never does is noise for 0.
Result settledPower(const Complex& a, const Complex& b, mp_bitcnt_t bits) {
  constexpr mp_bitcnt_t kGrowth = 16;
  Result shorter = powerOf(a, b, bits);
  for (mp_bitcnt_t longer = 2 * bits; shorter; longer *= 2) {
    Result value = powerOf(a, b, longer);
    if (!value || agree(*value, *shorter, bits - kSpare / 2)) return value;
    if (longer >= kGrowth * bits) {
      const int64_t noise = std::max(exponentOf(value->re), exponentOf(value->im)) - static_cast<int64_t>(longer / 2);
      for (HPByGMP* part : {&value->re, &value->im})
        if (exponentOf(*part) < noise) mpf_set_ui(part->get(), 0);
      return value;
    }
    shorter.emplace(*value);
  }
  return shorter;
}

}  // namespace

PluralValue add(const HPPlural& a, const HPPlural& b) {
  const mp_bitcnt_t bits = workBits(a, b);
  return made(Complex{sum(*a.real, *b.real, bits), sum(*a.imaginary, *b.imaginary, bits)});
}

PluralValue subtract(const HPPlural& a, const HPPlural& b) {
  const mp_bitcnt_t bits = workBits(a, b);
  return made(Complex{difference(*a.real, *b.real, bits), difference(*a.imaginary, *b.imaginary, bits)});
}

PluralValue multiply(const HPPlural& a, const HPPlural& b) {
  return made(product(valueOf(a), valueOf(b), workBits(a, b)));
}

PluralValue divide(const HPPlural& a, const HPPlural& b) {
  return made(quotient(valueOf(a), valueOf(b), workBits(a, b)));
}

PluralValue power(const HPPlural& a, const HPPlural& b) {
  return made(settledPower(valueOf(a), valueOf(b), workBits(a, b)));
}

PluralValue exponential(const HPPlural& z) { return made(expOf(valueOf(z), workBits(z))); }

PluralValue logarithm(const HPPlural& z) {
  const Complex value = valueOf(z);
  return isZero(value) ? nullptr : made(logOf(value, workBits(z)));
}

PluralValue squareRoot(const HPPlural& z) { return made(rootOf(valueOf(z), workBits(z))); }

PluralValue sine(const HPPlural& z) { return made(sineOf(valueOf(z), workBits(z))); }

PluralValue cosine(const HPPlural& z) { return made(cosineOf(valueOf(z), workBits(z))); }

PluralValue tangent(const HPPlural& z) { return made(tangentOf(valueOf(z), false, workBits(z))); }

PluralValue cotangent(const HPPlural& z) { return made(tangentOf(valueOf(z), true, workBits(z))); }

// The hyperbolic functions are the circular ones of iz.

PluralValue hyperbolicSine(const HPPlural& z) { return made(timesMinusI(sineOf(timesI(valueOf(z)), workBits(z)))); }

PluralValue hyperbolicCosine(const HPPlural& z) { return made(cosineOf(timesI(valueOf(z)), workBits(z))); }

PluralValue hyperbolicTangent(const HPPlural& z) {
  return made(timesMinusI(tangentOf(timesI(valueOf(z)), false, workBits(z))));
}

PluralValue hyperbolicCotangent(const HPPlural& z) {
  const Result value = tangentOf(timesI(valueOf(z)), true, workBits(z));
  return made(value ? Result(timesI(*value)) : value);
}

PluralValue arcSine(const HPPlural& z) { return made(arcSineOf(valueOf(z), workBits(z))); }

PluralValue arcTangent(const HPPlural& z) { return made(timesMinusI(arcTanhOf(timesI(valueOf(z)), workBits(z)))); }

PluralValue inverseHyperbolicSine(const HPPlural& z) {
  if (sign(*z.imaginary) == 0) return made(sign(*z.real) == 0 ? valueOf(z) : real(realAsinh(*z.real, workBits(z))));
  return made(timesMinusI(arcSineOf(timesI(valueOf(z)), workBits(z))));
}

PluralValue inverseHyperbolicTangent(const HPPlural& z) { return made(arcTanhOf(valueOf(z), workBits(z))); }

}  // namespace HP
