#pragma once
#include <string>

namespace geo {

/// A point in the plane.
class Point {
 public:
  /// Makes the origin.
  Point() = default;
  /// Makes a point at @p x, @p y.
  Point(double x, double y);
  explicit Point(const std::string& text);
  Point(const Point&) = delete;
  virtual ~Point();

  double length() const;
  void scale(double factor);
  void scale(double fx, double fy);
  static const Point& origin();
  virtual void draw() const = 0;

  bool operator==(const Point& other) const;
  Point& operator+=(const Point& other);
  explicit operator bool() const noexcept;

  double x = 0;  ///< The horizontal position.

 protected:
  void touch();

 private:
  double mY = 0;
};

/// Distance between two points.
double distance(const Point& a, const Point& b);
/// Distance from the origin.
double distance(const Point& a);

inline double Point::length() const { return 0; }

}  // namespace geo

namespace geo {
/// Colours a point can have.
enum class Colour : unsigned char { Red = 1, Green, Blue = 8 };
using Points = Point*;
typedef double Coordinate;
extern int pointCount;
}  // namespace geo
