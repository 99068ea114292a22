#pragma once
/// \file
/// Whether an object still lives after a handler that may have deleted it. For the toolkit's own classes.

namespace SV::detail {

/// A member of an object whose handlers may delete it.
class Lifetime {
public:
  /// Whether the object lives; on the stack of its member function, innermost last.
  class Watch {
  public:
    explicit Watch(Lifetime & lifetime) : lifetime_(&lifetime), outer_(lifetime.innermost_) {
      lifetime.innermost_ = this;
    }
    Watch(Watch const &) = delete;
    Watch & operator=(Watch const &) = delete;
    ~Watch() {
      if (lifetime_)
        lifetime_->innermost_ = outer_;
    }

    explicit operator bool() const { return lifetime_ != nullptr; }

  private:
    friend class Lifetime;

    Lifetime * lifetime_;
    Watch * outer_;
  };

  Lifetime() = default;
  Lifetime(Lifetime const &) = delete;
  Lifetime & operator=(Lifetime const &) = delete;
  ~Lifetime() {
    for (Watch * watch = innermost_; watch; watch = watch->outer_)
      watch->lifetime_ = nullptr;
  }

private:
  Watch * innermost_ = nullptr;
};

} // namespace SV::detail
