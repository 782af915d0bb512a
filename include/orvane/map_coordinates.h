/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Coordinates on and around the earth, in batches of points.
 *
 * A point is three doubles. LLA is longitude in degrees, latitude in degrees, altitude in metres, in this order; ECEF
 * is metres from the earth's centre, z to the north pole and x to longitude 0; ENU is metres east, north and up of an
 * origin. The ellipsoid is the caller's: semi-major axis a in metres and first eccentricity e (not its square), as
 * 6378137 and 0.081819190842621494 for WGS 84, 6378245 and 0.081813333333334 (e^2 = 0.00669342162296594) for that of
 * Krasovsky.
 *
 * `in` and `out` hold 3*count doubles and may be one array. A count of 0 or less does nothing. Nothing is checked: NaN
 * and infinity pass through. All functions are re-entrant.
 */
#ifndef ORVANE_MAP_COORDINATES_H
#define ORVANE_MAP_COORDINATES_H

#include <orvane/export.h>

/**
 * LLA to ECEF: with N = a/sqrt(1 - e^2 sin^2 phi), X = (N + h) cos(phi) cos(lambda), Y = (N + h) cos(phi) sin(lambda),
 * Z = ((1 - e^2) N + h) sin(phi).
 *
 * @param in     [count*3] LLA
 * @param out    [count*3] out, ECEF
 * @param count  number of points
 * @param a      semi-major axis in metres
 * @param e      first eccentricity
 */
ORVANE_API void slam_coorLLAtoECEF(const double* in, double* out, int32_t count, double a, double e);

/**
 * ECEF to LLA by fixed-point iteration (at most 16 rounds); the altitude beyond 78.75 degrees comes from Z. A point
 * within some kilometres of the centre has no nearest place on the ellipsoid that the iteration could find; the centre
 * itself gives NaN.
 *
 * @param in     [count*3] ECEF
 * @param out    [count*3] out, LLA: longitude in [-180, 180], latitude in [-90, 90]
 * @param count  number of points
 * @param a      semi-major axis in metres
 * @param e      first eccentricity
 */
ORVANE_API void slam_coorECEFtoLLA(const double* in, double* out, int32_t count, double a, double e);

/**
 * ECEF to east, north and up of an origin.
 *
 * @param origin  [3] LLA
 * @param in      [count*3] ECEF
 * @param out     [count*3] out, ENU
 * @param count   number of points
 * @param a       semi-major axis in metres
 * @param e       first eccentricity
 */
ORVANE_API void slam_coorECEFtoENU(const double* origin, const double* in, double* out, int32_t count, double a,
                                   double e);

/** The way back from slam_coorECEFtoENU, with its arguments: `in` is ENU, `out` ECEF. */
ORVANE_API void slam_coorENUtoECEF(const double* origin, const double* in, double* out, int32_t count, double a,
                                   double e);

/** slam_coorECEFtoENU for points in LLA, with its arguments: `in` is LLA, `out` ENU. */
ORVANE_API void slam_coorLLAtoENU(const double* origin, const double* in, double* out, int32_t count, double a,
                                  double e);

/** The way back from slam_coorLLAtoENU, with its arguments: `in` is ENU, `out` LLA. */
ORVANE_API void slam_coorENUtoLLA(const double* origin, const double* in, double* out, int32_t count, double a,
                                  double e);

/**
 * Map datum GCJ-02 to BD-09: with k = 3000 pi/180, z = sqrt(x^2 + y^2) + 2e-5 sin(y k) and
 * theta = atan2(y, x) + 3e-6 cos(x k), the point is (z cos(theta) + 0.0065, z sin(theta) + 0.006).
 *
 * @param in     [count*3] longitude, latitude in degrees; the third value is copied
 * @param out    [count*3] out
 * @param count  number of points
 */
ORVANE_API void slam_coorGCJ02ToBD09(const double* in, double* out, int32_t count);

/** The way back from slam_coorGCJ02ToBD09, by fixed-point iteration to 1e-12 degrees (at most 16 rounds), with its
 * arguments. */
ORVANE_API void slam_coorBD09ToGCJ02(const double* in, double* out, int32_t count);

/**
 * LLA to the map datum GCJ-02: an offset of waves in the distance from the map's centre is added. The customary centre
 * is (105, 35) on the ellipsoid of Krasovsky; the offset has no meaning far from the map.
 *
 * With x = lon - lonCentre, y = lat - latCentre, S(v, p, q) = 2/3 (20 (sin(pi v) + sin(2 pi x) + sin(6 pi x))
 * + 40 sin(pi v/3) + p sin(pi v/12) + q sin(pi v/30)) and s = sqrt(1 - e^2 sin^2(lat)), in degrees:
 * dLon = (180/pi) s/(a cos(lat)) (S(x, 150, 300) + 300 + x + 2y + 0.1 x (x + y) + 0.1 sqrt|x|),
 * dLat = (180/pi) s^3/(a (1 - e^2)) (S(y, 160, 320) - 100 + 2x + 3y + 0.2 y^2 + 0.1 x y + 0.2 sqrt|x|).
 *
 * @param in         [count*3] LLA; the altitude is copied
 * @param out        [count*3] out
 * @param count      number of points
 * @param lonCentre  longitude of the map's centre in degrees
 * @param latCentre  its latitude in degrees
 * @param a          semi-major axis in metres
 * @param e          first eccentricity
 */
ORVANE_API void slam_coorLLAtoGCJ02(const double* in, double* out, int32_t count, double lonCentre, double latCentre,
                                    double a, double e);

/** The way back from slam_coorLLAtoGCJ02, by fixed-point iteration to rounding (at most 255 rounds), with its
 * arguments. */
ORVANE_API void slam_coorGCJ02toLLA(const double* in, double* out, int32_t count, double lonCentre, double latCentre,
                                    double a, double e);

/**
 * Length of the path between two points that runs straight in longitude, latitude and altitude, as the sum of 250
 * chords a degree (160 below one degree). Longitudes are brought into [-180, 180], latitudes are held to [-90, 90];
 * the path does not cross the meridian of 180 degrees.
 *
 * @param p  [3] LLA
 * @param q  [3] LLA
 * @param a  semi-major axis in metres
 * @param e  first eccentricity
 * @return metres; NaN for a NaN coordinate
 */
ORVANE_API double slam_coorDistByLLA(const double* p, const double* q, double a, double e);

#endif
