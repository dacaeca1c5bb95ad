// Shapes in the plane: points, a shape hierarchy and the functions that measure them.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace cpplib {

/// A point or a direction in the plane.
/// @tparam T the coordinate type, such as `float` or `double`
template <typename T>
struct Vec2 {
  T x{};  ///< The horizontal coordinate.
  T y{};  ///< The vertical coordinate.

  /// Adds @p other component by component.
  constexpr Vec2& operator+=(const Vec2& other) noexcept {
    x += other.x;
    y += other.y;
    return *this;
  }
  /// Compares both coordinates.
  friend constexpr bool operator==(const Vec2&, const Vec2&) = default;
};

/// The usual point of the library.
using Point = Vec2<double>;

/// Units in which lengths are given.
enum class Unit {
  Millimetre,  ///< A thousandth of a metre.
  Inch,        ///< 25.4 millimetres.
  Point = 3,   ///< A 72nd of an inch, as typesetters count.
};

/**
 * Something that can be drawn and measured.
 *
 * Derive from it to add a shape; every shape knows its area and its name.
 * @see Circle, Rectangle
 */
class Shape {
 public:
  virtual ~Shape() = default;

  /// The area the shape covers.
  /// @return the area in square units, never negative
  virtual double area() const = 0;
  /// A name for lists and logs.
  virtual std::string name() const;

  /// Moves the shape.
  /// @param by how far to move it
  void move(const Point& by);
  /// Moves the shape by @p dx and @p dy.
  void move(double dx, double dy);

  /// Where the shape is.
  const Point& origin() const { return mOrigin; }

 protected:
  /// Tells the shape that it has moved; the default does nothing.
  virtual void moved() {}

 private:
  Point mOrigin;
};

/// A circle around its origin.
class Circle final : public Shape {
 public:
  /// Makes a circle.
  /// @param radius the radius; a negative one counts as 0
  explicit Circle(double radius);
  double area() const override;
  std::string name() const override;
  double radius() const noexcept { return mRadius; }

 private:
  double mRadius;
};

//! A rectangle with its sides parallel to the axes.
class Rectangle : public Shape {
 public:
  Rectangle(double width, double height);
  Rectangle(const Rectangle&) = default;
  Rectangle& operator=(const Rectangle&) = default;
  double area() const override;

  double width = 0;   ///< The horizontal side.
  double height = 0;  ///< The vertical side.
};

/// The sum of the areas of @p shapes.
/// @code
///   std::vector<std::unique_ptr<Shape>> shapes;
///   shapes.push_back(std::make_unique<Circle>(1.0));
///   double total = totalArea(shapes);
/// @endcode
double totalArea(const std::vector<std::unique_ptr<Shape>>& shapes);

/// Converts a length between units.
/// @param value the length
/// @param from its unit
/// @param to the unit wanted
/// @return the length in @p to
double convert(double value, Unit from, Unit to);

}  // namespace cpplib
