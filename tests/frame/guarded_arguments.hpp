#pragma once
/// \file
/// The arguments of a main function, laid out so that a read past the end of a word or of the array faults.

#include <cstddef>
#include <string>
#include <vector>

namespace kivtest {

/// Memory whose last byte lies before a page without access. Moveable, released with its owner.
class GuardedBlock {
public:
  /// Room for at least \p bytes, in whole pages.
  explicit GuardedBlock(std::size_t bytes);
  GuardedBlock(GuardedBlock && other) noexcept;
  GuardedBlock & operator=(GuardedBlock && other) noexcept;
  ~GuardedBlock();

  std::size_t capacity() const { return capacity_; }

  /// Where \p bytes begin that end with the block; at most capacity().
  char * last(std::size_t bytes) { return start_ + capacity_ - bytes; }

private:
  char * start_;
  std::size_t capacity_;
};

/// argc and argv. Each word ends before a page without access, and so does the array, which has no null entry at its
/// end.
class GuardedArguments {
public:
  GuardedArguments() = default;
  explicit GuardedArguments(std::vector<std::string> const & words) { set(words); }

  /// Replaces the words; the memory of the words before is used again.
  void set(std::vector<std::string> const & words);

  /// Makes word \p i a null pointer.
  void setNull(std::size_t i) { argv_[i] = nullptr; }

  int argc() const { return argc_; }
  char ** argv() const { return argv_; }

private:
  std::vector<GuardedBlock> words_;
  GuardedBlock array_{sizeof(char *)};
  int argc_ = 0;
  char ** argv_ = nullptr;
};

} // namespace kivtest
