// Every way a class names its bases.
#pragma once

namespace shapes {

struct Shape {};
struct Named {};
struct Counted {};

template <typename T>
struct Holder {};

using ShapeAlias = Shape;

class Plain : Shape {};  // a class's bases are private unless said otherwise
struct Open : Shape {};  // a struct's are public

class Mixed : public Shape, protected virtual Named, private Counted {};

template <typename T>
class Box : public Holder<T>, virtual public Shape {};

class Circle : public Holder<Circle> {};

class ViaAlias : public ShapeAlias {};

}  // namespace shapes
