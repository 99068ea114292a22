#include "sv0105/drawing/testarchive.hpp"

#include <zlib.h>

namespace svtest {

namespace {

Bytef const * bytesOf(std::string const & text) { return reinterpret_cast<Bytef const *>(text.data()); }

std::uint32_t checkSum(std::string const & text) {
  return static_cast<std::uint32_t>(crc32(0, bytesOf(text), static_cast<uInt>(text.size())));
}

/// With or without the frame that PNG wants and zip does not.
std::string deflated(std::string const & content, bool framed) {
  z_stream stream = {};
  deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, framed ? MAX_WBITS : -MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
  std::string result(deflateBound(&stream, static_cast<uLong>(content.size())) + 16, '\0');
  stream.next_in = const_cast<Bytef *>(bytesOf(content));
  stream.avail_in = static_cast<uInt>(content.size());
  stream.next_out = reinterpret_cast<Bytef *>(result.data());
  stream.avail_out = static_cast<uInt>(result.size());
  deflate(&stream, Z_FINISH);
  result.resize(stream.total_out);
  deflateEnd(&stream);
  return result;
}

class LittleEndian {
public:
  LittleEndian & two(std::uint32_t value) { return add(value, 2); }
  LittleEndian & four(std::uint32_t value) { return add(value, 4); }
  LittleEndian & text(std::string const & more) {
    bytes += more;
    return *this;
  }

  std::string bytes;

private:
  LittleEndian & add(std::uint32_t value, int count) {
    for (int i = 0; i < count; ++i)
      bytes += static_cast<char>(value >> 8 * i & 0xFF);
    return *this;
  }
};

std::string bigEndian(std::uint32_t value) {
  std::string bytes;
  for (int shift = 24; shift >= 0; shift -= 8)
    bytes += static_cast<char>(value >> shift & 0xFF);
  return bytes;
}

std::string chunk(std::string const & kind, std::string const & data) {
  return bigEndian(static_cast<std::uint32_t>(data.size())) + kind + data + bigEndian(checkSum(kind + data));
}

/// \param depthAndKind  the last five bytes of the header
std::string png(SV::Size const & size, std::string const & depthAndKind, std::string const & lines) {
  std::string const header = bigEndian(static_cast<std::uint32_t>(size.width)) +
                             bigEndian(static_cast<std::uint32_t>(size.height)) + depthAndKind;
  return "\x89PNG\r\n\x1A\n" + chunk("IHDR", header) + chunk("IDAT", deflated(lines, true)) + chunk("IEND", "");
}

} // namespace

std::string zipOf(std::vector<Packed> const & files) {
  LittleEndian archive;
  LittleEndian directory;
  for (Packed const & file : files) {
    std::string const data = file.compressed ? deflated(file.content, false) : file.content;
    std::uint32_t const method = file.method != 0xFFFF ? file.method : file.compressed ? 8 : 0;
    LittleEndian facts;
    facts.two(20).two(file.flags).two(method).four(0x5A210000).four(checkSum(file.content) + file.checkSumError);
    facts.four(static_cast<std::uint32_t>(data.size()));
    facts.four(file.statedSize ? file.statedSize : static_cast<std::uint32_t>(file.content.size()));
    facts.two(static_cast<std::uint32_t>(file.name.size())).two(0);
    std::uint32_t const offset = static_cast<std::uint32_t>(archive.bytes.size());
    archive.text("PK\3\4").text(facts.bytes).text(file.name).text(data);
    directory.text("PK\1\2").two(20).text(facts.bytes).two(0).two(0).two(0).four(0).four(offset).text(file.name);
  }
  std::uint32_t const count = static_cast<std::uint32_t>(files.size());
  std::uint32_t const start = static_cast<std::uint32_t>(archive.bytes.size());
  archive.text(directory.bytes).text("PK\5\6").two(0).two(0).two(count).two(count);
  archive.four(static_cast<std::uint32_t>(directory.bytes.size())).four(start).two(0);
  return archive.bytes;
}

std::string pngOf(SV::Size const & size, Painter const & painter) {
  std::string lines;
  for (long y = 0; y < size.height; ++y) {
    lines += '\0'; // no filter
    for (long x = 0; x < size.width; ++x) {
      std::uint32_t const pixel = painter(x, y);
      for (int shift : {16, 8, 0, 24})
        lines += static_cast<char>(pixel >> shift & 0xFF);
    }
  }
  return png(size, std::string("\x08\x06\0\0\0", 5), lines);
}

std::string grayPngOf(SV::Size const & size, unsigned char gray) {
  std::string lines;
  for (long y = 0; y < size.height; ++y)
    lines += '\0' + std::string(static_cast<std::size_t>(size.width), static_cast<char>(gray));
  return png(size, std::string("\x08\0\0\0\0", 5), lines);
}

std::string withStatedSize(std::string png, std::uint32_t width, std::uint32_t height) {
  png.replace(16, 8, bigEndian(width) + bigEndian(height));
  png.replace(29, 4, bigEndian(checkSum(png.substr(12, 17))));
  return png;
}

} // namespace svtest
