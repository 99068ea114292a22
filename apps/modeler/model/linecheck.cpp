#include "linecheck.hpp"

#include <cstdio>
#include <memory>

using SV::String;

namespace modeler {
namespace {

struct Closer {
  void operator()(std::FILE * file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Closer>;

class LineCheck {
public:
  /// False at the first fault.
  bool add(char c) {
    if (c == '\n' && last_ == '\r') { // the second half of a pair
      last_ = c;
      return true;
    }
    last_ = c;
    if (c == '\n' || c == '\r') {
      ++ended_;
      length_ = 0;
      return true;
    }
    ++length_;
    if (c == '\0')
      fault_ = ModelFault::NulByte;
    else if (length_ > kLongestLine)
      fault_ = ModelFault::LineTooLong;
    return fault_ == ModelFault::None;
  }

  ModelReport report() const {
    return fault_ == ModelFault::None ? ModelReport() : ModelReport{fault_, ended_ + 1, String()};
  }

  std::int64_t count() const { return ended_ + (length_ > 0 ? 1 : 0); }

private:
  std::int64_t ended_ = 0;
  int length_ = 0; // of the line that has not ended yet
  char last_ = '\0';
  ModelFault fault_ = ModelFault::None;
};

} // namespace

ModelReport checkLines(String const & fileName, std::int64_t & count) {
  File const file(std::fopen(fileName.c_str(), "rb"));
  if (file == nullptr)
    return {ModelFault::NotReadable, 0, String()};
  LineCheck check;
  char block[4096];
  while (std::size_t const read = std::fread(block, 1, sizeof block, file.get()))
    for (std::size_t i = 0; i < read; ++i)
      if (!check.add(block[i]))
        return check.report();
  if (std::ferror(file.get()) != 0)
    return {ModelFault::NotReadable, 0, String()};
  count = check.count();
  return {};
}

} // namespace modeler
