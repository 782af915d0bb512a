// SPDX-License-Identifier: Apache-2.0
// The value of every kind, at numbers, through variables and by the array functions, has the bits of the function
// behind it.
#include <bit>
#include <cmath>
#include <limits>
#include <set>

#include "array/scalar_table.h"
#include "special/special_function.h"
#include "sym/formula.h"
#include "sym/kinds/kind.h"

namespace {

using namespace host;
namespace SF = SpecialFunction;

// Arguments that tell the places apart, inside the domain of most kinds.
constexpr double a = 0.375, b = 1.25, c = 0.625, d = 2.5;

struct Row {
  uint8_t code;
  std::vector<double> args;
  double expected;
  int arrayCode;
};

constexpr int kNoArrayCode = -1;

/// The code of the array function that stands for `f`.
template <class Table, class Function>
int arrayCodeOf(const Table& table, Function f) {
  for (const auto& row : table)
    if (row.call == f) return row.code;
  return kNoArrayCode;
}

std::vector<Row> rows() {
  std::vector<Row> all;
  // One argument: from both sides of zero, and far enough out for the expansions.
  const auto one = [&](uint8_t code, double (*f)(double), int arrayCode = kNoArrayCode) {
    if (arrayCode == kNoArrayCode) arrayCode = arrayCodeOf(kOneArgument, f);
    for (const double x : {a, -a, b, d, 7.25, -12.75, 40.5}) all.push_back({code, {x}, f(x), arrayCode});
  };
  const auto two = [&](uint8_t code, double (*f)(double, double), int arrayCode = kNoArrayCode) {
    if (arrayCode == kNoArrayCode) arrayCode = arrayCodeOf(kTwoArguments, f);
    for (const auto& [x, y] : {std::pair{a, b}, {2.0, c}, {-a, 12.75}})
      all.push_back({code, {x, y}, f(x, y), arrayCode});
  };
  const auto three = [&](uint8_t code, double (*f)(double, double, double)) {
    all.push_back({code, {a, b, c}, f(a, b, c), kNoArrayCode});
    all.push_back({code, {c, a, d}, f(c, a, d), kNoArrayCode});
  };
  const auto four = [&](uint8_t code, double (*f)(double, double, double, double)) {
    all.push_back({code, {a, b, c, d}, f(a, b, c, d), kNoArrayCode});
    all.push_back({code, {d, c, b, a}, f(d, c, b, a), kNoArrayCode});
  };
  two(
      5, [](double x, double y) { return std::pow(x, y); }, 132);
  one(6, math_sign);
  one(
      10, [](double x) { return std::sqrt(x); }, 147);
  one(
      11, [](double x) { return std::log(x); }, 119);
  one(
      12, [](double x) { return std::exp(x); }, 103);
  one(
      13, [](double x) { return std::abs(x); }, 0);
  one(20, math_sin);
  one(21, math_cos);
  one(22, math_tan);
  one(23, math_cot);
  one(
      24, [](double x) { return std::asin(x); }, 21);
  one(
      25, [](double x) { return std::acos(x); }, 1);
  one(
      26, [](double x) { return std::atan(x); }, 22);
  one(27, math_acot);
  one(
      30, [](double x) { return std::sinh(x); }, 141);
  one(
      31, [](double x) { return std::cosh(x); }, 39);
  one(
      32, [](double x) { return std::tanh(x); }, 152);
  one(33, math_coth);
  one(34, math_asinh);
  one(35, math_acosh);
  one(36, math_atanh);
  one(
      37, [](double x) { return std::atanh(1 / x); }, 4);
  one(50, math_erf);
  one(51, math_gamma);
  two(52, [](double x, double y) { return std::exp(std::lgamma(x) + std::lgamma(y) - std::lgamma(x + y)); });
  one(
      53, [](double x) { return std::lgamma(x); }, 117);
  two(54, math_BesselI);
  two(55, math_BesselJ);
  two(56, math_BesselJ);
  two(57, math_BesselY);
  one(58, math_digamma);
  two(62, math_ellipticF);
  one(63, math_ellipticK);
  one(64, math_ellipticE);
  two(64, math_ellipticE2);
  two(65, math_StruveH);
  two(66, math_StruveL);
  two(67, math_angerJ);
  two(68, math_weberE);
  one(69, math_barnesG);
  one(70, math_lambertW);
  one(71, math_wrightOmega);
  three(72, math_wrightBessel);
  two(73, math_ParabolicCylinderD);
  two(74, math_ParabolicCylinderU);
  two(75, math_ParabolicCylinderV);
  two(76, math_ClausenC);
  two(77, math_ClausenS);
  one(78, math_hyperfactorial);
  three(79, math_whittakerM);
  three(80, math_whittakerW);
  two(81, math_jacobiZeta);
  two(82, math_igamma);
  one(83, math_invLambertW);
  one(84, math_invErf);
  one(85, math_invErfc);
  one(86, math_invErfi);
  one(91, math_sineIntegral);
  one(92, math_cosineIntegral);
  one(93, math_sinhIntegral);
  one(94, math_coshIntegral);
  two(95, math_polyGamma);
  two(96, math_AGM);
  one(97, math_erfi);
  one(98, math_erfc);
  one(99, math_drawson);
  one(100, math_polyLogarithm2);
  one(101, math_logSign);
  one(102, math_expSign);
  one(103, math_fresnelC);
  one(104, math_fresnelS);
  one(105, math_expIntegral);
  two(105, math_expIntegralP);
  one(106, math_logIntegral);
  one(107, math_stepFun);
  one(
      108, [](double x) { return std::round(x); }, 136);
  one(
      109, [](double x) { return std::floor(x); }, 78);
  one(
      110, [](double x) { return std::ceil(x); }, 33);
  one(
      111, [](double x) { return std::floor(x + 0.5); }, 137);  // ties stand below
  one(
      112, [](double x) { return x > 0 ? std::floor(x) : std::ceil(x); }, 138);
  one(113, math_zeta);
  one(114, math_AiryAi);
  one(115, math_DiffAiryAi);
  one(116, math_AiryBi);
  one(117, math_DiffAiryBi);
  one(118, math_AiryGi);
  one(119, math_DiffAiryGi);
  one(120, math_AiryHi);
  one(121, math_DiffAiryHi);
  two(122, math_ellipticPI2);
  three(122, math_ellipticPI);
  two(123, math_ellipticRC);
  three(124, math_ellipticRD);
  two(125, math_ellipticRE);
  three(126, math_ellipticRF);
  three(127, math_ellipticRG);
  four(128, math_ellipticRJ);
  two(129, math_ellipticRK);
  three(130, math_ellipticRM);
  three(131, math_hypergeometricU);
  two(132, math_Hypergeometric0F1);
  three(133, math_Hypergeometric1F1);
  four(134, math_Hypergeometric2F1);
  one(135, math_invZeta);
  three(136, math_InverseBeta);
  one(137, math_invCoshIntegral);
  one(138, math_invGamma);
  one(139, math_invLnErfi);
  one(140, math_invSinhIntegral);
  two(141, math_jacobiEllipticAm);
  two(142, math_jacobiEllipticCn);
  two(143, math_jacobiEllipticDn);
  two(144, math_jacobiEllipticSn);
  two(145, math_jacobiTheta1);
  two(146, math_jacobiTheta2);
  two(147, math_jacobiTheta3);
  two(148, math_jacobiTheta4);
  one(149, math_lnErfi);
  one(150, math_lnBarnesG);
  four(151, math_bulirschCel);
  two(152, math_bulirschEl1);
  four(153, math_bulirschEl2);
  three(154, math_bulirschEl3);
  one(
      155, [](double x) { return std::trunc(x); }, 153);
  one(
      156, [](double x) { return x - std::trunc(x); }, 166);
  three(157, math_ConSelect);
  one(158, math_goodwinStaton);
  two(159, math_hurwitzZeta);
  one(160, math_dirichletEta);
  one(161, math_dirichletBeta);
  two(162, math_voigtFunK);
  two(163, math_voigtFunL);
  two(164, math_voigtDiffLX);
  two(165, math_voigtDiffLY);
  two(166, math_voigtDiffKY);
  two(167, math_voigtDiffKX);
  two(168, math_polyLog);
  two(169, math_boseEinstein);
  two(170, math_fermiDirac);
  one(171, SF::calcGlasser, 181);
  all.push_back({111, {-2.5}, -3, 137});
  all.push_back({111, {2.5}, 3, 137});
  all.push_back({112, {-2.7}, -2, 138});
  all.push_back({6, {0}, 0, 133});
  all.push_back({107, {0}, 1, 164});
  all.push_back({157, {0, 5, 6}, 6, kNoArrayCode});
  all.push_back({157, {-1, 5, 6}, 5, kNoArrayCode});
  return all;
}

bool sameBits(double x, double y) {
  return (std::isnan(x) && std::isnan(y)) || std::bit_cast<uint64_t>(x) == std::bit_cast<uint64_t>(y);
}

TEST(Values, EveryKindHasTheBitsOfItsFunction) {
  std::set<int> seen{Number, Variable, Add, Mul};  // below
  for (const Row& row : rows()) {
    seen.insert(row.code);
    std::vector<Formula> numbers, variables;
    for (std::size_t i = 0; i < row.args.size(); ++i) {
      const std::string name = "value" + std::to_string(i);
      numbers.push_back(num(row.args[i]));
      variables.push_back(var(name.c_str()));
      sym_setSymValue(name.c_str(), row.args[i]);
    }
    const std::string label = std::string(Sym::findKind(row.code)->name) + " at " + std::to_string(row.args[0]);
    const double value = valueOf(call(row.code, variables));
    EXPECT_TRUE(sameBits(value, row.expected)) << label << ": " << value << " for " << row.expected;
    const Formula folded = call(row.code, numbers);
    EXPECT_TRUE(sameBits(row.code == Ln && row.args[0] <= 0 ? row.expected : valueOf(folded), row.expected))
        << label << " folded";
    EXPECT_EQ(isNumber(folded), !(row.code == Ln && row.args[0] <= 0)) << label;
    // The coefficient multiplies, but for the two kinds that ignore it.
    Matrix scaled(call(row.code, variables));
    sym_selfMul(scaled, 4);
    const bool bare = row.code == Sign || row.code == StepFun;
    EXPECT_TRUE(sameBits(scaled.value(), bare ? row.expected : 4 * row.expected)) << label << " scaled";
    sym_clearTempVar();
  }
  for (int code = 0; code < 256; ++code)
    EXPECT_EQ(seen.count(code), Sym::findKind(static_cast<uint8_t>(code)) ? 1u : 0u) << code;
  EXPECT_EQ(seen.size(), 141u);
}

double byArray(const Row& row) {
  double out = 0;
  if (row.args.size() == 1)
    apiFun_calcFun(row.args.data(), 1, &out, static_cast<uint8_t>(row.arrayCode));
  else
    apiFun_calcFun2(row.args.data(), 1, row.args.data() + 1, 1, &out, static_cast<uint8_t>(row.arrayCode));
  return out;
}

TEST(Values, ArrayFunctionsHaveTheSameBits) {
  std::set<int> one, two;
  for (const Row& row : rows()) {
    if (row.arrayCode == kNoArrayCode) continue;
    (row.args.size() == 1 ? one : two).insert(row.arrayCode);
    EXPECT_TRUE(sameBits(byArray(row), row.expected))
        << Sym::findKind(row.code)->name << " at " << row.args[0] << ": " << byArray(row) << " for " << row.expected;
  }
  // The array functions that have no kind: forms of their own, the secants, zeros of the Airy functions, and those that
  // an expression writes with other kinds.
  for (const int code : {11, 13, 52, 54, 5, 6, 19, 20, 44, 45, 62, 114, 128, 139})
    EXPECT_TRUE(one.insert(code).second) << code;
  for (const int code : {24, 43, 49, 50, 118}) EXPECT_TRUE(one.insert(code).second) << code;
  for (const int code : {7, 25, 31, 34, 48, 84, 88, 93, 122, 123, 124, 134, 135, 143, 144, 150})
    EXPECT_TRUE(two.insert(code).second) << code;
  EXPECT_EQ(one.size(), std::size(kOneArgument) + std::size(kOwnForms));
  // math_BesselK has no kind of its own value (BesselK_value).
  EXPECT_TRUE(two.insert(29).second);
  EXPECT_EQ(two.size(), std::size(kTwoArguments));
}

TEST(Values, StructuralKinds) {
  sym_setSymValue("value0", 3);
  const Formula x = var("value0");
  sym_setSymValue("value0", 3);
  EXPECT_EQ(valueOf(num(2.5)), 2.5);
  EXPECT_EQ(valueOf(call(Mul, num(2), x)), 6);
  EXPECT_EQ(valueOf(call(Add, std::vector<Formula>{})), 0);
  EXPECT_EQ(valueOf(call(Mul, std::vector<Formula>{})), 1);
  EXPECT_EQ(valueOf(call(Add, {x, call(Exp, x), num(1)})), 3 + std::exp(3.0) + 1);
  // Beta_sign, BesselK_value
  EXPECT_NEAR(valueOf(call(Beta, num(-0.5), num(2.25))), -math_beta(-0.5, 2.25), 1e-13);
  const double j = math_BesselJ(1, 3), k = valueOf(call(BesselK, num(1), x));
  EXPECT_TRUE(sameBits(k, j));
}

}  // namespace
