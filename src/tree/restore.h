// Puts a slot back to the value it has now, on every path out of a scope.
#pragma once

namespace korvu {

template <class T>
class Repoe {
 public:
  explicit Repoe(T& slot) : slot_(slot), valor_(slot) {}
  ~Repoe() { slot_ = valor_; }
  Repoe(const Repoe&) = delete;
  Repoe& operator=(const Repoe&) = delete;

 private:
  T& slot_;
  T valor_;
};

}  // namespace korvu
