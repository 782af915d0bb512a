// SPDX-License-Identifier: Apache-2.0
#include <orvane/frame.h>
#include <orvane/map_coordinates.h>
#include <orvane/rotation.h>

#include <random>

#include "support/csv.h"
#include "support/reference.h"

namespace {

using Values = std::vector<double>;
constexpr double kA = 6378137, kE = 0.081819190842621494;  // WGS 84
constexpr double kKrasovskyA = 6378245;
const double kKrasovskyE = std::sqrt(0.00669342162296594);

Values numbersFrom(const Cells& cells, std::size_t first) {
  Values values;
  for (std::size_t i = first; i < cells.size(); ++i) values.push_back(std::strtod(cells[i].c_str(), nullptr));
  return values;
}

void expectNear(const double* value, const double* expected, std::size_t n, double error, const std::string& where) {
  for (std::size_t i = 0; i < n; ++i) EXPECT_NEAR(value[i], expected[i], error) << where << " entry " << i;
}

struct Rotation {
  Rotation() = default;
  ~Rotation() { api_FreeHandle(handle); }
  Rotation(const Rotation&) = delete;
  Rotation& operator=(const Rotation&) = delete;
  Values matrix() const { return filled(slam_SO3_toR, 9); }
  Values vector() const { return filled(slam_SO3_toAxis, 3); }
  Values quaternion() const { return filled(slam_SO3_toQuaternion, 4); }
  template <class Call>
  Values filled(Call call, std::size_t n) const {
    Values out(n);
    call(handle, out.data());
    return out;
  }
  SO3* handle = slam_SO3_create();
};

TEST(Rotations, FormsAgreeWithTheReferenceThereAndBack) {
  for (const Cells& cells : readCsv("slam/rotations.csv")) {
    const Values v = numbersFrom(cells, 0);
    const Rotation r;
    slam_SO3_setByAxis(r.handle, v.data());
    EXPECT_EQ(r.vector(), Values(v.begin(), v.begin() + 3));
    expectNear(r.matrix().data(), &v[3], 9, 4e-15, cells[0]);
    Values q = r.quaternion();
    const double sign = q[0] * v[12] + q[1] * v[13] + q[2] * v[14] + q[3] * v[15] < 0 ? -1 : 1;
    for (double& entry : q) entry *= sign;
    expectNear(q.data(), &v[12], 4, 4e-15, cells[0]);
    for (const double flip : {1.0, -1.0, 2.5}) {  // a quaternion's sign and length do not count
      Values scaled = q;
      for (double& entry : scaled) entry *= flip;
      const Rotation back;
      slam_SO3_setByQuaternion(back.handle, scaled.data());
      expectNear(back.matrix().data(), &v[3], 9, 8e-15, cells[0]);
    }
    const Rotation fromMatrix;
    slam_SO3_setByR(fromMatrix.handle, &v[3]);
    // Beside half a turn the matrix tells the angle to the root of the rounding only.
    expectNear(fromMatrix.matrix().data(), &v[3], 9, 4e-8, cells[0]);
  }
}

TEST(Rotations, LeftUpdateIsTheProduct) {
  std::mt19937 generator(2);
  std::normal_distribution<double> normal;
  for (int round = 0; round < 50; ++round) {
    double phi[3], dx[3], out[3];
    for (int i = 0; i < 3; ++i) phi[i] = normal(generator), dx[i] = 0.3 * normal(generator);
    const Rotation a, b, c;
    slam_SO3_setByAxis(a.handle, phi);
    slam_SO3_setByAxis(b.handle, dx);
    slam_UpdateLeftDx(phi, dx, out);
    slam_SO3_setByAxis(c.handle, out);
    const Values ra = a.matrix(), rb = b.matrix(), rc = c.matrix();
    for (std::size_t i = 0; i < 9; ++i) {
      const std::size_t row = i - i % 3, col = i % 3;
      EXPECT_NEAR(rc[i], rb[row] * ra[col] + rb[row + 1] * ra[col + 3] + rb[row + 2] * ra[col + 6], 2e-13);
    }
    slam_SO3_updateLeftDx(a.handle, dx);
    EXPECT_EQ(a.vector(), Values(out, out + 3));
  }
}

TEST(Rotations, OneJacobianForFourNames) {
  const Rotation r;
  EXPECT_EQ(r.filled(slam_SO3_leftJacobi, 9), (Values{1, 0, 0, 0, 1, 0, 0, 0, 1}));
  const double phi[] = {0, 0, 1.2};
  slam_SO3_setByAxis(r.handle, phi);
  const double c = 0.6 / std::tan(1.2);  // kept.csv: Jacobi_tangent
  const Values expected = {c, 0.6, 0, -0.6, c, 0, 0, 0, 1};
  const Values left = r.filled(slam_SO3_leftJacobi, 9);
  expectNear(left.data(), expected.data(), 9, 1e-15, "Jacobian");
  for (const auto call : {slam_SO3_rightJacobi, slam_SO3_invLeftJacobi, slam_SO3_invRightJacobi})
    EXPECT_EQ(r.filled(call, 9), left);  // kept.csv: Jacobi_one_matrix
}

// 50 pairs of pixels of two cameras; Gauss-Newton on the exports finds the pose, but for the length of the translation.
TEST(PoleConstraint, RecoversThePose) {
  std::mt19937 generator(5);
  std::uniform_real_distribution<double> unit(-1, 1);
  const double K[] = {800, 0, 320, 0, 780, 240, 0, 0, 1};
  const double truth[] = {0.1, -0.2, 0.05, 0.6, 0.1, 0.2};
  const Rotation r;
  slam_SO3_setByAxis(r.handle, truth);
  const Values R = r.matrix();
  Values pixels1, pixels2;
  for (int i = 0; i < 50; ++i) {
    const double x[] = {2 * unit(generator), 2 * unit(generator), 5 + 2 * unit(generator)};
    double y[3];
    for (std::size_t k = 0; k < 3; ++k)
      y[k] = R[3 * k] * x[0] + R[3 * k + 1] * x[1] + R[3 * k + 2] * x[2] + truth[3 + k];
    pixels1.insert(pixels1.end(), {800 * x[0] / x[2] + 320, 780 * x[1] / x[2] + 240});
    pixels2.insert(pixels2.end(), {800 * y[0] / y[2] + 320, 780 * y[1] / y[2] + 240});
  }
  PoleConstraint2DTo2D* constraint =
      slam_CreatePoleConstraint2DTo2D(K, K, nullptr, pixels1.data(), pixels2.data(), nullptr, 50);
  EXPECT_GT(slam_PloeCon2DTo2D_getSquaredError(constraint), 1);  // no translation: the penalty
  const double start[] = {0, 0, 0, 0.6, 0, 0};
  slam_PloeCon2DTo2D_setT12(constraint, start);

  Values e(50), J(300), near(50);
  slam_PloeCon2DTo2D_calcOptJacobi(constraint, J.data());
  slam_PloeCon2DTo2D_calcOptError(constraint, e.data());
  for (std::size_t k = 0; k < 6; ++k) {  // derivatives against differences
    double step[6] = {};
    step[k] = 1e-6;
    slam_PloeCon2DTo2D_setT12(constraint, start);
    slam_PloeCon2DTo2D_calcOptUpdate(constraint, step);
    slam_PloeCon2DTo2D_calcOptError(constraint, near.data());
    for (std::size_t i = 0; i < 50; ++i) EXPECT_NEAR(J[6 * i + k], (near[i] - e[i]) / 1e-6, 1e-5);
  }
  slam_PloeCon2DTo2D_setT12(constraint, start);
  double before = slam_PloeCon2DTo2D_getSquaredError(constraint);
  for (int round = 0; round < 12; ++round) {
    slam_PloeCon2DTo2D_calcOptError(constraint, e.data());
    slam_PloeCon2DTo2D_calcOptJacobi(constraint, J.data());
    double normal[6][7] = {};  // J'J dx = -J'e with the first translation held
    for (std::size_t i = 0; i < 50; ++i)
      for (std::size_t p = 0; p < 6; ++p) {
        for (std::size_t q = 0; q < 6; ++q) normal[p][q] += J[6 * i + p] * J[6 * i + q];
        normal[p][6] -= J[6 * i + p] * e[i];
      }
    normal[3][3] += 1e12;
    for (std::size_t p = 0; p < 6; ++p)
      for (std::size_t row = 0; row < 6; ++row) {
        if (row == p) continue;
        const double factor = normal[row][p] / normal[p][p];
        for (std::size_t q = 0; q < 7; ++q) normal[row][q] -= factor * normal[p][q];
      }
    double dx[6];
    for (std::size_t p = 0; p < 6; ++p) dx[p] = normal[p][6] / normal[p][p];
    slam_PloeCon2DTo2D_calcOptUpdate(constraint, dx);
    const double now = slam_PloeCon2DTo2D_getSquaredError(constraint);
    EXPECT_LE(now, before + 1e-20);
    before = now;
  }
  double T[16];
  slam_PloeCon2DTo2D_getT12(constraint, T);
  for (std::size_t k = 0; k < 3; ++k) {
    for (std::size_t j = 0; j < 3; ++j) EXPECT_NEAR(T[4 * k + j], R[3 * k + j], 1e-8);
    EXPECT_NEAR(T[4 * k + 3] / T[3] * truth[3], truth[3 + k], 1e-7);
  }
  EXPECT_EQ(T[15], 1);

  // The penalty of a short translation is the sum for (s, s, s), s = 100 (0.01 - 0.003)/0.01.
  const double brief[] = {0.1, 0, 0, 0.002, -0.001, 0}, penal[] = {0.1, 0, 0, 70, 70, 70};
  slam_PloeCon2DTo2D_setT12(constraint, penal);
  double expected = slam_PloeCon2DTo2D_getSquaredError(constraint);
  slam_PloeCon2DTo2D_setT12(constraint, brief);
  slam_PloeCon2DTo2D_calcOptError(constraint, e.data());
  for (const double error : e) expected += error * error;
  EXPECT_NEAR(slam_PloeCon2DTo2D_getSquaredError(constraint), expected, 1e-12 * expected);
  const Values weights(50, -3);
  PoleConstraint2DTo2D* weighted =
      slam_CreatePoleConstraint2DTo2D(K, K, R.data(), pixels1.data(), pixels2.data(), weights.data(), 50);
  slam_PloeCon2DTo2D_getT12(weighted, T);
  for (std::size_t k = 0; k < 9; ++k) EXPECT_NEAR(T[4 * (k / 3) + k % 3], R[k], 1e-15);
  slam_PloeCon2DTo2D_setT12(weighted, brief);
  slam_PloeCon2DTo2D_calcOptError(weighted, near.data());
  for (std::size_t i = 0; i < 50; ++i) EXPECT_NEAR(near[i], -3 * e[i], 1e-17);
  const double none6[] = {0, 0, 0, std::nan(""), 0, 0};
  slam_PloeCon2DTo2D_setT12(weighted, none6);
  EXPECT_EQ(slam_PloeCon2DTo2D_getSquaredError(weighted), 1e300);
  api_FreeHandle(weighted);
  api_FreeHandle(constraint);
  PoleConstraint2DTo2D* none = slam_CreatePoleConstraint2DTo2D(K, K, R.data(), nullptr, nullptr, nullptr, 0);
  EXPECT_EQ(slam_PloeCon2DTo2D_getSquaredError(none), 0);
  api_FreeHandle(none);
}

TEST(Coordinates, AgreeWithReferencesThereAndBack) {
  for (const Cells& cells : readCsv("slam/coordinates.csv")) {
    const Values v = numbersFrom(cells, 1);
    double there[3], back[3];
    if (cells[0] == "ecef") {
      slam_coorLLAtoECEF(v.data(), there, 1, kA, kE);
      expectNear(there, &v[3], 3, 2e-8, cells[0]);
      slam_coorECEFtoLLA(there, back, 1, kA, kE);
      EXPECT_NEAR(back[1], v[1], 1e-12);
      if (std::abs(v[1]) < 89.99) {
        EXPECT_NEAR(std::remainder(back[0] - v[0], 360), 0, 1e-12);
      }
      EXPECT_NEAR(back[2], v[2], 1e-9 + 5e-16 * std::abs(v[2]) + 3e-9) << v[1];
    } else if (cells[0] == "enu") {
      slam_coorLLAtoENU(v.data(), &v[3], there, 1, kA, kE);
      expectNear(there, &v[6], 3, 3e-8, cells[0]);
      slam_coorENUtoLLA(v.data(), there, back, 1, kA, kE);
      expectNear(back, &v[3], 2, 1e-11, cells[0]);
      double ecef[3];
      slam_coorLLAtoECEF(&v[3], ecef, 1, kA, kE);
      slam_coorECEFtoENU(v.data(), ecef, back, 1, kA, kE);
      expectNear(back, there, 3, 1e-12, cells[0]);
      slam_coorENUtoECEF(v.data(), there, back, 1, kA, kE);
      expectNear(back, ecef, 3, 3e-8, cells[0]);
    } else if (cells[0] == "gcj") {
      slam_coorLLAtoGCJ02(v.data(), there, 1, 105, 35, kKrasovskyA, kKrasovskyE);
      expectNear(there, &v[3], 3, 3e-13, cells[0]);
      slam_coorGCJ02toLLA(there, back, 1, 105, 35, kKrasovskyA, kKrasovskyE);
      expectNear(back, v.data(), 3, 5e-14, cells[0]);  // 5 nanometres
    } else {
      slam_coorGCJ02ToBD09(v.data(), there, 1);
      expectNear(there, &v[3], 3, 2e-13, cells[0]);
      slam_coorBD09ToGCJ02(there, back, 1);
      expectNear(back, v.data(), 3, 2e-12, cells[0]);
    }
  }
}

TEST(Coordinates, PathsBatchesAndNaN) {
  const double p[] = {10, 0, 0}, q[] = {11, 0, 0}, far[] = {190, 20, 0}, same[] = {-170, 20, 0}, west[] = {-190, 20, 0},
               east[] = {170, 20, 0};
  EXPECT_NEAR(slam_coorDistByLLA(p, q, kA, kE), kA * std::acos(-1) / 180, 1e-4);  // chords of the equator
  EXPECT_EQ(slam_coorDistByLLA(p, p, kA, kE), 0);
  EXPECT_EQ(slam_coorDistByLLA(p, far, kA, kE), slam_coorDistByLLA(p, same, kA, kE));
  EXPECT_EQ(slam_coorDistByLLA(p, west, kA, kE), slam_coorDistByLLA(p, east, kA, kE));
  // 160 chords below one degree, 250 D from there on; latitudes are held to the poles.
  for (const auto& [degrees, chords] : {std::pair(0.99, 160), std::pair(1.0, 250), std::pair(2.5, 625)}) {
    const double end[] = {10 + degrees, 0, 0};
    const double chord = 2 * kA * std::sin(degrees * std::acos(-1) / 360 / chords);
    EXPECT_NEAR(slam_coorDistByLLA(p, end, kA, kE), chords * chord, 2e-6) << degrees;
  }
  const double pole[] = {10, 90, 0}, over[] = {10, 95, 0};
  EXPECT_EQ(slam_coorDistByLLA(p, over, kA, kE), slam_coorDistByLLA(p, pole, kA, kE));
  const double bad[] = {std::nan(""), 0, 0}, endless[] = {HUGE_VAL, 0, 0};
  EXPECT_TRUE(std::isnan(slam_coorDistByLLA(bad, q, kA, kE)));
  EXPECT_TRUE(std::isnan(slam_coorDistByLLA(endless, q, kA, kE)));
  double in[] = {1, 2, 3, 4, 5, 6}, out[6];
  slam_coorLLAtoECEF(in, out, 2, kA, kE);
  slam_coorLLAtoECEF(in, in, 2, kA, kE);  // in place
  expectNear(in, out, 6, 0, "in place");
  slam_coorLLAtoECEF(nullptr, nullptr, 0, kA, kE);
  slam_coorGCJ02toLLA(bad, out, 1, 105, 35, kA, kE);
  EXPECT_TRUE(std::isnan(out[0]));
  slam_coorBD09ToGCJ02(endless, out, 1);
  EXPECT_EQ(out[2], 0);
  const double zero[] = {0, 0, 0}, onAxis[] = {0, 0, -6.4e6}, noHeight[] = {1, 2, std::nan("")};
  slam_coorBD09ToGCJ02(zero, out, 1);
  EXPECT_NEAR(out[0], -0.0065, 1e-4);
  EXPECT_NEAR(out[1], -0.006, 1e-4);
  slam_coorECEFtoLLA(onAxis, out, 1, kA, kE);  // the axis has its altitude from z
  EXPECT_EQ(out[1], -90);
  EXPECT_NEAR(out[2], 6.4e6 - kA * std::sqrt(1 - kE * kE), 2e-9);
  slam_coorECEFtoENU(zero, noHeight, out, 1, kA, kE);  // east and up of (0, 0) have no part of z
  EXPECT_EQ(out[0], 2);
  EXPECT_TRUE(std::isnan(out[1]));
}

}  // namespace
