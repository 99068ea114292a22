#pragma once
/// \file
/// Zip archives made by the tests: packed files one after the other.

#include "dump_builder.hpp"

#include <zlib.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kivtest {

inline std::string deflated(std::string_view bytes) {
  z_stream stream{};
  deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
  std::string packed(deflateBound(&stream, static_cast<uLong>(bytes.size())) + 16, '\0');
  stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(bytes.data()));
  stream.avail_in = static_cast<uInt>(bytes.size());
  stream.next_out = reinterpret_cast<Bytef *>(packed.data());
  stream.avail_out = static_cast<uInt>(packed.size());
  if (deflate(&stream, Z_FINISH) != Z_STREAM_END)
    throw std::runtime_error("deflate");
  packed.resize(stream.total_out);
  deflateEnd(&stream);
  return packed;
}

/// \code
///   std::string const archive = zipOf({{"orders.exe.1.dmp", bytes}, {"orders.exe.log", report}});
/// \endcode
inline std::string zipOf(std::vector<std::pair<std::string, std::string>> const & files) {
  std::string archive;
  std::string directory;
  auto const two = [](std::size_t value) { return bytesOf(static_cast<std::uint16_t>(value)); };
  auto const four = [](std::size_t value) { return bytesOf(static_cast<std::uint32_t>(value)); };
  for (auto const & [name, bytes] : files) {
    std::string const packed = deflated(bytes);
    std::string const facts = two(20) + two(0) + two(Z_DEFLATED) + four(0) +
                              four(crc32_z(0, reinterpret_cast<Bytef const *>(bytes.data()), bytes.size())) +
                              four(packed.size()) + four(bytes.size()) + two(name.size()) + two(0);
    directory += "PK\1\2" + two(20) + facts + two(0) + two(0) + two(0) + four(0) + four(archive.size()) + name;
    archive += "PK\3\4" + facts + name + packed;
  }
  return archive + directory + "PK\5\6" + two(0) + two(0) + two(files.size()) + two(files.size()) +
         four(directory.size()) + four(archive.size()) + two(0);
}

} // namespace kivtest
