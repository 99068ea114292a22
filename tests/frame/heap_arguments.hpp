#pragma once
/// \file
/// The arguments of a main function, each in a block of its own.

#include <cstddef>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace kivtest {

/// argc and argv. The words and the array are heap blocks of exactly their size, without a null entry at the array's
/// end, so that those made under support::GuardPages fault when they are read past an end.
class HeapArguments {
public:
  explicit HeapArguments(std::vector<std::string> const & words)
      : argc_(static_cast<int>(words.size())), argv_(new char *[words.size()]) {
    for (std::size_t i = 0; i < words.size(); ++i) {
      std::size_t const bytes = words[i].size() + 1;
      words_.emplace_back(new char[bytes]);
      argv_[i] = words_[i].get();
      std::memcpy(argv_[i], words[i].c_str(), bytes);
    }
  }

  /// Makes word \p i a null pointer.
  void setNull(std::size_t i) { argv_[i] = nullptr; }

  int argc() const { return argc_; }
  char ** argv() const { return argv_.get(); }

private:
  int argc_;
  std::unique_ptr<char *[]> argv_;
  std::vector<std::unique_ptr<char[]>> words_;
};

} // namespace kivtest
