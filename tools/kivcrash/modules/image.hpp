#pragma once
/// \file
/// The file of a program, a DLL, or their debug symbols, as the linker and objcopy write them.

#include "common/bytes.hpp"
#include "tools/winapi.hpp"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kivcrash {

class Image {
public:
  struct Section {
    std::string name;          ///< in full, also beyond eight characters
    std::uint32_t address = 0; ///< from the image's beginning
    std::uint32_t size = 0;    ///< in memory
    std::string_view bytes;    ///< in the file; as much of them as belongs to the section
  };
  struct DebugLink {
    std::string name; ///< of the file with the debug symbols, without folder
    std::uint32_t checkSum = 0;
  };

  /// Nothing when the bytes are no 64-bit image, or a section goes beyond their end.
  /// \param reason  gets why
  static std::optional<Image> read(std::shared_ptr<std::string const> bytes, std::string & reason);

  std::uint32_t timeStamp() const { return header_.FileHeader.TimeDateStamp; }
  std::uint32_t size() const { return header_.OptionalHeader.SizeOfImage; }
  /// The same without debug symbols and links to them: equal in a program and in the file of its symbols.
  std::uint32_t sizeOfCode() const;
  std::uint32_t checkSum() const { return header_.OptionalHeader.CheckSum; }
  /// The address that it was linked for.
  std::uint64_t base() const { return header_.OptionalHeader.ImageBase; }
  std::shared_ptr<std::string const> const & bytes() const { return bytes_; }
  std::vector<Section> const & sections() const { return sections_; }

  /// Copies what would be in memory from that offset on, and returns how many bytes those are.
  std::size_t readMemory(std::uint64_t offset, void * to, std::size_t size) const;

  /// The entry that says how the function at the offset keeps its stack; null where there is none.
  RUNTIME_FUNCTION const * functionAt(std::uint32_t offset) const;

  std::optional<DebugLink> debugLink() const;
  bool hasDebugSymbols() const;

private:
  void readFunctions();

  std::shared_ptr<std::string const> bytes_; // that of the sections
  IMAGE_NT_HEADERS64 header_{};
  std::vector<Section> sections_;
  std::vector<RUNTIME_FUNCTION> functions_; // by address
};

/// The check sum with which a link names its file.
std::uint32_t linkCheckSum(std::string_view bytes);

} // namespace kivcrash
