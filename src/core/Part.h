#pragma once

#include <memory>

/// A part of a whole, made with it. It can be changed only where the whole can, and need not be known where it is not
/// used: a change to it leaves alone who only knows the whole.
template<typename T>
class Part {
  public:
    Part() : part_(std::make_unique<T>()) {}

    T* operator->() { return part_.get(); }
    const T* operator->() const { return part_.get(); }
    T& operator*() { return *part_; }
    const T& operator*() const { return *part_; }

  private:
    std::unique_ptr<T> part_;
};
